#include "device/polling.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace k7 {
namespace {

LRESULT CALLBACK CountingProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_APP) {
    ++*reinterpret_cast<std::atomic<int>*>(wParam);
    return 1;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

HWND MakeWindow() {
  const HWND window = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                      GetModuleHandleW(nullptr), nullptr);
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CountingProcedure));
  return window;
}

// A reader that notifies by SendMessageW must not dead-lock with a host whose window lives on the
// thread that waits inside the driver.
TEST(PollUntil, LetsSentMessagesThroughAndLeavesPostedOnesQueued) {
  for (const std::uint32_t everyMs : {0u, 10u}) {
    const HWND window = MakeWindow();
    std::atomic<int> seen{0};
    std::atomic<bool> answered{false};
    PostMessageW(window, WM_APP + 1, 7, 0);
    std::thread sender{
        [&] { answered = SendMessageW(window, WM_APP, reinterpret_cast<WPARAM>(&seen), 0) == 1; }};
    PollUntil(everyMs, [&] { return answered.load(); });
    sender.join();
    EXPECT_EQ(seen, 1);
    MSG posted;
    EXPECT_TRUE(PeekMessageW(&posted, window, WM_APP + 1, WM_APP + 1, PM_REMOVE));
    DestroyWindow(window);
  }
}

TEST(Pause, LetsSentMessagesThroughAndLastsItsTime) {
  const HWND window = MakeWindow();
  std::atomic<int> seen{0};
  std::thread sender{[&] { SendMessageW(window, WM_APP, reinterpret_cast<WPARAM>(&seen), 0); }};
  const std::uint32_t start = TickMs();
  Pause(200);
  EXPECT_GE(TickMs() - start, 200u);
  sender.join();
  EXPECT_EQ(seen, 1);
  DestroyWindow(window);
}

TEST(ReadLocked, AnswersTheOtherValueWhenThereIsNoMutex) {
  DeviceState record;
  record.linesInFlight = 5;
  EXPECT_EQ(LinesInFlight(record), 0);
  EXPECT_EQ(BlocksRunning(record), 0);
  EXPECT_EQ(JobOpen(record), 0);
}

TEST(ClearAliveTicks, ClearsThemEvenWithoutTheMutex) {
  DeviceState record;
  record.lastCheckTick = 1;
  record.lastAnswerTick = 2;
  ClearAliveTicks(record);
  EXPECT_EQ(record.lastCheckTick, 0u);
  EXPECT_EQ(record.lastAnswerTick, 0u);
}

TEST(RecordLock, CountsAnAbandonedMutexAsHeldAndReleasesIt) {
  DeviceState record;
  const HANDLE mutex = CreateMutexW(nullptr, FALSE, nullptr);
  record.mutexes[flightMutex] = mutex;
  record.linesInFlight = 3;
  std::thread{[&] { WaitForSingleObject(mutex, INFINITE); }}.join();
  {
    const RecordLock<flightMutex> lock{record};
    EXPECT_TRUE(static_cast<bool>(lock));
    EXPECT_TRUE(lock.WasAbandoned());
  }
  bool free = false;
  std::thread{[&] {
    free = WaitForSingleObject(mutex, 0) == WAIT_OBJECT_0;
    if (free) ReleaseMutex(mutex);
  }}.join();
  EXPECT_TRUE(free);
  CloseHandle(mutex);
}

}  // namespace
}  // namespace k7
