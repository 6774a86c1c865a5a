// The texts of watch.h.
#include "core/watch.h"

namespace k7host {
namespace {

std::string Seconds(std::uint64_t ms) {
  return std::to_string((ms + 500) / 1000) + " s";
}

bool InJob(Waiting waiting) {
  return waiting == Waiting::JobStart || waiting == Waiting::Moves || waiting == Waiting::Plunge ||
         waiting == Waiting::JobEnd;
}

std::string Doing(Waiting waiting) {
  switch (waiting) {
    case Waiting::Search:
      return "searching the serial ports";
    case Waiting::Connection:
      return "connecting";
    case Waiting::Homing:
      return "homing";
    case Waiting::GoTo:
      return "on the way";
    case Waiting::Jog:
      return "jogging";
    case Waiting::Spindle:
      return "changing the spindle's speed";
    case Waiting::Switches:
      return "asking for the switches";
    default:
      return "";
  }
}

std::string JobText(const Silence& silence) {
  // While a job begins there is nothing to count.
  if (silence.waiting == Waiting::JobStart) return ", waiting to begin the job";
  const std::uint64_t stroke = silence.strokesDone < silence.strokesTotal
                                   ? std::uint64_t{silence.strokesDone} + 1
                                   : silence.strokesTotal;
  return ", " + std::to_string(silence.outstanding) +
         (silence.outstanding == 1 ? " line" : " lines") + " outstanding, stroke " +
         std::to_string(stroke) + " of " + std::to_string(silence.strokesTotal);
}

// Why a machine that answers may not get on.
std::string Reason(const Silence& silence) {
  switch (silence.waiting) {
    case Waiting::Plunge:
      if (silence.outstanding == 0) return ": the probe may have missed the surface";
      break;
    case Waiting::JobStart:
      return ": a message of the driver may be waiting to be closed";
    case Waiting::GoTo:
      return ": if the cutter was up already, this board does not report its lift, which moves "
             "nothing; end this, home the machine (k7host home), then go again";
    case Waiting::Moves:
    case Waiting::JobEnd:
      break;
    default:
      return "";
  }
  if (silence.untaken > 0 && silence.running == 0) {
    return ": it takes no moves, as after an alarm or a halt";
  }
  return silence.outstanding > 0 ? ": a long stroke, a halt, or a report that was lost" : "";
}

}  // namespace

std::string SilenceText(const Silence& silence) {
  const bool job = InJob(silence.waiting);
  const std::string doing = Doing(silence.waiting);
  const std::string where = job ? JobText(silence) : doing.empty() ? "" : ", " + doing;
  const std::string then =
      silence.stopping ? " - Ctrl-C again to end at once" : " - Ctrl-C to stop waiting";
  // A search talks to nobody in particular.
  if (silence.waiting == Waiting::Search || silence.waiting == Waiting::Connection) {
    return doing + " for " + Seconds(silence.stalledMs) + then;
  }
  if (silence.silentMs >= kSilentMs) {
    return "no word from the machine for " + Seconds(silence.silentMs) + where + then;
  }
  return "the machine answers, but has reported nothing done for " + Seconds(silence.stalledMs) +
         where + Reason(silence) + then;
}

std::string StopText(Waiting waiting) {
  if (InJob(waiting)) {
    return "stopping after this stroke ... (Ctrl-C again ends at once, the cutter where it is)";
  }
  switch (waiting) {
    case Waiting::Nothing:
    case Waiting::Search:
      return "";
    case Waiting::Dialog:
      return "stopping when the dialog is closed ... (Ctrl-C again ends at once)";
    default:
      return "stopping when this is done ... (Ctrl-C again ends at once)";
  }
}

bool SilenceClock::IsDue(std::uint64_t stalledMs) {
  if (stalledMs < kFirstMs) {
    next_ = kFirstMs;
    return false;
  }
  if (stalledMs < next_) return false;
  next_ = next_ == kFirstMs ? 10000 : next_ * 2;
  return true;
}

}  // namespace k7host
