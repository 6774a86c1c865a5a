// The program's command line as a whole: its commands in order, the trace that each may write, and
// what comes of reading it.
#include "args/arguments.h"

#include <CLI/CLI.hpp>

#include "args/engrave_arguments.h"
#include "args/machine_arguments.h"
#include "args/nearest.h"
#include "k7_version.h"

namespace k7host {
namespace {

void AddTraceCommand(CLI::App& app, Arguments& out) {
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

constexpr char kVersionText[] = "k7host " K7_VERSION;

// --version for every command.
void AddVersion(CLI::App& app) {
  app.set_version_flag("--version", kVersionText, "The version");
  for (CLI::App* sub : app.get_subcommands({})) AddVersion(*sub);
}

// --trace for every command but `trace` that `app` has by now.
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

// An empty word: it is missing.
std::string WrongCommand(const CLI::App& app, const std::string& word) {
  std::vector<std::string> names;
  std::string all;
  for (const CLI::App* sub : app.get_subcommands({})) {
    names.push_back(sub->get_name());
    all += (all.empty() ? "" : ", ") + names.back();
  }
  if (word.empty()) return FullName(app) + " needs a command: " + all;
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
  return at->get_require_subcommand_min() > 0 ? WrongCommand(*at, "") : "";
}

}  // namespace

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
      "lost, it fell silent, or ended by a second Ctrl-C). Results go to the standard output, one\n"
      "\"name: value\" a line; errors and notices to the error output, one line \"k7host: "
      "message\"\n"
      "or \"FILE:LINE:COLUMN: message\".");
  // In this order the help lists them.
  AddListCommands(app, out);
  AddEngraveCommands(app, out);
  AddMachineCommands(app, out);
  AddSettingsCommands(app, out);
  AddTraceCommand(app, out);
  AddTraceOption(app, out);
  AddVersion(app);
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
