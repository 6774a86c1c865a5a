// k7sim, the program: a simulated engraving machine on a pty or a TCP port.
#include <iostream>

#include "app/options.h"
#include "app/server.h"

int main(int argc, char** argv) {
  int exitCode = 0;
  const auto options = k7sim::ParseOptions(argc, argv, exitCode);
  if (!options) return exitCode;
  k7sim::Server server(*options);
  std::string error;
  if (!server.Start(error) || !server.Run(error)) {
    std::cerr << "k7sim: " << error << "\n";
    return 2;
  }
  return 0;
}
