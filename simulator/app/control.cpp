#include "app/control.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "common/nearest_word.h"
#include "common/number_list.h"

namespace k7sim {
namespace {

ControlResult Bad(const ControlCall& call, std::string why) {
  call.message = std::move(why);
  return ControlResult::Bad;
}

ControlResult ForceSwitch(const ControlCall& call) {
  const std::size_t gap = call.rest.find(' ');
  const std::string state = gap == std::string::npos ? "" : call.rest.substr(gap + 1);
  if (ForceByName(call.simulator.Board().Machine(), call.rest.substr(0, gap), state)) {
    return ControlResult::Done;
  }
  return Bad(call, "switch takes x, y, z or probe, then 1, 0 or auto");
}

ControlResult PlaceHead(const ControlCall& call) {
  Vec3 inches{};
  if (!ParseTriple(call.rest, inches)) return Bad(call, "position takes X,Y,Z in inches");
  if (!call.simulator.Board().IsIdle()) return Bad(call, "position: the machine is moving");
  call.simulator.Board().Machine().PlaceHead(inches);
  return ControlResult::Done;
}

ControlResult SetHomed(const ControlCall& call) {
  if (call.rest != "0" && call.rest != "1") return Bad(call, "homed takes 1 or 0");
  call.simulator.Board().SetHomed(call.rest == "1");
  return ControlResult::Done;
}

ControlResult SetSurface(const ControlCall& call) {
  Mechanics& machine = call.simulator.Board().Machine();
  const Vec3& size = machine.Geometry().size;
  const auto surface = Surface::Parse(call.rest, size[0], size[1], call.message);
  if (!surface) return ControlResult::Bad;
  machine.SetPlateSurface(*surface);
  return ControlResult::Done;
}

ControlResult Send(const ControlCall& call) {
  call.simulator.SendUnasked(call.rest + "\r\n");
  return ControlResult::Done;
}

ControlResult Halt(const ControlCall& call) {
  call.simulator.HaltMachine(call.rest.empty() ? call.rest : call.rest + "\n", call.wireUs);
  return ControlResult::Done;
}

ControlResult Resume(const ControlCall& call) {
  call.simulator.Board().Resume();
  return ControlResult::Done;
}

ControlResult AddFaults(const ControlCall& call) {
  const auto faults = ParseFaults(call.rest, call.message);
  if (!faults) return ControlResult::Bad;
  for (const Fault& fault : *faults) call.simulator.AddFault(fault);
  return ControlResult::Done;
}

ControlResult CloseLinks(const ControlCall& call) {
  const double ms = std::strtod(call.rest.c_str(), nullptr);
  call.simulator.RequestClose(ms > 0 ? UsFromSeconds(ms / 1000) : kNever);
  return ControlResult::Done;
}

ControlResult WriteFilesNow(const ControlCall&) {
  return ControlResult::WriteFiles;
}

ControlResult Quit(const ControlCall&) {
  return ControlResult::Quit;
}

constexpr ControlCommand kCommands[] = {
    {"switch", "x|y|z|probe 1|0|auto", "hold a switch closed or open, or let it follow the head",
     ForceSwitch},
    {"position", "X,Y,Z", "move the head by hand, inches from the switches", PlaceHead},
    {"homed", "1|0", "the table counts as homed or not", SetHomed},
    {"surface", "WORK", "put another plate on the table, as --surface", SetSurface},
    {"send", "TEXT", "send TEXT as a line to every host", Send},
    {"halt", "[TEXT]", "halt the machine, with TEXT as its alarm", Halt},
    {"resume", "", "end the halt, as M999 does", Resume},
    {"fault", "FAULT", "add a fault, as --fault", AddFaults},
    {"close", "[MS]", "close all links; open them again after MS milliseconds", CloseLinks},
    {"report", "", "write report, picture and transcript now", WriteFilesNow},
    {"quit", "", "write them and stop", Quit},
};

std::vector<std::string> Verbs() {
  std::vector<std::string> verbs;
  for (const ControlCommand& command : kCommands) verbs.emplace_back(command.verb);
  return verbs;
}

}  // namespace

std::span<const ControlCommand> ControlCommands() {
  return kCommands;
}

std::string ControlHelp() {
  constexpr std::size_t kColumn = 30;  // in which the explanations start
  std::string help;
  for (const ControlCommand& command : kCommands) {
    std::string call(command.verb);
    if (!command.arguments.empty()) call += " " + std::string(command.arguments);
    call.resize(std::max(kColumn, call.size() + 1), ' ');
    help += call + std::string(command.help) + "\n";
  }
  return help;
}

ControlResult RunControlLine(std::string_view line, Simulator& simulator, TimeUs wireUs,
                             std::string& message) {
  message.clear();
  while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.remove_suffix(1);
  const std::size_t blank = line.find(' ');
  const std::string_view verb = line.substr(0, blank);
  const std::string rest(blank == line.npos ? "" : line.substr(line.find_first_not_of(' ', blank)));
  if (verb.empty()) return ControlResult::Done;
  if (verb == "help") {
    message = ControlHelp();
    return ControlResult::Done;
  }
  const auto command =
      std::find_if(std::begin(kCommands), std::end(kCommands),
                   [&](const ControlCommand& candidate) { return candidate.verb == verb; });
  if (command != std::end(kCommands)) return command->run({rest, simulator, wireUs, message});
  message = "unknown command '" + std::string(verb) + "'" + DidYouMean(verb, Verbs()) +
            " (help lists all)";
  return ControlResult::Bad;
}

}  // namespace k7sim
