// A device that writes down what the host asks of it, in order, and answers as it is told. It moves
// nothing; progress is reported at once, from the caller's thread, unless it is held back.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "silent_engraver.h"

namespace k7test {

class RecordingEngraver : public SilentEngraver {
 public:
  // Called for every operation written down.
  virtual void Record(const std::string& entry) { log.push_back(entry); }

  // Answers, taken from the front; the last rule when empty: a line went out, unless the position
  // is the same.
  std::deque<std::uint32_t> moveAnswers;
  std::deque<std::uint32_t> engraveAnswers;
  std::deque<std::uint32_t> lowerAnswers;
  std::deque<bool> beginAnswers;
  bool connected = true;
  bool alive = true;  // and the link is there
  bool hasSpindle = false;
  bool airZ = false;
  bool holdReports = false;  // only "queued" is told
  std::uint32_t passCount = 1;
  float xStepsPerInch = 4000.0f;
  float yStepsPerInch = 4000.0f;
  std::uint32_t widthSteps = 100000;  // 25 in
  std::uint32_t heightSteps = 64000;  // 16 in
  std::vector<std::string> log;

  // "a b c" of everything written down.
  std::string Log() const {
    std::string text;
    for (const std::string& entry : log) text += (text.empty() ? "" : " ") + entry;
    return text;
  }

  bool BeginJob() noexcept override {
    Record("BeginJob");
    return Next(beginAnswers, true);
  }
  void EndJob() noexcept override { Record("EndJob"); }
  std::uint32_t MoveTo(std::uint32_t x, std::uint32_t y) noexcept override {
    Record("MoveTo" + Pair(x, y));
    return Moved(x, y, moveAnswers);
  }
  std::uint32_t MoveBeadToolTo(std::uint32_t x, std::uint32_t y) noexcept override {
    Record("MoveBeadToolTo" + Pair(x, y));
    return Moved(x, y, moveAnswers);
  }
  std::uint32_t EngraveTo(std::uint32_t x, std::uint32_t y) noexcept override {
    Record("EngraveTo" + Pair(x, y));
    return Moved(x, y, engraveAnswers);
  }
  std::uint32_t LowerCutter() noexcept override {
    Record("LowerCutter");
    const std::uint32_t status = Next(lowerAnswers, k7::kStatusSent);
    if (status == k7::kStatusSent) Report();
    return status;
  }
  void SetGridMode(std::uint32_t mode) noexcept override {
    Record("SetGridMode(" + std::to_string(mode) + ")");
  }
  void SetSpindle(std::uint32_t command) noexcept override {
    Record("SetSpindle(" + std::to_string(command) + ")");
  }
  std::uint32_t StartPass(std::uint32_t pass, std::uint32_t x, std::uint32_t y, wchar_t* status,
                          std::int32_t size) noexcept override {
    Record("StartPass(" + std::to_string(pass) + "," + std::to_string(x) + "," + std::to_string(y) +
           ")");
    const std::wstring text =
        L"Pass " + std::to_wstring(pass) + L" of " + std::to_wstring(passCount) + L" - 0.063";
    if (status != nullptr && size > static_cast<std::int32_t>(text.size())) {
      text.copy(status, text.size());
      status[text.size()] = L'\0';
    }
    return 0;
  }
  void SetNotifyCallback(k7::NotifyCallback callback, std::uint64_t context,
                         std::uint32_t msgQueued, std::uint32_t msgStarted,
                         std::uint32_t msgFinished) noexcept override {
    callback_ = callback;
    context_ = context;
    queued_ = msgQueued;
    started_ = msgStarted;
    finished_ = msgFinished;
  }
  std::uint8_t IsConnected() noexcept override { return connected ? 1 : 0; }
  std::int32_t CheckAlive() noexcept override { return alive ? 1 : 0; }
  std::uint8_t GetReaderAlive() noexcept override { return alive ? 1 : 0; }
  std::uint8_t HasSpindle() noexcept override { return hasSpindle ? 1 : 0; }
  std::int32_t IsAirZ() noexcept override { return airZ ? 1 : 0; }
  std::uint32_t GetPassCount() noexcept override { return passCount; }
  float GetXStepsPerUnit() noexcept override { return xStepsPerInch; }
  float GetYStepsPerUnit() noexcept override { return yStepsPerInch; }
  std::uint32_t GetTableWidthSteps() noexcept override { return widthSteps; }
  std::uint32_t GetTableHeightSteps() noexcept override { return heightSteps; }

 protected:
  template <typename T>
  static T Next(std::deque<T>& answers, T otherwise) {
    if (answers.empty()) return otherwise;
    const T answer = answers.front();
    answers.pop_front();
    return answer;
  }

  // Reports one move as queued, begun and carried out.
  void Report() const {
    if (callback_ == nullptr) return;
    callback_(queued_, context_);
    if (holdReports) return;
    callback_(started_, context_);
    callback_(finished_, context_);
  }

 private:
  static std::string Pair(std::uint32_t x, std::uint32_t y) {
    return "(" + std::to_string(x) + "," + std::to_string(y) + ")";
  }

  std::uint32_t Moved(std::uint32_t x, std::uint32_t y, std::deque<std::uint32_t>& answers) {
    const bool away = x != x_ || y != y_;
    const std::uint32_t status = Next(answers, away ? k7::kStatusSent : k7::kStatusNothing);
    if (status == k7::kStatusSent || status == k7::kStatusOneShot || status == k7::kStatusArmed) {
      x_ = x;
      y_ = y;
      if (away) Report();
    }
    return status;
  }

  k7::NotifyCallback callback_ = nullptr;
  std::uint64_t context_ = 0;
  std::uint32_t queued_ = 0;
  std::uint32_t started_ = 0;
  std::uint32_t finished_ = 0;
  std::uint32_t x_ = 0;
  std::uint32_t y_ = 0;
};

}  // namespace k7test
