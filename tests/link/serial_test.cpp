#include "link/serial.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace k7 {
namespace {

TEST(OpenSerialPort, APortThatIsNotThereIsEmpty) {
  EXPECT_FALSE(OpenSerialPort(L"\\\\.\\k7test no such port"));
}

// A pipe stands in for a port whose driver takes no settings.
TEST(OpenSerialPort, APortThatRefusesItsSettingsIsOpenAllTheSameAndForOverlappedUse) {
  const std::wstring name = L"\\\\.\\pipe\\k7test-serial-" + std::to_wstring(GetCurrentProcessId());
  const UniqueFile farEnd{CreateNamedPipeW(name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED,
                                           PIPE_TYPE_BYTE, 1, 512, 512, 0, nullptr)};
  ASSERT_TRUE(farEnd);
  const UniqueFile port = OpenSerialPort(name.c_str());
  ASSERT_TRUE(port);

  char byte = 0;
  const UniqueHandle done{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  OVERLAPPED block{};
  block.hEvent = done.Get();
  EXPECT_FALSE(ReadFile(port.Get(), &byte, 1, nullptr, &block));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_IO_PENDING));
  CancelIoEx(port.Get(), &block);
  DWORD count = 0;
  GetOverlappedResult(port.Get(), &block, &count, TRUE);
}

// A file stands in, since Wine shares a terminal with root whatever it was asked.
TEST(OpenSerialPort, KeepsThePortToItself) {
  wchar_t folder[MAX_PATH], path[MAX_PATH];
  ASSERT_NE(GetTempPathW(MAX_PATH, folder), 0u);
  ASSERT_NE(GetTempFileNameW(folder, L"k7p", 0, path), 0u);
  {
    const UniqueFile port = OpenSerialPort(path);
    ASSERT_TRUE(port);
    EXPECT_FALSE(OpenSerialPort(path));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SHARING_VIOLATION));
  }
  EXPECT_TRUE(OpenSerialPort(path));
  EXPECT_TRUE(DeleteFileW(path));
}

}  // namespace
}  // namespace k7
