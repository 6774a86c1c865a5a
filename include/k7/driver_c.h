// The driver for C, and for every language that can load C: four exported functions, and the
// device's 126 operations as a struct of function pointers in the order of their slots. Written by
// packaging/bindings.py from the C++ headers beside this one; change those.
//
// An operation is called through the table, with the device as the first argument:
//
//   K7Device* machine = ConnectToController(id);
//   if (machine != NULL && machine->operations->BeginJob(machine)) ...
//
// The table is that of the C++ class in engraver.h, and the calling convention is the one that
// 64-bit Windows has, so nothing lies between a C host and the driver. Include this file or
// driver.h in one source, not both: they declare the same four functions.
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

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// Kinds of link, as GetLinkType reports them.
enum {
  K7_LINK_NONE = 0,
  K7_LINK_SERIAL = 1,
  K7_LINK_TCP = 2,
};

// Status numbers of MoveTo, EngraveTo, LowerCutter, LowerCutterContinue and TravelTo.
enum {
  K7_STATUS_NOTHING = 0,    // not connected, no job, or nothing to move
  K7_STATUS_SENT = 1,       // a line went out
  K7_STATUS_ONE_SHOT = 2,   // manual cutter: mode used up, now normal
  K7_STATUS_PROBED = 3,     // semi-automatic: surface probed, cutter up
  K7_STATUS_ARMED = 4,      // semi-automatic: the next plunge will probe
  K7_STATUS_REFUSED = 100,  // would cut into the table; user was told
};

// Cutter modes, the setting "Cutter Mode".
enum {
  K7_CUTTER_NONE = 0,            // plunge to a known cutter home
  K7_CUTTER_MANUAL = 1,          // once per job, then K7_CUTTER_NONE
  K7_CUTTER_AUTOMATIC = 2,       // probe before every plunge
  K7_CUTTER_SEMI_AUTOMATIC = 3,  // probe once per job
  K7_CUTTER_AIR_Z = 4,           // pneumatic head, no depth control
};

// Kinds of run, for SetGridMode.
enum {
  K7_RUN_ENGRAVING = 0,
  K7_RUN_GRID = 1,
  K7_RUN_BRAILLE_DRILL = 2,
  K7_RUN_BRAILLE_BEAD_INSERT = 3,
};

// Commands of SetSpindle.
enum {
  K7_SPINDLE_OFF = 0,
  K7_SPINDLE_ENGRAVE = 1,
  K7_SPINDLE_FULL = 2,
  K7_SPINDLE_INHIBIT = 3,
  K7_SPINDLE_RELEASE = 4,
};

// Directions and speeds of StartJog.
enum {
  K7_JOG_Y_MINUS = 0,
  K7_JOG_Y_PLUS = 1,
  K7_JOG_X_PLUS = 2,
  K7_JOG_X_MINUS = 3,
  K7_JOG_Z_UP = 4,
  K7_JOG_Z_DOWN = 5,
  K7_JOG_FAST = 0,
  K7_JOG_SLOW = 1,
};

// Results of ShowSettingsDialog.
enum {
  K7_SETTINGS_RUN_JOB = 1,
  K7_SETTINGS_CANCELLED = 2,  // also: the controller fell silent
  K7_SETTINGS_APPLIED = 101,
};

// Characters of a controller identity, and of the buffer that holds one with its terminator.
enum {
  K7_ID_LENGTH = 16,
  K7_ID_CAPACITY = 24,
  K7_NAME_CAPACITY = 64,
};

// A window of the host (HWND) and the handle of a link (serial HANDLE or SOCKET), untyped so that
// this header needs nothing of Windows.
typedef void* K7WindowHandle;
typedef void* K7LinkHandle;

// Told of progress instead of a window message; runs on the driver's reader thread, which reads
// nothing further until it returns.
typedef void (*K7NotifyCallback)(uint32_t message, uint64_t context);

// A connected machine: its first word is the address of its operations. What follows that word is
// the driver's own.
typedef struct K7Operations K7Operations;
typedef struct K7Device {
  const K7Operations* operations;
} K7Device;

