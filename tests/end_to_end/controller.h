// A k7sim as a COM port of the Wine prefix.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "process.h"

namespace k7test {

// A k7sim as \\.\COM<port>. Its files live in a folder of the running test's own. A fault given to
// it that never fired fails the test.
class Controller {
 public:
  // `arguments` beside --pty, --id, --transcript and --report; speed is max unless given.
  Controller(int port, const std::string& id, const std::vector<std::string>& arguments = {});
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
  // A command to its control pipe.
  void Control(const std::string& command);
  // Whether the transcript, as written so far, holds the text.
  bool HasHeard(const std::string& text) const;
  int CountHeard(const std::string& text) const;
  // Waits until the transcript (as written so far) holds the text, `times` times.
  bool WaitForTranscript(const std::string& text, int times = 1);

 private:
  std::filesystem::path folder_, link_;
  std::unique_ptr<Process> process_;
  bool stopped_ = false;
};

}  // namespace k7test
