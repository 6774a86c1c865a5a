// The doctor's look at ports and the controllers behind them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "doctor/report.h"

namespace k7host {

using Tell = std::function<void(Finding)>;

struct PortQuestion {
  int port = -1;   // this port alone; -1: every one there is
  std::string id;  // this controller alone; empty: every one that answers
};

// Asks each port for a sign of life, identity, firmware and the time of 50 answers. Nothing that is
// sent moves the machine or changes anything in it. The identities that answered; `stop` is asked
// between two questions. [host]
std::vector<std::string> CheckPorts(const PortQuestion& question, const Tell& tell,
                                    const std::function<bool()>& stop);

}  // namespace k7host
