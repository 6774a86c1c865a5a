// Reads that complete at once with no byte, as those of an idle serial port do.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "base/handles.h"
#include "link/link.h"
#include "link/link_io.h"
#include "support/wait_until.h"
#include "support/watchdog.h"

namespace k7 {
namespace {

using k7test::WaitUntil;
using k7test::Watchdog;

// A port on which a read finds what was brought before, and after an empty piece nothing: so does a
// pipe of messages that is read as bytes.
class PiecewisePort {
 public:
  PiecewisePort() {
    const std::wstring name =
        L"\\\\.\\pipe\\k7test-pieces-" + std::to_wstring(GetCurrentProcessId());
    farEnd_.Reset(CreateNamedPipeW(name.c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_MESSAGE, 1, 4096,
                                   4096, 0, nullptr));
    driverEnd_.Reset(CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                 OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr));
  }
  void Bring(const std::string& piece) {
    DWORD count = 0;
    WriteFile(farEnd_.Get(), piece.data(), static_cast<DWORD>(piece.size()), &count, nullptr);
  }
  void WaitUntilAllIsRead() { FlushFileBuffers(farEnd_.Get()); }
  HANDLE DriverEnd() const { return driverEnd_.Get(); }

 private:
  UniqueFile farEnd_, driverEnd_;
};

TEST(ReadAtOnce, OfNothingCompletesWithNoByte) {
  PiecewisePort port;
  port.Bring("");
  const LinkIo io{port.DriverEnd(), kLinkSerial};
  const UniqueHandle done{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  OVERLAPPED block{};
  block.hEvent = done.Get();
  char byte = '?';
  DWORD count = 99, flags = 0;
  ASSERT_EQ(io.StartRead(&byte, 1, block, flags), IoStart::Completed);
  EXPECT_TRUE(io.Finish(block, count, flags));
  EXPECT_EQ(count, 0u);
  EXPECT_EQ(byte, '?');
}

// On a real port the bytes of one line come apart.
TEST(ReadAtOnce, OfNothingInTheMiddleOfALineWaitsForTheRest) {
  Watchdog watchdog;
  PiecewisePort port;
  for (const char* piece : {"Smooth", "", "ieIsConnec", "", "ted\r\n"}) port.Bring(piece);
  DeviceState record;
  AttachLink(record, port.DriverEnd(), kLinkSerial, L"pieces");
  EXPECT_TRUE(WaitUntil([&] { return record.link.connected == 1; }));
  DetachLink(record, kLinkNone);
}

// The two halves of the first answer mean nothing, each by itself.
TEST(ReadAtOnce, OfNothingMakesALineOfTheFragmentBeforeItWhenTheRestDoesNotCome) {
  Watchdog watchdog;
  PiecewisePort port;
  port.Bring("SmoothieIs");
  port.Bring("");
  DeviceState record;
  AttachLink(record, port.DriverEnd(), kLinkSerial, L"pieces");
  port.WaitUntilAllIsRead();
  Sleep(200);  // ten times what a begun line waits for its next byte
  port.Bring("Connected\r\nTableIsHomedTRUE\r\n");
  EXPECT_TRUE(WaitUntil([&] { return record.position.tableHomed == 1; }));
  EXPECT_EQ(record.link.connected, 0);
  port.Bring("SmoothieIsConnected\r\n");
  EXPECT_TRUE(WaitUntil([&] { return record.link.connected == 1; }));
  DetachLink(record, kLinkNone);
}

}  // namespace
}  // namespace k7
