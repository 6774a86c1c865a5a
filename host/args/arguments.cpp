// Commands and options, their help and their bounds.
#include "args/arguments.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <map>
#include <memory>

#include "k7/driver.h"

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

CLI::App* Add(CLI::App& app, Arguments& out, Command command, const char* name,
              const char* description, const char* footer) {
  CLI::App* sub = app.add_subcommand(name, description);
  sub->footer(footer);
  sub->callback([&out, command] { out.command = command; });
  if (command != Command::List) {
    sub->add_option("--id", out.id, "Identity of the controller; not needed when there is one only")
        ->type_name("ID");
  }
  return sub;
}

void AddFile(CLI::App* sub, Arguments& out) {
  sub->add_option("file", out.file, "Drawing: a plotter file (HPGL) in units of 1/1016 inch")
      ->required()
      ->type_name("FILE.plt");
}

void AddEngrave(CLI::App& app, Arguments& out) {
  CLI::App* sub = Add(
      app, out, Command::Engrave, "engrave", "Engrave a plotter file",
      "The file may hold IN, SP, PU, PD, PA and PR; (0, 0) is the table home. A pen that goes "
      "down\n"
      "and up without moving is a dot. A file with an error, and a drawing that does not fit the\n"
      "table, moves nothing. Ctrl-C lifts the cutter and ends the job; a second Ctrl-C ends the\n"
      "program at once, while the machine still carries out the lines that it has.\n"
      "Prints: job: ..., estimate: ..., pass: ..., progress: ..., done: ... or stopped: ...");
  AddFile(sub, out);
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
      "Prints: position: X Y (inches from the table home), z: STEPS (machine steps)");
  sub->add_option_function<std::string>(
         "--direction", [&out](const std::string& name) { out.direction = Directions().at(name); },
         "x+, x-, y+, y-, up or down")
      ->type_name("DIR")
      ->check(CLI::Validator(
          [](const std::string& name) {
            return Directions().count(name) != 0 ? std::string() : "'" + name + "' is no direction";
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
                      "zero at the limit\nswitches. Prints: position: X Y");
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
  sub->footer("Prints: spindle: RPM whenever the speed has changed");
  const auto action = [&out](CLI::App* parent, const char* name, const char* description,
                             SpindleAction which) {
    CLI::App* leaf = parent->add_subcommand(name, description);
    leaf->callback([&out, which] {
      out.command = Command::Spindle;
      out.spindleAction = which;
    });
    leaf->add_option("--id", out.id, "Identity of the controller")->type_name("ID");
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
      "Prints a line for each: index, identity and name, separated by tabs.");
  CLI::App* info = Add(app, out, Command::Info, "info", "Show a controller and its machine",
                       "Prints lines \"name: value\": id, name, port, link, table, resolution, "
                       "passes,\nlocation, fitted, settings.");
  info->add_option("controller", out.id, "Identity of the controller")->type_name("ID");
  AddEngrave(app, out);
  CLI::App* estimate = Add(
      app, out, Command::Estimate, "estimate", "Estimate how long a drawing takes",
      "Moves nothing. Prints: job: ..., estimate: SECONDS s (H:MM:SS) for all passes and the way\n"
      "back to the table home; estimate: unknown when X and Y differ in resolution.");
  AddFile(estimate, out);
  estimate->add_option("--passes", out.passes, "Only passes 1 to N")
      ->type_name("N")
      ->check(CLI::Range(1, 1000000));
  Add(app, out, Command::Home, "home", "Drive Z, Y and X to their limit switches",
      "Needs a machine with all four switches. Prints: position: X Y (inches from the table home)");
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

// The help of a command and of all below it; `before` holds the words of the commands above it.
std::string HelpOfAll(const CLI::App& app, const std::string& before) {
  const std::vector<CLI::App*> named = app.get_subcommands();
  const std::string name = (before.empty() ? "" : before + " ") + app.get_name();
  if (!named.empty()) return HelpOfAll(*named.back(), name);
  std::string text = app.help(before);
  for (const CLI::App* sub : app.get_subcommands({})) text += "\n" + HelpOfAll(*sub, name);
  return text;
}

std::string OneLine(std::string text) {
  for (char& c : text) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

}  // namespace

ParsedArguments ParseArguments(const std::vector<std::string>& words) {
  Arguments out;
  CLI::App app("Runs an engraving machine through k7driver.dll.", "k7host");
  app.require_subcommand(1);
  app.get_formatter()->column_width(28);
  app.set_help_all_flag("--help-all", "Help of all commands");
  app.footer(
      "Exit codes: 0 done, 1 the machine or the driver refused or failed, 2 wrong usage or bad\n"
      "input. Results go to the standard output, one \"name: value\" a line; errors to the error\n"
      "output, one line \"k7host: message\" or \"FILE:LINE:COLUMN: message\".");
  AddCommands(app, out);
  ParsedArguments parsed;
  try {
    app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    parsed.arguments = out;
  } catch (const CLI::CallForHelp&) {
    parsed.help = app.help();
  } catch (const CLI::CallForAllHelp&) {
    parsed.help = HelpOfAll(app, "");
  } catch (const CLI::ParseError& error) {
    parsed.exitCode = kExitUsage;
    parsed.error = "k7host: " + OneLine(error.what()) + " (see k7host --help)";
  }
  return parsed;
}

}  // namespace k7host
