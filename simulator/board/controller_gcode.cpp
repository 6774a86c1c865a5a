// What the board does with each G and M line.
#include <algorithm>
#include <cstdio>

#include "board/controller.h"

namespace k7sim {
namespace {

// True for commands that are carried out in order with the moves. All others are carried out as
// soon as they arrive.
bool GoesInOrder(const Gcode& code) {
  if (code.subcode != 0) return false;
  if (code.letter == 'G') {
    switch (code.number) {
      case 2:
      case 3:
        if (code.Has('I') || code.Has('J') || code.Has('K')) return true;
        [[fallthrough]];
      case 0:
      case 1:
        return code.Has('X') || code.Has('Y') || code.Has('Z');
      case 4:
      case 10:
      case 54:
      case 55:
      case 56:
      case 57:
      case 58:
      case 59:
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

void Controller::TakeGcodeLine(std::string_view line, std::uint64_t lineId, int link,
                               TimeUs nowUs) {
  ++counts_.gcodeLines;
  Waiting waiting;
  waiting.lineId = lineId;
  waiting.link = link;
  waiting.text = line;
  waiting.bytes = line.size() + 1;
  const NumberedLine numbered = TakeLineNumber(line);
  const std::vector<Gcode> codes = ParseGcodeLine(numbered.rest, state_.motion);
  const bool restart = !codes.empty() && codes.front().Is('M', 110);
  if (restart && numbered.intact) {
    const double fallback = static_cast<double>(numbered.number.value_or(0));
    state_.lineNumber = static_cast<long>(codes.front().Word('N').value_or(fallback));
  } else if (numbered.number && !TakeNumber(numbered, lineId, link)) {
    return;
  }
  // One ok a line: it comes when the last of its moves is taken, else with its last command.
  std::size_t answering = codes.empty() ? 0 : codes.size() - 1;
  for (std::size_t i = 0; i < codes.size(); ++i) {
    if (GoesInOrder(codes[i])) answering = i;
  }
  for (std::size_t i = 0; i < codes.size(); ++i) {
    waiting.answers = i == answering;
    waiting.machine = waiting.machine || codes[i].Is('G', 53);
    TakeGcode(codes[i], waiting, nowUs);
    waiting.bytes = 0;  // the bytes of a line are counted once
  }
  if (codes.empty()) Ok(waiting);
}

bool Controller::TakeNumber(const NumberedLine& line, std::uint64_t lineId, int link) {
  if (line.intact && *line.number == state_.lineNumber + 1) {
    state_.lineNumber = *line.number;
    return true;
  }
  ++counts_.resends;
  sink_.Reply(link, lineId, "rs N" + std::to_string(state_.lineNumber + 1) + "\r\n");
  return false;
}

void Controller::TakeGcode(const Gcode& code, Waiting line, TimeUs nowUs) {
  line.code = code;
  if (code.Is('M', 999)) {
    state_.halted = false;
    Ok(line);
    return;
  }
  if (state_.halted) {
    if (!line.answers) return;
    ++counts_.refusedLines;
    sink_.Reply(line.link, line.lineId, "!!\r\n");
    return;
  }
  if (code.Is('M', 112)) {
    Halt(nowUs);
    return;
  }
  if (code.IsMotion()) {
    state_.motion = code.number;
    double& modal = code.number == 0 ? state_.seekMmPerMin : state_.feedMmPerMin;
    const double wanted = code.Word('F').value_or(0) * state_.mmPerUnit;
    if (wanted > 0) modal = wanted;
    line.feedMmPerMin = modal;
  }
  if (GoesInOrder(code)) {
    line.mmPerUnit = state_.mmPerUnit;
    line.absolute = state_.absolute;
    line.plane = state_.plane;
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
  } else if (code.Is('M', 105)) {
    // A board without heaters; senders ask in order to see that somebody is there.
    sink_.Reply(line.link, line.lineId, "ok T:0.0 /0.0 @0\n");
    return;
  } else if (code.Is('M', 115)) {
    sink_.Reply(line.link, line.lineId,
                "FIRMWARE_NAME:k7sim, FIRMWARE_VERSION:" K7_VERSION ", X-AXES:3\n");
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
  if (code.subcode != 0) return false;
  if (code.letter == 'G') {
    switch (code.number) {
      case 0:
      case 1:
      case 2:
      case 3:
        return true;  // sets the feed only
      case 17:
        state_.plane = kPlaneXy;
        return true;
      case 18:
        state_.plane = kPlaneZx;
        return true;
      case 19:
        state_.plane = kPlaneYz;
        return true;
      case 53:
      case 94:
        return true;
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
    case 3:
    case 4:
    case 5:
      state_.spindleOn = code.number != 5;
      return true;
    case 42:
    case 43:
      state_.spindleOn = code.number == 42;
      return true;
    case 110:
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
  if (!line.answers) return;
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
  Vec3 at = PositionMm(nowUs) - WorkOffset();
  for (double& value : at) value /= state_.mmPerUnit;
  char text[160];
  std::snprintf(text, sizeof text, "ok C: X:%.4f Y:%.4f Z:%.4f\n", at[0], at[1], at[2]);
  return text;
}

std::string Controller::StatusReport(TimeUs nowUs) const {
  const bool homing = action_.active && action_.line.code.Is('G', 28);
  const char* name = state_.halted       ? "Alarm"
                     : planner_.IsHeld() ? "Hold"
                     : homing            ? "Home"
                     : IsIdle()          ? "Idle"
                                         : "Run";
  const Vec3 machine = PositionMm(nowUs);
  const Vec3 work = machine - WorkOffset();
  const double unit = state_.mmPerUnit;
  char current[32] = "";
  if (name[0] == 'R' || homing) {
    std::snprintf(current, sizeof current, "%.1f,", planner_.FeedMmPerSec() * 60 / unit);
  }
  char text[240];
  std::snprintf(text, sizeof text, "<%s|MPos:%.4f,%.4f,%.4f|WPos:%.4f,%.4f,%.4f|F:%s%.1f,100.0>\n",
                name, machine[0] / unit, machine[1] / unit, machine[2] / unit, work[0] / unit,
                work[1] / unit, work[2] / unit, current, state_.feedMmPerMin / unit);
  return text;
}

}  // namespace k7sim
