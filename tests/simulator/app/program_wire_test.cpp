// The program on a real pty: the pace of bytes, the speed of the machine, and each fault.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "tests/simulator/support/program.h"

namespace k7test {
namespace {

using k7sim::UniqueFd;
using testing::HasSubstr;

// Times are checked within a window. Its lower end is the exact time; its upper end leaves room for
// a busy computer.
TEST(ProgramWire, CarriesBytesAtTheBaudRate) {
  const std::string link = Folder() + "tty";
  Program program({"--pty", link, "--wire", "uart", "--baud", "1200"});
  program.Output("ready\n");
  const UniqueFd port = OpenPort(link);
  const Stopwatch watch;
  EXPECT_EQ(Ask(port.Get(), "TableIsHomed\n", "\n"), "TableIsHomedFALSE\r\n");
  // 13 bytes in and 19 bytes out at 120 bytes a second.
  EXPECT_GE(watch.Seconds(), 32 / 120.0);
  EXPECT_LT(watch.Seconds(), 32 / 120.0 + 3);
}

TEST(ProgramWire, RunsFiftyTimesFasterThanTheClock) {
  const std::string folder = Folder();
  Program program(
      {"--pty", folder + "tty", "--wire", "uart", "--speed", "50", "--report", folder + "r.json"});
  program.Output("ready\n");
  const UniqueFd port = OpenPort(folder + "tty");
  const Stopwatch watch;
  // 0.1 s to start, 2490 mm at 50 mm/s, 0.1 s more for the ramps: 50 s on the machine clock.
  Ask(port.Get(), "SendBlockMessagesOn\nG0 F3000\nG0 X2490\n", "EX\r\n");
  EXPECT_GE(watch.Seconds(), 50 / 50.0);
  EXPECT_LT(watch.Seconds(), 50 / 50.0 + 3);
  Ask(port.Get(), "SendBlockMessagesOff\n", "Off\r\n");
  EXPECT_EQ(program.Stop(), 0);
  EXPECT_THAT(Content(folder + "r.json"), HasSubstr("\"motionSeconds\": 49.9"));
}

// The replies that a host sees to "TableIsHomed", "G21" and "M17" with each fault.
struct ProgramFault {
  const char* action;
  const char* want;
};

void PrintTo(const ProgramFault& fault, std::ostream* out) {
  *out << fault.action;
}

class ProgramFaults : public testing::TestWithParam<ProgramFault> {};

TEST_P(ProgramFaults, FireAndAreReported) {
  const std::string folder = Folder();
  Program program({"--pty", folder + "tty", "--wire", "uart", "--report", folder + "r.json",
                   "--fault", std::string("match=TableIsHomed,do=") + GetParam().action});
  program.Output("ready\n");
  const UniqueFd port = OpenPort(folder + "tty");
  // Reading ends with the last reply of the case, or after 300 ms when there is to be none.
  const std::string want = GetParam().want;
  const bool quiet = want.empty();
  EXPECT_EQ(Ask(port.Get(), "TableIsHomed\nG21\nM17\n", quiet ? "never" : want,
                quiet ? 300 : kDeadlineMs),
            want);
  EXPECT_EQ(program.Stop(), 0);
  EXPECT_THAT(Content(folder + "r.json"), HasSubstr("\"allFaultsFired\": true"));
}

INSTANTIATE_TEST_SUITE_P(
    Each, ProgramFaults,
    testing::Values(
        ProgramFault{"ignore", "ok\nok\r\n"}, ProgramFault{"drop", "ok\nok\r\n"},
        ProgramFault{"withhold", "ok\nok\r\n"},
        ProgramFault{"delay,ms=100", "ok\nok\r\nTableIsHomedFALSE\r\n"},
        ProgramFault{"duplicate", "TableIsHomedFALSE\r\nTableIsHomedFALSE\r\nok\nok\r\n"},
        ProgramFault{"corrupt", "?ableIsHomedFALSE\r\nok\nok\r\n"},
        ProgramFault{"fragment,ms=50", "TableIsHomedFALSE\r\nok\nok\r\n"},
        ProgramFault{"inject,text=// NOTICE\\n", "// NOTICE\nTableIsHomedFALSE\r\nok\nok\r\n"},
        ProgramFault{"halt", "ALARM: Hard limit +X\nTableIsHomedFALSE\r\n!!\r\n!!\r\n"},
        ProgramFault{"silent", ""}, ProgramFault{"close", ""}, ProgramFault{"half-open", ""},
        ProgramFault{"slow-drain,rate=200", "TableIsHomedFALSE\r\nok\nok\r\n"},
        ProgramFault{"reboot", "Smoothie\r\nok\r\nok\nok\r\n"},
        ProgramFault{"garble", "error:Unsupported command - TableIrHomed\r\nok\nok\r\n"},
        ProgramFault{"noise,bytes=1", "TableIsHomedFALSE\r\n\xbcok\nok\r\n"}));

// What a host writes fills the line, and then its writes wait; nothing comes back.
TEST(ProgramWire, AHalfOpenLinkMakesTheHostsWritesWait) {
  const std::string link = Folder() + "tty";
  Program program({"--pty", link, "--fault", "match=G21,do=half-open"});
  program.Output("ready\n");
  const UniqueFd port = OpenPort(link);
  EXPECT_THAT(Ask(port.Get(), "TableIsHomed\n", "FALSE\r\n"), HasSubstr("TableIsHomedFALSE\r\n"));
  Ask(port.Get(), "G21\n", "never", 100);
  const std::string line(100, 'x');
  std::size_t taken = 0;
  const auto full = [&] {
    const ssize_t went = write(port.Get(), line.data(), line.size());
    taken += went > 0 ? static_cast<std::size_t>(went) : 0;
    return went < 0;
  };
  EXPECT_TRUE(WaitFor([&] {
    while (!full() && taken < 10'000'000) {
    }
    return full();
  }));
  EXPECT_LT(taken, 1'000'000u);
  EXPECT_EQ(ReadUntil(port.Get(), "never", 100), "");
}

}  // namespace
}  // namespace k7test
