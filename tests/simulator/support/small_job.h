// A small job, and the machine that it is made for.
#pragma once

#include "tests/simulator/support/board_bench.h"

namespace k7test {

// A job on a plate at 1 inch: a plunge, a cut of 2 inches at a depth of 0.05 inch, a lift, travel.
inline void RunJob(Bench& bench) {
  for (const char* line : {"SetTableHomed", "G20", "G0 F3000", "M106", "SendBlockMessagesOn", "M42",
                           "G0 X1 Y1", "G0 Z1.05", "G0 X3", "G0 Z0.9", "G0 X1 Y2"}) {
    bench.Send(line);
  }
  bench.PassAll();
}

inline k7sim::MachineSetup InchDeep() {
  k7sim::MachineSetup setup;
  setup.surface = k7sim::Surface(1);
  return setup;
}

}  // namespace k7test
