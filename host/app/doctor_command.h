// k7host doctor: what a technician would check first.
#pragma once

#include "args/arguments.h"

namespace k7host {

// An exit code; everything has been printed. [host]
int RunDoctor(const DoctorArguments& arguments);

}  // namespace k7host