// The operations, in the order of their slots, each 8 bytes. The number in front of a comment is
// the slot.
struct K7Operations {
  // 0: version of the operation table, 998. Without a record: 0. [any]
  uint32_t (*GetInterfaceVersion)(K7Device* self);
  // 1: table width in host steps, rounded half up. Without a record: 0. [any]
  uint32_t (*GetTableWidthSteps)(K7Device* self);
  // 2: table height in host steps, rounded half up. Without a record: 0. [any]
  uint32_t (*GetTableHeightSteps)(K7Device* self);
  // 3: placeholder, does nothing. [any]
  void (*Reserved3)(K7Device* self);
  // 4: begins a job: switches the job output and the controller's progress reports on and arms the
  // first move. Waits, without bound, until the controller has confirmed. Result: false when the
  // proximity switch is already closed in cutter modes 2 and 3 (the user has been told and the job
  // must not be sent), else true. Without a record or a connection: true, nothing sent. [host]
  bool (*BeginJob)(K7Device* self);
  // 5: placeholder, does nothing. [any]
  void (*Reserved5)(K7Device* self);
  // 6: travels to (x, y) host steps with the cutter up, lifting it first when it is down; waits
  // while 32 lines are outstanding. Result: a K7_STATUS_ number; the first travel of a job answers
  // K7_STATUS_ONE_SHOT or K7_STATUS_ARMED in cutter modes 1 and 3. Without a record, a connection
  // or an open job: 0. [host]
  uint32_t (*MoveTo)(K7Device* self, uint32_t xSteps, uint32_t ySteps);
  // 7: cuts to (x, y) host steps, plunging first when the cutter is up; waits while 32 lines are
  // outstanding. A cut to the present position does nothing. Result: a K7_STATUS_ number; after
  // K7_STATUS_PROBED the cutter is up and the cut was not made. Without a record, a connection or
  // an open job: 0. [host]
  uint32_t (*EngraveTo)(K7Device* self, uint32_t xSteps, uint32_t ySteps);
  // 8: placeholder, returns 0. [any]
  uint32_t (*ReturnZero8)(K7Device* self);
  // 9: ends a job: waits until every move has been carried out (without bound; with air Z for about
  // 5 s plus the engrave delay), then switches progress reports and job output off. Without a
  // record or a connection: nothing. [host]
  void (*EndJob)(K7Device* self);
  // 10: placeholder, does nothing. [any]
  void (*Reserved10)(K7Device* self);
  // 11: placeholder, does nothing. [any]
  void (*Reserved11)(K7Device* self);
  // 12: keeps a byte for the host. Without a record: nothing. [any]
  void (*SetHostFlag)(K7Device* self, uint8_t flag);
  // 13: the byte kept by SetHostFlag; 0 until set and without a record. [any]
  uint8_t (*GetHostFlag)(K7Device* self);
  // 14: placeholder, returns false. [any]
  bool (*ReturnFalse14)(K7Device* self);
  // 15 to 17: placeholders, do nothing. [any]
  void (*Reserved15)(K7Device* self);
  void (*Reserved16)(K7Device* self);
  void (*Reserved17)(K7Device* self);
  // 18: placeholder, returns false. [any]
  bool (*ReturnFalse18)(K7Device* self);
  // 19 to 22: placeholders, do nothing. [any]
  void (*Reserved19)(K7Device* self);
  void (*Reserved20)(K7Device* self);
  void (*Reserved21)(K7Device* self);
  void (*Reserved22)(K7Device* self);
  // 23: placeholder, returns 0. [any]
  uint32_t (*ReturnZero23)(K7Device* self);
  // 24: placeholder, does nothing. [any]
  void (*Reserved24)(K7Device* self);
  // 25: placeholder, returns false. [any]
  bool (*ReturnFalse25)(K7Device* self);
  // 26: placeholder, returns 1. [any]
  uint32_t (*ReturnOne26)(K7Device* self);
  // 27: placeholder, returns true. [any]
  bool (*ReturnTrue27)(K7Device* self);
  // 28 to 31: placeholders, do nothing. [any]
  void (*Reserved28)(K7Device* self);
  void (*Reserved29)(K7Device* self);
  void (*Reserved30)(K7Device* self);
  void (*Reserved31)(K7Device* self);
  // 32: placeholder, returns 0. [any]
  uint32_t (*ReturnZero32)(K7Device* self);
  // 33: plunges at the present position, when the cutter is up. In cutter mode 3 after the first
  // travel of a job it probes the surface, lifts and returns K7_STATUS_PROBED without plunging.
  // Result: a K7_STATUS_ number. Without a record, a connection or an open job: 0. [host]
  uint32_t (*LowerCutter)(K7Device* self);
  // 34: as LowerCutter, but in cutter mode 3 it probes, lifts and then goes on to plunge, and
  // answers K7_STATUS_SENT whatever became of lift and plunge. [host]
  uint32_t (*LowerCutterContinue)(K7Device* self);
  // 35: placeholder, does nothing. [any]
  void (*Reserved35)(K7Device* self);
  // 36: settles the controller's identity: asks the controller unless it is known, gives it a fresh
  // one when it has none, loads its settings and copies the identity into `buffer` (null allowed;
  // `size` in characters). Takes up to about 600 ms. Result: 24, or 0 when the controller did not
  // answer. Without a record: 24, buffer untouched; without a link: 24 with the identity as it
  // stands. [host]
  int32_t (*QueryControllerId)(K7Device* self, wchar_t* buffer, int32_t size);
  // 37: copies the controller's friendly name (at most 63 characters). Result: 0; without a record:
  // `size`, buffer untouched. [any]
  int32_t (*GetFriendlyName)(K7Device* self, wchar_t* buffer, int32_t size);
  // 38: replaces the friendly name in memory (cut to 63 characters; null ignored); the settings
  // file is not written. Without a record: nothing. [host]
  void (*SetFriendlyName)(K7Device* self, const wchar_t* name);
  // 39: asks the controller for a sign of life and tells whether the last one is at most 2000 ms
  // old: 1, else 0. The first question after an attach counts as answered. 0 on a link that is
  // lost: reads have failed for 2 s, or a write has failed. IsConnected stays 1 then, so this is
  // what to ask. Without a record: 0; without a link: 1, nothing sent. [host]
  int32_t (*CheckAlive)(K7Device* self);
  // 40: shows the settings dialog, modal to `parent`. `mode` 1: before a job (makes sure of the
  // table home first, as slot 70); `allowRun` non-zero: the user may change settings and run;
  // `initParam`: two 16-bit words handed on to the tool-offset prompts (low word X, high word Y,
  // thousandths); `showGrid` 0 hides the grid speed. Result: a K7_SETTINGS_ number. Without a
  // record: 2. [host]
  int64_t (*ShowSettingsDialog)(K7Device* self, K7WindowHandle parent, uint32_t mode,
                                uint32_t allowRun, uint64_t initParam, uint32_t showGrid);
  // 41: window and message told, each time the controller gives a sign of life, by SendMessageW
  // with both parameters 0; null: none. Without a record: nothing. [host]
  void (*SetConnectNotify)(K7Device* self, K7WindowHandle window, uint32_t message);
  // 42: table width in thousandths. Without a record: 0. [any]
  uint32_t (*GetTableWidth)(K7Device* self);
  // 43: table height in thousandths. Without a record: 0. [any]
  uint32_t (*GetTableHeight)(K7Device* self);
  // 44: host steps per inch on X. Without a record: 0. [any]
  float (*GetXStepsPerUnit)(K7Device* self);
  // 45: host steps per inch on Y. Without a record: 0. [any]
  float (*GetYStepsPerUnit)(K7Device* self);
  // 46: machine steps per inch on Z. Without a record: 0. [any]
  float (*GetZStepsPerInch)(K7Device* self);
  // 47: motor power: 1 on, anything else off (the table can be moved by hand). Without a record, a
  // connection or a link: nothing. [host]
  void (*EnableMotors)(K7Device* self, uint8_t on);
  // 48: the window that owns the driver's message boxes and is told of progress by SendMessageW:
  // `msgQueued`, `msgStarted`, `msgFinished` with both parameters 0; `msgPosition` with X and Y in
  // host steps from the table home; `msgSurface` with the deepest allowed and the present machine Z
  // in steps; `msgJogZ` with the present machine Z in steps and 0. Without a record: nothing.
  // [host]
  void (*SetNotifyWindow)(K7Device* self, K7WindowHandle window, uint32_t msgQueued,
                          uint32_t msgStarted, uint32_t msgFinished, uint32_t msgPosition,
                          uint32_t msgSurface, uint32_t msgJogZ);
  // 49: a callback told of queued, started and finished moves instead of the window; it runs on the
  // driver's reader thread. Null: the window again. Without a record: nothing. [host]
  void (*SetNotifyCallback)(K7Device* self, K7NotifyCallback callback, uint64_t context,
                            uint32_t msgQueued, uint32_t msgStarted, uint32_t msgFinished);
  // 50: lifts the cutter, travels to (x, y) host steps and keeps the position in the settings file;
  // (0, 0) is machine zero at the switches, not the table home. `flag` has no effect. Without a
  // record or a connection: nothing. [host]
  void (*SyncCurrentLocation)(K7Device* self, uint32_t xSteps, uint32_t ySteps, uint8_t flag);
  // 51: the same as a job of its own with the spindle at full speed; the host is not told of its
  // moves. `roundFlag` 1 switches the round fixture off for the travel. Without a record: nothing;
  // without a connection nothing is sent. [host]
  void (*GoToAsJob)(K7Device* self, uint32_t xSteps, uint32_t ySteps, uint8_t roundFlag);
  // 52: adds the table home in host steps to *x and *y (null allowed) and sends msgPosition to the
  // notify window. Without a record, a window or that message: nothing. [host]
  void (*GetCurrentPosition)(K7Device* self, int32_t* x, int32_t* y);
  // 53: sends msgSurface to the notify window; moves nothing. Without a record, a window or that
  // message: nothing. [host]
  void (*HomeCutter)(K7Device* self);
  // 54: jogs one axis in small steps on a thread of its own for as long as the virtual key `key` is
  // held (at least one step); sends `endMessage` (0, 0) to the notify window when it has ended.
  // `direction` and `speedMode`: K7_JOG_ numbers. Refused while a jog runs or a job is open.
  // Without a record: nothing; without a connection nothing moves, and the end message comes.
  // [host]
  void (*StartJog)(K7Device* self, uint32_t direction, uint32_t speedMode, uint32_t key,
                   uint32_t endMessage);
  // 55: waits, in a job without bound, until every move has been carried out, then keeps `hold` (1:
  // the next lifts go to machine Z 0). With no job open the wait ends when the controller has
  // reported nothing for 2 s. Without a record: nothing. [host]
  void (*SetPlungeHold)(K7Device* self, uint8_t hold);
  // 56: drives Z, Y and X to their limit switches and declares that place 0, 0, 0. Waits, without
  // bound, for each switch. Result 0. Refused with a message while a round fixture is active on a
  // machine without all four switches. Without a record or a connection, or while a job is open:
  // nothing. [host]
  uint32_t (*HomeTable)(K7Device* self);
  // 57: position in thousandths from the table home: X, Y and that of the round fixture (each null
  // allowed). With `round` given and a fixture active it is switched off meanwhile, about 2 s.
  // Without a record: outputs untouched. [host]
  void (*GetMachinePosition)(K7Device* self, int32_t* x, int32_t* y, int32_t* round);
  // 58: position for display in thousandths: as slot 57, but with a round fixture active the axis
  // that it replaces shows where that axis was parked. Without a record: outputs untouched. [host]
  void (*GetTableHome)(K7Device* self, int32_t* x, int32_t* y, int32_t* third);
  // 59: takes the present Z as the cutter home (but at least the larger of lift and engrave depth),
  // keeps it in the settings file and lifts the cutter. Result: a lift was sent. Without a record
  // or a connection, or while a job is open: false. [host]
  bool (*FindCutterHome)(K7Device* self);
  // 60: placeholder, does nothing. [any]
  void (*Reserved60)(K7Device* self);
  // 61: spindle by a K7_SPINDLE_ number; waits 750 ms when the speed changes. Without a record or a
  // spindle, or with air Z: nothing; without a connection only K7_SPINDLE_INHIBIT and
  // K7_SPINDLE_RELEASE are kept. [host]
  void (*SetSpindle)(K7Device* self, uint32_t command);
  // 62: asks the controller for its X, Y and Z limit and its Z proximity switch, 1 closed, 0 open
  // (each null allowed). Without a record, a connection or all four switches fitted, or while a job
  // is open: outputs untouched. [host]
  void (*ReadSwitches)(K7Device* self, uint8_t* x, uint8_t* y, uint8_t* z, uint8_t* prox);
  // 63: changes the running spindle's speed up (`direction` 0) or down (1) on a thread of its own
  // for as long as the virtual key `key` is held, then sends `message` (reached rpm, 0) to
  // `window`. Result: started. Refused while a ramp runs or a job is open, without a spindle, or
  // when it is off or already at that end. Without a record: false. [host]
  bool (*StartSpindleRamp)(K7Device* self, int32_t direction, K7WindowHandle window,
                           uint32_t message, uint32_t key);
  // 64: rpm last commanded, 0 = off; 0 without a spindle or a record. [any]
  uint32_t (*GetSpindleValue)(K7Device* self);
  // 65: the setting "Scissors"; -10.0 until settings are loaded and without a record. [any]
  float (*GetScissors)(K7Device* self);
  // 66: 1 when jobs are engraved colour by colour. Without a record: 0. [any]
  uint8_t (*GetEngraveByColor)(K7Device* self);
  // 67: 1 when a spindle is fitted. Without a record: 0. [any]
  uint8_t (*HasSpindle)(K7Device* self);
  // 68: thread-local-storage index of the host's job colour table; 0 = none. Without a record:
  // nothing. [host]
  void (*SetColorTableIndex)(K7Device* self, uint32_t tlsIndex);
  // 69: that index; 0 without a record. [any]
  uint32_t (*GetColorTableIndex)(K7Device* self);
  // 70: makes sure that the table home is known: nothing when it is, a mechanical home on a machine
  // with all four switches, else the Set Table Home dialog, modal to `window`. Result: that of the
  // dialog (1 or 2), else 0. Without a record: 0. [host]
  uint64_t (*EnsureTableHome)(K7Device* self, K7WindowHandle window);
  // 71: non-zero when a braille bead insert tool is fitted. Without a record: 0. [any]
  uint32_t (*HasBeadInsertTool)(K7Device* self);
  // 72: that tool's X offset from the cutter in thousandths. Without a record: 0. [any]
  int32_t (*GetBeadToolOffsetX)(K7Device* self);
  // 73: that tool's Y offset in thousandths. Without a record: 0. [any]
  int32_t (*GetBeadToolOffsetY)(K7Device* self);
  // 74: proposes the tool's offset, from the point (x, y) thousandths under the tool and the
  // cutter's present position, in a Yes/No box and keeps it on Yes. Result: 1 when kept, else 0.
  // Without a record, a connection or the host's helper library, or while a job is open: 0. [host]
  uint32_t (*SetBeadToolOffset)(K7Device* self, uint32_t x, uint32_t y);
  // 75: travels (as MoveTo, same result) so that the tool, not the cutter, arrives over (x, y) host
  // steps. Without a record: 0. [host]
  uint32_t (*MoveBeadToolTo)(K7Device* self, uint32_t xSteps, uint32_t ySteps);
  // 76: attaches an open link (`linkType` a K7_LINK_ number, `portName` at most 15 characters, null
  // for none) and starts its reader thread; a null `link` detaches: asks the reader to stop and
  // waits for it, without bound, and makes `linkType` the type. Either ends a jog or ramp under way
  // first. The link itself stays the caller's to close. Without a record: nothing. Never from a
  // notification callback. [host]
  void (*AttachLink)(K7Device* self, K7LinkHandle link, uint32_t linkType, const wchar_t* portName);
  // 77: 1 once the controller has answered. Without a record: 0. [any]
  uint8_t (*IsConnected)(K7Device* self);
  // 78: forgets the identity (sixteen zeros), so that the next query asks the controller. Without a
  // record: nothing. [host]
  void (*ResetControllerId)(K7Device* self);
  // 79: sends one 8-bit command line (the caller includes its line feed); null ignored. Waits up to
  // 100 ms for the write. Without a record or a link: nothing. [any]
  void (*SendLine)(K7Device* self, const char* line);
  // 80: reads the controller's settings file whole, and with a connection tells the controller its
  // steps per millimetre, axis mapping and position. Without a record: nothing. [host]
  void (*LoadSettings)(K7Device* self);
  // 81: copies the path of this controller's settings file, creating its folders. Result: 0;
  // without a record: 0, buffer untouched. [host]
  uint32_t (*GetSettingsFilePath)(K7Device* self, wchar_t* buffer, int32_t size);
  // 82: characters of the camera identity (0: none); copied only when it fits with its terminator.
  // Without a record: 0. [host]
  int64_t (*GetCameraId)(K7Device* self, wchar_t* buffer, int32_t size);
  // 83: replaces the camera identity and keeps it in the settings file; an empty text clears it in
  // memory only and it comes back with the next load. Null, or no record: nothing. [host]
  void (*SetCameraId)(K7Device* self, const wchar_t* text);
  // 84: placeholder, returns 1. [any]
  uint32_t (*ReturnOne84)(K7Device* self);
  // 85: passes of a job as set up. Without a record: 1. [any]
  uint32_t (*GetPassCount)(K7Device* self);
  // 86: starts pass `pass` (1-based) at its first point (x, y) host steps: waits, without bound,
  // until every move has been carried out, takes the pass's depth, plunges to it when the cutter is
  // down, and writes a status line into `status` (null allowed; `size` in characters), for instance
  // "Pass 2 of 4 - 0.038 - GRID". Result 0. Without a record or a connection: nothing. [host]
  uint32_t (*StartPass)(K7Device* self, uint32_t pass, uint32_t xSteps, uint32_t ySteps,
                        wchar_t* status, int32_t size);
  // 87: non-zero when a diode pointer is fitted. Without a record: 0. [any]
  uint32_t (*IsDiodePointerFitted)(K7Device* self);
  // 88: the pointer's X offset from the cutter in thousandths. Without a record: 0. [any]
  int32_t (*GetDiodeOffsetX)(K7Device* self);
  // 89: the pointer's Y offset in thousandths. Without a record: 0. [any]
  int32_t (*GetDiodeOffsetY)(K7Device* self);
  // 90: as SetBeadToolOffset, for the diode pointer. [host]
  uint32_t (*SetDiodeOffset)(K7Device* self, uint32_t x, uint32_t y);
  // 91: as MoveBeadToolTo, for the diode pointer. [host]
  uint32_t (*MoveDiodeTo)(K7Device* self, uint32_t xSteps, uint32_t ySteps);
  // 92: copies the path of this controller's folder of material profiles, creating it. Result: 1
  // when the last folder was created just now, else 0; without a record: 0, buffer untouched. Asks
  // the identity first, which reloads the settings. [host]
  uint32_t (*GetMaterialLibraryFolder)(K7Device* self, wchar_t* buffer, int32_t size);
  // 93: the same for the folder of temporary homes, which is the host's own to fill. [host]
  uint32_t (*GetTempHomeLibraryFolder)(K7Device* self, wchar_t* buffer, int32_t size);
  // 94: number of the pass under way, 0 before the first. Without a record: 0. [any]
  uint32_t (*GetCurrentPass)(K7Device* self);
  // 95: axis that the round fixture replaces: 0 none, 1 X, 2 Y; 0 when no fixture is configured or
  // without a record. [any]
  uint32_t (*GetRoundMode)(K7Device* self);
  // 96: stores that number when a fixture is configured; sends and writes nothing. Without a
  // record: nothing. [host]
  void (*SetRoundMode)(K7Device* self, uint32_t mode);
  // 97: kind of run, a K7_RUN_ number: decides the cutting speed (grid) and the pass status text.
  // Without a record: nothing. [host]
  void (*SetGridMode)(K7Device* self, uint32_t mode);
  // 98: that number; 0 without a record. [any]
  uint32_t (*GetGridMode)(K7Device* self);
  // 99 to 104: placeholders, return 0. [any]
  uint32_t (*ReturnZero99)(K7Device* self);
  uint32_t (*ReturnZero100)(K7Device* self);
  uint32_t (*ReturnZero101)(K7Device* self);
  uint32_t (*ReturnZero102)(K7Device* self);
  uint32_t (*ReturnZero103)(K7Device* self);
  uint32_t (*ReturnZero104)(K7Device* self);
  // 105: placeholder, does nothing. [any]
  void (*Reserved105)(K7Device* self);
  // 106: placeholder, returns true. [any]
  bool (*ReturnTrue106)(K7Device* self);
  // 107: placeholder, does nothing. [any]
  void (*Reserved107)(K7Device* self);
  // 108: placeholder, returns false. [any]
  bool (*ReturnFalse108)(K7Device* self);
  // 109: placeholder, does nothing. [any]
  void (*Reserved109)(K7Device* self);
  // 110: placeholder, returns true. [any]
  bool (*ReturnTrue110)(K7Device* self);
  // 111: placeholder, does nothing. [any]
  void (*Reserved111)(K7Device* self);
  // 112: a reserved word of the record, 0. Without a record: 0. [any]
  uint64_t (*GetRecordReserved)(K7Device* self);
  // 113: placeholder, does nothing. [any]
  void (*Reserved113)(K7Device* self);
  // 114: 1 when a round fixture replaces an axis, else 0, whether or not one is configured. Without
  // a record: 0. [any]
  int32_t (*IsRoundModeActive)(K7Device* self);
  // 115: keeps a text of up to 63 characters for the host; null ignored. Without a record: nothing.
  // [any]
  void (*SetHostText)(K7Device* self, const wchar_t* text);
  // 116: copies that text. Result: 0; `size` when the buffer is null, `size` is below 1 or there is
  // no record. [any]
  int32_t (*GetHostText)(K7Device* self, wchar_t* buffer, int32_t size);
  // 117: lifts the cutter to machine Z 0, begins a job and travels, by MoveTo, to (x, y). The point
  // is converted from host to machine steps twice, so axis factor and table home apply twice; only
  // (0, 0) is the table home. With a plunge hold it only lifts. Result: that of MoveTo, 0 when
  // held. Without a record or a connection: 0. [host]
  uint32_t (*TravelTo)(K7Device* self, uint32_t xSteps, uint32_t ySteps);
  // 118: 1 when the machine has a pneumatic head (cutter mode 4), else 0. Without a record: 0.
  // [any]
  int32_t (*IsAirZ)(K7Device* self);
  // 119: estimated run time in whole seconds of one pass of a drawing given as `count` triples (x,
  // y, kind) in host steps, starting at (0, 0); kind 1 = travel to the point with the cutter up,
  // kind 2 = cut to it (without length: a dot), others are passed over. Counts the path at the
  // traverse and engraving speeds and the time that corners cost, but no lifts, plunges, delays,
  // spindle, probing or grid speed. Sends nothing. Result 0 for null, for axes of different
  // resolution, and without a record. [any]
  uint32_t (*EstimateJobTime)(K7Device* self, const uint32_t* triples, uint32_t count);
  // 120: overwrites the mark that the reader thread runs. A detach waits until the mark is cleared.
  // Without a record: nothing. [any]
  void (*SetReaderAlive)(K7Device* self, uint8_t alive);
  // 121: 1 while the reader thread runs. Without a record: 0. [any]
  uint8_t (*GetReaderAlive)(K7Device* self);
  // 122: a K7_LINK_ number. Without a record: 0. [any]
  uint32_t (*GetLinkType)(K7Device* self);
  // 123: copies the serial path or network address of the link. Result: 0; `size` when the buffer
  // is null or `size` is below 1. Without a record: 0, the buffer stays as it was. [any]
  int32_t (*GetPortName)(K7Device* self, wchar_t* buffer, int32_t size);
  // 124: the link's handle, null when detached or without a record. [any]
  K7LinkHandle (*GetLinkHandle)(K7Device* self);
  // 125: keeps the position in the settings file and ends the object; frees its memory when bit 0
  // of `flags` is set. Use ReleaseController instead, which closes the link first. Result: the
  // object's address. Without a record nothing is kept. Never from a notification callback. [host]
  void* (*DeleteSelf)(K7Device* self, uint32_t flags);
};

