// The host's reader of traces on any bytes: what it reads it can tell, count and draw.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "trace/output.h"
#include "trace/story.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  k7host::TraceStory story;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    if (const auto entry = story.Take(text.substr(0, end))) {
      const std::string line = k7host::TraceEntryText(*entry);
      const std::string json = k7host::TraceEntryJson(*entry);
      if (line.find('\n') != std::string::npos || json.find('\n') != std::string::npos)
        std::abort();
      if (entry->outstanding < 0) std::abort();
    }
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  const k7host::TraceSummary summary = story.Summary();
  if (summary.unreadable > summary.lines) std::abort();
  k7host::TraceSummaryText(summary);
  k7host::TraceSummaryJson(summary);
  k7host::TracePicture(story.Moves());
  return 0;
}
