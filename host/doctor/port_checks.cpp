#include "doctor/port_checks.h"

#include <windows.h>

#include <chrono>
#include <map>
#include <optional>

#include "core/text.h"
#include "doctor/answers.h"
#include "doctor/ports.h"
#include "doctor/serial_talk.h"
#include "settings/system_error.h"

namespace k7host {
namespace {

constexpr int kDriverPorts = 50;        // the driver looks from COM0 to COM49
constexpr double kDriverWaitsMs = 200;  // for a sign of life
constexpr DWORD kAnswerMs = 1000;
constexpr DWORD kQuietMs = 200;  // no further line of an answer
constexpr int kQuestions = 50;
constexpr int kMostLines = 20;
constexpr std::size_t kMostFirmware = 300;  // characters
constexpr double kSlowOpenMs = 1000;
constexpr double kSlowAnswerMs = 100;

class Timer {
 public:
  double Ms() const {
    return std::chrono::duration<double, std::milli>(Clock::now() - start_).count();
  }

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point start_ = Clock::now();
};

// How long the answer took; none when none came.
std::optional<double> AskSignOfLife(SerialTalk& talk, std::string& heard) {
  const Timer timer;
  if (!talk.Send(kAskSignOfLife)) return std::nullopt;
  while (const auto line = talk.ReadLine(kAnswerMs)) {
    if (IsSignOfLife(*line)) return timer.Ms();
    heard += *line + "\n";
    if (timer.Ms() > kAnswerMs) break;
  }
  heard += talk.Rest();
  return std::nullopt;
}

std::string AskIdentity(SerialTalk& talk) {
  if (!talk.Send(kAskIdentity)) return "";
  for (int i = 0; i < kMostLines; ++i) {
    const auto line = talk.ReadLine(kAnswerMs);
    if (!line) break;
    if (const std::string identity = IdentityIn(*line); !identity.empty()) return identity;
  }
  return "";
}

std::string AskFirmware(SerialTalk& talk) {
  if (!talk.Send(kAskFirmware)) return "";
  std::string lines;
  for (int i = 0; i < kMostLines; ++i) {
    const auto line = talk.ReadLine(i == 0 ? kAnswerMs : kQuietMs);
    if (!line) break;
    if (*line != "ok" && !line->empty()) lines += (lines.empty() ? "" : " | ") + *line;
  }
  return lines;
}

class Ports {
 public:
  Ports(const PortQuestion& question, const Tell& tell, const std::function<bool()>& stop)
      : question_(question), tell_(tell), stop_(stop), names_(FriendlyPortNames()) {}

  std::vector<std::string> Run() {
    if (const std::string who = Programs(); PortsAreShared() && !who.empty()) {
      Add(Level::Fail, About::Port, Wanted() ? "port " + PortName(question_.port) : "ports",
          "not asked: the driver is loaded by " + who +
              ", whose answers the doctor would take away",
          "end that program; Wine may open a port twice");
      return identities_;
    }
    if (question_.port >= 0) {
      Look(question_.port);
      return identities_;
    }
    for (int number = 0; number < kDriverPorts && !stop_(); ++number) {
      Look(number);
    }
    LookBeyond();
    // Where a controller has answered, the silent ports are those of other devices.
    for (Finding& finding : silent_) {
      if (!identities_.empty()) {
        finding.level = Level::Ok;
        finding.todo.clear();
      }
      tell_(std::move(finding));
    }
    if (found_ == 0) {
      Add(Level::Fail, About::Port, "ports", "there is no serial port from COM0 to COM49",
          "connect the machine, switch it on, and see whether the device manager shows a port");
    } else if (identities_.empty()) {
      Add(Level::Fail, About::Controller,
          question_.id.empty() ? "controller" : "controller " + question_.id,
          "answers on none of " + std::to_string(found_) + (found_ == 1 ? " port" : " ports"),
          "switch the machine on and look at its cable; see the lines of the ports");
    }
    return identities_;
  }

 private:
  void Add(Level level, About about, const std::string& check, const std::string& text,
           const std::string& todo = "") {
    tell_({level, about, check, text, todo});
  }

  static std::string Programs() {
    std::string all;
    for (const std::string& program : ProgramsWithDriver()) {
      all += (all.empty() ? "" : ", ") + program;
    }
    return all;
  }

  bool Wanted() const { return question_.port >= 0; }

  void Look(int number) {
    const std::string name = PortName(number);
    const std::string check = "port " + name;
    const auto friendly = names_.find(number);
    const std::string called = friendly == names_.end() ? "" : ", " + friendly->second;
    SerialTalk talk;
    const Timer timer;
    const DWORD error = talk.Open(WideText("\\\\.\\" + name));
    const double openMs = timer.Ms();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) {
      if (!Wanted()) return;
      return Add(Level::Fail, About::Port, check, "is not there",
                 "see in the device manager which port the machine has");
    }
    ++found_;
    if (error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION) {
      return AddHeld(check, called);
    }
    if (error != 0) {
      return Add(Wanted() ? Level::Fail : Level::Warn, About::Port, check,
                 "does not open: " + ErrorText(error) + called,
                 "a Bluetooth port whose device is away does so: take it away; an adapter: pull it "
                 "out and plug it in again");
    }
    if (openMs > kSlowOpenMs) {
      Add(Level::Warn, About::Port, check,
          "took " + std::to_string(static_cast<int>(openMs)) + " ms to open" + called,
          "it slows each search down: take the Bluetooth device away, or disable the port");
    } else {
      Add(Level::Ok, About::Port, check, "opens" + called);
    }
    Talk(talk, name);
  }

