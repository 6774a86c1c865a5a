// The cable is pulled in the middle of the work: the call that waits returns, so does the release,
// and once the machine is back the same process connects to it again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "harness.h"
#include "machines.h"

namespace k7test {
namespace {

constexpr char kId[] = "ENDTOENDMACHINE3";
constexpr int kPort = 7;

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// What is asked of a machine that still has a long way to go, and what it answers without a link.
struct Pulled {
  const char* name;
  const char* waits;
  const char* answer;
};
const Pulled kPulled[] = {
    {"TheEndOfAJob", "end", "done"},
    {"TheStartOfAPass", "pass 1 0 0", "Pass 1 of 1 - 0.020"},
};

class PulledCable : public testing::TestWithParam<Pulled> {};
INSTANTIATE_TEST_SUITE_P(, PulledCable, testing::ValuesIn(kPulled),
                         [](const auto& row) { return std::string{row.param.name}; });

TEST_P(PulledCable, EndsTheWaitForAndTheNextConnectWorks) {
  ConnectedMachine machine(kId, EngraversSettings(), With(EngraversTable(), {"--speed", "1"}));
  auto& [controller, slots] = machine;
  ASSERT_EQ(slots.Ask("begin"), "1");
  ASSERT_EQ(slots.Ask("move 40000 40000"), "1");  // 10 inches at an inch a second
  controller.Stop();
  const Clock::time_point pulled = Clock::now();
  EXPECT_EQ(slots.Ask(GetParam().waits), GetParam().answer);
  EXPECT_LT(SecondsSince(pulled), 3.0 + 2.0) << "with 2 s for a busy machine";
  const Clock::time_point release = Clock::now();
  EXPECT_EQ(slots.Ask("release"), "released");
  EXPECT_LT(SecondsSince(release), 1.0 + 2.0);

  Controller again{kPort, kId, EngraversTable()};
  EXPECT_EQ(slots.Ask(std::string{"connect "} + kId), "connected");
  EXPECT_EQ(slots.Ask("release"), "released");
}

}  // namespace
}  // namespace k7test
