// What the board does with the lines that are carried out in order: moves, homing, probing, and
// what has to wait until all motion has ended.
#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "board/controller.h"

namespace k7sim {
namespace {

constexpr double kProbeFeedMmPerSec = 5;  // when G30 gives none
constexpr double kHomingLengths = 1.5;    // axis lengths after which homing fails

// Whole steps, limited so that the number fits its type.
long long Steps(double mm, double stepsPerMm) {
  return std::llround(std::clamp(mm * stepsPerMm, -1e15, 1e15));
}

}  // namespace

void Controller::StartWaiting(TimeUs nowUs) {
  while (!waiting_.empty() && !action_.active) {
    const Gcode& code = waiting_.front().code;
    if (code.IsMotion()) {
      if (!StartMove(waiting_.front(), nowUs)) return;
      waiting_.pop_front();
      continue;
    }
    const bool offsets =
        code.letter == 'G' && (code.number == 10 || code.number >= 54) && code.number <= 59;
    if (offsets) {
      const Waiting line = waiting_.front();
      waiting_.pop_front();
      SelectWork(line);
      Ok(line);
      continue;
    }
    if (!planner_.IsIdle() || planner_.IsHeld()) return;
    const Waiting line = waiting_.front();
    waiting_.pop_front();
    drained_ = true;
    StartAction(line, nowUs);
  }
}

Vec3 Controller::EndOf(const Waiting& line) const {
  Vec3 to = target_;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const auto word = line.code.Word(kAxisLetters[axis]);
    if (!word) continue;
    const double origin = line.machine ? 0 : WorkOffset()[axis];
    to[axis] = *word * line.mmPerUnit + (line.absolute ? origin : target_[axis]);
  }
  return to;
}

std::optional<Arc> Controller::ArcOf(const Waiting& line, const Vec3& to) const {
  if (line.code.number < 2) return std::nullopt;
  const bool clockwise = line.code.number == 2;
  constexpr std::array<char, 3> kCentreLetters = {'I', 'J', 'K'};
  Vec3 centre = target_;
  bool centred = false;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const auto word = line.code.Word(kCentreLetters[axis]);
    if (!word) continue;
    centred = true;
    centre[axis] += *word * line.mmPerUnit;
  }
  if (centred) return Arc::Around(target_, to, centre, line.plane, clockwise);
  const auto radius = line.code.Word('R');
  if (!radius) return std::nullopt;
  return Arc::WithRadius(target_, to, *radius * line.mmPerUnit, line.plane, clockwise);
}

bool Controller::StartMove(const Waiting& line, TimeUs nowUs) {
  if (planner_.IsFull()) return false;
  if (!arc_) {
    const Vec3 to = EndOf(line);
    arc_ = ArcOf(line, to);
    arcChord_ = 0;
    if (!arc_) {
      PushBlock(line, to, true, true, nowUs);
      return true;
    }
  }
  for (; arcChord_ < arc_->Chords(); ++arcChord_) {
    if (planner_.IsFull()) return false;
    PushBlock(line, arc_->End(arcChord_), arcChord_ == 0, arcChord_ + 1 == arc_->Chords(), nowUs);
  }
  arc_.reset();
  return true;
}

void Controller::PushBlock(const Waiting& line, const Vec3& to, bool first, bool last,
                           TimeUs nowUs) {
  bool moves = false;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    moves = moves || Steps(to[axis], state_.stepsPerMm[axis]) !=
                         Steps(target_[axis], state_.stepsPerMm[axis]);
  }
  Block block;
  block.from = target_;
  block.to = to;
  block.announced = state_.blockMessages && (moves || !setup_.silentZeroMoves);
  block.link = line.link;
  block.lineId = line.lineId;
  block.command = line.text;
  block.first = first;
  block.last = last;
  if (block.announced && first) sink_.Reply(line.link, line.lineId, "QX\r\n");
  if (!moves) {
    if (last) Ok(line);
    planner_.PushNothing(block, nowUs);
    return;
  }
  block.afterDrain = drained_;
  drained_ = false;
  const Vec3 delta = to - target_;
  const double length = Length(delta);
  block.feedMmPerSec = line.feedMmPerMin / 60;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const double share = std::abs(delta[axis]) / length;
    if (share > 0) {
      block.feedMmPerSec = std::min(block.feedMmPerSec, state_.maxMmPerMin[axis] / 60 / share);
    }
  }
  target_ = to;
  state_.motorsOn = true;
  planner_.Push(block, nowUs);
  counts_.deepestQueue = std::max(counts_.deepestQueue, planner_.Size());
  if (last) Ok(line);
}

