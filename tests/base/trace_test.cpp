// The trace as the driver writes it: each kind of record, the file, and that it disturbs nothing.
#include "base/trace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include <array>
#include <map>
#include <optional>
#include <regex>
#include <sstream>
#include <string_view>
#include <thread>
#include <vector>

#include "base/trace_file.h"
#include "job/job.h"
#include "job/jog.h"
#include "job/passes.h"
#include "link/notify.h"
#include "link/serial.h"
#include "motion/homing.h"
#include "motion/strokes.h"
#include "session/load.h"
#include "settings/paths.h"
#include "support/host_window.h"
#include "support/test_machine.h"
#include "support/trace_capture.h"
#include "support/wait_until.h"

namespace k7 {
namespace {

using k7test::AttachedDevice;
using k7test::FakeController;
using k7test::HostWindow;
using k7test::TestMachine;
using k7test::TraceCapture;
using k7test::WaitUntil;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace fs = std::filesystem;

TEST(Trace, OfASmallJobHasEveryLineWithItsTagAndEveryMessage) {
  const TraceCapture trace;
  TestMachine machine;
  EXPECT_TRUE(BeginJob(*machine));
  machine->job.firstMove = 0;
  EXPECT_EQ(EngraveTo(*machine, 2000, 4000), kStatusSent);
  EXPECT_TRUE(machine.WaitUntilIdle());
  EndJob(*machine);
  EXPECT_THAT(trace.Of("send"),
              ElementsAre(R"(host send - "M106\n")", R"(host send - "SendBlockMessagesOn\n")",
                          R"(host send - "G0 F762.000\n")", R"(host send plunge "G0 Z26.987499\n")",
                          R"(host send - "G0 F3048.000\n")",
                          R"(host send move "G0 X12.700000 Y25.400000\n")",
                          R"(host send - "SendBlockMessagesOff\n")", R"(host send - "M107\n")"));
  const auto move = std::vector<std::string>{R"(reader recv "QX\r\n")", R"(reader recv "BX\r\n")",
                                             R"(reader recv "EX\r\n")"};
  EXPECT_THAT(trace.Of("recv"),
              ElementsAre(R"(reader recv "SendBlockMessagesOn\r\n")", move[0], move[1], move[2],
                          move[0], move[1], move[2], R"(reader recv "SendBlockMessagesOff\r\n")"));
  EXPECT_THAT(trace.Of("tell|told"), ElementsAre("reader tell callback 1001 0 0", "reader told #",
                                                 "reader tell callback 1002 0 0", "reader told #",
                                                 "reader tell callback 1003 0 0", "reader told #"));
  EXPECT_THAT(trace.Of("job"),
              ElementsAre("host job begin", "host job begun", "host job end", "host job ended"));
}

TEST(Trace, NamesTheThreadOfAJog) {
  const TraceCapture trace;
  TestMachine machine;
  machine->jog.jogFast = 1000;
  StartJog(*machine, kJogXPlus, 0, 0, 0);
  ASSERT_TRUE(WaitUntil([&] { return machine->jog.jogBusy == 0; }));
  EXPECT_THAT(trace.Of("send"), Contains(StartsWith("jog send jog \"G0 X")));
  EXPECT_THAT(trace.Of("job"),
              ElementsAre("jog job begin", "jog job begun", "jog job end", "jog job ended"));
}

TEST(Trace, TellsOfAPassItsDepthAndOfASettingsFileWhetherThereIsOne) {
  const TraceCapture trace;
  TestMachine machine;
  machine->passes.passCount = 2;
  machine->passes.passDepth = 0.0625f;
  StartPass(*machine, 2, 0, 0, nullptr, 0);
  EXPECT_THAT(trace.Of("job"), ElementsAre("host job pass 2 of 2 depth #"));
  LoadSettings(*machine);
  EXPECT_THAT(trace.Of("load"),
              ElementsAre(AllOf(StartsWith("host load missing \"C:\\"), EndsWith(".ini\""))));
  WritePrivateProfileStringW(L"A", L"B", L"1", SettingsFilePath(machine->link).text);
  LoadSettings(*machine);
  EXPECT_THAT(trace.Of("load"), Contains(StartsWith("host load found \"C:\\")));
}

TEST(Trace, TellsOfAReportToAWindowWithItsNumbers) {
  const HostWindow window;
  const TraceCapture trace;
  SendToHost(window.Handle(), WM_APP + 3, -7, 5);
  EXPECT_THAT(trace.Records(), ElementsAre("host tell window 32771 -7 5", "host told #"));
}

TEST(Trace, TellsOfALinkThatIsAttachedAndOfItsLoss) {
  const TraceCapture trace;
  {
    FakeController controller;
    AttachedDevice device{controller};
    EXPECT_TRUE(device.Hear("Y\xE4\r\n"));
    controller.HangUp();
    ASSERT_TRUE(WaitUntil([&] { return device->link.lost != 0; }));
  }
  const std::vector<std::string> records = trace.Records();
  EXPECT_EQ(records.front(), "host attach serial \"fake\"");
  EXPECT_THAT(records, Contains(R"(reader recv "Y\xE4\r\n")"));
  EXPECT_THAT(records, Contains(StartsWith("reader fail read ")));
  EXPECT_THAT(records, Contains("reader lost read"));
  EXPECT_EQ(records.back(), "host detach");
}

TEST(Trace, TellsWhyAPortDoesNotOpen) {
  const TraceCapture trace;
  EXPECT_FALSE(OpenSerialPort(L"\\\\.\\COM48"));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
  EXPECT_THAT(trace.Records(), ElementsAre(R"(host fail open 2 "\\.\COM48")"));
}

TEST(Trace, TellsOfAWaitThatLastsForASecondAndOfItsEnd) {
  const TraceCapture trace;
  TestMachine machine;
  machine.FitSwitches();
  machine.controller.Answer("M119\n", "");
  std::thread host{[&] { QuerySwitches(*machine, nullptr, nullptr, nullptr, nullptr); }};
  const std::string wait = "host wait # \"the state of the switches\" until \"a line with min_x:\"";
  EXPECT_TRUE(WaitUntil([&] { return trace.Of("wait").size() == 1; }));
  EXPECT_THAT(trace.Of("waited"), IsEmpty());
  machine.controller.Say("min_x:0 min_y:0 min_z:0 Probe: 0\r\n");
  host.join();
  EXPECT_THAT(trace.Of("wait|waited"),
              ElementsAre(wait, "host waited # \"the state of the switches\""));
}

TEST(Trace, StartsWithAHeaderAndEndsWithAnEnd) {
  const TraceCapture trace;
  EndTrace();
  const std::string text = TraceCapture::ReadAll(trace.Path());
  const std::regex header{
      R"( +0\.\d{6} \d+ host:\d+ +- +trace  format=1 driver=[\d.]+ )"
      R"(zero=\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{6}Z program="[A-Z]:\\.*\.exe")"};
  EXPECT_TRUE(std::regex_match(text.substr(0, text.find('\n')), header)) << text;
  EXPECT_THAT(trace.Records(), ElementsAre("host end"));
}

TEST(Trace, IsNotWrittenWhileItIsOff) {
  const TraceCapture trace;
  EndTrace();
  const std::string before = TraceCapture::ReadAll(trace.Path());
  TestMachine machine;
  machine.OpenJob();
  EngraveTo(*machine, 2000, 4000);
  EndJob(*machine);
  EXPECT_EQ(TraceCapture::ReadAll(trace.Path()), before);
}

TEST(Trace, LeavesTheErrorCodeOfTheThreadAlone) {
  const TraceCapture trace;
  SetLastError(4711);
  TraceSent(nullptr, "-", "G21\n");
  TraceReceived("ok\r\n");
  EXPECT_EQ(GetLastError(), 4711u);
}

TEST(Trace, OfAFolderIsAFileNamedAfterTheProcess) {
  const TraceCapture trace;
  EndTrace();
  BeginTrace(trace.Folder().c_str());
  TraceEvent(nullptr, "back");
  EndTrace();
  const fs::path file =
      trace.Folder() / (L"k7trace-" + std::to_wstring(GetCurrentProcessId()) + L".txt");
  EXPECT_THAT(TraceCapture::ReadAll(file), HasSubstr(" back\n"));
}

TEST(Trace, OfAFileThatCannotBeMadeIsNone) {
  const TraceCapture trace;
  EndTrace();
  BeginTrace((trace.Folder() / "no folder" / "trace.txt").c_str());
  EXPECT_FALSE(Tracing());
}

TEST(Trace, AppendsToAnOlderOne) {
  const TraceCapture trace;
  EndTrace();
  BeginTrace(trace.Path().c_str());
  EXPECT_THAT(trace.Records(), ElementsAre("host end"));
  EndTrace();
  EXPECT_THAT(trace.Records(), ElementsAre("host end", "host end"));
}

// Several processes may write to one file; here the other one is the test.
TEST(Trace, GoesOnBehindWhatAnotherProcessHasAppended) {
  const TraceCapture trace;
  TraceEvent(nullptr, "back", "1");
  std::ofstream(trace.Path(), std::ios::binary | std::ios::app)
      << "      0.000001 9 host:9 - back 2\n";
  TraceEvent(nullptr, "back", "3");
  EXPECT_THAT(trace.Records(), ElementsAre("host back 1", "host back 2", "host back 3"));
}

class FullTrace : public testing::Test {
 protected:
  // Fills the file as far as it goes and `more` records on.
  void Fill(int more) {
    const std::string line(4000, 'x');
    const auto records = static_cast<int>(TraceFile::kMostBytes / 4047);
    for (int i = 0; i < records + more; ++i) TraceSent(nullptr, "-", line.c_str());
  }
  fs::path Older() const { return trace_.Path().native() + L".1"; }

