// The commands of the program. Each returns its exit code and has printed everything. [host]
#pragma once

#include "app/session.h"
#include "args/arguments.h"

namespace k7host {

int RunList(const Arguments& arguments);
int RunInfo(const Arguments& arguments);
int RunEngrave(const Arguments& arguments);
int RunEstimate(const Arguments& arguments);
int RunHome(const Arguments& arguments);
int RunSwitches(const Arguments& arguments);
int RunJog(const Arguments& arguments);
int RunGoTo(const Arguments& arguments);
int RunSpindle(const Arguments& arguments);
int RunSettings(const Arguments& arguments);

// Steps that commands share.

// Homes the machine; an exit code, explained when it is not kExitOk. [host]
int HomeMachine(Session& session);

// Shows the settings dialog and prints its result; kSettingsSilent, explained, when it was closed
// because the controller does not answer any more. [host]
inline constexpr std::int64_t kSettingsSilent = -1;
std::int64_t ShowSettings(Session& session, bool beforeJob, bool allowRun);

// "X Y inches" from the table home, as the driver knows it. [host]
std::string PositionText(Session& session);

// Prints "position: X Y inches". [host]
void PrintPosition(Session& session);

// Jogs once and waits for its end; true when the machine reported a movement. [host]
bool JogOnce(Session& session, std::uint32_t direction, bool slow, std::uint32_t key);

// Jogs Z (and, with `allAxes`, X and Y) by the console's keys until Enter (true) or Esc or a stop
// request (false). [host]
bool JogByKeys(Session& session, bool allAxes, bool slow);

}  // namespace k7host
