// The command line of what is done with a drawing: k7host engrave and k7host estimate.
#pragma once

namespace CLI {
class App;
}

namespace k7host {

struct Arguments;

// Adds `engrave` and `estimate`, which share the drawing and its place on the table. [any]
void AddEngraveCommands(CLI::App& app, Arguments& out);

}  // namespace k7host
