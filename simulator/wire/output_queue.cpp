#include "wire/output_queue.h"

#include <algorithm>

namespace k7sim {

void OutputQueue::Put(std::string_view text, TimeUs notBeforeUs) {
  pieces_.push_back({std::string(text), notBeforeUs});
}

void OutputQueue::PutLater(std::string_view text, TimeUs atUs) {
  later_.emplace(atUs, std::string(text));
}

std::string_view OutputQueue::Ready(TimeUs nowUs) {
  while (!later_.empty() && later_.begin()->first <= nowUs) {
    Put(later_.begin()->second);
    later_.erase(later_.begin());
  }
  if (ready_.empty()) stalledUs_ = nowUs;
  while (!pieces_.empty() && pieces_.front().notBeforeUs <= nowUs) {
    std::string& text = pieces_.front().text;
    const std::size_t through = pacer_.Take(text.size(), nowUs);
    ready_.append(text, 0, through);
    text.erase(0, through);
    if (!text.empty()) break;
    pieces_.pop_front();
  }
  if (dropAfterUs_ != kNever && !ready_.empty() && nowUs - stalledUs_ >= dropAfterUs_) {
    droppedBytes_ += ready_.size();
    ready_.clear();
  }
  return ready_;
}

void OutputQueue::Sent(std::size_t bytes, TimeUs nowUs) {
  ready_.erase(0, bytes);
  if (bytes > 0) stalledUs_ = nowUs;
}

TimeUs OutputQueue::NextDue(TimeUs nowUs) const {
  TimeUs due = later_.empty() ? kNever : later_.begin()->first;
  if (!pieces_.empty()) {
    const TimeUs held = pieces_.front().notBeforeUs;
    due = std::min(due, held > nowUs ? held : pacer_.NextByte(nowUs));
  }
  if (!ready_.empty() && dropAfterUs_ != kNever) due = std::min(due, stalledUs_ + dropAfterUs_);
  return due;
}

void OutputQueue::Clear() {
  later_.clear();
  pieces_.clear();
  ready_.clear();
}

}  // namespace k7sim
