// k7host engrave and k7host estimate as commands.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "host_program.h"

namespace k7test {
namespace {

using EngraveCommand = Program;

TEST_F(EngraveCommand, EngravesAPlotterFile) {
  const Outcome run = Host("engrave " + File("IN;SP1;PU1016,1016;PD2032,1016;PU;"));
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.log,
            "Connect 0000000000000000\nEstimateJobTime(3)\nSetGridMode(0)\nBeginJob\n"
            "StartPass(1,4000,4000)\nMoveTo(4000,4000)\nEngraveTo(8000,4000)\nMoveTo(0,0)\n"
            "EndJob\nSetGridMode(0)\nRelease\n");
  EXPECT_EQ(run.out,
            "job: strokes 1, dots 0, cuts 1, passes 1, X 1.000 to 2.000, Y 1.000 to 1.000 inches\n"
            "estimate: 61 s (0:01:01)\npass: Pass 1 of 1 - 0.063\n"
            "progress: [##########..........]  50%  strokes 0/1  queue  0  left 0:00:31\n"
            "progress: [####################] 100%  strokes 1/1  queue  0  left 0:00:00\n"
            "cut: 1.000 inches, strokes 1, depth 0.063 inches\n"
            "done: strokes 1/1, moves 2/2, passes 1, elapsed 0:00:00\n");
}

TEST_F(EngraveCommand, ABadFileMovesNothing) {
  const Outcome run = Host("engrave " + File("IN;\nPU1,2;PD3;\n"));
  EXPECT_EQ(run.exitCode, 2u);
  EXPECT_EQ(run.err, "a.plt:2:9: X coordinate without a Y\n");
  EXPECT_EQ(run.log, "");
  EXPECT_EQ(Host("engrave nowhere.plt").err, "k7host: cannot open nowhere.plt\n");
}

TEST_F(EngraveCommand, ADrawingOffTheTableMovesNothing) {
  const Outcome run = Host("engrave " + File("PU0,0;PD26000,0;"));
  EXPECT_EQ(run.exitCode, 2u);
  EXPECT_EQ(
      run.err,
      "k7host: a.plt: the drawing does not fit the table: it spans X 0.000 to 25.591, Y "
      "0.000 to 0.000 inches, the table is 25.000 x 16.000 inches; --origin, --offset and --scale "
      "place the drawing\n");
  EXPECT_EQ(run.log, "Connect 0000000000000000\nRelease\n");
}

TEST_F(EngraveCommand, PassesAreThoseOfTheSettingsOrFewer) {
  Set("K7_FAKE_PASSES", "3");
  const std::string file = File("PD1016,0;");
  EXPECT_NE(Host("engrave " + file).out.find("pass: Pass 3 of 3"), std::string::npos);
  const Outcome two = Host("engrave --passes 2 " + file);
  EXPECT_EQ(two.exitCode, 0u);
  EXPECT_NE(two.out.find("pass: Pass 2 of 3"), std::string::npos);
  EXPECT_EQ(two.out.find("pass: Pass 3 of 3"), std::string::npos);
  const Outcome four = Host("engrave --passes 4 " + file);
  EXPECT_EQ(four.exitCode, 2u);
  EXPECT_EQ(four.err,
            "k7host: --passes 4: the engrave settings make 3; set more in the settings dialog\n");
}

TEST_F(EngraveCommand, StatusesOfTheDriverAreAnswered) {
  const std::string file = File("PU1016,0;PD2032,0;");
  Set("K7_FAKE_MOVE", "4");
  Set("K7_FAKE_ENGRAVE", "3");
  Outcome run = Host("engrave " + file);  // armed, probed, issued again
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_NE(run.log.find("EngraveTo(8000,0)\nEngraveTo(8000,0)\nMoveTo(0,0)\nEndJob"),
            std::string::npos);
  Set("K7_FAKE_MOVE", "2");
  Set("K7_FAKE_ENGRAVE", "");
  run = Host("engrave " + file);  // manual cutter, nobody there to set it
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_NE(run.out.find("cutter: manual, kept as it is\n"), std::string::npos);
  Set("K7_FAKE_MOVE", "");
  Set("K7_FAKE_ENGRAVE", "9");
  run = Host("engrave " + file);
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(run.err, "k7host: stopped: the stroke would cut into the table\n");
  Set("K7_FAKE_BEGIN", "0");
  run = Host("engrave " + file);
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(run.err,
            "k7host: the machine refused to begin the job: its proximity switch is closed\n");
}

TEST_F(EngraveCommand, ABrailleRunTakesDotsOnly) {
  const Outcome run = Host("engrave --braille-drill " + File("PD1016,0;"));
  EXPECT_EQ(run.exitCode, 2u);
  EXPECT_EQ(run.err, "k7host: a.plt: a braille run takes dots only, the drawing has 1 strokes\n");
  const Outcome good = Host("engrave --braille-drill " + File("PU1016,0;PD;"));
  EXPECT_EQ(good.exitCode, 0u);
  EXPECT_NE(good.log.find("SetGridMode(2)\nBeginJob\nStartPass(1,4000,0)\nMoveTo(4000,0)\n"
                          "LowerCutter\n"),
            std::string::npos);
  EXPECT_EQ(Host("engrave --braille-bead a.plt").err,
            "k7host: the machine has no bead insert tool\n");
}

TEST_F(EngraveCommand, StoppingLiftsTheCutterAndEndsTheJob) {
  ShareConsole();
  Set("K7_FAKE_HOLD", "1");  // the machine takes lines and never begins: the host waits
  std::string drawing = "PU0,1016;PD";
  for (int i = 1; i <= 50; ++i) drawing += (i == 1 ? "" : ",") + std::to_string(i * 10) + ",1016";
  const HANDLE process = Start("engrave " + File(drawing));
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (Log().find("EngraveTo(1220,4000)") == std::string::npos &&
         std::chrono::steady_clock::now() < deadline) {
    Sleep(20);
  }
  Break();
  const Outcome run = Finish(process);
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(
      run.err,
      "k7host: stopping after this stroke ... (Ctrl-C again ends at once, the cutter where it "
      "is)\nk7host: stopped by the user\n");
  EXPECT_NE(run.log.find("EngraveTo(1220,4000)\nMoveTo(1219,4000)\nEndJob\nSetGridMode(0)\n"
                         "Release\n"),
            std::string::npos)
      << run.log;
  EXPECT_NE(run.out.find("stopped: strokes 0/1, moves 0/51, passes 1"), std::string::npos);
}

TEST_F(EngraveCommand, ABatchJobHomesToo) {
  Set("K7_FAKE_SWITCHES", "1");
  const Outcome run = Host("engrave --batch --home " + File("PD1016,0;"));
  EXPECT_EQ(run.exitCode, 0u) << run.err;
  EXPECT_LT(run.log.find("HomeTable\n"), run.log.find("Window(0)\n"));
  EXPECT_LT(run.log.find("Window(0)\n"), run.log.find("BeginJob\n"));
}

TEST_F(EngraveCommand, EngravesAfterTheDialogOnlyWhenItSaysRun) {
  const std::string file = File("PD1016,0;");
  const Outcome run = Host("engrave --settings " + file);
  EXPECT_EQ(run.exitCode, 1u);
  EXPECT_EQ(run.log.find("BeginJob"), std::string::npos);
  Set("K7_FAKE_SETTINGS", "1");
  EXPECT_EQ(Host("engrave --settings " + file).exitCode, 0u);
}

TEST_F(EngraveCommand, EstimatesWithoutMoving) {
  const Outcome run = Host("estimate " + File("PU1016,1016;PD2032,1016;PU;"));
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_EQ(run.log, "Connect 0000000000000000\nEstimateJobTime(3)\nRelease\n");
  EXPECT_EQ(run.out,
            "job: strokes 1, dots 0, cuts 1, passes 1, X 1.000 to 2.000, Y 1.000 to 1.000 inches\n"
            "estimate: 61 s (0:01:01)\n");
}

TEST_F(EngraveCommand, EstimatesAllPassesOrThoseAskedFor) {
  Set("K7_FAKE_PASSES", "3");
  const std::string file = File("PU1016,1016;PD2032,1016;PU;");
  EXPECT_EQ(Host("estimate " + file).out,
            "job: strokes 1, dots 0, cuts 1, passes 3, X 1.000 to 2.000, Y 1.000 to 1.000 inches\n"
            "estimate: 183 s (0:03:03)\n");
  EXPECT_NE(Host("estimate --passes 1 " + file).out.find("estimate: 61 s (0:01:01)\n"),
            std::string::npos);
  EXPECT_EQ(Host("estimate --passes 4 " + file).exitCode, 2u);
}

TEST_F(EngraveCommand, AGridRunIsAnnouncedAndTheSpindleStartedFirstWhenAskedFor) {
  Set("K7_FAKE_SPINDLE", "1");
  const Outcome run = Host("engrave --grid --spindle " + File("PU1016,0;PD2032,0;"));
  EXPECT_EQ(run.exitCode, 0u) << run.err;
  EXPECT_NE(run.log.find("SetGridMode(1)\nBeginJob\nSetSpindle(1)\nStartPass(1,4000,0)\n"
                         "MoveTo(4000,0)\nEngraveTo(8000,0)\nMoveTo(0,0)\nEndJob\nSetSpindle(0)\n"
                         "SetGridMode(0)\n"),
            std::string::npos)
      << run.log;
}

TEST_F(EngraveCommand, ADryRunChecksAndMovesNothing) {
  const Outcome run =
      Host("engrave --dry-run --home --preview p.svg --optimise --origin lower-left " +
           File("IN;VS9;PU2032,1016;PD3048,1016;PU1016,1016;PD1778,1016;"));
  EXPECT_EQ(run.exitCode, 0u) << run.err;
  EXPECT_EQ(run.log, "Connect 0000000000000000\nEstimateJobTime(5)\nRelease\n");
  EXPECT_EQ(run.out,
            "notice: a.plt:1:4: VS passed over: speeds and forces come from the engrave settings\n"
            "optimise: travel 2.250 instead of 3.750 inches a pass, 1.500 saved\n"
            "job: strokes 2, dots 0, cuts 2, passes 1, X 0.000 to 2.000, Y 0.000 to 0.000 inches\n"
            "estimate: 61 s (0:01:01)\npreview: p.svg\n"
            "dry run: the job fits the machine; nothing was moved\n");
  EXPECT_TRUE(std::filesystem::exists(folder_ / "p.svg"));
  EXPECT_EQ(Host("engrave --dry-run --preview none/p.svg a.plt").err,
            "k7host: cannot write none/p.svg\n");
}

TEST_F(EngraveCommand, AFrameIsDrivenBeforeTheJob) {
  const Outcome run = Host("engrave --frame " + File("PU1016,0;PD2032,1016;"));
  EXPECT_EQ(run.exitCode, 0u) << run.err;
  EXPECT_NE(run.log.find("BeginJob\nMoveTo(4000,0)\nMoveTo(8000,0)\nMoveTo(8000,4000)\n"
                         "MoveTo(4000,4000)\nMoveTo(4000,0)\nMoveTo(4000,0)\nEndJob\n"
                         "SetGridMode(0)\nBeginJob\nStartPass(1,4000,0)\n"),
            std::string::npos)
      << run.log;
}

TEST_F(EngraveCommand, AnSvgDrawingIsEngraved) {
  const Outcome run = Host(
      "engrave " + File("<svg width='2in' height='1in'><path stroke='red' d='M96 96H192'/></svg>"));
  EXPECT_EQ(run.exitCode, 0u) << run.err;
  EXPECT_NE(run.log.find("MoveTo(4000,0)\nEngraveTo(8000,0)\n"), std::string::npos) << run.log;
  EXPECT_EQ(Host("engrave " + File("<svg><text>a</text></svg>")).err.substr(0, 45),
            "a.plt:1:7: text is not converted to paths: in");
}

}  // namespace
}  // namespace k7test
