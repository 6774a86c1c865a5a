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
  const DeviceState record;
  EXPECT_EQ(record.interfaceVersion, 998u);
  EXPECT_EQ(record.reservedWord, 0u);
  EXPECT_EQ(record.linkHandle.Get(), nullptr);
  EXPECT_TRUE(record.controllerId.Is(L"0000000000000000"));
  EXPECT_STREQ(record.friendlyName, L"K7 System Controller");
  ExpectAll("flags", 0, record.readerRun, record.readerAlive, record.connected, record.linkType);
  ExpectAll("ticks", 0, record.lastCheckTick, record.lastAnswerTick);
  EXPECT_STREQ(record.portName, L"");
  for (const void* mutex : record.mutexes) EXPECT_EQ(mutex, nullptr);
}

TEST(FreshRecord, TellsNobody) {
  const DeviceState record;
  EXPECT_EQ(record.connectNotifyWindow.Get(), nullptr);
  EXPECT_EQ(record.ownerWindow.Get(), nullptr);
  EXPECT_EQ(record.notifyCallback.Get(), nullptr);
  ExpectAll("messages", 0, record.connectNotifyMessage, record.msgQueued, record.msgStarted,
            record.msgFinished, record.msgExtra1, record.msgExtra2, record.msgExtra3,
            record.notifyContext);
}

TEST(FreshRecord, HasNoMechanics) {
  const DeviceState record;
  ExpectAll("steps", 0, record.motorStepsX, record.motorStepsY, record.motorStepsZ,
            record.motorStepsRound, record.microStepsX, record.microStepsY, record.microStepsZ,
            record.microStepsRound);
  ExpectAll("pitches", 0, record.roundAxisMode, record.screwPitchX, record.screwPitchY,
            record.screwPitchZ, record.roundGearRatio, record.roundCircumference);
  ExpectAll("switches", 0, record.limitSwitchX, record.limitSwitchY, record.limitSwitchZ,
            record.proxSwitch, record.switchX, record.switchY, record.switchZ, record.switchProbe,
            record.switchesRead, record.dontLowerAirZ);
  ExpectAll("table", 0, record.tableWidth, record.tableHeight, record.tableDepth, record.jogFast,
            record.jogSlow, record.tableHomed);
  ExpectAll("factors", 1, record.xAxisFactor, record.yAxisFactor);
}

TEST(FreshRecord, StandsAtZeroWithTheCutterUp) {
  const DeviceState record;
  ExpectAll("position", 0, record.lastX, record.lastY, record.lastZ, record.parkedPosition,
            record.savedPositionX, record.savedPositionY, record.roundStepsPerInch);
  EXPECT_STREQ(record.lastFeedText, "");
  ExpectAll("steps per mm", 0, record.stepsPerMmX, record.stepsPerMmY, record.stepsPerMmZ);
  EXPECT_EQ(record.cutterState, 2u);
  ExpectAll("homes", 0, record.tableHomeX, record.tableHomeY, record.cutterHome,
            record.tableHomeRound, record.tableSurface);
}

TEST(FreshRecord, HasNoJobAndNoTags) {
  const DeviceState record;
  ExpectAll("job", 0, record.jobOpen, record.linesInFlight, record.blocksRunning, record.firstMove,
            record.ackRingIndex, record.queuedIndex, record.startedIndex, record.finishedIndex,
            record.resetMarkX, record.resetMarkY, record.resetCountX, record.resetCountY,
            record.zMoveCount, record.quietMoves, record.probePending, record.waitFlag,
            record.plungeHold);
  for (const CommandTag tag : record.ackRing) EXPECT_EQ(tag, CommandTag::None);
  ExpectAll("passes", 0, record.passCount, record.currentPass, record.gridMode);
  EXPECT_EQ(record.passDepths, nullptr);
}

TEST(FreshRecord, HasTheLeastLiftAndNothingElseToEngraveWith) {
  const DeviceState record;
  EXPECT_EQ(record.cutterLift, 0.001f);
  ExpectAll("engraving", 0, record.engraveDepth, record.passDepth, record.traverseSpeed,
            record.cutterDownSpeed, record.cutterUpSpeed, record.engraveSpeed, record.gridSpeed,
            record.cutterMode, record.engraveType, record.probeOnNextPlunge, record.probeOffset,
            record.engraveByColor, record.engraveDelayMs, record.hostColorTlsIndex);
  EXPECT_EQ(record.scissors, -10.0f);
}

TEST(FreshRecord, NeitherJogsNorRamps) {
  const DeviceState record;
  EXPECT_EQ(record.jogActive, 0u);
  EXPECT_EQ(record.jogDirection, 2u);
  EXPECT_EQ(record.jogSpeedMode, 1u);
  ExpectAll("jog", 0, record.jogKey, record.jogEndMessage);
  ExpectAll("spindle", 0, record.spindleOn, record.spindleMaxRpm, record.spindleRpm,
            record.spindleValue, record.spindlePresent, record.spindleInhibit);
  EXPECT_EQ(record.rampDirection, 2u);
  EXPECT_EQ(record.rampWindow, nullptr);
  ExpectAll("ramp", 0, record.rampMessage, record.rampKey);
}

TEST(FreshRecord, HasNoAccessoriesAndNoTextOfTheHost) {
  const DeviceState record;
  ExpectAll("accessories", 0, record.beadInsertTool, record.beadToolOffsetX, record.beadToolOffsetY,
            record.diodePointer, record.diodeOffsetX, record.diodeOffsetY, record.hostFlag);
  EXPECT_EQ(record.cameraId, nullptr);
  EXPECT_STREQ(record.hostText, L"");
}

}  // namespace
}  // namespace k7
