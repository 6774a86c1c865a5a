// The options of the command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/simulator.h"
#include "machine/picture.h"

namespace k7sim {

struct Options {
  SimulatorSetup setup;
  bool pty = true;
  std::string ptyLink;               // symbolic link to make; empty: none is made
  WireKind ptyWire = WireKind::Usb;  // what the pty behaves like
  bool tcp = false;
  int tcpPort = 0;  // 0: the system chooses a free one
  std::string controlPath;
  bool view = false;
  int viewPort = 0;  // 0: the system chooses a free one
  std::string picturePath;
  HomeCorner corner = HomeCorner::BottomLeft;
  std::string transcriptPath;
  TranscriptTimes transcriptTimes = TranscriptTimes::Machine;
  std::string reportPath;
  std::vector<std::pair<std::string, std::string>> switches;  // axis or "probe", state
};

// What the command line asks for. Nothing when the program is to end with `exitCode`: 0 when --help
// has been printed, 2 when one line has been printed about what is wrong.
std::optional<Options> ParseOptions(int argc, const char* const* argv, int& exitCode);

}  // namespace k7sim
