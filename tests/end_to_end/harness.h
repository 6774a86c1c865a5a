// What the end-to-end tests stand on: programs under Wine, simulated controllers on pseudo
// terminals that are COM ports of the Wine prefix, settings files, golden transcripts.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace k7test {

// A child process with its standard input and output (and errors) on pipes.
class Process {
 public:
  Process(const std::vector<std::string>& command, const std::filesystem::path& workingFolder);
  ~Process();  // ends it when it still runs
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  void WriteLine(const std::string& line);
  void CloseInput();
  // Next line of output without its end; false at the end of output or after the deadline.
  bool ReadLine(std::string& line, int deadlineSeconds = 60);
  // All the rest of the output, until the program ends or the deadline has passed.
  std::string ReadAll(int deadlineSeconds = 120);
  void Signal(int number);
  // Waits for the end: exit code, or -1 when a signal or the deadline ended it.
  int Wait(int deadlineSeconds = 60);
  bool Running();
  pid_t Pid() const { return pid_; }

 private:
  pid_t pid_ = -1;
  int input_ = -1;
  int output_ = -1;
  bool ended_ = false;
  int status_ = 0;
  std::string pending_;
};

// Where things are; taken from the environment that ./k7 sets.
struct Places {
  std::filesystem::path windowsPrograms, nativePrograms, source, prefix;
  static const Places& Get();
};

// Settings of one controller: "Section/Key" to value, as they stand in the file.
using Settings = std::map<std::string, std::string>;

std::filesystem::path SettingsFile(const std::string& id);
void WriteSettings(const std::string& id, const Settings& settings);  // replaces the file
Settings ReadSettings(const std::string& id);
void RemoveAllSettings();

// A k7sim as \\.\COM<port>. Its files live in a folder of the running test's own.
class Controller {
 public:
  // `arguments` beside --pty, --id, --transcript and --report; speed is max unless given.
  Controller(int port, const std::string& id, std::vector<std::string> arguments = {});
  ~Controller();

  // Ends the simulator (once) and waits until its files are written.
  void Stop();
  // Lines received, in order, each ended by "\n". Stops the simulator.
  std::string Transcript();
  // The same of both directions, marked "> " and "< ".
  std::string WholeTranscript();
  // The report as text and a number from it by a path such as "lines.received". Stops it.
  std::string Report();
  double Number(const std::string& path);
  // Every fault of --fault has fired.
  bool AllFaultsFired();
  // A command to its control pipe.
  void Control(const std::string& command);
  bool Running();
  // Waits until the transcript (as written so far) holds the text.
  bool WaitForTranscript(const std::string& text);

 private:
  std::filesystem::path folder_, link_;
  std::unique_ptr<Process> process_;
  bool stopped_ = false;
};

// k7_slots.exe: the driver, one command and one answer a line.
class Slots {
 public:
  Slots();
  ~Slots();
  // Sends a command and returns its answer; "no answer" after the deadline.
  std::string Ask(const std::string& command, int deadlineSeconds = 60);
  // Sends a command whose answer is not waited for.
  void Tell(const std::string& command);
  int Quit();
  // Resident memory of the driver's process in KiB; 0 when it cannot be read.
  long long ResidentKiB() const;

 private:
  Process process_;
};

// Runs k7host.exe: exit code and everything it printed, line ends as "\n".
struct HostRun {
  int exitCode = -1;
  std::string output;
};
HostRun RunHost(const std::vector<std::string>& arguments, int deadlineSeconds = 120);

// Compares with tests/golden/<name>; a missing file fails. With K7_UPDATE_GOLDEN set (by
// tests/golden/update.sh alone) writes it instead.
void ExpectGolden(const std::string& name, const std::string& text);

// The drawing as a path that Windows programs understand.
std::string WindowsPath(const std::filesystem::path& path);

}  // namespace k7test
