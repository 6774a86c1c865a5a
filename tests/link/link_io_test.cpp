#include "link/link_io.h"

#include <gtest/gtest.h>

#include "base/handles.h"
#include "support/both_links.h"
#include "support/fake_controller.h"
#include "support/watchdog.h"

namespace k7 {
namespace {

using k7test::FakeController;
using k7test::Watchdog;

// One operation's block, with an event of its own.
struct Operation {
  Operation() { block.hEvent = done.Get(); }

  UniqueHandle done{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  OVERLAPPED block{};
  DWORD count = 0, flags = 0;
};

class Io : public testing::TestWithParam<std::uint32_t> {
 protected:
  Watchdog watchdog_;
  FakeController controller_{GetParam()};
  LinkIo io_{controller_.DriverEnd(), GetParam()};
};

INSTANTIATE_TEST_SUITE_P(, Io, k7test::kBothLinks, k7test::LinkName);

TEST_P(Io, AReadIsOutstandingUntilItsByteComes) {
  Operation read;
  char byte = '?';
  ASSERT_EQ(io_.StartRead(&byte, 1, read.block, read.flags), IoStart::Pending);
  EXPECT_FALSE(io_.Finish(read.block, read.count, read.flags));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_IO_INCOMPLETE));
  controller_.Say("a");
  ASSERT_EQ(WaitForSingleObject(read.done.Get(), INFINITE), WAIT_OBJECT_0);
  EXPECT_TRUE(io_.Finish(read.block, read.count, read.flags));
  EXPECT_EQ(read.count, 1u);
  EXPECT_EQ(byte, 'a');
}

// Afterwards block and byte are the caller's again, and what comes is for the next read.
TEST_P(Io, AnOutstandingReadCanBeTakenBack) {
  Operation first;
  char firstByte = '?';
  ASSERT_EQ(io_.StartRead(&firstByte, 1, first.block, first.flags), IoStart::Pending);
  EXPECT_TRUE(io_.Cancel(first.block, LinkIo::Direction::Read));
  EXPECT_TRUE(HasOverlappedIoCompleted(&first.block));

  Operation second;
  char secondByte = '?';
  ASSERT_EQ(io_.StartRead(&secondByte, 1, second.block, second.flags), IoStart::Pending);
  controller_.Say("a");
  ASSERT_EQ(WaitForSingleObject(second.done.Get(), INFINITE), WAIT_OBJECT_0);
  EXPECT_EQ(secondByte, 'a');
  EXPECT_EQ(firstByte, '?');
}

TEST_P(Io, OnALinkOfAnotherTypeNothingStarts) {
  for (const std::uint32_t linkType : {0u, 3u}) {
    const LinkIo other{controller_.DriverEnd(), linkType};
    Operation operation;
    char byte = '?';
    EXPECT_EQ(other.StartRead(&byte, 1, operation.block, operation.flags), IoStart::Failed);
    EXPECT_EQ(other.StartWrite("a", 1, operation.block), IoStart::Failed);
  }
}

}  // namespace
}  // namespace k7
