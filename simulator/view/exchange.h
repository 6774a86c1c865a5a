// What passes between the simulator's loop and the threads that serve browsers. The loop alone
// touches the simulator: it leaves copies here, and takes the commands of browsers from here.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "common/clock.h"
#include "machine/recorder.h"
#include "wire/unique_fd.h"

namespace k7sim {

// One line of the transcript.
struct WireLine {
  std::uint64_t number = 0;  // from 1
  TimeUs machineUs = 0;
  char mark = ' ';   // as the transcript has it
  std::string link;  // name of the link when there are several
  std::string text;
};

// How far a browser has been told. Each has its own place in what all of them share, so that a slow
// one costs no memory.
struct ViewPlace {
  std::uint64_t state = 0;  // number of the last state
  std::size_t strokes = 0;  // how many
  std::uint64_t lines = 0;  // number of the last line
};

// What a browser has not been told yet.
struct ViewFrame {
  std::string state;  // JSON; empty: as before
  std::vector<Stroke> strokes;
  std::vector<WireLine> lines;
  std::uint64_t linesPassedOver = 0;  // that are no longer kept, before `lines`
  bool ended = false;                 // the simulator has ended, and this is the last frame

  bool IsEmpty() const { return state.empty() && strokes.empty() && lines.empty() && !ended; }
};

// A command of a browser on its way to the loop and back.
struct ViewCommand {
  std::string line;
  bool answered = false;
  bool good = false;
  std::string message;
};

enum class AskResult { Answered, Busy, Ended };

class Exchange {
 public:
  static constexpr std::size_t kMostBrowsers = 5;  // a browser itself holds six connections at most
  static constexpr std::size_t kMostCommands = 16;  // that wait
  static constexpr std::size_t kKeptLines = 400;
  static constexpr std::size_t kFrameStrokes = 4000;  // most strokes in one frame

  Exchange();

  // Loop: becomes readable when a browser has come or has sent a command.
  int WakeFd() const { return wake_.Get(); }
  void ClearWake();
  // Loop: false while nobody looks, and nothing needs to be published.
  bool HasBrowsers() const { return browsers_ > 0; }
  // Loop: what the machine is now, as JSON; all strokes so far; the lines since the last call.
  void Publish(const std::string& state, const std::vector<Stroke>& strokes,
               std::vector<WireLine> lines);
  // Loop: nothing more comes, and no command is taken any more.
  void End();
  // Loop: the next command, or null. Each must be answered.
  std::shared_ptr<ViewCommand> TakeCommand();
  void Answer(ViewCommand& command, bool good, std::string message);

  // Browser threads: false when there are too many browsers already. One that has joined leaves.
  bool Join();
  void Leave();
  // Waits until there is something new or the time has passed, and takes it. The frame is empty
  // when there is nothing.
  ViewFrame Wait(ViewPlace& place, std::chrono::milliseconds time);
  // Gives a command to the loop and waits for its answer. The loop never waits for anything long.
  AskResult Ask(ViewCommand& command);

 private:
  void Wake() const;
  bool HasNews(const ViewPlace& place) const;

  UniqueFd wake_;
  std::atomic<std::size_t> browsers_ = 0;
  std::mutex mutex_;  // guards all below
  std::condition_variable changed_;
  bool ended_ = false;
  std::chrono::steady_clock::time_point endedAt_;
  std::uint64_t stateNumber_ = 0;
  std::string state_;
  std::vector<Stroke> strokes_;
  std::deque<WireLine> lines_;  // the last kKeptLines
  std::deque<std::shared_ptr<ViewCommand>> commands_;
};

}  // namespace k7sim
