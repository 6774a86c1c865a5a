// A sender that nobody here wrote streams a file to the program over its pty.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <numbers>
#include <sstream>
#include <string>

#include "machine/picture.h"
#include "tests/simulator/support/board_bench.h"
#include "tests/simulator/support/program.h"

namespace k7test {
namespace {

constexpr int kFigures = 250;
constexpr double kFigureMm = 15 + 2.5 * std::numbers::pi;  // three sides and a half circle

// 2000 lines: a plate full of small figures with an arc each.
std::string Drawing() {
  std::string text;
  for (int i = 0; i < kFigures; ++i) {
    const int x = 20 + i % 25 * 20, y = 20 + i / 25 * 30;
    char figure[256];
    std::snprintf(figure, sizeof figure,
                  "; figure %d\nG0 X%d Y%d\nG1 Z26 F3000\nX%d\nG3 X%d Y%d I0 J2.5\nG1 X%d (back)\n"
                  "Y%d\nG0 Z20\n",
                  i, x, y, x + 5, x + 5, y + 5, x, y);
    text += i == 0 ? "M3 G21 G90 ; the spindle, mm, absolute\n" + std::string(figure).substr(11)
                   : std::string(figure);
  }
  return text;
}

TEST(Printcore, StreamsTwoThousandLinesAndThePictureIsThatOfTheFile) {
  if (std::system("command -v printcore >/dev/null") != 0) {
    GTEST_SKIP() << "printcore is not installed (package printcore)";
  }
  const std::string folder = Folder(), drawing = Drawing();
  std::ofstream(folder + "drawing.gcode") << drawing;
  // One line is garbled on its way, and has to be sent again.
  Program program({"--pty", folder + "tty", "--speed", "max", "--homed", "--surface", "plane:1",
                   "--picture", folder + "p.svg", "--report", folder + "r.json", "--transcript",
                   folder + "t.txt", "--fault", "match=N500 ,do=garble"});
  program.Output("ready\n");
  const std::string command =
      "timeout 200 printcore " + folder + "tty " + folder + "drawing.gcode >" + folder + "log 2>&1";
  EXPECT_EQ(std::system(command.c_str()), 0) << Content(folder + "log");
  {
    const k7sim::UniqueFd port = OpenPort(folder + "tty");
    EXPECT_TRUE(
        WaitFor([&] { return Ask(port.Get(), "?", ">\n").find("<Idle|") != std::string::npos; }));
  }
  EXPECT_EQ(program.Stop(), 0);

  k7sim::MachineSetup setup;
  setup.homed = true;
  setup.surface = k7sim::Surface(1);
  Bench bench(setup);
  std::istringstream lines(drawing);
  int count = 0;
  for (std::string line; std::getline(lines, line); ++count) {
    bench.Send(line);
    bench.PassAll();
  }
  EXPECT_EQ(count, 2000);
  EXPECT_EQ(Content(folder + "p.svg"),
            k7sim::DrawPicture(bench.board.Record().Strokes(), setup.geometry,
                               k7sim::HomeCorner::BottomLeft));
  const auto report = nlohmann::json::parse(Content(folder + "r.json"));
  EXPECT_NEAR(report["cutInches"].get<double>(), kFigures * kFigureMm / 25.4, 0.1);
  EXPECT_EQ(report["lines"]["resendsAskedFor"], 1) << Content(folder + "log");
  EXPECT_EQ(report["errors"]["total"], 0);
}

}  // namespace
}  // namespace k7test
