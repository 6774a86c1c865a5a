// The records of a trace that the driver has written: one a line (docs/trace.md).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace k7host {

struct TraceRecord {
  std::int64_t us = 0;  // since the zero that the process's header gives
  std::uint32_t process = 0;
  std::string role;  // of the thread: "host", "reader", "jog", "ramp"
  std::uint32_t thread = 0;
  std::string link;  // its handle; empty: of none
  std::string kind;  // "send", "recv", ...
  std::string rest;  // as it stands in the file

  // The words before the first quotation mark of `rest`.
  std::vector<std::string> words;
  // What stands between the quotation marks: of "send" and "recv" the bytes of the line, of others
  // a name as it is. A record has at most two.
  std::vector<std::string> texts;
};

// The record in one line without its end; nothing when the line is none, as where a process was
// ended in the middle of a write or the line is another program's. [any]
std::optional<TraceRecord> ReadTraceRecord(std::string_view line);

// Seconds with six decimals. [any]
std::string SecondsText(std::int64_t us);

// Microseconds of a text such as "12.345678"; nothing when it is none. [any]
std::optional<std::int64_t> ReadSeconds(std::string_view text);

}  // namespace k7host
