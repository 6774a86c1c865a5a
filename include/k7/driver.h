// The host's view of k7driver.dll: four exported functions and the device object (engraver.h),
// whose table of 126 operations runs one engraving machine. A host includes this file alone.
//
// Conventions that hold for every operation:
// - "Host steps" are whole steps of the host's own grid, counted from the table home; the host gets
//   the grid's resolution (steps per inch) from GetXStepsPerUnit and GetYStepsPerUnit.
//   "Machine steps" are motor steps counted from the limit switches; Z grows downwards.
// - "Thousandths" are thousandths of an inch.
// - Text is UTF-16, zero terminated; a copy into a caller's buffer of `size` characters is cut to
//   size - 1 characters and always terminated.
// - No exception crosses the boundary. Failures are silent: the neutral value comes back.
// - Thread tags: [host] = call from the one thread that owns the device; [any] = from any thread,
//   but not while a [host] operation changes what it reads (loading the settings, setting a name,
//   attaching). An operation tagged [host] lets messages *sent* to that thread's windows
//   through while it waits; posted messages stay queued.
// - "No connection" means that the controller has not answered yet. Operations whose comment does
//   not mention it work the same with and without a connection.
#pragma once

#include <stdint.h>

#include "k7/constants.h"
#include "k7/engraver.h"

#if defined(K7_DRIVER_BUILD) || !defined(_WIN32)
#define K7_API
#else
#define K7_API __declspec(dllimport)
#endif

extern "C" {

// Looks for controllers on the fifty serial ports COM0 to COM49 and fills the table of at most ten
// that GetControllerInfo and ConnectToController use. Blocks for up to about a quarter of a second
// for each port that opens. Result: controllers found, 0 to 10. [host]
K7_API int32_t EnumerateControllers() noexcept;

// Copies the identity and the friendly name of table entry `index` (0 to 9; anything else does
// nothing) into the buffers, each of `size` characters, each null allowed. An entry beyond the last
// count gives empty texts; a `size` below 1 copies nothing. [host]
K7_API void GetControllerInfo(int32_t index, wchar_t* id, wchar_t* name, int32_t size) noexcept;

// Looks for controllers afresh, connects to the one whose identity equals `controllerId` exactly
// (letter case included) and makes it ready: settings loaded, motors on, millimetres, absolute
// positions. Blocks for about a second on top of the search. Result: the device, the host's until
// it is released; null when it was not found, its port did not open or it did not answer, and for
// null, without a search. [host]
K7_API k7::IEngraver* ConnectToController(const wchar_t* controllerId) noexcept;

// Ends a jog or ramp under way, switches the motors off, closes the link, keeps the position in the
// settings file and destroys the device; null is ignored. Never from a notification
// callback and never while a dialog of the device is open. [host]
K7_API void ReleaseController(k7::IEngraver* device) noexcept;

}  // extern "C"
