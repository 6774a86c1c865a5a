#include "args/machine_arguments.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <map>

#include "args/arguments.h"
#include "args/tcp_address.h"
#include "k7/driver.h"

namespace k7host {
namespace {

// The names that --direction takes.
const std::map<std::string, std::uint32_t>& Directions() {
  static const std::map<std::string, std::uint32_t> names = {
      {"x+", k7::kJogXPlus},  {"x-", k7::kJogXMinus}, {"y+", k7::kJogYPlus},
      {"y-", k7::kJogYMinus}, {"up", k7::kJogZUp},    {"down", k7::kJogZDown}};
  return names;
}

void AddJog(CLI::App& app, Arguments& out) {
  CLI::App* sub = AddDeviceCommand(
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
  CLI::App* sub = AddDeviceCommand(
      app, out, Command::GoTo, "goto", "Lift the cutter and travel to a place",
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

}  // namespace

void AddTcp(CLI::App* sub, Arguments& out) {
  sub->add_option("--tcp", out.tcp,
                  "Talk to the machine over TCP (port 23 unless given); some controller\n"
                  "must answer on a serial port, too, because the driver starts from there")
      ->type_name("HOST[:PORT]")
      ->check(CLI::Validator(
          [](const std::string& text) {
            std::string error;
            ParseTcpAddress(text, error);
            return error;
          },
          ""));
}

CLI::App* AddDeviceCommand(CLI::App& app, Arguments& out, Command command, const char* name,
                           const char* description, const char* footer) {
  CLI::App* sub = app.add_subcommand(name, description);
  sub->footer(footer);
  sub->callback([&out, command] { out.command = command; });
  if (command != Command::List) {
    sub->add_option("--id", out.id, "Identity of the controller; not needed when there is one only")
        ->type_name("ID");
  }
  AddTcp(sub, out);
  return sub;
}

void AddListCommands(CLI::App& app, Arguments& out) {
  AddDeviceCommand(
      app, out, Command::List, "list", "List the controllers found",
      "Prints a line for each: index, identity, name, port and link, separated by tabs. The "
      "driver\n"
      "tells the port of a connected controller alone: it is \"-\" where several could be meant.\n"
      "With --tcp: the controller at that address.")
      ->add_flag("--ports", out.ports, "Connect to each, to learn its port for certain");
  CLI::App* info =
      AddDeviceCommand(app, out, Command::Info, "info", "Show a controller and its machine",
                       "Prints lines \"name: value\": id, name, port, link, table, resolution, "
                       "passes,\nlocation, fitted, settings.");
  info->add_option("controller", out.id, "Identity of the controller")->type_name("ID");
}

void AddMachineCommands(CLI::App& app, Arguments& out) {
  AddDeviceCommand(
      app, out, Command::Home, "home", "Drive Z, Y and X to their limit switches",
      "Needs a machine with all four switches. Prints: position: X Y inches (from the table home)");
  AddDeviceCommand(app, out, Command::Switches, "switches", "Show the limit and proximity switches",
                   "Prints: switches: x=0 y=0 z=0 prox=0 (1: closed)")
      ->add_flag("--watch", out.watch, "Go on, a line for each change, until Ctrl-C");
  AddJog(app, out);
  AddGoTo(app, out);
  AddSpindle(app, out);
}

}  // namespace k7host
