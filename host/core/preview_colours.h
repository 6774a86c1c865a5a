// The colours of a preview.
#pragma once

#include <cstdint>

namespace k7host {

// 0xRRGGBB from blue for the first of `count` strokes to red for the last. [any]
std::uint32_t StrokeColour(std::uint32_t index, std::uint32_t count);

}  // namespace k7host
