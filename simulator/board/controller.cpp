#include "board/controller.h"

#include <algorithm>
#include <utility>

namespace k7sim {

Controller::Controller(const MachineSetup& setup, ConfigStore& config, ReplySink& sink)
    : setup_(setup),
      config_(config),
      sink_(sink),
      mechanics_(setup.geometry, setup.surface),
      planner_(setup.limits, *this),
      recorder_(setup.tool),
      jobs_(setup.limits) {
  state_.homed = setup.homed;
  mechanics_.PlaceHead(setup.positionInches);
  if (!state_.homed) return;
  // On a homed machine the coordinates are those from the switches.
  for (std::size_t axis = 0; axis < 3; ++axis) {
    target_[axis] = MmFromInches(setup.positionInches[axis]);
    mechanics_.Declare(axis, target_[axis]);
  }
}

void Controller::TakeLine(std::string_view line, std::uint64_t lineId, int link, TimeUs nowUs) {
  ++counts_.lines;
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  if (LooksLikeGcode(line)) {
    TakeGcodeLine(line, lineId, link, nowUs);
  } else if (IsRemark(line)) {
    sink_.Reply(link, lineId, "ok\n");
  } else if (!line.empty() && line[0] == '$') {
    TakeDollarLine(line, lineId, link, nowUs);
  } else {
    TakeWords(line, lineId, link, nowUs);
  }
}

void Controller::ResumeHold(TimeUs nowUs) {
  planner_.Resume(nowUs);
  StartWaiting(nowUs);
}

void Controller::StopMotion(TimeUs nowUs) {
  const Vec3 stopped = PositionMm(nowUs);
  if (stopped != mechanics_.Logical()) {
    recorder_.AddMotion(mechanics_.Logical(), stopped, mechanics_, state_.spindleOn,
                        jobs_.OpenDistances());
    mechanics_.DriveTo(stopped);
  }
  target_ = stopped;
  counts_.flushedLines += waiting_.size() + planner_.Flush() + (action_.active ? 1 : 0);
  waiting_.clear();
  arc_.reset();
  action_.active = false;
  drained_ = true;
}

void Controller::Halt(TimeUs nowUs) {
  StopMotion(nowUs);
  state_.spindleOn = false;
  state_.outputOn = false;
  if (!state_.halted) {
    ++counts_.halts;
    state_.alarm.clear();
  }
  state_.halted = true;
}

void Controller::Restart(TimeUs nowUs) {
  StopMotion(nowUs);
  jobs_.Abandon();
  pendingAlarm_.clear();
  state_ = {};
  // The motors stand where they stood; to the board that is the origin, for want of anything
  // better.
  for (std::size_t axis = 0; axis < 3; ++axis) {
    mechanics_.MapAxis(axis, static_cast<int>(axis) + 1);
    mechanics_.Declare(axis, 0);
  }
  target_ = mechanics_.Logical();
  ++counts_.restarts;
}

void Controller::Alarm(std::string_view text, TimeUs nowUs) {
  Halt(nowUs);
  state_.alarm = text;
  sink_.Reply(kAllLinks, 0, text);
}

Vec3 Controller::PositionMm(TimeUs nowUs) const {
  if (action_.active) {
    const double whole = static_cast<double>(action_.endsUs - action_.beganUs);
    const double done = static_cast<double>(nowUs - action_.beganUs);
    const double fraction = whole > 0 ? std::clamp(done / whole, 0.0, 1.0) : 1;
    return Between(action_.from, action_.to, fraction);
  }
  return planner_.PositionAt(nowUs, mechanics_.Logical());
}

double Controller::FeedMmPerSec() const {
  if (!action_.active) return planner_.FeedMmPerSec();
  const double seconds = SecondsFromUs(action_.endsUs - action_.beganUs);
  return seconds > 0 ? Length(action_.to - action_.from) / seconds : 0;
}

TimeUs Controller::NextEvent() const {
  return std::min(planner_.NextEvent(), action_.active ? action_.endsUs : kNever);
}

void Controller::Advance(TimeUs nowUs) {
  for (TimeUs due = NextEvent(); due <= nowUs; due = NextEvent()) {
    if (action_.active && action_.endsUs <= due) {
      FinishAction(due);
    } else {
      planner_.Advance(due);
    }
    if (!pendingAlarm_.empty()) Alarm(std::exchange(pendingAlarm_, {}), due);
    StartWaiting(due);
  }
}

std::size_t Controller::WaitingLines(int link) const {
  return static_cast<std::size_t>(std::count_if(waiting_.begin(), waiting_.end(),
                                                [&](const Waiting& w) { return w.link == link; }));
}

std::size_t Controller::WaitingBytes(int link) const {
  std::size_t bytes = 0;
  for (const Waiting& waiting : waiting_) bytes += waiting.link == link ? waiting.bytes : 0;
  return bytes;
}

}  // namespace k7sim
