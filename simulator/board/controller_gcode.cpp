// What the board does with each G and M line.
#include <algorithm>
#include <cstdio>

#include "board/controller.h"

namespace k7sim {
namespace {

// True for commands that are carried out in order with the moves. All others are carried out as
// soon as they arrive.
bool GoesInOrder(const Gcode& code) {
  if (code.letter == 'G') {
    switch (code.number) {
      case 0:
      case 1:
        return code.Has('X') || code.Has('Y') || code.Has('Z');
      case 4:
      case 28:
      case 30:
      case 92:
        return true;
      default:
        return false;
    }
  }
  return code.number == 400 || code.number == 800;
}

constexpr int kFullLevel = 255;

}  // namespace

void Controller::TakeGcode(const Gcode& code, Waiting line, TimeUs nowUs) {
  line.code = code;
  if (code.Is('M', 999)) {
    state_.halted = false;
    Ok(line);
    return;
  }
  if (state_.halted) {
    ++counts_.refusedLines;
    sink_.Reply(line.link, line.lineId, "!!\r\n");
    return;
  }
  if (code.Is('M', 112)) {
    Halt(nowUs);
    return;
  }
  if (code.Is('G', 0) || code.Is('G', 1)) {
    double& modal = code.number == 0 ? state_.seekMmPerMin : state_.feedMmPerMin;
    const double wanted = code.Word('F').value_or(0) * state_.mmPerUnit;
    if (wanted > 0) modal = wanted;
    line.feedMmPerMin = modal;
  }
  if (GoesInOrder(code)) {
    line.mmPerUnit = state_.mmPerUnit;
    line.absolute = state_.absolute;
    waiting_.push_back(line);
    StartWaiting(nowUs);
    return;
  }
  if (code.Is('M', 119)) {
    sink_.Reply(line.link, line.lineId, SwitchReport(nowUs));
  } else if (code.Is('M', 114)) {
    // The reply holds the ok itself.
    sink_.Reply(line.link, line.lineId, PositionReport(nowUs));
    return;
  } else if (code.Is('M', 106)) {
    state_.outputOn = true;
    state_.outputOnUs = nowUs;
  } else if (code.Is('M', 107)) {
    state_.outputOn = false;
    state_.outputOnUs = kNever;
    jobs_.End();
  } else if (!TakeMachineCode(line)) {
    ++counts_.unknownLines;
  }
  Ok(line);
}

bool Controller::TakeMachineCode(const Waiting& line) {
  const Gcode& code = line.code;
  if (code.letter == 'G') {
    switch (code.number) {
      case 0:
      case 1:
        return true;  // sets the feed only
      case 20:
      case 21:
        state_.mmPerUnit = code.number == 20 ? kMmPerInch : 1;
        return true;
      case 90:
      case 91:
        state_.absolute = code.number == 90;
        return true;
      default:
        return false;
    }
  }
  switch (code.number) {
    case 17:
    case 18:
    case 84:
      state_.motorsOn = code.number == 17;
      return true;
    case 42:
    case 43:
      state_.spindleOn = code.number == 42;
      return true;
    case 44:
      state_.spindleLevel = static_cast<int>(
          std::clamp(code.Word('S').value_or(0), 0.0, static_cast<double>(kFullLevel)));
      return true;
    case 92:
    case 203: {
      // The hosts of this machine give M203 in mm/min.
      std::array<double, 3>& values = code.number == 92 ? state_.stepsPerMm : state_.maxMmPerMin;
      for (std::size_t axis = 0; axis < 3; ++axis) {
        const double value = code.Word(kAxisLetters[axis]).value_or(0);
        if (value > 0) values[axis] = value;
      }
      return true;
    }
    default:
      return false;
  }
}

void Controller::Ok(const Waiting& line) {
  // The board ends the reply to a G line and the reply to an M line differently.
  sink_.Reply(line.link, line.lineId, line.code.letter == 'G' ? "ok\n" : "ok\r\n");
}

std::string Controller::SwitchReport(TimeUs nowUs) const {
  const Vec3 at = PositionMm(nowUs);
  const int x = mechanics_.SwitchClosed(0, at) ? 1 : 0;
  const int y = mechanics_.SwitchClosed(1, at) ? 1 : 0;
  const int z = mechanics_.SwitchClosed(2, at) ? 1 : 0;
  char text[160];
  std::snprintf(text, sizeof text,
                "min_x:%d min_y:%d min_z:%d pins- (XL)P1.24:%d (YL)P1.26:%d (ZL)P1.28:%d "
                "Probe: %d\n",
                x, y, z, x, y, z, mechanics_.ProbeClosed(at) ? 1 : 0);
  return text;
}

std::string Controller::PositionReport(TimeUs nowUs) const {
  Vec3 at = PositionMm(nowUs);
  for (double& value : at) value /= state_.mmPerUnit;
  char text[160];
  std::snprintf(text, sizeof text, "ok C: X:%.4f Y:%.4f Z:%.4f\n", at[0], at[1], at[2]);
  return text;
}

}  // namespace k7sim
