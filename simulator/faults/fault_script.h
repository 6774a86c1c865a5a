// Fault scripts: what is to go wrong and when, as `--fault` and the control pipe take it.
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
  Ignore,     // the line is lost before the board has it
  Drop,       // the reply is lost
  Withhold,   // every reply to the line is lost, the late ones too
  Delay,      // the reply comes `ms` later; other replies overtake it
  Duplicate,  // the reply comes twice
  Corrupt,    // one character of the reply is wrong
  Fragment,   // the reply comes in two parts, `ms` apart
  Inject,     // `text` is sent to the host
  Halt,       // the machine halts, with `text` as its alarm
  Silent,     // nothing is sent any more; with `ms`: for so long
  Close,      // all links close; with `ms`: they open again after so long
  HalfOpen,   // nothing is read any more and nothing answered; with `ms`: for so long
  SlowDrain,  // `rate` bytes a second are read; with `ms`: for so long
  Reboot,     // the board restarts, takes `ms` for it, and sends `text`
  Noise,      // `bytes` random bytes follow the reply
  Garble      // one bit of the line is wrong
};

// The words of a script, in the order of the enumeration.
inline constexpr const char* kFaultActionNames[] = {
    "ignore", "drop",   "withhold", "delay",     "duplicate",  "corrupt", "fragment", "inject",
    "halt",   "silent", "close",    "half-open", "slow-drain", "reboot",  "noise",    "garble"};

struct Fault {
  FaultTrigger trigger = FaultTrigger::Line;
  std::uint64_t line = 0;   // Line: number of the line received, from 1
  std::string match;        // Match: text anywhere in a line received; Reply: in a reply
  TimeUs atUs = 0;          // Time: wire time since the start
  std::uint64_t nth = 1;    // the first occurrence that it acts on, from 1
  std::uint64_t count = 1;  // how many occurrences it acts on from there; 0: all
  FaultAction action = FaultAction::Drop;
  TimeUs durationUs = 0;  // "ms"
  std::string text;
  double bytesPerSecond = 0;  // "rate"
  std::uint64_t bytes = 8;    // of a noise
  std::uint64_t seed = 1;     // of a noise
  std::string source;         // as JSON, for the report

  // True for a fault that changes replies. The others act at once.
  bool IsAboutReplies() const {
    return (action >= FaultAction::Drop && action <= FaultAction::Fragment) ||
           action == FaultAction::Noise;
  }
  // True for a fault that changes lines on their way to the board.
  bool IsAboutLines() const {
    return action == FaultAction::Ignore || action == FaultAction::Garble;
  }
  // True for a fault that acts when its time has come. With any other action, a fault with a time
  // acts on the lines or replies that come from then on.
  bool ActsAtItsTime() const {
    return trigger == FaultTrigger::Time && !IsAboutReplies() && !IsAboutLines();
  }
};

// Reads one `--fault` argument. Three forms:
//   a list key=value,...            match=G28,nth=2,do=delay,ms=500
//   JSON, one object or a list      [{"reply":"EX","nth":3,"do":"drop"}]
//   the name of a file with JSON    the same, or {"faults": [...]}
// The keys are one of line, match, reply and atMs, then do, and nth, count, ms, text, rate, bytes
// and seed where they are needed. In a list, \n and \r stand for the characters of a line end.
// Nothing, with a reason in `error`, when the argument is none of these.
std::optional<std::vector<Fault>> ParseFaults(std::string_view argument, std::string& error);

}  // namespace k7sim
