// A fresh record: every field, in the order of the record.
#include "device/device_state.h"

#include <gtest/gtest.h>

#include <string>

namespace k7 {
namespace {

template <typename T>
T ValueOf(const Polled<T>& field) {
  return field.Get();
}
template <typename T>
const T& ValueOf(const T& field) {
  return field;
}

// All of these fields stand at `want`; `where` and the number of the field tell which does not.
template <typename T, typename... Fields>
void ExpectAll(const char* where, T want, const Fields&... fields) {
  int number = 0;
  const auto check = [&](const auto& value) {
    EXPECT_EQ(value, static_cast<std::remove_cvref_t<decltype(value)>>(want))
        << where << ", field " << ++number;
  };
  (check(ValueOf(fields)), ...);
}

TEST(FreshRecord, HasNoLink) {
  DeviceState record;
  ForEachGuarded(record, [](auto& guarded) { EXPECT_FALSE(static_cast<bool>(guarded.Lock())); });
  EXPECT_EQ(record.host.interfaceVersion, 998u);
  EXPECT_EQ(record.host.reservedWord, 0u);
  EXPECT_EQ(record.link.linkHandle.Get(), nullptr);
  EXPECT_TRUE(record.link.controllerId.Is(L"0000000000000000"));
  EXPECT_STREQ(record.link.friendlyName, L"K7 System Controller");
  ExpectAll("flags", 0, record.link.readerRun, record.link.readerAlive, record.link.connected,
            record.link.linkType);
  ExpectAll("ticks", 0, record.link.alive.Alone().lastCheckTick,
            record.link.alive.Alone().lastAnswerTick);
  EXPECT_STREQ(record.link.portName, L"");
  EXPECT_EQ(record.link.writeQueue.Alone(), nullptr);
}

TEST(FreshRecord, TellsNobody) {
  const DeviceState record;
  EXPECT_EQ(record.notify.connectNotifyWindow.Get(), nullptr);
  EXPECT_EQ(record.notify.ownerWindow.Get(), nullptr);
  EXPECT_EQ(record.notify.notifyCallback.Get(), nullptr);
  ExpectAll("messages", 0, record.notify.connectNotifyMessage, record.notify.msgQueued,
            record.notify.msgStarted, record.notify.msgFinished, record.notify.msgExtra1,
            record.notify.msgExtra2, record.notify.msgExtra3, record.notify.notifyContext);
}

TEST(FreshRecord, HasNoMechanics) {
  const DeviceState record;
  ExpectAll("steps", 0, record.mechanics.axis.x.motorSteps, record.mechanics.axis.y.motorSteps,
            record.mechanics.axis.z.motorSteps, record.mechanics.motorStepsRound,
            record.mechanics.axis.x.microSteps, record.mechanics.axis.y.microSteps,
            record.mechanics.axis.z.microSteps, record.mechanics.microStepsRound);
  ExpectAll("pitches", 0, record.mechanics.roundAxisMode, record.mechanics.axis.x.screwPitch,
            record.mechanics.axis.y.screwPitch, record.mechanics.axis.z.screwPitch,
            record.mechanics.roundGearRatio, record.mechanics.roundCircumference);
  ExpectAll("switches", 0, record.mechanics.axis.x.limitSwitch, record.mechanics.axis.y.limitSwitch,
            record.mechanics.axis.z.limitSwitch, record.mechanics.proxSwitch,
            record.switches.closed.x, record.switches.closed.y, record.switches.closed.z,
            record.switches.switchProbe, record.switches.switchesRead, record.tools.dontLowerAirZ);
  ExpectAll("table", 0, record.mechanics.tableWidth, record.mechanics.tableHeight,
            record.mechanics.tableDepth, record.jog.jogFast, record.jog.jogSlow,
            record.position.tableHomed);
  ExpectAll("factors", 1, record.mechanics.xAxisFactor, record.mechanics.yAxisFactor);
}

TEST(FreshRecord, StandsAtZeroWithTheCutterUp) {
  const DeviceState record;
  ExpectAll("position", 0, record.position.last.x, record.position.last.y, record.position.last.z,
            record.position.parkedPosition, record.position.saved.x, record.position.saved.y,
            record.position.roundStepsPerInch);
  EXPECT_STREQ(record.position.lastFeedText, "");
  ExpectAll("steps per mm", 0, record.position.stepsPerMm.x, record.position.stepsPerMm.y,
            record.position.stepsPerMm.z);
  EXPECT_EQ(record.tools.cutterState, 2u);
  ExpectAll("homes", 0, record.position.tableHome.x, record.position.tableHome.y,
            record.position.cutterHome, record.position.tableHomeRound,
            record.position.tableSurface);
}

TEST(FreshRecord, HasNoJobAndNoTags) {
  const DeviceState record;
  ExpectAll("job", 0, record.job.jobOpen.Alone(), record.job.linesInFlight.Alone(),
            record.job.blocksRunning.Alone(), record.job.firstMove,
            record.job.tagRing.Alone().ackRingIndex, record.job.tagRing.Alone().queuedIndex,
            record.job.tagRing.Alone().startedIndex, record.job.tagRing.Alone().finishedIndex,
            record.job.resetMarkX, record.job.resetMarkY, record.job.resetCountX,
            record.job.resetCountY, record.job.zMoveCount, record.job.quietMoves,
            record.tools.probePending, record.job.waitFlag.Alone(), record.job.plungeHold);
  for (const CommandTag tag : record.job.tagRing.Alone().ackRing) EXPECT_EQ(tag, CommandTag::None);
  ExpectAll("passes", 0, record.passes.passCount, record.passes.currentPass, record.host.gridMode);
  EXPECT_EQ(record.passes.passDepths, nullptr);
}

TEST(FreshRecord, HasTheLeastLiftAndNothingElseToEngraveWith) {
  const DeviceState record;
  EXPECT_EQ(record.tools.cutterLift, 0.001f);
  ExpectAll("engraving", 0, record.tools.engraveDepth, record.passes.passDepth,
            record.tools.traverseSpeed, record.tools.cutterDownSpeed, record.tools.cutterUpSpeed,
            record.tools.engraveSpeed, record.tools.gridSpeed, record.tools.cutterMode,
            record.tools.engraveType, record.tools.probeOnNextPlunge, record.tools.probeOffset,
            record.host.engraveByColor, record.tools.engraveDelayMs, record.host.hostColorTlsIndex);
  EXPECT_EQ(record.host.scissors, -10.0f);
}

TEST(FreshRecord, NeitherJogsNorRamps) {
  const DeviceState record;
  EXPECT_EQ(record.jog.jogActive, 0u);
  EXPECT_EQ(record.jog.jogDirection, 2u);
  EXPECT_EQ(record.jog.jogSpeedMode, 1u);
  ExpectAll("jog", 0, record.jog.jogKey, record.jog.jogEndMessage);
  ExpectAll("spindle", 0, record.spindle.spindleOn, record.spindle.spindleMaxRpm,
            record.spindle.spindleRpm, record.spindle.spindleValue, record.spindle.spindlePresent,
            record.spindle.spindleInhibit);
  EXPECT_EQ(record.spindle.rampDirection, 2u);
  EXPECT_EQ(record.spindle.rampWindow, nullptr);
  ExpectAll("ramp", 0, record.spindle.rampMessage, record.spindle.rampKey);
}

TEST(FreshRecord, HasNoAccessoriesAndNoTextOfTheHost) {
  const DeviceState record;
  ExpectAll("accessories", 0, record.tools.beadInsertTool, record.tools.beadToolOffsetX,
            record.tools.beadToolOffsetY, record.tools.diodePointer, record.tools.diodeOffsetX,
            record.tools.diodeOffsetY, record.host.hostFlag);
  EXPECT_EQ(record.host.cameraId, nullptr);
  EXPECT_STREQ(record.host.hostText, L"");
}

}  // namespace
}  // namespace k7
