// What the program waits for, and what it says to the user while the machine says nothing.
#pragma once

#include <cstdint>
#include <string>

namespace k7host {

// What a call to the driver, or the program itself, waits for.
enum class Waiting : std::uint8_t {
  Nothing,     // the user, or nobody
  Search,      // for controllers on the ports
  Connection,  // to one of them
  Homing,
  GoTo,
  Jog,
  Spindle,
  Switches,
  Dialog,    // the user, in a dialog of the driver
  JobStart,  // the controller's leave to begin
  Moves,     // of a job, sent and not reported as carried out
  Plunge,    // of a stroke, with the probe that some machines make before it
  JobEnd,
};

// A wait that has brought nothing for some time.
struct Silence {
  Waiting waiting = Waiting::Nothing;
  std::uint64_t silentMs = 0;   // since the machine has said anything
  std::uint64_t stalledMs = 0;  // since it has reported something done
  bool stopping = false;        // the user has asked to stop
  // Of a job.
  std::uint32_t outstanding = 0;  // lines sent that are not reported as carried out
  std::uint32_t untaken = 0;      // of these, lines that the machine has not queued
  std::uint32_t running = 0;      // lines that have begun and not ended
  std::uint32_t strokesDone = 0;
  std::uint32_t strokesTotal = 0;
};

// One line for people: that the machine says nothing at all, or that it answers and does not get
// on, with the likely reason and what to do. [any]
std::string SilenceText(const Silence& silence);

// What happens after the first Ctrl-C during such a wait; empty where nothing needs saying. [any]
std::string StopText(Waiting waiting);

// When to say so: after five seconds, after ten, and then each time that the wait has doubled.
// [host]
class SilenceClock {
 public:
  bool IsDue(std::uint64_t stalledMs);
  // Something has been said since the machine last got on.
  bool HasSpoken() const { return next_ != kFirstMs; }

 private:
  // A little early, so that the user reads it within five seconds.
  static constexpr std::uint64_t kFirstMs = 4700;
  std::uint64_t next_ = kFirstMs;
};

// The machine counts as silent, and not only as standing still, after so long.
inline constexpr std::uint64_t kSilentMs = 3000;

}  // namespace k7host
