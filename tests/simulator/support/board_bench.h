// A board without links: lines go in, replies come out in order, and time passes as a test says.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "board/controller.h"

namespace k7test {

struct Bench : k7sim::ReplySink {
  explicit Bench(const k7sim::MachineSetup& setup = {}) : board(setup, config, *this) {}

  void Reply(int, std::uint64_t, std::string_view text) override {
    replies.emplace_back(text);
    times.push_back(now);
  }

  // Gives the board one line now. The result is what it replies at once.
  std::vector<std::string> Send(std::string_view line) {
    replies.clear();
    times.clear();
    board.TakeLine(line, ++lines, 0, now);
    return replies;
  }

  // Lets time pass from event to event, so that `times` are exact. The result is the replies.
  std::vector<std::string> PassUntil(k7sim::TimeUs until) {
    replies.clear();
    times.clear();
    for (k7sim::TimeUs due = board.NextEvent(); due <= until; due = board.NextEvent()) {
      now = due;
      board.Advance(due);
    }
    now = until;
    board.Advance(until);
    return replies;
  }
  std::vector<std::string> PassSeconds(double seconds) {
    return PassUntil(now + k7sim::UsFromSeconds(seconds));
  }
  // Lets time pass until the machine rests.
  std::vector<std::string> PassAll() {
    replies.clear();
    times.clear();
    while (board.NextEvent() != k7sim::kNever) {
      now = board.NextEvent();
      board.Advance(now);
    }
    return replies;
  }

  k7sim::ConfigStore config;
  k7sim::Controller board;
  k7sim::TimeUs now = 0;
  std::uint64_t lines = 0;
  std::vector<std::string> replies;
  std::vector<k7sim::TimeUs> times;
};

using Lines = std::vector<std::string>;

}  // namespace k7test
