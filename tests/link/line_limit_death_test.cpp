// A controller that sends 256 bytes without a line end ends the process: in a child of the test.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "support/attached_device.h"
#include "support/both_links.h"
#include "support/fake_controller.h"
#include "support/wait_until.h"

namespace k7 {
namespace {

using k7test::AttachedDevice;
using k7test::FakeController;
using k7test::WaitUntil;

constexpr int kEndedByTheDriver = static_cast<int>(STATUS_STACK_BUFFER_OVERRUN);

// Says the bytes to a fresh reader, and then a line that it answers when it lives on.
void Hear(std::uint32_t linkType, const std::string& first, const std::string& second) {
  FakeController controller{linkType};
  AttachedDevice device{controller};
  controller.Say(first);
  device->position.tableHomed = 0;
  controller.Say(second + "\nTableIsHomedTRUE\r\n");
  WaitUntil([&] { return device->position.tableHomed == 1; });
}

class LineLimitDeathTest : public testing::TestWithParam<std::uint32_t> {
 protected:
  LineLimitDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

INSTANTIATE_TEST_SUITE_P(, LineLimitDeathTest, k7test::kBothLinks, k7test::LinkName);

TEST_P(LineLimitDeathTest, A256thByteEndsTheProcess) {
  EXPECT_EXIT(Hear(GetParam(), std::string(256, 'a'), ""),
              testing::ExitedWithCode(kEndedByTheDriver), "");
}

TEST_P(LineLimitDeathTest, ALineFeedAs256thByteIsTooLate) {
  EXPECT_EXIT(Hear(GetParam(), std::string(255, 'a'), ""),
              testing::ExitedWithCode(kEndedByTheDriver), "");
}

TEST_P(LineLimitDeathTest, A255ByteLineDoesNot) {
  FakeController controller{GetParam()};
  AttachedDevice device{controller};
  controller.Say(std::string(254, 'a') + "\nTableIsHomedTRUE\r\n");
  EXPECT_TRUE(WaitUntil([&] { return device->position.tableHomed == 1; }));
}

}  // namespace
}  // namespace k7
