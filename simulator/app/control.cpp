#include "app/control.h"

#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "common/nearest_word.h"
#include "common/number_list.h"

namespace k7sim {
namespace {

// The first word of each line of the help.
std::vector<std::string> Verbs() {
  std::vector<std::string> verbs;
  std::istringstream lines{std::string(kControlHelp)};
  for (std::string line; std::getline(lines, line);)
    verbs.push_back(line.substr(0, line.find(' ')));
  return verbs;
}

}  // namespace

ControlResult RunControlLine(std::string_view line, Simulator& simulator, TimeUs wireUs,
                             std::string& message) {
  message.clear();
  while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.remove_suffix(1);
  const std::size_t blank = line.find(' ');
  const std::string_view verb = line.substr(0, blank);
  const std::string rest(blank == line.npos ? "" : line.substr(line.find_first_not_of(' ', blank)));
  Mechanics& machine = simulator.Board().Machine();
  const auto bad = [&](std::string why) {
    message = std::move(why);
    return ControlResult::Bad;
  };
  if (verb.empty()) return ControlResult::Done;
  if (verb == "quit") return ControlResult::Quit;
  if (verb == "report") return ControlResult::WriteFiles;
  if (verb == "help") {
    message = kControlHelp;
  } else if (verb == "switch") {
    const std::size_t gap = rest.find(' ');
    const std::string state = gap == rest.npos ? "" : rest.substr(gap + 1);
    if (!ForceByName(machine, rest.substr(0, gap), state)) {
      return bad("switch takes x, y, z or probe, then 1, 0 or auto");
    }
  } else if (verb == "position") {
    Vec3 inches{};
    if (!ParseTriple(rest, inches)) return bad("position takes X,Y,Z in inches");
    if (!simulator.Board().IsIdle()) return bad("position: the machine is moving");
    machine.PlaceHead(inches);
  } else if (verb == "homed") {
    if (rest != "0" && rest != "1") return bad("homed takes 1 or 0");
    simulator.Board().SetHomed(rest == "1");
  } else if (verb == "surface") {
    const Vec3& size = machine.Geometry().size;
    const auto surface = Surface::Parse(rest, size[0], size[1], message);
    if (!surface) return ControlResult::Bad;
    machine.SetPlateSurface(*surface);
  } else if (verb == "send") {
    simulator.SendUnasked(rest + "\r\n");
  } else if (verb == "halt") {
    simulator.HaltMachine(rest.empty() ? rest : rest + "\n", wireUs);
  } else if (verb == "resume") {
    simulator.Board().Resume();
  } else if (verb == "fault") {
    const auto faults = ParseFaults(rest, message);
    if (!faults) return ControlResult::Bad;
    for (const Fault& fault : *faults) simulator.AddFault(fault);
  } else if (verb == "close") {
    const double ms = std::strtod(rest.c_str(), nullptr);
    simulator.RequestClose(ms > 0 ? UsFromSeconds(ms / 1000) : kNever);
  } else {
    return bad("unknown command '" + std::string(verb) + "'" + DidYouMean(verb, Verbs()) +
               " (help lists all)");
  }
  return ControlResult::Done;
}

}  // namespace k7sim
