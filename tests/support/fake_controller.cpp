#include "support/fake_controller.h"

#include "support/wait_until.h"

namespace k7test {

FakeController::FakeController(std::uint32_t linkType, int bufferBytes)
    : ends_(linkType, bufferBytes) {
  thread_ = std::thread{[this] { Run(); }};
}

FakeController::FakeController(LinkEnds::Listens listens) : ends_(listens) {
  thread_ = std::thread{[this] { Run(); }};
}

FakeController::~FakeController() {
  HangUp();
  CloseHandle(stop_);
  CloseHandle(pause_);
  CloseHandle(resume_);
}

void FakeController::HangUp() {
  SetEvent(stop_);
  if (thread_.joinable()) thread_.join();
  ends_.CloseControllerEnd();
}

void FakeController::StopReading() {
  ResetEvent(resume_);
  SetEvent(pause_);
}

void FakeController::ResumeReading() {
  ResetEvent(pause_);
  SetEvent(resume_);
}

void FakeController::Answer(const std::string& line, const std::string& reply) {
  const std::lock_guard lock{guard_};
  answers_[line] = reply;
}

void FakeController::OnPrefix(const std::string& prefix, Handler handler) {
  const std::lock_guard lock{guard_};
  prefixes_[prefix] = std::move(handler);
}

void FakeController::BehaveWell(const std::string& controllerId) {
  Answer("SmoothieIsConnected\n", "SmoothieIsConnected\r\n");
  Answer("TableIsHomed\n", "TableIsHomedTRUE\r\n");
  Answer("config-get sd controller_id\n", "sd: controller_id is set to " + controllerId + "\r\n");
  Answer("M119\n", "min_x:0 min_y:0 min_z:0 pins: Probe: 0\r\n");
  OnPrefix("SendBlockMessagesOn\n", [](FakeController& fake, const std::string&) {
    fake.blockMessages_ = true;
    fake.Say("SendBlockMessagesOn\r\n");
  });
  OnPrefix("SendBlockMessagesOff\n", [](FakeController& fake, const std::string&) {
    fake.blockMessages_ = false;
    fake.Say("SendBlockMessagesOff\r\n");
  });
  OnPrefix("G0 ", [](FakeController& fake, const std::string& line) {
    const bool moves = line.find_first_of("XYZ") != std::string::npos;
    if (moves && fake.blockMessages_ && fake.answerMoves_) fake.Say("QX\r\nBX\r\nEX\r\n");
  });
  AnswerMoves(true);
}

void FakeController::Say(const std::string& bytes) {
  if (bytes.empty()) return;
  const std::lock_guard lock{writeGuard_};
  Write(bytes, INFINITE);
}

void FakeController::Nudge() {
  Write("\n", 50);
}

// Gives up, taking back what it can, at the end of the time or of the fake.
void FakeController::Write(const std::string& bytes, DWORD waitMs) {
  const HANDLE file = ends_.ControllerEnd();
  OVERLAPPED block{};
  block.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  if (!WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), nullptr, &block) &&
      GetLastError() == ERROR_IO_PENDING) {
    const HANDLE events[] = {block.hEvent, stop_};
    if (WaitForMultipleObjects(2, events, FALSE, waitMs) != WAIT_OBJECT_0) {
      CancelIoEx(file, &block);
    }
    DWORD count = 0;
    GetOverlappedResult(file, &block, &count, TRUE);
  }
  CloseHandle(block.hEvent);
}

std::vector<std::string> FakeController::Lines() const {
  const std::lock_guard lock{guard_};
  return lines_;
}

DWORD FakeController::ReceivedAtMs(const std::string& line) const {
  const std::lock_guard lock{guard_};
  const auto found = receivedAtMs_.find(line);
  return found == receivedAtMs_.end() ? 0 : found->second;
}

std::string FakeController::Transcript() const {
  std::string all;
  for (const std::string& line : Lines()) all += line;
  return all;
}

void FakeController::Clear() {
  const std::lock_guard lock{guard_};
  lines_.clear();
}

bool FakeController::WaitForLine(const std::string& line) const {
  return WaitUntil([&] {
    for (const std::string& seen : Lines()) {
      if (seen == line) return true;
    }
    return false;
  });
}

bool FakeController::WaitForLines(std::size_t count) const {
  return WaitUntil([&] { return Lines().size() >= count; });
}

void FakeController::Run() {
  if (!ends_.Accept(stop_)) return;
  connected_ = true;
  Serve();
  closed_ = WaitForSingleObject(stop_, 0) != WAIT_OBJECT_0;
}

// Until it is stopped or the driver's end has gone.
void FakeController::Serve() {
  const HANDLE file = ends_.ControllerEnd();
  std::string pending;
  OVERLAPPED block{};
  block.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  const HANDLE turns[] = {stop_, resume_};
  while (WaitForMultipleObjects(2, turns, FALSE, INFINITE) != WAIT_OBJECT_0) {
    char buffer[4096];
    if (!ReadFile(file, buffer, sizeof buffer, nullptr, &block) &&
        GetLastError() != ERROR_IO_PENDING) {
      break;
    }
    const HANDLE ends[] = {block.hEvent, stop_, pause_};
    const bool done = WaitForMultipleObjects(3, ends, FALSE, INFINITE) == WAIT_OBJECT_0;
    if (!done) CancelIoEx(file, &block);
    DWORD count = 0;
    // What a cancelled read has brought all the same counts as well.
    if (!GetOverlappedResult(file, &block, &count, TRUE) && done) break;
    if (done && count == 0) break;
    pending.append(buffer, count);
    for (std::size_t end = 0; (end = pending.find('\n')) != std::string::npos;) {
      const std::string line = pending.substr(0, end + 1);
      pending.erase(0, end + 1);
      Handle(line);
    }
  }
  CloseHandle(block.hEvent);
}

// The line is recorded before it is answered, so that a test that has seen the answer's effect
// finds the line in the transcript.
void FakeController::Handle(const std::string& line) {
  std::string reply;
  Handler handler;
  {
    const std::lock_guard lock{guard_};
    lines_.push_back(line);
    receivedAtMs_.try_emplace(line, GetTickCount());
    if (const auto exact = answers_.find(line); exact != answers_.end()) {
      reply = exact->second;
    } else {
      std::size_t longest = 0;
      for (const auto& [prefix, candidate] : prefixes_) {
        if (prefix.size() >= longest && line.compare(0, prefix.size(), prefix) == 0) {
          longest = prefix.size();
          handler = candidate;
        }
      }
    }
  }
  if (handler) {
    handler(*this, line);
  } else {
    Say(reply);
  }
}

}  // namespace k7test
