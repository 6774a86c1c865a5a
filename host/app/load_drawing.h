// A drawing from its file.
#pragma once

#include "args/arguments.h"
#include "drawing/drawing.h"

namespace k7host {

// Reads the file of the arguments whole and prints a notice for what is passed over in it. An exit
// code, explained when it is not kExitOk.
int LoadDrawing(const Arguments& arguments, Drawing& drawing);

}  // namespace k7host
