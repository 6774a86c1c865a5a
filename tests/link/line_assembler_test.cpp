#include "link/line_assembler.h"

#include <gtest/gtest.h>

#include <string>

namespace k7 {
namespace {

using Step = LineAssembler::Step;

// Feeds bytes that are there at once; the step after the last one.
Step Feed(LineAssembler& assembler, const std::string& bytes) {
  Step step = Step::Read;
  for (const char byte : bytes) {
    *assembler.Target() = byte;
    step = assembler.Completed(1, true);
  }
  return step;
}

// Feeds bytes each of which is waited for.
Step FeedWaiting(LineAssembler& assembler, const std::string& bytes) {
  Step step = Step::Read;
  for (const char byte : bytes) {
    EXPECT_EQ(assembler.Pending(true), Step::Wait);
    EXPECT_EQ(assembler.StillPending(true), Step::Wait);
    *assembler.Target() = byte;
    step = assembler.WaitCompleted(1, true);
  }
  return step;
}

TEST(LineAssembler, EndsALineAtItsLineFeed) {
  LineAssembler assembler;
  EXPECT_EQ(assembler.Begin(), Step::Read);
  EXPECT_EQ(Feed(assembler, "QX\r"), Step::Read);
  EXPECT_EQ(Feed(assembler, "\n"), Step::Line);
  EXPECT_EQ(assembler.Line(), "QX\r\n");
}

TEST(LineAssembler, TakesBytesThatAreWaitedForTheSame) {
  LineAssembler assembler;
  assembler.Begin();
  EXPECT_EQ(FeedWaiting(assembler, "BX\r"), Step::Read);
  EXPECT_EQ(FeedWaiting(assembler, "\n"), Step::Line);
  EXPECT_EQ(assembler.Line(), "BX\r\n");
  EXPECT_FALSE(assembler.IsReadOutstanding());
}

TEST(LineAssembler, MixesBothWaysInOneLine) {
  LineAssembler assembler;
  assembler.Begin();
  FeedWaiting(assembler, "E");
  Feed(assembler, "X\r");
  FeedWaiting(assembler, "\n");
  EXPECT_EQ(assembler.Line(), "EX\r\n");
}

TEST(LineAssembler, HandlesAFragmentAsALineOfItsOwnWhenASerialPortHasNothingMore) {
  LineAssembler assembler;
  assembler.Begin();
  EXPECT_EQ(Feed(assembler, "SmoothieIs"), Step::Read);
  EXPECT_EQ(assembler.Completed(0, true), Step::Line);
  EXPECT_EQ(assembler.Line(), "SmoothieIs");
  EXPECT_EQ(assembler.Begin(), Step::Read);
  EXPECT_EQ(Feed(assembler, "Connected\r\n"), Step::Line);
  EXPECT_EQ(assembler.Line(), "Connected\r\n");
}

TEST(LineAssembler, KeepsAFragmentTogetherWhileTheReadStaysOutstanding) {
  LineAssembler assembler;
  assembler.Begin();
  Feed(assembler, "SmoothieIs");
  EXPECT_EQ(assembler.Pending(true), Step::Wait);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(assembler.StillPending(true), Step::Wait);
  *assembler.Target() = 'C';
  EXPECT_EQ(assembler.WaitCompleted(1, true), Step::Read);
  Feed(assembler, "onnected\r\n");
  EXPECT_EQ(assembler.Line(), "SmoothieIsConnected\r\n");
}

TEST(LineAssembler, AnIdleSerialPortGivesAnEmptyLineEachTime) {
  LineAssembler assembler;
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(assembler.Begin(), Step::Read);
    EXPECT_EQ(assembler.Completed(0, true), Step::Line);
    EXPECT_EQ(assembler.Line(), "");
  }
}

TEST(LineAssembler, AFailedReadEndsTheLineWithWhatIsThere) {
  LineAssembler assembler;
  assembler.Begin();
  Feed(assembler, "QX");
  EXPECT_EQ(assembler.Failed(true), Step::Line);
  EXPECT_EQ(assembler.Line(), "QX");
}

TEST(LineAssembler, AReadThatFailsWhileItIsWaitedForIsNoLongerOutstanding) {
  LineAssembler assembler;
  assembler.Begin();
  assembler.Pending(true);
  EXPECT_EQ(assembler.Failed(true), Step::Line);
  EXPECT_FALSE(assembler.IsReadOutstanding());
  EXPECT_EQ(assembler.Begin(), Step::Read);
}

// KEEP: on a link whose other side has closed, a read that was waited for ends with nothing.
TEST(LineAssembler, AReadThatWasWaitedForCountsAsAByteEvenWhenItBroughtNone) {
  LineAssembler assembler;
  assembler.Begin();
  FeedWaiting(assembler, "BX\r\n");
  assembler.Begin();
  FeedWaiting(assembler, "QX\r");
  EXPECT_EQ(assembler.Pending(true), Step::Wait);
  EXPECT_EQ(assembler.WaitCompleted(0, true), Step::Line);
  EXPECT_EQ(assembler.Line(), "QX\r\n");  // its end is that of the line before
  EXPECT_FALSE(assembler.IsReadOutstanding());
}

TEST(LineAssembler, AWaitThatBringsNothingOnAnEmptyLineGivesAnEmptyLine) {
  LineAssembler assembler;
  assembler.Begin();
  FeedWaiting(assembler, "BX\r\n");
  assembler.Begin();
  assembler.Pending(true);
  EXPECT_EQ(assembler.WaitCompleted(0, true), Step::Line);
  EXPECT_EQ(assembler.Line(), "");
}

TEST(LineAssembler, A256thByteThatAWaitOnlyCountsIsFatalToo) {
  LineAssembler assembler;
  assembler.Begin();
  FeedWaiting(assembler, std::string(255, 'a'));
  assembler.Pending(true);
  EXPECT_EQ(assembler.WaitCompleted(0, true), Step::Fatal);
}

TEST(LineAssembler, EndsTheLineWhenTheReaderIsToStop) {
  LineAssembler assembler;
  assembler.Begin();
  Feed(assembler, "QX");
  assembler.Pending(true);
  EXPECT_EQ(assembler.StillPending(false), Step::Line);
  EXPECT_EQ(assembler.Line(), "QX");
  // The kernel still owns the byte: whoever ends the reader must cancel the read.
  EXPECT_TRUE(assembler.IsReadOutstanding());
}

TEST(LineAssembler, EndsTheLineWhenTheReaderIsToStopAfterAByteToo) {
  LineAssembler assembler;
  assembler.Begin();
  *assembler.Target() = 'Q';
  EXPECT_EQ(assembler.Completed(1, false), Step::Line);
  assembler.Begin();
  EXPECT_EQ(assembler.Pending(false), Step::Line);
}

TEST(LineAssembler, StopsAtTheFirstZeroByteOfALine) {
  LineAssembler assembler;
  assembler.Begin();
  EXPECT_EQ(Feed(assembler, std::string{"ok\0QX\r\n", 7}), Step::Line);
  EXPECT_EQ(assembler.Line(), "ok");
  assembler.Begin();
  EXPECT_EQ(Feed(assembler, std::string{"\0QX\r\n", 5}), Step::Line);
  EXPECT_EQ(assembler.Line(), "");
}

TEST(LineAssembler, KeepsBytesAbove127) {
  LineAssembler assembler;
  assembler.Begin();
  Feed(assembler, "\x80\xff\n");
  EXPECT_EQ(assembler.Line(), "\x80\xff\n");
}

TEST(LineAssembler, ForgetsALongerLineBefore) {
  LineAssembler assembler;
  assembler.Begin();
  Feed(assembler, "SendBlockMessagesOn\r\n");
  assembler.Begin();
  FeedWaiting(assembler, "ok");
  assembler.Failed(true);
  EXPECT_EQ(assembler.Line(), "ok");
}

TEST(LineAssembler, TakesALineOf255Bytes) {
  LineAssembler assembler;
  assembler.Begin();
  EXPECT_EQ(Feed(assembler, std::string(254, 'a')), Step::Read);
  EXPECT_EQ(Feed(assembler, "\n"), Step::Line);
  EXPECT_EQ(assembler.Line().size(), 255u);
}

TEST(LineAssembler, A256thByteIsFatalWhenItIsThereAtOnce) {
  LineAssembler assembler;
  assembler.Begin();
  EXPECT_EQ(Feed(assembler, std::string(255, 'a')), Step::Read);
  EXPECT_EQ(Feed(assembler, "a"), Step::Fatal);
}

TEST(LineAssembler, A256thByteIsFatalWhenItIsWaitedFor) {
  LineAssembler assembler;
  assembler.Begin();
  EXPECT_EQ(FeedWaiting(assembler, std::string(255, 'a')), Step::Read);
  EXPECT_EQ(FeedWaiting(assembler, "a"), Step::Fatal);
}

TEST(LineAssembler, ALineFeedAs256thByteIsTooLate) {
  LineAssembler atOnce;
  atOnce.Begin();
  Feed(atOnce, std::string(255, 'a'));
  EXPECT_EQ(Feed(atOnce, "\n"), Step::Fatal);
  LineAssembler waiting;
  waiting.Begin();
  FeedWaiting(waiting, std::string(255, 'a'));
  EXPECT_EQ(FeedWaiting(waiting, "\n"), Step::Fatal);
}

TEST(LineAssembler, ACountBeyondOneByteCannotLeaveTheBuffer) {
  LineAssembler assembler;
  assembler.Begin();
  EXPECT_EQ(assembler.Completed(1000, true), Step::Fatal);
}

}  // namespace
}  // namespace k7
