// Runs a simulator on real ports and the real clock until it is told to stop.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "app/options.h"
#include "app/simulator.h"
#include "app/view_feed.h"
#include "wire/control_pipe.h"
#include "wire/port.h"

namespace k7sim {

class Server {
 public:
  explicit Server(const Options& options);
  ~Server();

  // Opens all ports and files, and prints where the ports are. False with one line in `error`.
  bool Start(std::string& error);
  // Serves until a signal or a control command ends it, then writes the files. False with one line
  // in `error` when a file could not be written.
  bool Run(std::string& error);

 private:
  struct Link {
    std::unique_ptr<Port> port;
    int number = 0;
    TimeUs reopenUs = kNever;  // wire time at which a closed link opens again
  };

  // Where the user is told things: standard output, unless a file is written to it.
  std::ostream& Say() const;
  TimeUs WireNow() const;
  void Wait(TimeUs nowUs);
  // Both: true when a host had sent something.
  bool ServeAll();
  bool Serve(Link& link);
  void ServeControl(bool& quit);
  // Carries out a control line of the pipe or of the page. False when it was no good; `message` is
  // what to tell its sender in either case.
  bool RunControl(const std::string& line, bool& quit, std::string& message);
  void CloseAndReopen(TimeUs nowUs);
  bool TakeSignal() const;
  bool WriteFiles(std::string& error);

  Options options_;
  Transcript transcript_;
  Simulator simulator_;
  std::vector<Link> links_;
  ControlPipe control_;
  std::unique_ptr<ViewFeed> view_;  // null without --view
  UniqueFd signals_;
  TimeUs startUs_ = 0;
};

}  // namespace k7sim
