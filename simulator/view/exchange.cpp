#include "view/exchange.h"

#include <sys/eventfd.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace k7sim {

Exchange::Exchange() : wake_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

void Exchange::Wake() const {
  const std::uint64_t one = 1;
  // A full counter is as readable as one that has been added to.
  [[maybe_unused]] const ssize_t written = write(wake_.Get(), &one, sizeof one);
}

void Exchange::ClearWake() {
  std::uint64_t count = 0;
  [[maybe_unused]] const ssize_t got = read(wake_.Get(), &count, sizeof count);
}

void Exchange::Publish(const std::string& state, const std::vector<Stroke>& strokes,
                       std::vector<WireLine> lines) {
  {
    const std::lock_guard lock(mutex_);
    if (state == state_ && strokes.size() == strokes_.size() && lines.empty()) return;
    if (state != state_) {
      state_ = state;
      ++stateNumber_;
    }
    strokes_.insert(strokes_.end(), strokes.begin() + static_cast<std::ptrdiff_t>(strokes_.size()),
                    strokes.end());
    std::move(lines.begin(), lines.end(), std::back_inserter(lines_));
    while (lines_.size() > kKeptLines) lines_.pop_front();
  }
  changed_.notify_all();
}

void Exchange::End() {
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    endedAt_ = std::chrono::steady_clock::now();
  }
  changed_.notify_all();
}

std::shared_ptr<ViewCommand> Exchange::TakeCommand() {
  const std::lock_guard lock(mutex_);
  if (commands_.empty()) return nullptr;
  std::shared_ptr<ViewCommand> command = std::move(commands_.front());
  commands_.pop_front();
  return command;
}

void Exchange::Answer(ViewCommand& command, bool good, std::string message) {
  {
    const std::lock_guard lock(mutex_);
    command.answered = true;
    command.good = good;
    command.message = std::move(message);
  }
  changed_.notify_all();
}

bool Exchange::Join() {
  if (++browsers_ > kMostBrowsers) {
    --browsers_;
    return false;
  }
  Wake();
  return true;
}

void Exchange::Leave() {
  --browsers_;
}

bool Exchange::HasNews(const ViewPlace& place) const {
  return ended_ || place.state < stateNumber_ || place.strokes < strokes_.size() ||
         (!lines_.empty() && place.lines < lines_.back().number);
}

ViewFrame Exchange::Wait(ViewPlace& place, std::chrono::milliseconds time) {
  ViewFrame frame;
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, time, [&] { return HasNews(place); });
  if (place.state < stateNumber_) frame.state = state_;
  place.state = stateNumber_;
  const std::size_t count = std::min(strokes_.size() - place.strokes, kFrameStrokes);
  const auto first = strokes_.begin() + static_cast<std::ptrdiff_t>(place.strokes);
  frame.strokes.assign(first, first + static_cast<std::ptrdiff_t>(count));
  place.strokes += count;
  for (const WireLine& line : lines_) {
    if (line.number <= place.lines) continue;
    // To one that has just come, the lines from before are not news.
    if (frame.lines.empty() && place.lines > 0) {
      frame.linesPassedOver = line.number - place.lines - 1;
    }
    frame.lines.push_back(line);
  }
  if (!lines_.empty()) place.lines = lines_.back().number;
  constexpr std::chrono::seconds kPatience{1};  // with one that lags behind
  frame.ended = ended_ && (place.strokes == strokes_.size() ||
                           std::chrono::steady_clock::now() > endedAt_ + kPatience);
  return frame;
}

AskResult Exchange::Ask(ViewCommand& command) {
  const auto shared = std::make_shared<ViewCommand>(command);
  std::unique_lock lock(mutex_);
  if (ended_) return AskResult::Ended;
  if (commands_.size() >= kMostCommands) return AskResult::Busy;
  commands_.push_back(shared);
  Wake();
  changed_.wait(lock, [&] { return shared->answered || ended_; });
  command = *shared;
  return command.answered ? AskResult::Answered : AskResult::Ended;
}

}  // namespace k7sim