// G54 to G59 choose the offsets that hold; G10 sets some: L2 to the words, L20 so that the head
// stands at the words.
void Controller::SelectWork(const Waiting& line) {
  if (line.code.number >= 54) {
    state_.work = static_cast<std::size_t>(line.code.number - 54);
    return;
  }
  const int form = static_cast<int>(line.code.Word('L').value_or(0));
  const int place = static_cast<int>(line.code.Word('P').value_or(0));
  if ((form != 2 && form != 20) || place < 0 ||
      place > static_cast<int>(state_.workOffsetsMm.size())) {
    ++counts_.unknownLines;
    return;
  }
  Vec3& offset =
      state_.workOffsetsMm[place == 0 ? state_.work : static_cast<std::size_t>(place - 1)];
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const auto word = line.code.Word(kAxisLetters[axis]);
    if (!word) continue;
    const double mm = *word * line.mmPerUnit;
    offset[axis] = form == 2 ? mm : target_[axis] - mm;
  }
}

void Controller::StartAction(const Waiting& line, TimeUs nowUs) {
  action_ = Action{};
  action_.line = line;
  action_.beganUs = action_.endsUs = nowUs;
  action_.from = action_.to = mechanics_.Logical();
  switch (line.code.number) {
    case 92:
      Declare(line);
      break;
    case 800:
      MapAxes(line);
      break;
    case 4: {
      const double seconds =
          line.code.Word('S').value_or(0) + line.code.Word('P').value_or(0) / 1000;
      action_.endsUs += UsFromSeconds(seconds);
      action_.active = true;
      return;
    }
    case 28:
      for (std::size_t axis = 3; axis-- > 0;) {
        // A line homes one axis: the first of Z, Y, X that it names, or X when it names none.
        if (line.code.Has(kAxisLetters[axis]) || (axis == 0)) {
          StartHoming(axis, nowUs);
          break;
        }
      }
      return;
    case 30:
      StartProbe(nowUs);
      return;
    default:
      break;  // M400: all motion has ended
  }
  Ok(line);
}

void Controller::SetActionMove(const Vec3& to, double feedMmPerSec, TimeUs nowUs) {
  action_.to = to;
  const double length = Length(to - action_.from);
  const Trapezoid profile =
      Trapezoid::Make(length, 0, feedMmPerSec, 0, setup_.limits.accelMmPerSec2);
  action_.endsUs = nowUs + UsFromSeconds(length > 0 ? profile.Seconds() : 0);
  action_.active = true;
}

void Controller::StartHoming(std::size_t axis, TimeUs nowUs) {
  action_.axis = axis;
  const auto distance = mechanics_.MmToSwitch(axis);
  action_.found = distance.has_value();
  Vec3 to = action_.from;
  to[axis] -= distance.value_or(MmFromInches(setup_.geometry.travel[axis]) * kHomingLengths);
  SetActionMove(to, setup_.homingFeedMmPerSec, nowUs);
}

void Controller::StartProbe(TimeUs nowUs) {
  const auto distance = mechanics_.MmToTouch();
  action_.found = distance.has_value();
  Vec3 to = action_.from;
  to[2] += distance.value_or(mechanics_.MmToBottom());
  // KEEP: the F of a G30 line is in mm/s, where the F of a G0 line is in mm/min.
  const double feed = action_.line.code.Word('F').value_or(0);
  SetActionMove(to, feed > 0 ? feed : kProbeFeedMmPerSec, nowUs);
}

