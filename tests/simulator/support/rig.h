// A simulator with one link and no port. Bytes go in and come out at the times that a test gives.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "app/simulator.h"

namespace k7test {

struct Rig {
  explicit Rig(k7sim::WireKind kind = k7sim::WireKind::Usb, k7sim::SimulatorSetup setup = {},
               k7sim::TranscriptTimes times = k7sim::TranscriptTimes::Off)
      : transcript(times), simulator(setup, transcript), link(simulator.AddLink(kind, "link")) {}

  void Open() { simulator.HostOpened(link, now); }
  std::string Take() {
    simulator.Run(now);
    const std::string bytes(simulator.Ready(link, now));
    simulator.Sent(link, bytes.size(), now);
    return bytes;
  }
  std::string Send(std::string_view bytes) {
    simulator.Receive(link, bytes, now);
    return Take();
  }
  std::string TakeAt(double seconds) {
    now = k7sim::UsFromSeconds(seconds);
    return Take();
  }

  k7sim::Transcript transcript;
  k7sim::Simulator simulator;
  int link;
  k7sim::TimeUs now = 0;
};

inline k7sim::SimulatorSetup WithFault(const char* text) {
  k7sim::SimulatorSetup setup;
  std::string error;
  const auto faults = k7sim::ParseFaults(text, error);
  if (!faults) {
    ADD_FAILURE() << error;
  } else {
    setup.faults = *faults;
  }
  return setup;
}

}  // namespace k7test
