// What a long life costs a host. Many strokes over one connection: driver and controller count the
// same lines. Many connections, dialogs and jogs in one process. Neither memory nor handles grow.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

#include "harness.h"

namespace k7test {
namespace {

constexpr char kId[] = "SOAKSOAKSOAKSOAK";

// What the driver's process holds.
struct Held {
  long long handles, threads, memoryKiB;
};
Held HeldBy(Slots& slots) {
  return {std::stoll(slots.Ask("handles")), slots.Threads(), slots.ResidentKiB()};
}
std::string Text(const Held& held) {
  return std::to_string(held.handles) + " handles, " + std::to_string(held.threads) + " threads, " +
         std::to_string(held.memoryKiB) + " KiB";
}
// One or two handles may be open for a moment, as may the thread of a call that has just ended.
void ExpectNoMoreOpen(const Held& before, const Held& after) {
  ASSERT_GT(after.handles, 0);
  EXPECT_LE(after.handles, before.handles + 2);
  EXPECT_LE(after.threads, before.threads + 1);
}

// Ten looks at the memory. The heap keeps the pages of a dialog's long list for a while, so that
// single looks are up to 4 MiB apart: what is compared is the least of each half.
void ExpectNoGrowth(const std::vector<Held>& looks) {
  constexpr long long kSlackKiB = 512;
  ASSERT_EQ(looks.size(), 10u);
  const auto least = [&](std::size_t from, std::size_t to) {
    long long memoryKiB = looks[from].memoryKiB;
    for (std::size_t i = from; i < to; ++i) memoryKiB = std::min(memoryKiB, looks[i].memoryKiB);
    return memoryKiB;
  };
  ASSERT_GT(least(0, 10), 1000);
  EXPECT_LE(least(5, 10), least(0, 5) + kSlackKiB);
}

int Wanted(const char* variable, int otherwise) {
  const char* const wanted = std::getenv(variable);
  return wanted != nullptr ? std::atoi(wanted) : otherwise;
}

// Does a tenth of `count` ten times; the first is what the others are compared with.
template <typename Once>
void InTenths(const char* what, int count, Slots& slots, Once once) {
  std::vector<Held> looks;
  for (int tenth = 0; tenth < 10; ++tenth) {
    for (int i = 0; i < count / 10; ++i) ASSERT_NO_FATAL_FAILURE(once());
    looks.push_back(HeldBy(slots));
    std::printf("%7d %s: %s\n", (tenth + 1) * (count / 10), what, Text(looks.back()).c_str());
    std::fflush(stdout);
    ExpectNoMoreOpen(looks.front(), looks.back());
  }
  ExpectNoGrowth(looks);
}

// A library as it grows in years.
void MakeProfiles(int count) {
  const std::filesystem::path folder = SettingsFile(kId).replace_extension() / "Material Library";
  std::filesystem::create_directories(folder);
  for (int i = 0; i < count; ++i) {
    std::ofstream{folder / ("Material " + std::to_string(i * 7919 % count) + ".ini")}
        << "[Engrave Settings]\r\nCutter Lift=1040187392\r\n";
  }
}

TEST(Soak, ConnectsDialogsAndJogsLeaveNothingBehind) {
  const int connects = Wanted("K7_SOAK_CONNECTS", 1000);
  ASSERT_GE(connects, 50);
  RemoveAllSettings();
  WriteSettings(kId, {{"Axis Z/Cutter Home", "1065353216"}, {"Axis Z/Air Z", "0"}});
  Controller controller(7, kId, {"--homed", "--surface", "plane:1.0"});
  const std::string connect = std::string("connect ") + kId;
  Slots slots, desk;
  InTenths("connects", connects, slots, [&] {
    ASSERT_EQ(slots.AskUntil("connected", connect), "connected");
    ASSERT_EQ(slots.Ask("release"), "released");
  });
  ASSERT_EQ(slots.AskUntil("connected", connect), "connected");
  ASSERT_EQ(slots.Ask("window"), "done");
  constexpr int kProfiles = 2000;
  MakeProfiles(kProfiles);
  std::vector<double> openMs;
  InTenths("dialogs", connects / 5, slots, [&] {
    // Else the dialog may close at its first look.
    ASSERT_TRUE(WaitFor([&] { return slots.Ask("alive") == "1"; }));
    const auto start = std::chrono::steady_clock::now();
    slots.Tell("settings 0 1");
    ASSERT_EQ(desk.Ask("dialog-wait K7 System Controller"), "open");
    openMs.push_back(
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
            .count());
    ASSERT_EQ(desk.Ask("dialog-press 2"), "closed");
    ASSERT_EQ(slots.Answer(), "2");
  });
  std::nth_element(openMs.begin(), openMs.begin() + openMs.size() / 2, openMs.end());
  const double medianMs = openMs[openMs.size() / 2];
  std::printf("with %d profiles the dialog opens in %.0f ms (median)\n", kProfiles, medianMs);
  EXPECT_LT(medianMs, 300);
  InTenths("jogs", connects * 10, slots, [&] { ASSERT_EQ(slots.Ask("jog 2 1 0"), "ended"); });
  EXPECT_EQ(slots.Ask("release"), "released");
  EXPECT_EQ(slots.Quit(), 0);
}

TEST(Soak, EveryLineIsAccountedForAndNothingGrows) {
  const int strokes = Wanted("K7_SOAK_STROKES", 100000);
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
  std::vector<Held> looks;
  for (int i = 0; i < 10; ++i) {
    // A stroke here is a travel or a cut; the command makes four of them a round.
    const std::string rounds = std::to_string(chunk / 4);
    ASSERT_EQ(slots.Ask("strokes " + rounds + " " + std::to_string(i), 3600), rounds);
    looks.push_back(HeldBy(slots));
    std::printf("%7d strokes: %s\n", (i + 1) * (chunk / 4) * 4, Text(looks.back()).c_str());
    std::fflush(stdout);
    ExpectNoMoreOpen(looks.front(), looks.back());
  }
  ExpectNoGrowth(looks);
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
