// A trace as people and programs read it: a line a record, a summary, a picture.
#pragma once

#include <string>
#include <vector>

#include "trace/story.h"

namespace k7host {

// The titles above the lines of TraceEntryText. [any]
std::string TraceTitles();
// One record in one line. [any]
std::string TraceEntryText(const TraceEntry& entry);
// The same as one JSON object in one line. [any]
std::string TraceEntryJson(const TraceEntry& entry);

// Lines "name: value", each with its end. [any]
std::string TraceSummaryText(const TraceSummary& summary);
// One JSON object in one line. [any]
std::string TraceSummaryJson(const TraceSummary& summary);

// What the lines say was cut (black) and travelled (grey), seen from above, Y up, an inch an inch;
// dots are plunges without a cut. [any]
std::string TracePicture(const std::vector<TraceMove>& moves);

}  // namespace k7host
