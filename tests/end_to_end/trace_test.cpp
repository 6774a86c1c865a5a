// The trace of whole programs: what it says is what went over the wire, and it changes nothing.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <cstdlib>
#include <sstream>

#include "harness.h"
#include "machines.h"

namespace k7test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

namespace fs = std::filesystem;

constexpr char kId[] = "ENDTOENDTRACE001";

class Trace : public testing::Test {
 protected:
  Trace() { fs::create_directories(folder_); }
  ~Trace() override {
    unsetenv("K7_TRACE");
    fs::remove_all(folder_);
  }

  const fs::path folder_ = Places::Get().prefix / "drive_c" / "k7trace";
  const fs::path file_ = folder_ / "trace.txt";
};

// The lines that a trace says were sent to COM7, each with its "\n".
std::string SentLines(const std::string& trace) {
  std::string sent, link;
  std::istringstream lines(trace);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    std::string time, process, thread, handle, kind;
    fields >> time >> process >> thread >> handle >> kind;
    if (kind == "open") link = line.find("COM7\"") != std::string::npos ? handle : "";
    if (kind != "send" || handle != link) continue;
    const std::size_t first = line.find('"') + 1;
    std::string text = line.substr(first, line.rfind('"') - first);
    EXPECT_TRUE(text.ends_with("\\n")) << line;
    sent += text.substr(0, text.size() - 2) + "\n";
  }
  return sent;
}

TEST_F(Trace, OfAJobSaysWhatTheWireHadAndTheWireIsTheSameWithoutIt) {
  std::string transcripts[2];
  for (const bool traced : {false, true}) {
    FreshController controller(kId, EngraversSettings(), EngraversTable());
    std::vector<std::string> arguments = {"engrave", Sample("braille.plt"), "--id", kId, "--batch"};
    if (traced) arguments.insert(arguments.end(), {"--trace", WindowsPath(file_)});
    const HostRun host = RunHost(arguments);
    EXPECT_EQ(host.exitCode, 0) << host.output;
    transcripts[traced ? 1 : 0] = controller.Transcript();
  }
  EXPECT_EQ(transcripts[1], transcripts[0]);
  const std::string trace = ReadFile(file_);
  EXPECT_EQ(SentLines(trace), transcripts[1]);
  EXPECT_TRUE(trace.ends_with(" end\n"));

  const HostRun shown = RunHost({"trace", WindowsPath(file_)});
  EXPECT_EQ(shown.exitCode, 0);
  EXPECT_THAT(shown.output, HasSubstr("[dwell] lowers the cutter"));
  const HostRun summary = RunHost({"trace", WindowsPath(file_), "--summary"});
  EXPECT_THAT(summary.output, HasSubstr("unreadable 0, lost 0\n"));
  EXPECT_THAT(summary.output, HasSubstr("jobs: 1, cuts 0, plunges 25\n"));
  const fs::path picture = folder_ / "cut.svg";
  const HostRun drawn = RunHost({"trace", WindowsPath(file_), "--svg", WindowsPath(picture)});
  EXPECT_EQ(drawn.exitCode, 0) << drawn.output;
  EXPECT_THAT(ReadFile(picture), HasSubstr("<circle"));
}

TEST_F(Trace, HasEverythingUpToThereWhenTheProcessIsKilled) {
  FreshController controller(kId, EngraversSettings(), EngraversTable());
  setenv("K7_TRACE", WindowsPath(file_).c_str(), 1);
  Process slots({"wine", "k7_slots.exe"}, Places::Get().windowsPrograms);
  std::string answer;
  slots.WriteLine("connect " + std::string(kId));
  ASSERT_TRUE(slots.ReadLine(answer));
  EXPECT_EQ(answer, "connected");
  slots.WriteLine("begin");
  ASSERT_TRUE(slots.ReadLine(answer));
  slots.WriteLine("strokes 100000 1");
  ASSERT_TRUE(controller.WaitForTranscript("> G0 ", 200));
  slots.Signal(SIGKILL);
  EXPECT_EQ(slots.Wait(), -1);
  const std::string transcript = controller.Transcript();
  const std::string trace = ReadFile(file_);
  EXPECT_THAT(SentLines(trace), StartsWith(transcript));
  EXPECT_TRUE(trace.ends_with("\n")) << "half a record";
}

TEST_F(Trace, ThatIsFollowedShowsWhatIsWrittenNow) {
  FreshController controller(kId, EngraversSettings(), EngraversTable());
  EXPECT_EQ(RunHost({"list", "--trace", WindowsPath(file_)}).exitCode, 0);
  Process follow({"wine", "k7host.exe", "trace", WindowsPath(file_), "--follow"},
                 Places::Get().windowsPrograms);
  EXPECT_THAT(follow.ReadUntil(" . end"), HasSubstr("asks for a sign of life"));
  EXPECT_EQ(RunHost({"list", "--trace", WindowsPath(file_)}).exitCode, 0);
  EXPECT_THAT(follow.ReadUntil(" . end"), HasSubstr("asks for a sign of life"));
  // As the driver does at 16 MiB.
  fs::rename(file_, folder_ / "trace.txt.1");
  EXPECT_EQ(RunHost({"list", "--trace", WindowsPath(file_)}).exitCode, 0);
  EXPECT_THAT(follow.ReadUntil(" . end"), HasSubstr("asks for a sign of life"));
  follow.Signal(SIGINT);
  EXPECT_EQ(follow.Wait(), 0);
}

TEST_F(Trace, ThatCannotBeWrittenOrReadIsExplained) {
  const HostRun unwritable = RunHost({"list", "--trace", "C:\\no folder\\trace.txt"});
  EXPECT_EQ(unwritable.exitCode, 2);
  EXPECT_THAT(unwritable.output, StartsWith("k7host: --trace C:\\no folder\\trace.txt: cannot be "
                                            "written (error 3)"));
  const HostRun missing = RunHost({"trace", "C:\\no such trace.txt"});
  EXPECT_EQ(missing.exitCode, 2);
  EXPECT_THAT(missing.output, StartsWith("k7host: cannot open C:\\no such trace.txt"));
  const HostRun other = RunHost({"trace", Sample("plate.plt")});
  EXPECT_EQ(other.exitCode, 2);
  EXPECT_THAT(other.output, HasSubstr("is no trace"));
}

}  // namespace
}  // namespace k7test
