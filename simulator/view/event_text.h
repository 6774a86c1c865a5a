// Frames as server-sent events, the texts that a browser reads one after the other.
#pragma once

#include <string>
#include <string_view>

#include "view/exchange.h"

namespace k7sim {

// One event. `json` has no line ends.
std::string EventText(std::string_view name, std::string_view json);

// The event `frame`: {"state":{...}, "strokes":[[x0,y0,x1,y1,depth],...], "lines":[[number,
// seconds, mark, link, text],...], "passedOver":N}, each key only when there is something, lengths
// in inches. `ended` makes an event of its own after it.
std::string FrameText(const ViewFrame& frame);

}  // namespace k7sim
