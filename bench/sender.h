// What the programs that ./k7 bench wire times have in common: the lines that they send and the
// commands that they take.
#pragma once

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace k7bench {

// What a sender is asked to do.
class Sender {
 public:
  virtual ~Sender() = default;
  // A job of `lines` moves; returns when the last has ended. False: a move was refused.
  virtual bool Run(int lines, int pauseMs) = 0;
};

// Where the moves go, in inches: far enough out that X and Y take three digits before the point in
// millimetres, and never twice the same, so that each line names both.
inline float PlaceX(int i) {
  return 4.0f + static_cast<float>(i * 37 % 1000) / 125.0f;
}
inline float PlaceY(int i) {
  return 4.0f + static_cast<float>(i * 59 % 1000) / 125.0f;
}

// One command a line on standard input: "run N", "pace N" (one line a second), "quit". The answer
// "done" comes when the machine stands still again. Returns the exit code.
inline int ObeyCommands(Sender& sender) {
  const auto say = [](const char* text) {
    std::printf("%s\n", text);
    std::fflush(stdout);
  };
  say("ready");
  char line[64];
  while (std::fgets(line, sizeof line, stdin) != nullptr) {
    if (std::strncmp(line, "quit", 4) == 0) break;
    const bool pace = std::strncmp(line, "pace ", 5) == 0;
    if (!pace && std::strncmp(line, "run ", 4) != 0) continue;
    const int lines = std::atoi(std::strchr(line, ' '));
    say(sender.Run(lines, pace ? 1000 : 0) ? "done" : "failed");
  }
  return 0;
}

}  // namespace k7bench
