#include "link/reply.h"

#include <gtest/gtest.h>

#include <string>

namespace k7 {
namespace {

TEST(ClassifyReply, KnowsEveryRow) {
  constexpr struct {
    const char* line;
    ReplyKind want;
  } kCases[] = {
      {"QX\r\n", ReplyKind::Queued},
      {"BX\r\n", ReplyKind::Begun},
      {"EX\r\n", ReplyKind::Ended},
      {"SendBlockMessagesOn\r\n", ReplyKind::BlockMessagesOn},
      {"SendBlockMessagesOff\r\n", ReplyKind::BlockMessagesOff},
      {"SmoothieIsConnected\r\n", ReplyKind::Connected},
      {"TableIsHomedFALSE\r\n", ReplyKind::NotHomed},
      {"TableIsHomedTRUE\r\n", ReplyKind::Homed},
      {"X_Limit 12\r\n", ReplyKind::LimitX},
      {"Y_Limit 12\r\n", ReplyKind::LimitY},
      {"Z_Limit 12\r\n", ReplyKind::LimitZ},
      {"ZProbe not triggered\r\n", ReplyKind::ProbeMissed},
      {"Z_Probe 12\r\n", ReplyKind::Probe},
      {"sd: controller_id is set to 0123456789ABCDEF\r\n", ReplyKind::Identity},
      {"min_x:0 min_y:0 min_z:0 pins: Probe: 0\r\n", ReplyKind::Switches},
      {"X step pin 5\r\n", ReplyKind::StepPinX},
      {"Y step pin 5\r\n", ReplyKind::StepPinY},
      {"X step enable 5\r\n", ReplyKind::StepEnableX},
      {"Y step enable 5\r\n", ReplyKind::StepEnableY},
      {"ok C: X:0.0000 Y:0.0000 Z:0.0000\n", ReplyKind::Position},
  };
  static_assert(std::size(kCases) == std::size(kReplies));
  for (const auto& c : kCases) EXPECT_EQ(ClassifyReply(c.line), c.want) << c.line;
}

TEST(ClassifyReply, FindsTheTextAnywhereInTheLine) {
  EXPECT_EQ(ClassifyReply("ok QX\r\n"), ReplyKind::Queued);
  EXPECT_EQ(ClassifyReply(">>SmoothieIsConnected\r\n"), ReplyKind::Connected);
}

TEST(ClassifyReply, TheFirstRowOfTheTableWinsNotTheFirstTextOfTheLine) {
  EXPECT_EQ(ClassifyReply("X_Limit 12 EX\r\n"), ReplyKind::Ended);
  EXPECT_EQ(ClassifyReply("X: min_x:0\r\n"), ReplyKind::Switches);
  EXPECT_EQ(ClassifyReply("Z_Probe 1 Z_Limit 2\r\n"), ReplyKind::LimitZ);
  EXPECT_EQ(ClassifyReply("BX\r\nQX\r\n"), ReplyKind::Queued);
}

// One made-up identity in some four hundred: its controller is not found again.
TEST(ClassifyReply, TakesAnIdentityThatEndsLikeAReportForThatReport) {
  EXPECT_EQ(ClassifyReply("sd: controller_id is set to 5U5GMKP90RVLZWQX\r\n"), ReplyKind::Queued);
  EXPECT_EQ(ClassifyReply("sd: controller_id is set to 5U5GMKP90RVLZWBX\r\n"), ReplyKind::Begun);
  EXPECT_EQ(ClassifyReply("sd: controller_id is set to 5U5GMKP90RVLZWEX\r\n"), ReplyKind::Ended);
}

TEST(ClassifyReply, WantsTheLineEndWhereTheTextHasIt) {
  for (const char* line : {"QX", "QX\n", "BX\n", "EX\r", "SendBlockMessagesOn\n",
                           "SendBlockMessagesOff\n", "SmoothieIsConnected\n", "TableIsHomedTRUE\n",
                           "TableIsHomedFALSE\n", "ZProbe not triggered\n"}) {
    EXPECT_EQ(ClassifyReply(line), ReplyKind::Unknown) << line;
  }
}

TEST(ClassifyReply, IgnoresTheNoiseOfTheFirmware) {
  for (const char* line :
       {"", "\n", "ok\n", "ok\r\n", "!!\r\n", "Smoothie\r\n", "Smoothie command shell\r\n",
        "ALARM: Hard limit +X\n", "// NOTICE \x80\xff\n", "qx\r\n", "x_limit 3\r\n"}) {
    EXPECT_EQ(ClassifyReply(line), ReplyKind::Unknown) << line;
  }
}

TEST(ClassifyReply, KeepsTheFirstOccurrenceOfTheText) {
  const Reply reply = FindReply("ok Z_Limit 5 Z_Limit 6\r\n");
  EXPECT_EQ(reply.kind, ReplyKind::LimitZ);
  EXPECT_EQ(reply.from, "Z_Limit 5 Z_Limit 6\r\n");
  EXPECT_EQ(reply.after, " 5 Z_Limit 6\r\n");
}

TEST(ReadIdentity, TakesTheSixteenCharactersBeforeTheLineEnd) {
  EXPECT_STREQ(ReadIdentity("sd: controller_id is set to 0123456789ABCDEF\r\n").text,
               L"0123456789ABCDEF");
}

TEST(ReadIdentity, AShortIdentityComesWithTheWordsBeforeIt) {
  EXPECT_STREQ(ReadIdentity("sd: controller_id is set to 1234\r\n").text, L"d is set to 1234");
}

TEST(ReadIdentity, ALongIdentityLosesItsBeginning) {
  EXPECT_STREQ(ReadIdentity("sd: controller_id is set to XX0123456789ABCDEF\r\n").text,
               L"0123456789ABCDEF");
}

TEST(ReadIdentity, CutsTwoCharactersWhateverTheyAre) {
  EXPECT_STREQ(ReadIdentity("sd: controller_id is set to 0123456789ABCDEF\n").text,
               L" 0123456789ABCDE");
}

TEST(ReadIdentity, WidensEachByte) {
  EXPECT_STREQ(ReadIdentity("sd: controller_id is set to \x80\xff"
                            "23456789ABCDEF\r\n")
                   .text,
               L"\x80\xff"
               L"23456789ABCDEF");
}

TEST(ReadIdentity, ReadsNothingOutsideAShorterLine) {
  EXPECT_STREQ(ReadIdentity("abc\r\n").text, L"abc");
  EXPECT_STREQ(ReadIdentity("0123456789ABCDE\r\n").text, L"0123456789ABCDE");
  EXPECT_STREQ(ReadIdentity("\r\n").text, L"");
  EXPECT_STREQ(ReadIdentity("\n").text, L"");
  EXPECT_STREQ(ReadIdentity("").text, L"");
}

TEST(ReadSwitches, ReadsEachSwitch) {
  const auto report = ReadSwitches("min_x:1 min_y:0 min_z:1 pins- (X)P1.24:1 Probe: 1\r\n");
  ASSERT_TRUE(report);
  EXPECT_EQ(report->x, 1);
  EXPECT_EQ(report->y, 0);
  EXPECT_EQ(report->z, 1);
  EXPECT_EQ(report->probe, 1);
}

TEST(ReadSwitches, TakesTheOthersInAnyOrder) {
  const auto report = ReadSwitches("min_x:0Probe: 1min_z:1min_y:0");
  ASSERT_TRUE(report);
  EXPECT_EQ(report->probe, 1);
  EXPECT_EQ(report->z, 1);
}

TEST(ReadSwitches, RefusesAReportThatIsNotWhole) {
  for (const char* report : {
           "min_x:0 min_y:0 min_z:2 Probe: 0\r\n",
           "min_x:2 min_y:0 min_z:0 Probe: 0\r\n",
           "min_x:0 min_y:a min_z:0 Probe: 0\r\n",
           "min_x:0 min_y:0 min_z:0 Probe: 3\r\n",
           "min_x:0 min_y:0 min_z:0 Probe:0\r\n",    // the blank is part of the name
           "min_x: 0 min_y:0 min_z:0 Probe: 0\r\n",  // right behind it
           "min_x:0 min_z:0 Probe: 0\r\n",
           "min_x:0 min_y:0 Probe: 0\r\n",
           "min_x:0 min_y:0 min_z:0\r\n",
           "min_x:0 min_y:0 min_z:0 Probe: ",
           "min_x:",
       }) {
    EXPECT_FALSE(ReadSwitches(report)) << report;
  }
}

TEST(ReadSwitches, WantsTheOthersBehindTheFirst) {
  const Reply reply = FindReply("min_y:0 min_x:0 min_z:0 Probe: 0\r\n");
  ASSERT_EQ(reply.kind, ReplyKind::Switches);
  EXPECT_FALSE(ReadSwitches(reply.from));
}

}  // namespace
}  // namespace k7