#if defined(_WIN32)
#define K7_C_API __declspec(dllimport)
#else
#define K7_C_API
#endif

// Looks for controllers on the fifty serial ports COM0 to COM49 and fills the table of at most ten
// that GetControllerInfo and ConnectToController use. Blocks for up to about a quarter of a second
// for each port that opens. Result: controllers found, 0 to 10. [host]
K7_C_API int32_t EnumerateControllers(void);

// Copies the identity and the friendly name of table entry `index` (0 to 9; anything else does
// nothing) into the buffers, each of `size` characters, each null allowed. An entry beyond the last
// count gives empty texts; a `size` below 1 copies nothing. [host]
K7_C_API void GetControllerInfo(int32_t index, wchar_t* id, wchar_t* name, int32_t size);

// Looks for controllers afresh, connects to the one whose identity equals `controllerId` exactly
// (letter case included) and makes it ready: settings loaded, motors on, millimetres, absolute
// positions. Blocks for about a second on top of the search. Result: the device, the host's until
// it is released; null when it was not found, its port did not open or it did not answer, and for
// null, without a search. [host]
K7_C_API K7Device* ConnectToController(const wchar_t* controllerId);

// Ends a jog or ramp under way, switches the motors off, closes the link, keeps the position in the
// settings file and destroys the device; null is ignored. Never from a notification callback and
// never while a dialog of the device is open. [host]
K7_C_API void ReleaseController(K7Device* device);

#ifdef __cplusplus
}  // extern "C"
#endif
