// What the board does with lines of words, which are not G-code.
#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

#include "board/controller.h"

namespace k7sim {
namespace {

constexpr std::string_view kIdentityKey = "controller_id";
constexpr std::size_t kWordLimit = 64;
constexpr std::string_view kNoIdentity = "0000000000000000";

// The first four words of a line. Each is cut, so that a reply with three of them stays below the
// 256 bytes that a host may have room for.
std::array<std::string_view, 4> Words(std::string_view line) {
  std::array<std::string_view, 4> words;
  std::size_t at = 0;
  for (std::string_view& word : words) {
    at = line.find_first_not_of(' ', at);
    if (at == std::string_view::npos) break;
    const std::size_t end = std::min(line.find(' ', at), line.size());
    word = line.substr(at, std::min(end - at, kWordLimit));
    at = end;
  }
  return words;
}

}  // namespace

void Controller::TakeWords(std::string_view line, std::uint64_t lineId, int link, TimeUs nowUs) {
  const std::string_view word = Words(line)[0];
  if (word.empty()) return;
  const auto answer = [&](std::string_view text) { sink_.Reply(link, lineId, text); };
  if (word == "SmoothieIsConnected") {
    answer("SmoothieIsConnected\r\n");
  } else if (word == "TableIsHomed") {
    answer(state_.homed ? "TableIsHomedTRUE\r\n" : "TableIsHomedFALSE\r\n");
  } else if (word == "SetTableHomed") {
    state_.homed = true;
  } else if (word == "SendBlockMessagesOn") {
    state_.blockMessages = true;
    jobs_.Begin(state_.outputOnUs != kNever ? state_.outputOnUs : nowUs);
    state_.outputOnUs = kNever;
    answer("SendBlockMessagesOn\r\n");
  } else if (word == "SendBlockMessagesOff") {
    state_.blockMessages = false;
    jobs_.End();
    answer("SendBlockMessagesOff\r\n");
  } else if (word == "config-get" || word == "config-set") {
    TakeConfigLine(line, lineId, link);
  } else if (word == "version") {
    answer("Build version: k7sim, Build date: none, MCU: simulated, System Clock: 120MHz\r\n");
  } else {
    ++counts_.unknownLines;
    answer("error:Unsupported command - " + std::string(word) + "\r\n");
  }
}

void Controller::TakeConfigLine(std::string_view line, std::uint64_t lineId, int link) {
  const auto words = Words(line);
  const bool set = words[0] == "config-set";
  // The source is optional in config-get.
  const bool sourced = set || !words[2].empty();
  const std::string source(sourced ? words[1] : "cached");
  const std::string key(sourced ? words[2] : words[1]);
  std::string answer;
  if (key.empty() || (set && words[3].empty())) {
    answer = set ? "Usage: config-set source setting value\r\n"
                 : "Usage: config-get [source] setting\r\n";
  } else {
    if (set) config_.Set(key, words[3]);
    auto value = config_.Get(key);
    if (!value && key == kIdentityKey) value = kNoIdentity;
    answer = value ? source + ": " + key + " is set to " + *value + "\r\n"
                   : source + ": " + key + " is not in config\r\n";
  }
  sink_.Reply(link, lineId, answer);
}

void Controller::TakeDollarLine(std::string_view line, std::uint64_t lineId, int link,
                                TimeUs nowUs) {
  const auto answer = [&](const std::string& text) { sink_.Reply(link, lineId, text); };
  const std::string_view word = Words(line)[0];
  if (word == "$X") {
    state_.halted = false;
    answer("[Caution: Unlocked]\n");
  } else if (word == "$G") {
    char text[120];
    const int plane = state_.plane == kPlaneXy ? 17 : state_.plane == kPlaneZx ? 18 : 19;
    std::snprintf(text, sizeof text, "[GC:G%d G%zu G%d G%d G%d G94 M0 M%d M9 T0 F%.4f S%d]\n",
                  state_.motion, 54 + state_.work, plane, state_.mmPerUnit == 1 ? 21 : 20,
                  state_.absolute ? 90 : 91, state_.spindleOn ? 3 : 5,
                  state_.feedMmPerMin / state_.mmPerUnit, state_.spindleLevel);
    answer(text);
  } else if (word == "$#") {
    for (std::size_t i = 0; i < state_.workOffsetsMm.size(); ++i) {
      const Vec3& offset = state_.workOffsetsMm[i];
      char text[120];
      std::snprintf(text, sizeof text, "[G%zu:%.4f,%.4f,%.4f]\n", 54 + i, offset[0], offset[1],
                    offset[2]);
      answer(text);
    }
  } else if (word == "$H") {
    TakeGcodeLine("G28 Z0 G28 Y0 G28 X0", lineId, link, nowUs);
    return;
  } else {
    ++counts_.unknownLines;
    answer("error:Unsupported command - " + std::string(word) + "\r\n");
    return;
  }
  answer("ok\n");
}

}  // namespace k7sim
