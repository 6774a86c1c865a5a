#include "args/engrave_arguments.h"

#include <CLI/CLI.hpp>

#include <cmath>

#include "args/arguments.h"
#include "args/machine_arguments.h"
#include "k7/driver.h"

namespace k7host {
namespace {

// "X,Y" in inches.
bool ParseOffset(const std::string& text, double& x, double& y) {
  const std::size_t comma = text.find(',');
  return comma != std::string::npos && CLI::detail::lexical_cast(text.substr(0, comma), x) &&
         CLI::detail::lexical_cast(text.substr(comma + 1), y) && std::fabs(x) <= kLongestInches &&
         std::fabs(y) <= kLongestInches;
}

// The drawing, how it is read and where it goes.
CLI::Option* AddDrawing(CLI::App* sub, Arguments& out) {
  CLI::Option* drawing =
      sub->add_option("file", out.file,
                      "Drawing: a plotter file (HPGL) in units of 1/1016 inch, or an SVG file")
          ->required()
          ->type_name("FILE");
  sub->add_option("--tolerance", out.toleranceInches,
                  "How far curves may lie beside their straight pieces, in inches; 0.001")
      ->type_name("T")
      ->check(CLI::Range(0.00001, 1.0));
  sub->add_option("--scale", out.placement.scale, "Make the drawing so many times as large")
      ->type_name("S")
      ->check(CLI::Range(0.001, 1000.0));
  sub->add_option("--rotate", out.placement.rotateDegrees, "Turn it counter-clockwise, in degrees")
      ->type_name("DEG")
      ->check(CLI::Range(-360.0, 360.0));
  sub->add_option_function<std::string>(
         "--origin", [&out](const std::string& name) { out.placement.origin = *OriginNamed(name); },
         "Which point of it comes to the table home: file (its own zero),\n"
         "lower-left, lower-right, upper-left, upper-right or center")
      ->type_name("POINT")
      ->check(CLI::Validator(
          [](const std::string& name) {
            return OriginNamed(name) ? std::string()
                                     : "'" + name +
                                           "' is none of file, lower-left, lower-right, "
                                           "upper-left, upper-right, center";
          },
          ""));
  sub->add_option_function<std::string>(
         "--offset",
         [&out](const std::string& text) {
           ParseOffset(text, out.placement.offsetXInches, out.placement.offsetYInches);
         },
         "Then move it by so many inches")
      ->type_name("X,Y")
      ->check(CLI::Validator(
          [](const std::string& text) {
            double x = 0.0;
            double y = 0.0;
            return ParseOffset(text, x, y)
                       ? std::string()
                       : "'" + text + "' is not an offset such as 1.5,-2 (inches)";
          },
          ""));
  sub->add_flag("--optimise", out.optimise, "Cut the stroke with the nearest end first");
  sub->add_option("--preview", out.preview,
                  "Write a picture of table, travels, cuts, order and extent")
      ->type_name("FILE.svg|png")
      ->check(CLI::Validator(
          [](const std::string& file) {
            return file.ends_with(".svg") || file.ends_with(".png")
                       ? std::string()
                       : "'" + file + "' ends neither with .svg nor with .png";
          },
          ""));
  return drawing;
}

void AddEngrave(CLI::App& app, Arguments& out) {
  CLI::App* sub = AddDeviceCommand(
      app, out, Command::Engrave, "engrave", "Engrave a drawing",
      "(0, 0), in an SVG file the lower left corner of the page, is the table home. A pen that "
      "goes\n"
      "down and up without moving is a dot. What a file says of speeds, pens and pages is passed\n"
      "over with a notice. A file with an error, and a drawing that does not fit the table, moves\n"
      "nothing. Ctrl-C lifts the cutter and ends the job; a second Ctrl-C ends the program at "
      "once,\n"
      "while the machine still carries out the lines that it has. A job that ends early keeps "
      "what\n"
      "is needed to go on with it, see --resume.\n"
      "Prints: notice: ..., optimise: ..., job: ..., estimate: ..., parts: ..., preview: ...,\n"
      "dry run: ..., frame: ..., pass: ..., progress: ..., done: ... or stopped: ...");
  // Not required: with --resume the file says which drawing.
  CLI::Option* file = AddDrawing(sub, out)->required(false);
  CLI::Option* resume =
      sub->add_option("--resume", out.resume,
                      "Go on with a job that ended early, from what it kept in FILE: homes,\n"
                      "then continues after the last stroke that was reported as done")
          ->type_name("FILE")
          ->excludes(file);
  CLI::Option* from =
      sub->add_option("--from-stroke", out.fromStroke,
                      "Home, then begin with this stroke or dot, counted through all passes")
          ->type_name("N")
          ->check(CLI::Range(1, 1000000000))
          ->excludes(resume);
  sub->add_flag("--no-home", out.noHome,
                "With --resume or --from-stroke: do not home first, for a machine without\n"
                "switches whose table home was set by hand");
  sub->add_option("--resume-to", out.resumeTo,
                  "Where to keep what --resume needs when the job ends early; else beside\n"
                  "the drawing, as FILE.plt.resume")
      ->type_name("FILE");
  sub->callback([&out, file, resume, from] {
    out.command = Command::Engrave;
    if (file->empty() && resume->empty()) throw CLI::RequiredError("file");
    if (out.noHome && from->empty() && resume->empty()) {
      throw CLI::RequiresError("--no-home", "--resume or --from-stroke");
    }
  });
  sub->add_option("--passes", out.passes,
                  "Engrave only passes 1 to N of those that the engrave settings make;\n"
                  "never more, because the depths belong to the settings")
      ->type_name("N")
      ->check(CLI::Range(1, 1000000));
  auto* grid = sub->add_flag_callback(
      "--grid", [&out] { out.runKind = k7::kRunGrid; }, "Grid run: cut at the grid speed");
  auto* drill = sub->add_flag_callback(
      "--braille-drill", [&out] { out.runKind = k7::kRunBrailleDrill; },
      "Braille drill run: the drawing may hold dots only");
  auto* bead = sub->add_flag_callback(
      "--braille-bead", [&out] { out.runKind = k7::kRunBrailleBeadInsert; },
      "Braille bead insert run: dots only, made with the bead tool");
  grid->excludes(drill)->excludes(bead);
  drill->excludes(bead);
  sub->add_flag("--dry-run", out.dryRun, "Check everything, print it and move nothing");
  sub->add_flag("--frame", out.frame,
                "First drive around the job with the cutter up; on a console Enter\n"
                "goes on");
  sub->add_flag("--home", out.home, "Drive to the limit switches first");
  sub->add_flag("--settings", out.showSettings,
                "Show the driver's settings dialog first; only \"Run Job\" goes on");
  sub->add_flag("--spindle", out.spindle,
                "Start the spindle before the first move, not only with the first cut");
  sub->add_flag("--batch", out.batch,
                "Register no window: no message boxes about the table surface; a\n"
                "refused stroke ends the job with an error line");
}

void AddEstimate(CLI::App& app, Arguments& out) {
  CLI::App* sub = AddDeviceCommand(
      app, out, Command::Estimate, "estimate", "Estimate how long a drawing takes",
      "Moves nothing. Prints: job: ..., estimate: SECONDS s (H:MM:SS) for all passes and the way\n"
      "back to the table home, with lifts, plunges, dwells and the spindle as the settings file "
      "has\n"
      "them, without probing; parts: what it is made of. Without a settings file the estimate is\n"
      "the driver's, of travels and cuts alone. estimate: unknown when X and Y differ in "
      "resolution.");
  AddDrawing(sub, out);
  sub->add_option("--passes", out.passes, "Only passes 1 to N")
      ->type_name("N")
      ->check(CLI::Range(1, 1000000));
}

}  // namespace

void AddEngraveCommands(CLI::App& app, Arguments& out) {
  AddEngrave(app, out);
  AddEstimate(app, out);
}

}  // namespace k7host
