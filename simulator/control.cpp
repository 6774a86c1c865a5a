#include "simulator/control.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "simulator/options.h"

namespace k7sim {

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
    machine.Shove(inches);
  } else if (verb == "homed") {
    if (rest != "0" && rest != "1") return bad("homed takes 1 or 0");
    simulator.Board().SetHomed(rest == "1");
  } else if (verb == "surface") {
    const Vec3& size = machine.Geometry().size;
    const auto surface = Surface::Parse(rest, size[0], size[1], message);
    if (!surface) return ControlResult::Bad;
    machine.SetWork(*surface);
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
    return bad("unknown command '" + std::string(verb) + "'; help lists them");
  }
  return ControlResult::Done;
}

ControlPipe::~ControlPipe() {
  if (fd_) unlink(path_.c_str());
}

bool ControlPipe::Open(const std::string& path, std::string& error) {
  struct stat there {};
  if (lstat(path.c_str(), &there) == 0 && S_ISFIFO(there.st_mode)) unlink(path.c_str());
  if (mkfifo(path.c_str(), 0600) != 0) {
    error = "cannot make the pipe " + path + ": " + std::strerror(errno);
    return false;
  }
  path_ = path;
  // Open for writing too: the pipe then does not end when a writer closes it.
  fd_.Reset(open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
  if (fd_) return true;
  error = "cannot open the pipe " + path + ": " + std::strerror(errno);
  return false;
}

bool ControlPipe::TakeLine(std::string& line) {
  std::array<char, 1024> bytes{};
  const ssize_t got = fd_ ? read(fd_.Get(), bytes.data(), bytes.size()) : 0;
  if (got > 0) pending_.append(bytes.data(), static_cast<std::size_t>(got));
  const std::size_t end = pending_.find('\n');
  if (end == pending_.npos) return false;
  line = pending_.substr(0, end);
  pending_.erase(0, end + 1);
  return true;
}

}  // namespace k7sim
