#include "support/fake_controller.h"

#include <cstdio>
#include <cstdlib>

#include "support/wait_until.h"

namespace k7test {

namespace {

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "FakeController: %s failed, error %lu\n", what, GetLastError());
  std::abort();
}

// Waits for an overlapped operation; cancelled when `stop` is signalled (may be null).
bool Finish(HANDLE file, OVERLAPPED& block, HANDLE stop, DWORD& count) {
  HANDLE events[2] = {block.hEvent, stop};
  const DWORD which = WaitForMultipleObjects(stop == nullptr ? 1 : 2, events, FALSE, INFINITE);
  if (which != WAIT_OBJECT_0) CancelIoEx(file, &block);
  return GetOverlappedResult(file, &block, &count, TRUE) && which == WAIT_OBJECT_0;
}

}  // namespace

FakeController::FakeController() {
  static std::atomic<int> serial{0};
  const std::wstring name = L"\\\\.\\pipe\\k7test-" + std::to_wstring(GetCurrentProcessId()) +
                            L"-" + std::to_wstring(++serial);
  controller_ = CreateNamedPipeW(name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED,
                                 PIPE_TYPE_BYTE | PIPE_WAIT, 1, 65536, 65536, 0, nullptr);
  if (controller_ == INVALID_HANDLE_VALUE) Fail("CreateNamedPipe");
  driver_ = CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                        FILE_FLAG_OVERLAPPED, nullptr);
  if (driver_ == INVALID_HANDLE_VALUE) Fail("CreateFile");
  stop_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  thread_ = std::thread{[this] { Run(); }};
}

FakeController::~FakeController() {
  SetEvent(stop_);
  thread_.join();
  CloseHandle(driver_);
  CloseHandle(controller_);
  CloseHandle(stop_);
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
  OVERLAPPED block{};
  block.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  DWORD count = 0;
  if (!WriteFile(controller_, bytes.data(), static_cast<DWORD>(bytes.size()), nullptr, &block) &&
      GetLastError() == ERROR_IO_PENDING) {
    Finish(controller_, block, stop_, count);
  }
  CloseHandle(block.hEvent);
}

void FakeController::Nudge() {
  OVERLAPPED block{};
  block.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  DWORD count = 0;
  if (!WriteFile(controller_, "\n", 1, nullptr, &block) && GetLastError() == ERROR_IO_PENDING) {
    if (WaitForSingleObject(block.hEvent, 50) != WAIT_OBJECT_0) CancelIoEx(controller_, &block);
    GetOverlappedResult(controller_, &block, &count, TRUE);
  }
  CloseHandle(block.hEvent);
}

std::vector<std::string> FakeController::Lines() const {
  const std::lock_guard lock{guard_};
  return lines_;
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
  std::string pending;
  OVERLAPPED block{};
  block.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  for (;;) {
    char buffer[4096];
    DWORD count = 0;
    ResetEvent(block.hEvent);
    if (!ReadFile(controller_, buffer, sizeof buffer, nullptr, &block) &&
        GetLastError() != ERROR_IO_PENDING) {
      break;
    }
    if (!Finish(controller_, block, stop_, count)) break;
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
