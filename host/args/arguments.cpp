// Commands and options, their help and their bounds.
#include "args/arguments.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <map>
#include <memory>

#include "args/nearest.h"
#include "k7/driver.h"
#include "k7_version.h"

namespace k7host {
namespace {

constexpr double kLongestInches = 10000.0;

// The names that --direction takes.
const std::map<std::string, std::uint32_t>& Directions() {
  static const std::map<std::string, std::uint32_t> names = {
      {"x+", k7::kJogXPlus},  {"x-", k7::kJogXMinus}, {"y+", k7::kJogYPlus},
      {"y-", k7::kJogYMinus}, {"up", k7::kJogZUp},    {"down", k7::kJogZDown}};
  return names;
}

void AddTcp(CLI::App* sub, Arguments& out) {
  sub->add_option("--tcp", out.tcp,
                  "Talk to the machine over TCP (port 23 unless given); some controller\n"
                  "must answer on a serial port, too, because the driver starts from there")
      ->type_name("HOST[:PORT]");
}

CLI::App* Add(CLI::App& app, Arguments& out, Command command, const char* name,
              const char* description, const char* footer) {
  CLI::App* sub = app.add_subcommand(name, description);
  sub->footer(footer);
  sub->callback([&out, command] { out.command = command; });
  if (command != Command::List) {
    sub->add_option("--id", out.id, "Identity of the controller; not needed when there is one only")
        ->type_name("ID");
    AddTcp(sub, out);
  }
  return sub;
}

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
  CLI::App* sub = Add(
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

void AddJog(CLI::App& app, Arguments& out) {
  CLI::App* sub = Add(
      app, out, Command::Jog, "jog", "Move one axis in small steps",
      "Without --direction: arrow keys move X and Y, Page Up and Page Down move Z, for as long as\n"
      "they are held; with Shift slowly; Esc ends. With --direction: moves while the key given by\n"
      "--key is held, at least one step, and ends.\n"
      "Prints: position: X Y inches (from the table home), z: N steps (of the machine)");
  sub->add_option_function<std::string>(
         "--direction", [&out](const std::string& name) { out.direction = Directions().at(name); },
         "x+, x-, y+, y-, up or down")
      ->type_name("DIR")
      ->check(CLI::Validator(
          [](const std::string& name) {
            return Directions().count(name) != 0
                       ? std::string()
                       : "'" + name + "' is no direction: x+, x-, y+, y-, up or down";
          },
          ""));
  sub->add_option("--key", out.key, "Virtual key number that keeps the jog going; 0: one step")
      ->type_name("VK")
      ->check(CLI::Range(0, 254))
      ->needs("--direction");
  sub->add_flag("--slow", out.slow, "Slow jog speed and step");
}

void AddGoTo(CLI::App& app, Arguments& out) {
  CLI::App* sub = Add(app, out, Command::GoTo, "goto", "Lift the cutter and travel to a place",
                      "Inches from the table home. 0 0 is not the table home but the machine's own "
                      "zero at the limit\nswitches. Prints: position: X Y inches");
  const auto check = CLI::Validator(
      [](const std::string& text) {
        double inches = 0.0;
        const bool good = CLI::detail::lexical_cast(text, inches) && std::isfinite(inches) &&
                          inches >= 0.0 && inches <= kLongestInches;
        return good ? std::string() : "'" + text + "' is not a length of 0 inches or more";
      },
      "");
  sub->add_option("x", out.xInches, "X in inches")->required()->type_name("X")->check(check);
  sub->add_option("y", out.yInches, "Y in inches")->required()->type_name("Y")->check(check);
}

void AddSpindle(CLI::App& app, Arguments& out) {
  CLI::App* sub = app.add_subcommand("spindle", "Run the spindle");
  sub->require_subcommand(1);
  sub->footer("Prints: spindle: N rpm whenever the speed has changed");
  const auto action = [&out](CLI::App* parent, const char* name, const char* description,
                             SpindleAction which) {
    CLI::App* leaf = parent->add_subcommand(name, description);
    leaf->callback([&out, which] {
      out.command = Command::Spindle;
      out.spindleAction = which;
    });
    leaf->add_option("--id", out.id, "Identity of the controller")->type_name("ID");
    AddTcp(leaf, out);
    return leaf;
  };
  const auto timed = [&out](CLI::App* leaf) {
    leaf->add_option("--seconds", out.seconds, "Run this long; else until a key is pressed")
        ->type_name("S")
        ->check(CLI::Range(0.1, 86400.0));
    leaf->footer("The spindle is switched off again when the command ends.");
  };
  timed(action(sub, "on", "At the engraving speed", SpindleAction::On));
  timed(action(sub, "full", "At full speed", SpindleAction::Full));
  action(sub, "off", "Off, whoever switched it on", SpindleAction::Off);
  CLI::App* ramp = sub->add_subcommand("ramp", "Change the engraving speed while a key is held");
  ramp->require_subcommand(1);
  const auto keyed = [&out](CLI::App* leaf) {
    leaf->add_option("--key", out.key, "Virtual key number; 0 changes the speed once at most")
        ->type_name("VK")
        ->check(CLI::Range(0, 254));
    leaf->footer(
        "Starts the spindle at its engraving speed, changes the speed for as long as the key is\n"
        "held, keeps the speed reached in the settings and switches the spindle off.");
  };
  keyed(action(ramp, "up", "Faster", SpindleAction::RampUp));
  keyed(action(ramp, "down", "Slower", SpindleAction::RampDown));
}

void AddCommands(CLI::App& app, Arguments& out) {
  Add(app, out, Command::List, "list", "List the controllers found",
      "Prints a line for each: index, identity, name, port and link, separated by tabs. The "
      "driver\n"
      "tells the port of a connected controller alone: it is \"-\" where several could be meant.")
      ->add_flag("--ports", out.ports, "Connect to each, to learn its port for certain");
  CLI::App* info = Add(app, out, Command::Info, "info", "Show a controller and its machine",
                       "Prints lines \"name: value\": id, name, port, link, table, resolution, "
                       "passes,\nlocation, fitted, settings.");
  info->add_option("controller", out.id, "Identity of the controller")->type_name("ID");
  AddEngrave(app, out);
  CLI::App* estimate = Add(
      app, out, Command::Estimate, "estimate", "Estimate how long a drawing takes",
      "Moves nothing. Prints: job: ..., estimate: SECONDS s (H:MM:SS) for all passes and the way\n"
      "back to the table home, with lifts, plunges, dwells and the spindle as the settings file "
      "has\n"
      "them, without probing; parts: what it is made of. Without a settings file the estimate is\n"
      "the driver's, of travels and cuts alone. estimate: unknown when X and Y differ in "
      "resolution.");
  AddDrawing(estimate, out);
  estimate->add_option("--passes", out.passes, "Only passes 1 to N")
      ->type_name("N")
      ->check(CLI::Range(1, 1000000));
  Add(app, out, Command::Home, "home", "Drive Z, Y and X to their limit switches",
      "Needs a machine with all four switches. Prints: position: X Y inches (from the table home)");
  Add(app, out, Command::Switches, "switches", "Show the limit and proximity switches",
      "Prints: switches: x=0 y=0 z=0 prox=0 (1: closed)")
      ->add_flag("--watch", out.watch, "Go on, a line for each change, until Ctrl-C");
  AddJog(app, out);
  AddGoTo(app, out);
  AddSpindle(app, out);
  AddSettingsCommands(app, out);
  Add(app, out, Command::Setup, "setup",
      "Show the settings dialog so that \"Table Setup...\" can be opened",
      "Prints: settings: applied or cancelled");
}

void AddTrace(CLI::App& app, Arguments& out) {
  CLI::App* sub = app.add_subcommand("trace", "Show what a trace says that the driver has written");
  sub->callback([&out] { out.command = Command::Trace; });
  sub->footer(
      "A trace is written by --trace FILE of every other command, and for any host by the\n"
      "environment variable K7_TRACE. FILE.1, its older part, is read first.\n"
      "Prints a line a record: time, time since the record before, process, thread, > sent or\n"
      "< received, the line, moves that have not begun, where the head is sent, and the meaning.");
  sub->add_option("file", out.file, "The trace")->required()->type_name("FILE");
  auto* summary = sub->add_flag("--summary", out.traceSummary,
                                "Lines a second, longest waits, answers that came late or never,\n"
                                "feeds, distances, failures");
  auto* follow = sub->add_flag("--follow", out.traceFollow,
                               "Go on with what is written from now on, until Ctrl-C");
  auto* svg = sub->add_option("--svg", out.traceSvg, "Draw what was cut")->type_name("PICTURE.svg");
  auto* json = sub->add_flag("--json", out.json, "One JSON object a record, or for the summary");
  summary->excludes(svg);
  svg->excludes(json);
  follow->excludes(svg);
}

// --trace for every command that loads the driver.
void AddTraceOption(CLI::App& app, Arguments& out) {
  for (CLI::App* sub : app.get_subcommands({})) {
    if (sub->get_name() == "trace") continue;
    sub->add_option("--trace", out.trace,
                    "Write a trace of all that is said and heard to FILE (a folder: a file in\n"
                    "it); a path as Windows has it, under Wine Z:\\tmp\\a.txt for /tmp/a.txt")
        ->type_name("FILE");
    AddTraceOption(*sub, out);
  }
}

// The help of a command and of all below it; `before` holds the words of the commands above it.
std::string HelpOfAll(const CLI::App& app, const std::string& before) {
  const std::vector<CLI::App*> named = app.get_subcommands();
  const std::string name = (before.empty() ? "" : before + " ") + app.get_name();
  if (!named.empty()) return HelpOfAll(*named.back(), name);
  std::string text = app.help(before);
  for (const CLI::App* sub : app.get_subcommands({})) text += "\n" + HelpOfAll(*sub, name);
  return text;
}

// Options of one run: their words, and the words that follow those that take a value.
constexpr struct {
  std::string_view name;
  bool takesValue;
} kOnceOnly[] = {{"--resume", true},   {"--resume-to", true}, {"--from-stroke", true},
                 {"--no-home", false}, {"--home", false},     {"--settings", false}};

std::string OneLine(std::string text) {
  for (char& c : text) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

// "k7host", "k7host spindle".
std::string FullName(const CLI::App& app) {
  const CLI::App* parent = app.get_parent();
  return (parent == nullptr ? "" : FullName(*parent) + " ") + app.get_name();
}

std::string WrongCommand(const CLI::App& app, const std::string& word) {
  std::vector<std::string> names;
  std::string all;
  for (const CLI::App* sub : app.get_subcommands({})) {
    names.push_back(sub->get_name());
    all += (all.empty() ? "" : ", ") + names.back();
  }
  const std::string nearest = NearestWord(word, names);
  return "'" + word + "' is no command of " + FullName(app) +
         (nearest.empty() ? "; commands: " : ", did you mean '" + nearest + "'? Commands: ") + all;
}

std::string WrongOption(const CLI::App& app, const std::string& word) {
  std::vector<std::string> names;
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  const std::string nearest = NearestWord(word, names);
  return "'" + word + "' is no option of " + FullName(app) +
         (nearest.empty() ? "" : ", did you mean '" + nearest + "'?");
}

// What is wrong with the first command or option that does not exist; empty when all do.
std::string WrongWord(const CLI::App& app, const std::vector<std::string>& words) {
  const CLI::App* at = &app;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (word.size() > 2 && word.starts_with("--")) {
      const std::string name = word.substr(0, word.find('='));
      const CLI::Option* option = at->get_option_no_throw(name);
      if (option == nullptr) return WrongOption(*at, name);
      if (option->get_items_expected_max() > 0 && name == word) ++i;
    } else if (!at->get_subcommands({}).empty()) {
      const auto below =
          at->get_subcommands([&word](const CLI::App* sub) { return sub->get_name() == word; });
      if (below.empty()) return WrongCommand(*at, word);
      at = below.front();
    }
  }
  return "";
}

}  // namespace

std::vector<std::string> WordsToResume(const std::vector<std::string>& words) {
  std::vector<std::string> kept;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    bool once = false;
    for (const auto& option : kOnceOnly) {
      const bool alone = word == option.name;
      if (!alone && !(option.takesValue && word.starts_with(std::string(option.name) + "=")))
        continue;
      once = true;
      if (alone && option.takesValue) ++i;
      break;
    }
    if (!once) kept.emplace_back(word);
  }
  return kept;
}

ParsedArguments ParseArguments(const std::vector<std::string>& words) {
  Arguments out;
  out.words = words;
  CLI::App app("Runs an engraving machine through k7driver.dll.", "k7host");
  app.require_subcommand(1);
  app.allow_windows_style_options(false);  // a word that begins with "/" is a Unix path
  app.get_formatter()->column_width(28);
  app.set_help_all_flag("--help-all", "Help of all commands");
  app.footer(
      "Exit codes: 0 done, 1 the machine or the driver refused or failed, 2 wrong usage, bad\n"
      "input or settings that make no sense, 3 ended with the machine's state unknown (its link\n"
      "lost, or ended by a second Ctrl-C). Results go to the standard output, one \"name: value\" "
      "a\n"
      "line; errors and notices to the error output, one line \"k7host: message\" or\n"
      "\"FILE:LINE:COLUMN: message\".");
  app.set_version_flag("--version", std::string("k7host ") + K7_VERSION, "The version");
  AddCommands(app, out);
  AddTrace(app, out);
  AddTraceOption(app, out);
  ParsedArguments parsed;
  try {
    app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    parsed.arguments = out;
  } catch (const CLI::CallForHelp&) {
    parsed.help = app.help();
  } catch (const CLI::CallForAllHelp&) {
    parsed.help = HelpOfAll(app, "");
  } catch (const CLI::CallForVersion& version) {
    parsed.help = std::string(version.what()) + "\n";
  } catch (const CLI::ParseError& error) {
    const std::string wrong = WrongWord(app, words);
    parsed.exitCode = kExitUsage;
    parsed.error =
        "k7host: " + (wrong.empty() ? OneLine(error.what()) : wrong) + " (see k7host --help)";
  }
  return parsed;
}

}  // namespace k7host