  TraceCapture trace_;
};

TEST_F(FullTrace, IsRenamedOnceAndBegunAnewWithAHeader) {
  Fill(0);
  EXPECT_TRUE(fs::exists(Older()));
  EXPECT_LE(fs::file_size(Older()), static_cast<std::uintmax_t>(TraceFile::kMostBytes));
  EXPECT_GT(fs::file_size(Older()), static_cast<std::uintmax_t>(TraceFile::kMostBytes) * 9 / 10);
  const std::string text = TraceCapture::ReadAll(trace_.Path());
  EXPECT_THAT(text.substr(0, text.find('\n')), HasSubstr(" trace  format=1 "));
  Fill(0);
  EXPECT_LE(fs::file_size(Older()), static_cast<std::uintmax_t>(TraceFile::kMostBytes));
  EXPECT_LE(fs::file_size(trace_.Path()), static_cast<std::uintmax_t>(TraceFile::kMostBytes));
  EXPECT_FALSE(fs::exists(Older().native() + L".1"));
}

// A host's thread, the reader and a jog, each as fast as it can, until the file has been renamed.
TEST_F(FullTrace, OfSeveralThreadsHasEachRecordWholeAndInTheOrderOfItsThread) {
  constexpr int kRecords = 1800;
  const std::array<const char*, 3> roles{"host", "reader", "jog"};
  const auto line = [](int number) {
    const auto more = static_cast<std::size_t>(number * 37 % 900);
    return std::to_string(number) + " " + std::string(3000 + more, 'x');
  };
  const UniqueHandle start{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  std::vector<std::thread> threads;
  for (const char* role : roles) {
    threads.emplace_back([&start, &line, role] {
      std::optional<TracedThread> named;
      if (std::string_view{role} != "host") named.emplace(role, nullptr);
      WaitForSingleObject(start.Get(), INFINITE);
      for (int i = 0; i < kRecords; ++i) TraceSent(nullptr, "-", line(i).c_str());
    });
  }
  SetEvent(start.Get());
  for (std::thread& thread : threads) thread.join();
  EndTrace();

  std::map<std::string, int> next;
  double time = 0;
  for (const fs::path& file : {Older(), trace_.Path()}) {
    std::istringstream records(TraceCapture::ReadAll(file));
    std::string header;
    ASSERT_TRUE(std::getline(records, header)) << file;
    EXPECT_THAT(header, HasSubstr(" trace  format=1 "));
    for (std::string record; std::getline(records, record);) {
      std::istringstream fields(record);
      double at = 0;
      std::string process, thread, link, kind;
      fields >> at >> process >> thread >> link >> kind;
      EXPECT_GE(at, time);
      time = at;
      if (kind == "end") continue;
      const std::string role = thread.substr(0, thread.find(':'));
      ASSERT_THAT(record, EndsWith(" send   - \"" + line(next[role]) + "\""));
      ++next[role];
    }
  }
  for (const char* role : roles) EXPECT_EQ(next[role], kRecords) << role;
}

// Nobody can rename the file: it keeps its size, and says later how much it lacks.
TEST_F(FullTrace, ThatCannotBeRenamedStopsAndLaterSaysHowManyRecordsItLacks) {
  fs::create_directories(Older() / "in the way");
  Fill(100);
  EXPECT_LE(fs::file_size(trace_.Path()), static_cast<std::uintmax_t>(TraceFile::kMostBytes));
  fs::remove_all(Older());
  for (int i = 0; i < 100; ++i) TraceSent(nullptr, "-", std::string(4000, 'x').c_str());
  EXPECT_TRUE(fs::exists(Older()));
  EXPECT_THAT(trace_.Records(), Contains(StartsWith("host gap ")));
}

}  // namespace
}  // namespace k7
