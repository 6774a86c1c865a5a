// 100,000 strokes over one connection: driver and controller count the same lines, and the driver's
// memory and handles do not grow.
#include <gtest/gtest.h>

#include <cstdlib>

#include "harness.h"

namespace k7test {
namespace {

constexpr char kId[] = "SOAKSOAKSOAKSOAK";

TEST(Soak, EveryLineIsAccountedForAndNothingGrows) {
  const char* wanted = std::getenv("K7_SOAK_STROKES");
  const int strokes = wanted != nullptr ? std::atoi(wanted) : 100000;
  const int chunk = strokes / 10;
  ASSERT_GT(chunk / 4, 0) << "at least 40 strokes";
  RemoveAllSettings();
  WriteSettings(kId, {{"Axis Z/Cutter Home", "1065353216"},
                      {"Axis Z/Air Z", "0"},
                      {"Engrave Settings/Engrave Type", "0"}});
  Controller controller(7, kId, {"--homed", "--surface", "plane:1.0"});
  Slots slots;
  ASSERT_EQ(slots.Ask(std::string("connect ") + kId), "connected");
  slots.Ask("window");
  ASSERT_EQ(slots.Ask("begin"), "1");
  long long handles = 0, memoryKiB = 0;
  for (int i = 0; i < 10; ++i) {
    // A stroke here is a travel or a cut; the command makes four of them a round.
    const std::string rounds = std::to_string(chunk / 4);
    ASSERT_EQ(slots.Ask("strokes " + rounds + " " + std::to_string(i), 3600), rounds);
    const long long handlesNow = std::stoll(slots.Ask("handles"));
    const long long memoryNow = slots.ResidentKiB();
    std::printf("%7d strokes: %lld handles, %lld KiB\n", (i + 1) * (chunk / 4) * 4, handlesNow,
                memoryNow);
    std::fflush(stdout);
    if (i == 0) {
      handles = handlesNow;
      memoryKiB = memoryNow;
    }
    ASSERT_GT(handlesNow, 0);
    ASSERT_GT(memoryNow, 1000);
    EXPECT_LE(handlesNow, handles + 2);  // one or two may be open for a moment
    EXPECT_LE(memoryNow, memoryKiB + 512);
  }
  // The end waits until the driver's own counters of outstanding and running lines are back at 0.
  ASSERT_EQ(slots.Ask("end", 3600), "done");
  const long long rounds = 10LL * (chunk / 4);
  // The host was told of each travel and each cut, at every stage.
  const std::string told = std::to_string(rounds * 4);
  EXPECT_EQ(slots.Ask("counts").substr(0, told.size() * 3 + 2), told + " " + told + " " + told);
  // Not one more begins or ends after that: a second, empty job ends at once.
  ASSERT_EQ(slots.Ask("begin"), "1");
  ASSERT_EQ(slots.Ask("end"), "done");
  slots.Ask("release");
  slots.Quit();
  // The machine took a lift, a travel, a plunge and three cuts a round; the first needed no lift.
  EXPECT_EQ(controller.Number("blocks"), static_cast<double>(rounds * 6 - 1));
  EXPECT_EQ(controller.Number("lines.inputBytesLost"), 0);
  EXPECT_EQ(controller.Number("lines.outputBytesDropped"), 0);
}

}  // namespace
}  // namespace k7test
