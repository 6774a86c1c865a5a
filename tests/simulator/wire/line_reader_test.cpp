#include "wire/line_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace k7sim {
namespace {

std::vector<std::string> Read(LineReader& reader, std::string_view bytes) {
  std::vector<std::string> lines;
  for (const char byte : bytes) {
    switch (reader.Put(byte)) {
      case LineReader::Event::Line:
        lines.push_back(reader.Line());
        break;
      case LineReader::Event::Status:
      case LineReader::Event::Hold:
      case LineReader::Event::Resume:
        lines.push_back(std::string("at once: ") + byte);
        break;
      case LineReader::Event::Halt:
        lines.push_back("^X");
        break;
      case LineReader::Event::None:
        break;
    }
  }
  return lines;
}

TEST(LineReader, EndsALineAtEitherEndOnASerialWireAndLeavesEmptyOnesOut) {
  for (const WireKind kind : {WireKind::Usb, WireKind::Uart}) {
    LineReader reader(kind);
    EXPECT_THAT(Read(reader, "G21\nG90\r\n\n\nM400\r"), testing::ElementsAre("G21", "G90", "M400"));
  }
}

TEST(LineReader, IgnoresCarriageReturnsOnTcp) {
  LineReader reader(WireKind::Tcp);
  EXPECT_THAT(Read(reader, "G2\r1\nG90\r\n"), testing::ElementsAre("G21", "G90"));
}

TEST(LineReader, KeepsALineOf256BytesOnUsb) {
  LineReader reader(WireKind::Usb);
  const std::string line(256, 'x');
  EXPECT_THAT(Read(reader, line + "\n"), testing::ElementsAre(line));
}

TEST(LineReader, ThrowsALineOf257BytesAwayUpToItsEndOnUsb) {
  LineReader reader(WireKind::Usb);
  EXPECT_THAT(Read(reader, std::string(300, 'x') + "\nG21\n"), testing::ElementsAre("G21"));
  EXPECT_EQ(reader.LostBytes(), 300u);
}

TEST(LineReader, LosesWhatDoesNotFitTheRingOfABareUart) {
  LineReader reader(WireKind::Uart);
  EXPECT_THAT(Read(reader, std::string(300, 'x') + "\nG21\n"),
              testing::ElementsAre(std::string(255, 'x'), "G21"));
  EXPECT_EQ(reader.LostBytes(), 45u);
}

TEST(LineReader, SplitsAt131CharactersOnTcp) {
  LineReader reader(WireKind::Tcp);
  EXPECT_THAT(Read(reader, std::string(131, 'a') + "\n"),
              testing::ElementsAre(std::string(131, 'a')));
  EXPECT_THAT(Read(reader, std::string(131, 'a') + "bc\n"),
              testing::ElementsAre(std::string(131, 'a'), "bc"));
}

TEST(LineReader, HearsTheHaltByteInTheMiddleOfALine) {
  LineReader reader(WireKind::Usb);
  EXPECT_THAT(Read(reader, "G0\x18 X1\n"), testing::ElementsAre("^X", "G0 X1"));
}

TEST(LineReader, HearsWhatActsAtOnceInTheMiddleOfALine) {
  LineReader reader(WireKind::Usb);
  EXPECT_THAT(Read(reader, "G0? X!1\n~"),
              testing::ElementsAre("at once: ?", "at once: !", "G0 X1", "at once: ~"));
}

TEST(LineReader, ForgetsTheLineUnderWayWhenTheHostHasGone) {
  LineReader reader(WireKind::Usb);
  Read(reader, "G0 X");
  EXPECT_EQ(reader.PendingBytes(), 4u);
  reader.Reset();
  EXPECT_THAT(Read(reader, "G21\n"), testing::ElementsAre("G21"));
}

}  // namespace
}  // namespace k7sim
