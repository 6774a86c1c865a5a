// k7host.exe with a machine that says nothing, or is gone, and a user who has had enough.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "host_program.h"

namespace k7test {
namespace {

using SilentMachine = Program;

TEST_F(SilentMachine, IsToldOfAndTheSecondCtrlCEndsAtOnce) {
  ShareConsole();
  Set("K7_FAKE_SILENT", "1");
  Set("K7_FAKE_HANG", "EngraveTo(8000,4000)");
  const HANDLE process =
      Start("engrave " + File("PU0,0;PD508,0;PU1016,1016;PD1524,1016,2032,1016;PU;"));
  EXPECT_TRUE(WaitForError("k7host: no word from the machine for 5 s, "));
  EXPECT_TRUE(WaitForError(", stroke 2 of 2 - Ctrl-C to stop waiting\n"));
  Break();
  EXPECT_TRUE(WaitForError("k7host: stopping after this stroke ..."));
  Break();
  const Outcome run = Finish(process);
  EXPECT_EQ(run.exitCode, 3u);
  EXPECT_NE(run.err.find("k7host: ended at once, cutter position unknown"), std::string::npos);
  EXPECT_NE(run.err.find("after stroke 1 of 2: k7host engrave --resume a.plt.resume\n"),
            std::string::npos)
      << run.err;
  EXPECT_EQ(run.log.find("Release"), std::string::npos);
}

TEST_F(SilentMachine, AMachineThatAnswersIsNotCalledSilent) {
  ShareConsole();
  Set("K7_FAKE_HANG", "GoToAsJob(4000,4000,0)");
  const HANDLE process = Start("goto 1 1");
  EXPECT_TRUE(
      WaitForError("k7host: the machine answers, but has reported nothing done for 5 s, on "
                   "the way: if the cutter was up already, this board does not report"));
  Break();
  EXPECT_TRUE(WaitForError("k7host: stopping when this is done"));
  Break();
  EXPECT_EQ(Finish(process).exitCode, 3u);
}

TEST_F(SilentMachine, ALostLinkIsNamedAndAnotherRunGoesOn) {
  Set("K7_FAKE_SWITCHES", "1");
  Set("K7_FAKE_LOSE", "EngraveTo(12000,0)");
  const std::string file = File("PU0,0;PD1016,0;PU2032,0;PD3048,0;PU4064,0;PD5080,0;");
  Outcome run = Host("engrave --home " + file);
  EXPECT_EQ(run.exitCode, 3u);
  EXPECT_EQ(run.err,
            "k7host: link lost after stroke 2 of 3, cutter position unknown\n"
            "k7host: to go on after stroke 2 of 3: k7host engrave --resume a.plt.resume\n");
  Set("K7_FAKE_LOSE", "");
  ForgetLog();
  run = Host("engrave --resume a.plt.resume");
  EXPECT_EQ(run.exitCode, 0u) << run.err;
  EXPECT_EQ(
      run.log,
      "Connect "
      "0000000000000000\nEstimateJobTime(7)\nHomeTable\nReadSwitches\nSetGridMode(0)\nBeginJob\n"
      "StartPass(1,16000,0)\nMoveTo(16000,0)\nEngraveTo(20000,0)\nMoveTo(0,0)\nEndJob\n"
      "SetGridMode(0)\nRelease\n");
  EXPECT_NE(run.out.find("cut: 1.000 inches, strokes 1, depth"), std::string::npos) << run.out;
  EXPECT_FALSE(std::filesystem::exists(folder_ / "a.plt.resume"));
}

TEST_F(SilentMachine, AJobGoesOnOnlyWithTheDrawingItWas) {
  Set("K7_FAKE_SWITCHES", "1");
  Set("K7_FAKE_LOSE", "EngraveTo(4000,0)");
  Host("engrave --resume-to kept.txt " + File("PU0,0;PD1016,0;PU2032,0;PD3048,0;"));
  Set("K7_FAKE_LOSE", "");
  File("PU0,0;PD1016,0;PU2032,0;PD3058,0;");
  ForgetLog();
  Outcome run = Host("engrave --resume kept.txt");
  EXPECT_EQ(run.exitCode, 2u);
  EXPECT_NE(run.err.find("the drawing or the machine's settings are not what they were"),
            std::string::npos)
      << run.err;
  EXPECT_EQ(run.log, "Connect 0000000000000000\nEstimateJobTime(5)\nRelease\n");
  EXPECT_EQ(Host("engrave --resume a.plt").exitCode, 2u);
  EXPECT_EQ(Host("engrave --resume nowhere").err, "k7host: nowhere: there is no such file\n");
  EXPECT_EQ(Host("engrave --from-stroke 3 a.plt").err,
            "k7host: --from-stroke 3: the job has 2 strokes and dots in all its passes\n");
}

TEST_F(SilentMachine, AFromStrokeHomesFirstUnlessToldNotTo) {
  const std::string file = File("PU0,0;PD1016,0;PU2032,0;PD3048,0;");
  Outcome run = Host("engrave --from-stroke 2 " + file);
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_NE(run.err.find("without switches: set the table home by hand"), std::string::npos);
  ForgetLog();
  run = Host("engrave --from-stroke 2 --no-home " + file);
  EXPECT_EQ(run.exitCode, 0u) << run.err;
  EXPECT_NE(run.log.find("StartPass(1,8000,0)\nMoveTo(8000,0)\nEngraveTo(12000,0)\n"),
            std::string::npos);
}

TEST_F(SilentMachine, AWatchOfTheSwitchesEndsWithAnError) {
  Set("K7_FAKE_SWITCHES", "1");
  Set("K7_FAKE_SILENT", "1");
  const Outcome run = Host("switches --watch");
  EXPECT_EQ(run.exitCode, 3u);
  EXPECT_EQ(run.err, "k7host: the machine no longer answers\n");
}

TEST_F(SilentMachine, ADialogThatClosedByItselfIsNotCalledCancelled) {
  Set("K7_FAKE_SILENT", "1");
  const std::string commands[] = {"settings", "engrave --settings " + File("PD1016,0;")};
  for (const std::string& command : commands) {
    const Outcome run = Host(command);
    EXPECT_EQ(run.exitCode, 3u);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "k7host: the dialog was closed because the controller has fallen silent\n");
  }
}

TEST_F(SilentMachine, TheEndOfTheSessionEndsTheJobFirst) {
  Set("K7_FAKE_HOLD", "1");  // the machine takes lines and never begins: the host waits
  std::string drawing = "PU0,1016;PD";
  for (int i = 1; i <= 50; ++i) drawing += (i == 1 ? "" : ",") + std::to_string(i * 10) + ",1016";
  const HANDLE process = Start("engrave " + File(drawing));
  for (int i = 0; i < 1500 && Log().find("EngraveTo(1220,4000)") == std::string::npos; ++i)
    Sleep(20);
  const HWND window = FindWindowW(L"K7HostSession", nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(SendMessageW(window, WM_QUERYENDSESSION, 0, 0), TRUE);
  SendMessageW(window, WM_ENDSESSION, FALSE, 0);  // another program has refused
  EXPECT_EQ(Log().find("EndJob"), std::string::npos);
  SendMessageW(window, WM_ENDSESSION, TRUE, 0);
  EXPECT_NE(Log().find("MoveTo(1219,4000)\nEndJob\nSetGridMode(0)\nRelease\n"), std::string::npos);
  EXPECT_EQ(Finish(process).exitCode, 1u);
}

TEST_F(SilentMachine, TheConsolesCodePageIsPutBackOnEveryWayOut) {
  ShareConsole();
  const UINT before = GetConsoleOutputCP();
  ASSERT_TRUE(SetConsoleOutputCP(437));
  Host("list");
  EXPECT_EQ(GetConsoleOutputCP(), 437u);
  Host("bogus");
  EXPECT_EQ(GetConsoleOutputCP(), 437u);
  Set("K7_FAKE_HANG", "HomeTable");
  const HANDLE process = Start("home");
  for (int i = 0; i < 1500 && Log().find("HomeTable") == std::string::npos; ++i) Sleep(20);
  EXPECT_EQ(GetConsoleOutputCP(), static_cast<UINT>(CP_UTF8));
  Break();
  EXPECT_TRUE(WaitForError("stopping when this is done"));
  Break();
  EXPECT_EQ(Finish(process).exitCode, 3u);
  EXPECT_EQ(GetConsoleOutputCP(), 437u);
  SetConsoleOutputCP(before);
}

}  // namespace
}  // namespace k7test
