// The faults a test asks for, as it writes them down.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/clock.h"

namespace k7sim {

enum class FaultTrigger { Line, Match, Reply, Time };

enum class FaultAction {
  Ignore,     // the line never arrives
  Drop,       // the reply is lost
  Withhold,   // no reply to this line ever comes, the late ones neither
  Delay,      // the reply comes `ms` later; others overtake it
  Duplicate,  // the reply comes twice
  Corrupt,    // one character of the reply is wrong
  Fragment,   // the reply comes in two parts, `ms` apart
  Inject,     // `text` is sent, unasked
  Halt,       // the machine halts; `text` is sent as its alarm
  Silent,     // nothing is answered from now on, for `ms` when given
  Close       // the line is closed; it opens again after `ms` when given
};

// Order is that of the enumeration: the word in a script.
inline constexpr const char* kFaultActionNames[] = {"ignore",    "drop",    "withhold", "delay",
                                                    "duplicate", "corrupt", "fragment", "inject",
                                                    "halt",      "silent",  "close"};

struct Fault {
  FaultTrigger trigger = FaultTrigger::Line;
  std::uint64_t line = 0;   // Line: number of the line received, from 1
  std::string match;        // Match: text anywhere in a line received; Reply: in a reply sent
  TimeUs atUs = 0;          // Time: wire time since the start
  std::uint64_t nth = 1;    // the occurrence that counts first
  std::uint64_t count = 1;  // on how many occurrences it acts; 0 = all from there
  FaultAction action = FaultAction::Drop;
  TimeUs durationUs = 0;  // "ms"
  std::string text;
  std::string source;  // as written, for the report

  // Acts on the replies to a line rather than on the spot.
  bool IsAboutReplies() const {
    return action >= FaultAction::Drop && action <= FaultAction::Fragment;
  }
  // At a time: acts when it has come. The others act on the lines or replies that come from then
  // on.
  bool ActsAtItsTime() const {
    return trigger == FaultTrigger::Time && !IsAboutReplies() && action != FaultAction::Ignore;
  }
};

// Reads one `--fault` argument. Three forms:
//   trigger and action as a list    match=G28,nth=2,do=delay,ms=500
//   JSON, one object or a list      [{"reply":"EX","nth":3,"do":"drop"}]
//   the name of a file with JSON
// Keys: one of line, match, reply, atMs; do; and nth, count, ms, text as needed. In the list form
// \n and \r in a text stand for line ends. Null with a reason in `error`.
std::optional<std::vector<Fault>> ParseFaults(std::string_view argument, std::string& error);

}  // namespace k7sim
