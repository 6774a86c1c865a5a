// What each line of the controller does to the record, through a real link: its fields before and
// after, all of them, so that each case shows as well that nothing else changes.
#include "link/reply_actions.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <tuple>
#include <utility>

#include "support/attached_device.h"
#include "support/both_links.h"
#include "support/fake_controller.h"
#include "support/watchdog.h"

namespace k7 {
namespace {

using k7test::AttachedDevice;
using k7test::FakeController;
using k7test::Watchdog;

struct Field {
  std::int64_t (*get)(const DeviceState& record);
  void (*set)(DeviceState& record, std::int64_t value);
};

template <typename T>
T ValueOf(const Polled<T>& field) {
  return field.Get();
}
template <typename T>
T ValueOf(const T& field) {
  return field;
}

template <typename T>
void Store(T& field, std::int64_t value) {
  field = static_cast<decltype(ValueOf(field))>(value);
}

#define K7_FIELD_OF(path)                                                           \
  {                                                                                 \
    [](const DeviceState& record) -> std::int64_t { return ValueOf(record.path); }, \
        [](DeviceState& record, std::int64_t value) { Store(record.path, value); }  \
  }

// Every field that a reply might touch, but tableHomed (see AttachedDevice::Hear).
const std::map<std::string, Field> kFields = {
    {"readerRun", K7_FIELD_OF(link.readerRun)},
    {"connected", K7_FIELD_OF(link.connected)},
    {"switchX", K7_FIELD_OF(switches.closed.x)},
    {"switchY", K7_FIELD_OF(switches.closed.y)},
    {"switchZ", K7_FIELD_OF(switches.closed.z)},
    {"switchProbe", K7_FIELD_OF(switches.switchProbe)},
    {"switchesRead", K7_FIELD_OF(switches.switchesRead)},
    {"lastX", K7_FIELD_OF(position.last.x)},
    {"lastY", K7_FIELD_OF(position.last.y)},
    {"lastZ", K7_FIELD_OF(position.last.z)},
    {"jobOpen", K7_FIELD_OF(job.jobOpen.Alone())},
    {"linesInFlight", K7_FIELD_OF(job.linesInFlight.Alone())},
    {"blocksRunning", K7_FIELD_OF(job.blocksRunning.Alone())},
    {"cutterState", K7_FIELD_OF(tools.cutterState)},
    {"tableHomeX", K7_FIELD_OF(position.tableHome.x)},
    {"tableHomeY", K7_FIELD_OF(position.tableHome.y)},
    {"cutterHome", K7_FIELD_OF(position.cutterHome)},
    {"ackRingIndex", K7_FIELD_OF(job.tagRing.Alone().ackRingIndex)},
    {"queuedIndex", K7_FIELD_OF(job.tagRing.Alone().queuedIndex)},
    {"startedIndex", K7_FIELD_OF(job.tagRing.Alone().startedIndex)},
    {"finishedIndex", K7_FIELD_OF(job.tagRing.Alone().finishedIndex)},
    {"resetMarkX", K7_FIELD_OF(job.resetMarkX)},
    {"resetMarkY", K7_FIELD_OF(job.resetMarkY)},
    {"resetCountX", K7_FIELD_OF(job.resetCountX)},
    {"resetCountY", K7_FIELD_OF(job.resetCountY)},
    {"zMoveCount", K7_FIELD_OF(job.zMoveCount)},
    {"quietMoves", K7_FIELD_OF(job.quietMoves)},
    {"probePending", K7_FIELD_OF(tools.probePending)},
    {"jogActive", K7_FIELD_OF(jog.jogActive)},
    {"waitFlag", K7_FIELD_OF(job.waitFlag.Alone())},
    {"lastCheckTick", K7_FIELD_OF(link.alive.Alone().lastCheckTick)},
    {"lastAnswerTick", K7_FIELD_OF(link.alive.Alone().lastAnswerTick)},
};

using State = std::map<std::string, std::int64_t>;

State StateOf(const DeviceState& record) {
  State state;
  for (const auto& [name, field] : kFields) state[name] = field.get(record);
  return state;
}

struct Case {
  const char* name;
  std::string said;
  State before;                                  // beside the record's defaults
  State changes;                                 // to what stood there before
  void (*close)(DeviceState& record) = nullptr;  // takes one of the guarded values away
};

const std::string kNoise =
    std::string{"ok\n\n\r\nok\r\n!!\r\nX step pin 3\r\nY step pin\r\nX step enable\r\n"} +
    "Y step enable\r\nok C: X:0.0000 Y:0.0000 Z:0.0000\n" + std::string{"\0EX\r\n", 5} +
    std::string{"ok\0EX\r\n", 7} + "\x80\xff\xfe\r\n" + std::string(254, 'a') + "\n";

// clang-format off
const Case kCases[] = {
    {"QueuedTakesTheTagAtItsOwnIndex", "QX\r\n", {}, {{"queuedIndex", 1}}},
    {"QueuedWhileMovesAreQuietLeavesItsIndex", "QX\r\n", {{"quietMoves", 1}}, {}},
    {"QueuedWhileAJogRunsLeavesItsIndex", "QX\r\n", {{"jogActive", 1}}, {}},

    {"BegunMovesALineFromInFlightToRunning", "BX\r\n",
     {{"linesInFlight", 3}}, {{"linesInFlight", 2}, {"blocksRunning", 1}, {"startedIndex", 1}}},
    {"BegunWhileMovesAreQuietStillCounts", "BX\r\n",
     {{"linesInFlight", 3}, {"quietMoves", 1}}, {{"linesInFlight", 2}, {"blocksRunning", 1}}},
    {"BegunWhileAJogRunsStillCounts", "BX\r\n",
     {{"linesInFlight", 3}, {"jogActive", 1}}, {{"linesInFlight", 2}, {"blocksRunning", 1}}},

    {"EndedEndsABlock", "EX\r\n",
     {{"blocksRunning", 2}}, {{"blocksRunning", 1}, {"finishedIndex", 1}}},
    {"EndedWhileMovesAreQuietStillCounts", "EX\r\n",
     {{"blocksRunning", 2}, {"quietMoves", 1}}, {{"blocksRunning", 1}}},
    {"EndedWhileAJogRunsStillCounts", "EX\r\n",
     {{"blocksRunning", 2}, {"jogActive", 1}}, {{"blocksRunning", 1}}},

    {"CountersMayFallBelowZero", "BX\r\nEX\r\nEX\r\n",
     {}, {{"linesInFlight", -1}, {"blocksRunning", -1}, {"startedIndex", 1}, {"finishedIndex", 2}}},
    {"EveryLineEndsAtItsOwnLineFeed", "QX\r\nBX\r\nEX\r\nQX\r\nBX\r\n",
     {{"linesInFlight", 10}, {"blocksRunning", 10}},
     {{"linesInFlight", 8}, {"blocksRunning", 11},
      {"queuedIndex", 2}, {"startedIndex", 2}, {"finishedIndex", 1}}},

    {"BlockMessagesOnOpensTheJobAndStartsItsCountersAfresh", "SendBlockMessagesOn\r\n",
     {{"linesInFlight", 3}, {"blocksRunning", 2}, {"resetMarkX", 5}, {"resetMarkY", 5},
      {"resetCountX", 5}, {"resetCountY", 5}, {"zMoveCount", 5}},
     {{"jobOpen", 1}, {"linesInFlight", 0}, {"blocksRunning", 0}, {"resetMarkX", 9},
      {"resetMarkY", 9}, {"resetCountX", 0}, {"resetCountY", 0}, {"zMoveCount", 0}}},
    {"BlockMessagesOffClosesTheJobAndNothingElse", "SendBlockMessagesOff\r\n",
     {{"jobOpen", 1}, {"linesInFlight", 3}, {"blocksRunning", 2}}, {{"jobOpen", 0}}},

    {"ALimitGivesAHomeThatIsNotKnown", "X_Limit 123\r\nY_Limit  456 steps\r\nZ_Limit 789\r\n",
     {{"tableHomeX", -1}, {"tableHomeY", -1}, {"cutterHome", -1}},
     {{"tableHomeX", 123}, {"tableHomeY", 456}, {"cutterHome", 789},
      {"switchX", 1}, {"switchY", 1}, {"switchZ", 1}}},
    {"ALimitOfXLeavesAHomeThatIsKnown", "X_Limit 123\r\n", {{"tableHomeX", 0}}, {{"switchX", 1}}},
    {"ALimitOfYLeavesAHomeThatIsKnown", "Y_Limit 123\r\n", {{"tableHomeY", 5}}, {{"switchY", 1}}},
    {"ALimitOfZLeavesAHomeThatIsKnown", "Z_Limit 123\r\n", {{"cutterHome", 6}}, {{"switchZ", 1}}},
    {"ALimitWithoutANumberIsAHomeAt0", "X_Limit\r\n",
     {{"tableHomeX", -1}}, {{"tableHomeX", 0}, {"switchX", 1}}},

    {"AProbeIsCountedFromWhereTheCutterWas", "Z_Probe 234\r\n",
     {{"lastZ", 1000}, {"probePending", 1}}, {{"cutterHome", 1234}, {"probePending", 0}}},
    {"AProbeBeyond32BitsWraps", "Z_Probe 99999999999\r\n",
     {{"lastZ", 1}}, {{"cutterHome", -2147483648LL}}},
    {"AProbeThatTouchedNothingChangesNothing", "ZProbe not triggered\r\n",
     {{"cutterHome", 55}, {"probePending", 1}}, {}},

    {"ReadsASwitchReport", "min_x:1 min_y:0 min_z:1 pins: Probe: 1\r\n", {{"switchY", 1}},
     {{"switchX", 1}, {"switchY", 0}, {"switchZ", 1}, {"switchProbe", 1}, {"switchesRead", 1}}},
    {"ASwitchReportWithA2ChangesNothing", "min_x:1 min_y:0 min_z:2 pins: Probe: 1\r\n",
     {{"switchY", 1}}, {}},

    {"NoiseChangesNothing", kNoise, {}, {}},

    // A guarded value that is closed skips its update only.
    {"WhileTheLinesAreClosedTheyStay", "BX\r\n",
     {{"linesInFlight", 3}}, {{"blocksRunning", 1}, {"startedIndex", 1}}, [](DeviceState& r) { r.job.linesInFlight.Close(); }},
    {"WhileTheBlocksAreClosedTheyStay", "BX\r\n",
     {{"linesInFlight", 3}}, {{"linesInFlight", 2}, {"startedIndex", 1}}, [](DeviceState& r) { r.job.blocksRunning.Close(); }},
    {"WhileTheJobIsClosedItStays", "SendBlockMessagesOn\r\n",
     {{"linesInFlight", 3}}, {{"linesInFlight", 0}, {"resetMarkX", 9}, {"resetMarkY", 9}}, [](DeviceState& r) { r.job.jobOpen.Close(); }},
    {"WhileTheRingIsClosedTheIndexStays", "QX\r\n", {}, {}, [](DeviceState& r) { r.job.tagRing.Close(); }},
    {"WhileTheTicksAreClosedTheyStay", "SmoothieIsConnected\r\n",
     {{"lastCheckTick", 5}, {"lastAnswerTick", 6}}, {{"connected", 1}}, [](DeviceState& r) { r.link.alive.Close(); }},
};
// clang-format on

void PrintTo(const Case& row, std::ostream* out) {
  *out << row.name;
}

class ReplyActions : public testing::TestWithParam<std::tuple<Case, std::uint32_t>> {
 protected:
  Watchdog watchdog_;
  FakeController controller_{std::get<1>(GetParam())};
  AttachedDevice device_{controller_, false};
};

INSTANTIATE_TEST_SUITE_P(, ReplyActions,
                         testing::Combine(testing::ValuesIn(kCases), k7test::kBothLinks),
                         [](const auto& row) {
                           return std::string{std::get<0>(row.param).name} +
                                  (std::get<1>(row.param) == kLinkTcp ? "_Tcp" : "_Serial");
                         });

TEST_P(ReplyActions, AreTheseAndNoOthers) {
  const Case& row = std::get<0>(GetParam());
  for (const auto& [name, value] : row.before) kFields.at(name).set(*device_, value);
  State want = StateOf(*device_);
  for (const auto& [name, value] : row.changes) want.at(name) = value;
  if (row.close != nullptr) row.close(*device_);
  ASSERT_TRUE(device_.Hear(row.said));
  EXPECT_EQ(StateOf(*device_), want);
  EXPECT_TRUE(device_->link.controllerId.Is(kUnsetControllerId));
  EXPECT_TRUE(controller_.Lines().empty());
}

}  // namespace
}  // namespace k7
