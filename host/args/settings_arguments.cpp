#include "args/settings_arguments.h"

#include <CLI/CLI.hpp>

#include "args/arguments.h"
#include "args/machine_arguments.h"

namespace k7host {
namespace {

void AddDialogOptions(CLI::App* sub, Arguments& out) {
  sub->add_option("--id", out.id, "Identity of the controller; not needed when there is one only")
      ->type_name("ID");
  sub->add_flag("--before-job", out.beforeJob,
                "As before a job: sees to the table home first, then \"Run Job\" can be\npressed");
  sub->add_flag("--read-only", out.readOnly,
                "Without \"Run Job\", \"Table Setup...\" and changes of settings");
  AddTcp(sub, out);
}

CLI::App* Leaf(CLI::App* parent, Arguments& out, SettingsAction action, const char* name,
               const char* description, const char* footer) {
  CLI::App* leaf = parent->add_subcommand(name, description);
  leaf->footer(footer);
  leaf->callback([&out, action] {
    out.command = Command::SettingsFile;
    out.settings.action = action;
  });
  return leaf;
}

// Whose settings; `file` as well as by identity.
CLI::App* OfWhom(CLI::App* leaf, SettingsArguments& out, bool file = true) {
  auto* id = leaf->add_option("--id", out.id,
                              "Identity of the controller; not needed when one has settings")
                 ->type_name("ID");
  if (file) {
    leaf->add_option("--file", out.file, "A settings file, wherever it is")
        ->type_name("FILE")
        ->excludes(id);
  }
  return leaf;
}

constexpr char kKeyHelp[] = "\"Section/Key\", or the key alone where one section has it";

void AddSettingsActions(CLI::App* settings, Arguments& out) {
  SettingsArguments& s = out.settings;
  CLI::App* show =
      OfWhom(Leaf(settings, out, SettingsAction::Show, "show", "Show every setting in its unit",
                  "Prints a line for each key: \"Section/Key: value\", whether the file holds it, "
                  "its range\n"
                  "and default, and below it, after a \"!\", what is wrong with it."),
             s);
  show->add_option("which", s.which, "Identity of the controller, or a settings file")
      ->type_name("ID|FILE")
      ->excludes("--id")
      ->excludes("--file");
  show->add_flag("--all", s.all,
                 "With what each key means, how it stands in the file, and the keys\nthat are "
                 "none of the driver's");
  show->add_flag("--json", s.json, "As JSON");

  CLI::App* get = OfWhom(Leaf(settings, out, SettingsAction::Get, "get", "Show one setting",
                              "Prints: Section/Key: value"),
                         s);
  get->add_option("key", s.key, kKeyHelp)->required()->type_name("KEY");

  CLI::App* set = OfWhom(
      Leaf(
          settings, out, SettingsAction::Set, "set", "Change one setting",
          "Example: k7host settings set \"Axis X/Screw Pitch\" 0.5\n"
          "The value is in the unit that \"show\" names; flags are on or off. A value outside the\n"
          "range is refused. The file as it was before is kept beside it, with .bak added; the "
          "new\n"
          "one takes its place in one step. A program that is connected to the controller takes\n"
          "the value when it connects again.\n"
          "Prints: Section/Key: old -> new, backup: FILE"),
      s);
  set->add_option("key", s.key, kKeyHelp)->required()->type_name("KEY");
  set->add_option("value", s.value, "The value, its unit may follow: 0.5, \"0.5 in\", on, off")
      ->required()
      ->type_name("VALUE");

  CLI::App* diff =
      Leaf(settings, out, SettingsAction::Diff, "diff",
           "Show what differs between two controllers or files",
           "Prints a line for each key: \"Section/Key: first | second\", or \"same\".");
  diff->add_option("first", s.which, "Identity or file")->required()->type_name("A");
  diff->add_option("second", s.other, "Identity or file")->required()->type_name("B");

  OfWhom(
      Leaf(settings, out, SettingsAction::Export, "export", "Write the settings as JSON",
           "Every key that the file holds, with its unit. Import makes the same values of it, to\n"
           "the last bit."),
      s)
      ->add_option("path", s.path, "The file to write; - is the standard output")
      ->required()
      ->type_name("OUT.json");
  OfWhom(
      Leaf(settings, out, SettingsAction::Import, "import", "Take settings from JSON",
           "Sets the keys that the JSON names; the others stay. One value that makes no sense, or\n"
           "a unit that is another one, and nothing is changed. The file as it was before is\n"
           "kept beside it, with .bak added."),
      s)
      ->add_option("path", s.path, "What \"export\" has written, changed or not")
      ->required()
      ->type_name("IN.json");
  OfWhom(Leaf(settings, out, SettingsAction::Backup, "backup",
              "Copy a controller's settings and material library to a folder",
              "Prints a line for each file, and backup: FOLDER"),
         s, false)
      ->add_option("path", s.path, "A folder that is not there yet, or empty")
      ->required()
      ->type_name("FOLDER");
  OfWhom(
      Leaf(settings, out, SettingsAction::Restore, "restore", "Put a backup back",
           "Looks the whole backup through first. A file that it replaces is kept, with .bak\n"
           "added. With --id it becomes the settings of another controller, as after a change of\n"
           "the board."),
      s, false)
      ->add_option("path", s.path, "What \"backup\" has written")
      ->required()
      ->type_name("FOLDER");
}

}  // namespace

void AddSettingsCommands(CLI::App& app, Arguments& out) {
  CLI::App* dialog = app.add_subcommand("dialog", "Show the settings dialog");
  dialog->footer("Prints: settings: run job, applied or cancelled");
  dialog->callback([&out] { out.command = Command::Settings; });
  AddDialogOptions(dialog, out);

  CLI::App* settings =
      app.add_subcommand("settings", "Show, change, compare and save settings; alone: the dialog");
  settings->footer(
      "Alone, or with the options above, it opens the settings dialog, as k7host dialog does, and\n"
      "prints: settings: run job, applied or cancelled. The other words need no machine: they "
      "work\n"
      "on the settings file, whose floats are bit patterns that nobody can read.");
  settings->require_subcommand(0, 1);
  AddDialogOptions(settings, out);
  AddSettingsActions(settings, out);
  // Runs after that of the word behind it.
  settings->callback([&out, settings] {
    if (settings->get_subcommands().empty()) {
      out.command = Command::Settings;
    } else if (out.settings.id.empty()) {
      out.settings.id = out.id;  // settings --id ID show
    }
  });

  CLI::App* doctor = app.add_subcommand("doctor", "Check computer, controller and settings");
  doctor->footer(
      "Moves nothing and writes nothing. A line for each check: ok, warn or fail, what was looked\n"
      "at, what was found, and behind \"->\" what to do about it. Without an option it asks every\n"
      "port and checks the settings of each controller that answers, or all there are.\n"
      "Exit codes: 0 every line is ok; 1 a warning, or a failure of computer, port or controller;\n"
      "2 settings with which nothing is moved, or wrong usage.");
  doctor->callback([&out] { out.command = Command::Doctor; });
  auto* id =
      doctor->add_option("--id", out.doctor.id, "The controller of this identity")->type_name("ID");
  auto* port = doctor->add_option("--port", out.doctor.port, "This port alone")->type_name("COM7");
  auto* file =
      doctor->add_option("--file", out.doctor.file, "This settings file, and no port at all")
          ->type_name("FILE");
  id->excludes(port)->excludes(file);
  port->excludes(file);
  doctor->add_flag("--json", out.doctor.json, "As JSON");

  AddDeviceCommand(app, out, Command::Setup, "setup",
                   "Show the settings dialog so that \"Table Setup...\" can be opened",
                   "Prints: settings: applied or cancelled");
}

}  // namespace k7host