void Controller::FinishAction(TimeUs nowUs) {
  const Waiting line = action_.line;
  action_.active = false;
  const Gcode& code = line.code;
  const Vec3 end = action_.to;
  if (code.Is('G', 28)) {
    const std::size_t axis = action_.axis;
    if (!action_.found) {
      recorder_.SetCause(line.lineId, line.text, nowUs);
      recorder_.AddMistake(Mistake::HomingFailed,
                           std::string("no switch found on ") + kAxisLetters[axis]);
      Alarm("ALARM: Homing fail\r\n", nowUs);
      return;
    }
    const double distanceMm = action_.from[axis] - end[axis];
    mechanics_.DriveTo(end);
    mechanics_.Declare(axis, 0);
    target_ = mechanics_.Logical();
    sink_.Reply(line.link, line.lineId,
                std::string(1, kAxisLetters[axis]) + "_Limit " +
                    std::to_string(Steps(distanceMm, state_.stepsPerMm[axis])) + "\r\n");
  } else if (code.Is('G', 30)) {
    if (action_.found) {
      mechanics_.DriveTo(end);
      target_ = end;
      sink_.Reply(line.link, line.lineId,
                  "Z_Probe " +
                      std::to_string(Steps(end[2] - action_.from[2], state_.stepsPerMm[2])) +
                      "\r\n");
    } else {
      // The head goes back up, so that it does not stay at the end of Z.
      sink_.Reply(line.link, line.lineId, "ZProbe not triggered\r\n");
    }
  }
  Ok(line);
}

void Controller::Declare(const Waiting& line) {
  bool named = false;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const auto word = line.code.Word(kAxisLetters[axis]);
    if (!word) continue;
    named = true;
    mechanics_.Declare(axis, *word * line.mmPerUnit + WorkOffset()[axis]);
  }
  for (std::size_t axis = 0; axis < 3 && !named; ++axis) mechanics_.Declare(axis, 0);
  target_ = mechanics_.Logical();
}

void Controller::MapAxes(const Waiting& line) {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const auto word = line.code.Word(kAxisLetters[axis]);
    if (word) mechanics_.MapAxis(axis, static_cast<int>(*word));
  }
}

void Controller::OnBlockBegun(const Block& block, TimeUs nowUs) {
  if (block.announced && block.first) sink_.Reply(block.link, block.lineId, "BX\r\n");
  recorder_.SetCause(block.lineId, block.command, nowUs);
  if (!state_.homed && block.first)
    recorder_.AddMistake(Mistake::MoveBeforeHoming, "move before homing");
}

void Controller::OnNothingMoved(const Block& block, TimeUs) {
  if (!block.announced) return;
  if (block.first) sink_.Reply(block.link, block.lineId, "BX\r\n");
  if (block.last) sink_.Reply(block.link, block.lineId, "EX\r\n");
}

void Controller::OnBlockEnded(const Block& block, double seconds, TimeUs nowUs) {
  const Vec3 from = mechanics_.Logical();
  recorder_.SetCause(block.lineId, block.command, nowUs);
  recorder_.AddMotion(from, block.to, mechanics_, state_.spindleOn, jobs_.OpenDistances());
  const std::string mark[2] = {"-", "+"};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    if (!mechanics_.IsBeyondTravel(axis, block.to)) continue;
    const bool far = mechanics_.LinearMm(axis, block.to) > 0;
    const std::string end = mark[far ? 1 : 0] + std::string(1, kAxisLetters[axis]);
    recorder_.AddMistake(Mistake::OutsideTravel, "beyond the end of " + end);
    if (setup_.hardLimits) {
      pendingAlarm_ = "ALARM: Hard limit " + end + "\n";
    }
  }
  mechanics_.DriveTo(block.to);
  ++counts_.blocks;
  jobs_.AddBlock(block, seconds, nowUs);
  if (block.announced && block.last) sink_.Reply(block.link, block.lineId, "EX\r\n");
}

}  // namespace k7sim