  void AddHeld(const std::string& check, const std::string& called) {
    const std::string who = Programs();
    Add(Wanted() ? Level::Fail : Level::Warn, About::Port, check,
        "another program has it open" + called +
            (who.empty() ? "; Windows does not tell which" : "; the driver is loaded by " + who),
        "end that program: a host, a terminal, the software of another machine");
  }

  // Whether this is the controller that was asked for, if one was.
  bool IsAskedFor(const std::string& identity) const {
    return question_.id.empty() || identity == question_.id;
  }

  void Talk(SerialTalk& talk, const std::string& name) {
    const std::string check = "controller on " + name;
    std::string heard;
    std::optional<double> answerMs = AskSignOfLife(talk, heard);
    // A board that has just been switched on, or half a line of somebody else, spoils the first.
    if (!answerMs && !stop_()) answerMs = AskSignOfLife(talk, heard);
    if (!answerMs) return AddSilent(talk, check, heard);
    if (*answerMs > kDriverWaitsMs) {
      Add(Level::Warn, About::Controller, check,
          "answers after " + MsText(*answerMs) + " ms; a search waits 200 ms",
          "connect it to the computer itself, without hubs and network adapters");
    } else {
      Add(Level::Ok, About::Controller, check, "answers after " + MsText(*answerMs) + " ms");
    }
    const std::string identity = AskIdentity(talk);
    if (identity.empty()) {
      return Add(Level::Fail, About::Controller, "identity on " + name,
                 "the controller does not tell one, and a search passes it over",
                 "see that its memory card is in its place; then switch it off and on");
    }
    if (!IsAskedFor(identity)) {
      return Add(Level::Ok, About::Controller, "identity on " + name,
                 identity + ", which is not " + question_.id);
    }
    if (IsNoIdentity(identity)) {
      Add(Level::Warn, About::Controller, "identity on " + name, "none has been given to it yet",
          "k7host list gives it one");
    } else {
      Add(Level::Ok, About::Controller, "identity on " + name, identity);
      identities_.push_back(identity);
    }
    const std::string firmware = AskFirmware(talk);
    Add(firmware.empty() ? Level::Warn : Level::Ok, About::Controller, "firmware on " + name,
        firmware.empty() ? "the controller does not tell its version"
                         : ShownBytes(firmware, kMostFirmware),
        firmware.empty() ? "see that it has the firmware of an engraving machine" : "");
    MeasureLatency(talk, name);
  }

  void AddSilent(SerialTalk& talk, const std::string& check, const std::string& heard) {
    if (!heard.empty()) {
      return Silent(check,
                    "no sign of life at 115200 baud, but " + std::to_string(heard.size()) +
                        " bytes: " + ShownBytes(heard),
                    "readable text: another machine, or one that is halted, which a reset ends; "
                    "unreadable: another speed");
    }
    const std::string port = check.substr(check.rfind(' ') + 1);
    Silent(check,
           std::string("nothing answers at 115200 baud") + (talk.DtrIsOff() ? ", DTR is off" : ""),
           "switch the machine on; see that it is its port" +
               (talk.DtrIsOff() ? "; mode " + port + " dtr=on" : ""));
  }

  // At once of a port that was asked for; else after the search, which shows how bad it is.
  void Silent(const std::string& check, const std::string& text, const std::string& todo) {
    if (Wanted()) return Add(Level::Fail, About::Controller, check, text, todo);
    silent_.push_back({Level::Warn, About::Controller, check, text, todo});
  }

  void MeasureLatency(SerialTalk& talk, const std::string& name) {
    std::vector<double> times;
    std::string heard;
    for (int i = 0; i < kQuestions && !stop_(); ++i) {
      const std::optional<double> ms = AskSignOfLife(talk, heard);
      if (!ms) {
        return Add(Level::Fail, About::Controller, "latency on " + name,
                   "answer " + std::to_string(i + 1) + " of 50 did not come within a second",
                   "look at the cable and what runs beside it; try another USB port");
      }
      times.push_back(*ms);
    }
    const Latency latency = LatencyOf(times);
    const bool slow = latency.median > kSlowAnswerMs;
    Add(slow ? Level::Warn : Level::Ok, About::Controller, "latency on " + name,
        "median " + MsText(latency.median) + " ms, worst " + MsText(latency.worst) + " ms of " +
            std::to_string(times.size()),
        slow ? "set the latency of the adapter in the device manager to 1 ms; no hub in between"
             : "");
  }

  // Ports with numbers at which no driver looks.
  void LookBeyond() {
    for (const int number : ListedPorts()) {
      if (number < kDriverPorts) continue;
      const auto friendly = names_.find(number);
      Add(Level::Warn, About::Port, "port " + PortName(number),
          std::string("is there, but a search ends at COM49") +
              (friendly == names_.end() ? "" : ", " + friendly->second),
          "if it is the machine's: give it a lower number in the device manager");
    }
  }

  const PortQuestion& question_;
  const Tell& tell_;
  const std::function<bool()>& stop_;
  std::map<int, std::string> names_;
  std::vector<std::string> identities_;
  std::vector<Finding> silent_;
  int found_ = 0;
};

}  // namespace

std::vector<std::string> CheckPorts(const PortQuestion& question, const Tell& tell,
                                    const std::function<bool()>& stop) {
  return Ports(question, tell, stop).Run();
}

}  // namespace k7host
