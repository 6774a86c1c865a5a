// Slots 33 to 125 of the device's operation table: the engraving machine. Conventions: driver.h.
#pragma once

#include <stdint.h>

#include "k7/constants.h"
#include "k7/surface.h"

namespace k7 {

// Slots 33 to 125: the engraving machine.
class IEngraver : public ISurface {
 public:
  // 33: plunges at the present position, when the cutter is up. In cutter mode 3 after the first
  // travel of a job it probes the surface, lifts and returns kStatusProbed without plunging.
  // Result: a kStatus number. Without a record, a connection or an open job: 0. [host]
  virtual uint32_t LowerCutter() noexcept = 0;
  // 34: as LowerCutter, but in cutter mode 3 it probes, lifts and then goes on to plunge, and
  // answers kStatusSent whatever became of lift and plunge. [host]
  virtual uint32_t LowerCutterContinue() noexcept = 0;
  // 35: placeholder, does nothing. [any]
  virtual void Reserved35() noexcept = 0;
  // 36: settles the controller's identity: asks the controller unless it is known, gives it a fresh
  // one when it has none, loads its settings and copies the identity into `buffer` (null allowed;
  // `size` in characters). Takes up to about 600 ms. Result: 24, or 0 when the controller did not
  // answer. Without a record: 24, buffer untouched; without a link: 24 with the identity as it
  // stands. [host]
  virtual int32_t QueryControllerId(wchar_t* buffer, int32_t size) noexcept = 0;
  // 37: copies the controller's friendly name (at most 63 characters). Result: 0; without a
  // record: `size`, buffer untouched. [any]
  virtual int32_t GetFriendlyName(wchar_t* buffer, int32_t size) noexcept = 0;
  // 38: replaces the friendly name in memory (cut to 63 characters; null ignored); the settings
  // file is not written. Without a record: nothing. [host]
  virtual void SetFriendlyName(const wchar_t* name) noexcept = 0;
  // 39: asks the controller for a sign of life and tells whether the last one is at most 2000 ms
  // old: 1, else 0. The first question after an attach counts as answered. 0 on a link that is
  // lost: reads have failed for 2 s, or a write has failed. IsConnected stays 1 then, so this is
  // what to ask. Without a record: 0; without a link: 1, nothing sent. [host]
  virtual int32_t CheckAlive() noexcept = 0;
  // 40: shows the settings dialog, modal to `parent`. `mode` 1: before a job (makes sure of the
  // table home first, as slot 70); `allowRun` non-zero: the user may change settings and run;
  // `initParam`: two 16-bit words handed on to the tool-offset prompts (low word X, high word Y,
  // thousandths); `showGrid` 0 hides the grid speed. Result: a kSettings number. Without a
  // record: 2. [host]
  virtual int64_t ShowSettingsDialog(WindowHandle parent, uint32_t mode, uint32_t allowRun,
                                     uint64_t initParam, uint32_t showGrid) noexcept = 0;
  // 41: window and message told, each time the controller gives a sign of life, by SendMessageW
  // with both parameters 0; null: none. Without a record: nothing. [host]
  virtual void SetConnectNotify(WindowHandle window, uint32_t message) noexcept = 0;
  // 42: table width in thousandths. Without a record: 0. [any]
  virtual uint32_t GetTableWidth() noexcept = 0;
  // 43: table height in thousandths. Without a record: 0. [any]
  virtual uint32_t GetTableHeight() noexcept = 0;
  // 44: host steps per inch on X. Without a record: 0. [any]
  virtual float GetXStepsPerUnit() noexcept = 0;
  // 45: host steps per inch on Y. Without a record: 0. [any]
  virtual float GetYStepsPerUnit() noexcept = 0;
  // 46: machine steps per inch on Z. Without a record: 0. [any]
  virtual float GetZStepsPerInch() noexcept = 0;
  // 47: motor power: 1 on, anything else off (the table can be moved by hand). Without a record, a
  // connection or a link: nothing. [host]
  virtual void EnableMotors(uint8_t on) noexcept = 0;
  // 48: the window that owns the driver's message boxes and is told of progress by SendMessageW:
  // `msgQueued`, `msgStarted`, `msgFinished` with both parameters 0; `msgPosition` with X and Y in
  // host steps from the table home; `msgSurface` with the deepest allowed and the present machine Z
  // in steps; `msgJogZ` with the present machine Z in steps and 0. Without a record: nothing.
  // [host]
  virtual void SetNotifyWindow(WindowHandle window, uint32_t msgQueued, uint32_t msgStarted,
                               uint32_t msgFinished, uint32_t msgPosition, uint32_t msgSurface,
                               uint32_t msgJogZ) noexcept = 0;
  // 49: a callback told of queued, started and finished moves instead of the window; it runs on the
  // driver's reader thread. Null: the window again. Without a record: nothing. [host]
  virtual void SetNotifyCallback(NotifyCallback callback, uint64_t context, uint32_t msgQueued,
                                 uint32_t msgStarted, uint32_t msgFinished) noexcept = 0;
  // 50: lifts the cutter, travels to (x, y) host steps and keeps the position in the settings file;
  // (0, 0) is machine zero at the switches, not the table home. `flag` has no effect. Without a
  // record or a connection: nothing. [host]
  virtual void SyncCurrentLocation(uint32_t xSteps, uint32_t ySteps, uint8_t flag) noexcept = 0;
  // 51: the same as a job of its own with the spindle at full speed; the host is not told of its
  // moves. `roundFlag` 1 switches the round fixture off for the travel. Without a record: nothing;
  // without a connection nothing is sent. [host]
  virtual void GoToAsJob(uint32_t xSteps, uint32_t ySteps, uint8_t roundFlag) noexcept = 0;
  // 52: adds the table home in host steps to *x and *y (null allowed) and sends msgPosition to the
  // notify window. Without a record, a window or that message: nothing. [host]
  virtual void GetCurrentPosition(int32_t* x, int32_t* y) noexcept = 0;
  // 53: sends msgSurface to the notify window; moves nothing. Without a record, a window or that
  // message: nothing. [host]
  virtual void HomeCutter() noexcept = 0;
  // 54: jogs one axis in small steps on a thread of its own for as long as the virtual key `key` is
  // held (at least one step); sends `endMessage` (0, 0) to the notify window when it has ended.
  // `direction` and `speedMode`: kJog numbers. Refused while a jog runs or a job is open. Without a
  // record: nothing; without a connection nothing moves, and the end message comes. [host]
  virtual void StartJog(uint32_t direction, uint32_t speedMode, uint32_t key,
                        uint32_t endMessage) noexcept = 0;
  // 55: waits, in a job without bound, until every move has been carried out, then keeps `hold` (1:
  // the next lifts go to machine Z 0). With no job open the wait ends when the controller has
  // reported nothing for 2 s. Without a record: nothing. [host]
  virtual void SetPlungeHold(uint8_t hold) noexcept = 0;
  // 56: drives Z, Y and X to their limit switches and declares that place 0, 0, 0. Waits, without
  // bound, for each switch. Result 0. Refused with a message while a round fixture is active on a
  // machine without all four switches. Without a record or a connection, or while a job is open:
  // nothing. [host]
  virtual uint32_t HomeTable() noexcept = 0;
  // 57: position in thousandths from the table home: X, Y and that of the round fixture (each null
  // allowed). With `round` given and a fixture active it is switched off meanwhile, about 2 s.
  // Without a record: outputs untouched. [host]
  virtual void GetMachinePosition(int32_t* x, int32_t* y, int32_t* round) noexcept = 0;
  // 58: position for display in thousandths: as slot 57, but with a round fixture active the axis
  // that it replaces shows where that axis was parked. Without a record: outputs untouched. [host]
  virtual void GetTableHome(int32_t* x, int32_t* y, int32_t* third) noexcept = 0;
  // 59: takes the present Z as the cutter home (but at least the larger of lift and engrave depth),
  // keeps it in the settings file and lifts the cutter. Result: a lift was sent. Without a record
  // or a connection, or while a job is open: false. [host]
  virtual bool FindCutterHome() noexcept = 0;
  // 60: placeholder, does nothing. [any]
  virtual void Reserved60() noexcept = 0;
  // 61: spindle by a kSpindle number; waits 750 ms when the speed changes. Without a record or a
  // spindle, or with air Z: nothing; without a connection only kSpindleInhibit and kSpindleRelease
  // are kept. [host]
  virtual void SetSpindle(uint32_t command) noexcept = 0;
  // 62: asks the controller for its X, Y and Z limit and its Z proximity switch, 1 closed, 0 open
  // (each null allowed). Without a record, a connection or all four switches fitted, or while a job
  // is open: outputs untouched. [host]
  virtual void ReadSwitches(uint8_t* x, uint8_t* y, uint8_t* z, uint8_t* prox) noexcept = 0;
  // 63: changes the running spindle's speed up (`direction` 0) or down (1) on a thread of its own
  // for as long as the virtual key `key` is held, then sends `message` (reached rpm, 0) to
  // `window`. Result: started. Refused while a ramp runs or a job is open, without a spindle, or
  // when it is off or already at that end. Without a record: false. [host]
  virtual bool StartSpindleRamp(int32_t direction, WindowHandle window, uint32_t message,
                                uint32_t key) noexcept = 0;
  // 64: rpm last commanded, 0 = off; 0 without a spindle or a record. [any]
  virtual uint32_t GetSpindleValue() noexcept = 0;
  // 65: the setting "Scissors"; -10.0 until settings are loaded and without a record. [any]
  virtual float GetScissors() noexcept = 0;
  // 66: 1 when jobs are engraved colour by colour. Without a record: 0. [any]
  virtual uint8_t GetEngraveByColor() noexcept = 0;
  // 67: 1 when a spindle is fitted. Without a record: 0. [any]
  virtual uint8_t HasSpindle() noexcept = 0;
  // 68: thread-local-storage index of the host's job colour table; 0 = none. Without a record:
  // nothing. [host]
  virtual void SetColorTableIndex(uint32_t tlsIndex) noexcept = 0;
  // 69: that index; 0 without a record. [any]
  virtual uint32_t GetColorTableIndex() noexcept = 0;
  // 70: makes sure that the table home is known: nothing when it is, a mechanical home on a machine
  // with all four switches, else the Set Table Home dialog, modal to `window`. Result: that of the
  // dialog (1 or 2), else 0. Without a record: 0. [host]
  virtual uint64_t EnsureTableHome(WindowHandle window) noexcept = 0;
  // 71: non-zero when a braille bead insert tool is fitted. Without a record: 0. [any]
  virtual uint32_t HasBeadInsertTool() noexcept = 0;
  // 72: that tool's X offset from the cutter in thousandths. Without a record: 0. [any]
  virtual int32_t GetBeadToolOffsetX() noexcept = 0;
  // 73: that tool's Y offset in thousandths. Without a record: 0. [any]
  virtual int32_t GetBeadToolOffsetY() noexcept = 0;
  // 74: proposes the tool's offset, from the point (x, y) thousandths under the tool and the
  // cutter's present position, in a Yes/No box and keeps it on Yes. Result: 1 when kept, else 0.
  // Without a record, a connection or the host's helper library, or while a job is open: 0. [host]
  virtual uint32_t SetBeadToolOffset(uint32_t x, uint32_t y) noexcept = 0;
  // 75: travels (as MoveTo, same result) so that the tool, not the cutter, arrives over (x, y) host
  // steps. Without a record: 0. [host]
  virtual uint32_t MoveBeadToolTo(uint32_t xSteps, uint32_t ySteps) noexcept = 0;
  // 76: attaches an open link (`linkType` a kLink number, `portName` at most 15 characters, null
  // for none) and starts its reader thread; a null `link` detaches: asks the reader to stop and
  // waits for it, without bound, and makes `linkType` the type. Either ends a jog or ramp under way
  // first. The link itself stays the caller's to close. Without a record: nothing. Never from a
  // notification callback. [host]
  virtual void AttachLink(LinkHandle link, uint32_t linkType, const wchar_t* portName) noexcept = 0;
  // 77: 1 once the controller has answered. It stays 1 when the link is lost or the controller
  // falls silent; ask CheckAlive (39) for that. Without a record: 0. [any]
  virtual uint8_t IsConnected() noexcept = 0;
  // 78: forgets the identity (sixteen zeros), so that the next query asks the controller. Without a
  // record: nothing. [host]
  virtual void ResetControllerId() noexcept = 0;
  // 79: sends one 8-bit command line (the caller includes its line feed); null ignored. Waits up to
  // 100 ms for the write. Without a record or a link: nothing. [any]
  virtual void SendLine(const char* line) noexcept = 0;
  // 80: reads the controller's settings file whole, and with a connection tells the controller its
  // steps per millimetre, axis mapping and position. Without a record: nothing. [host]
  virtual void LoadSettings() noexcept = 0;
  // 81: copies the path of this controller's settings file, creating its folders. Result: 0;
  // without a record: 0, buffer untouched. [host]
  virtual uint32_t GetSettingsFilePath(wchar_t* buffer, int32_t size) noexcept = 0;
  // 82: characters of the camera identity (0: none); copied only when it fits with its terminator.
  // Without a record: 0. [host]
  virtual int64_t GetCameraId(wchar_t* buffer, int32_t size) noexcept = 0;
  // 83: replaces the camera identity and keeps it in the settings file; an empty text clears it in
  // memory only and it comes back with the next load. Null, or no record: nothing. [host]
  virtual void SetCameraId(const wchar_t* text) noexcept = 0;
  // 84: placeholder, returns 1. [any]
  virtual uint32_t ReturnOne84() noexcept = 0;
  // 85: passes of a job as set up. Without a record: 1. [any]
  virtual uint32_t GetPassCount() noexcept = 0;
  // 86: starts pass `pass` (1-based) at its first point (x, y) host steps: waits, without bound,
  // until every move has been carried out, takes the pass's depth, plunges to it when the cutter is
  // down, and writes a status line into `status` (null allowed; `size` in characters), for instance
  // "Pass 2 of 4 - 0.038 - GRID". Result 0. Without a record or a connection: nothing. [host]
  virtual uint32_t StartPass(uint32_t pass, uint32_t xSteps, uint32_t ySteps, wchar_t* status,
                             int32_t size) noexcept = 0;
  // 87: non-zero when a diode pointer is fitted. Without a record: 0. [any]
  virtual uint32_t IsDiodePointerFitted() noexcept = 0;
  // 88: the pointer's X offset from the cutter in thousandths. Without a record: 0. [any]
  virtual int32_t GetDiodeOffsetX() noexcept = 0;
  // 89: the pointer's Y offset in thousandths. Without a record: 0. [any]
  virtual int32_t GetDiodeOffsetY() noexcept = 0;
  // 90: as SetBeadToolOffset, for the diode pointer. [host]
  virtual uint32_t SetDiodeOffset(uint32_t x, uint32_t y) noexcept = 0;
  // 91: as MoveBeadToolTo, for the diode pointer. [host]
  virtual uint32_t MoveDiodeTo(uint32_t xSteps, uint32_t ySteps) noexcept = 0;
  // 92: copies the path of this controller's folder of material profiles, creating it. Result: 1
  // when the last folder was created just now, else 0; without a record: 0, buffer untouched. Asks
  // the identity first, which reloads the settings. [host]
  virtual uint32_t GetMaterialLibraryFolder(wchar_t* buffer, int32_t size) noexcept = 0;
  // 93: the same for the folder of temporary homes, which is the host's own to fill. [host]
  virtual uint32_t GetTempHomeLibraryFolder(wchar_t* buffer, int32_t size) noexcept = 0;
  // 94: number of the pass under way, 0 before the first. Without a record: 0. [any]
  virtual uint32_t GetCurrentPass() noexcept = 0;
  // 95: axis that the round fixture replaces: 0 none, 1 X, 2 Y; 0 when no fixture is configured or
  // without a record. [any]
  virtual uint32_t GetRoundMode() noexcept = 0;
  // 96: stores that number when a fixture is configured; sends and writes nothing. Without a
  // record: nothing. [host]
  virtual void SetRoundMode(uint32_t mode) noexcept = 0;
  // 97: kind of run, a kRun number: decides the cutting speed (grid) and the pass status text.
  // Without a record: nothing. [host]
  virtual void SetGridMode(uint32_t mode) noexcept = 0;
  // 98: that number; 0 without a record. [any]
  virtual uint32_t GetGridMode() noexcept = 0;
  // 99 to 104: placeholders, return 0. [any]
  virtual uint32_t ReturnZero99() noexcept = 0;
  virtual uint32_t ReturnZero100() noexcept = 0;
  virtual uint32_t ReturnZero101() noexcept = 0;
  virtual uint32_t ReturnZero102() noexcept = 0;
  virtual uint32_t ReturnZero103() noexcept = 0;
  virtual uint32_t ReturnZero104() noexcept = 0;
  // 105: placeholder, does nothing. [any]
  virtual void Reserved105() noexcept = 0;
  // 106: placeholder, returns true. [any]
  virtual bool ReturnTrue106() noexcept = 0;
  // 107: placeholder, does nothing. [any]
  virtual void Reserved107() noexcept = 0;
  // 108: placeholder, returns false. [any]
  virtual bool ReturnFalse108() noexcept = 0;
  // 109: placeholder, does nothing. [any]
  virtual void Reserved109() noexcept = 0;
  // 110: placeholder, returns true. [any]
  virtual bool ReturnTrue110() noexcept = 0;
  // 111: placeholder, does nothing. [any]
  virtual void Reserved111() noexcept = 0;
  // 112: a reserved word of the record, 0. Without a record: 0. [any]
  virtual uint64_t GetRecordReserved() noexcept = 0;
  // 113: placeholder, does nothing. [any]
  virtual void Reserved113() noexcept = 0;
  // 114: 1 when a round fixture replaces an axis, else 0, whether or not one is configured. Without
  // a record: 0. [any]
  virtual int32_t IsRoundModeActive() noexcept = 0;
  // 115: keeps a text of up to 63 characters for the host; null ignored. Without a record: nothing.
  // [any]
  virtual void SetHostText(const wchar_t* text) noexcept = 0;
  // 116: copies that text. Result: 0; `size` when the buffer is null, `size` is below 1 or there is
  // no record. [any]
  virtual int32_t GetHostText(wchar_t* buffer, int32_t size) noexcept = 0;
  // 117: lifts the cutter to machine Z 0, begins a job and travels, by MoveTo, to (x, y). The point
  // is converted from host to machine steps twice, so axis factor and table home apply twice; only
  // (0, 0) is the table home. With a plunge hold it only lifts. Result: that of MoveTo, 0 when
  // held. Without a record or a connection: 0. [host]
  virtual uint32_t TravelTo(uint32_t xSteps, uint32_t ySteps) noexcept = 0;
  // 118: 1 when the machine has a pneumatic head (cutter mode 4), else 0. Without a record: 0.
  // [any]
  virtual int32_t IsAirZ() noexcept = 0;
  // 119: estimated run time in whole seconds of one pass of a drawing given as `count` triples (x,
  // y, kind) in host steps, starting at (0, 0); kind 1 = travel to the point with the cutter up,
  // kind 2 = cut to it (without length: a dot), others are passed over. Counts the path at the
  // traverse and engraving speeds and the time that corners cost, but no lifts, plunges, delays,
  // spindle, probing or grid speed. Sends nothing. Result 0 for null, for axes of different
  // resolution, and without a record. [any]
  virtual uint32_t EstimateJobTime(const uint32_t* triples, uint32_t count) noexcept = 0;
  // 120: overwrites the mark that the reader thread runs. A detach waits until the mark is cleared.
  // Without a record: nothing. [any]
  virtual void SetReaderAlive(uint8_t alive) noexcept = 0;
  // 121: 1 while the reader thread runs. Without a record: 0. [any]
  virtual uint8_t GetReaderAlive() noexcept = 0;
  // 122: a kLink number. Without a record: 0. [any]
  virtual uint32_t GetLinkType() noexcept = 0;
  // 123: copies the serial path or network address of the link. Result: 0; `size` when the buffer
  // is null or `size` is below 1. Without a record: 0, the buffer stays as it was. [any]
  virtual int32_t GetPortName(wchar_t* buffer, int32_t size) noexcept = 0;
  // 124: the link's handle, null when detached or without a record. [any]
  virtual LinkHandle GetLinkHandle() noexcept = 0;
  // 125: keeps the position in the settings file and ends the object; frees its memory when bit 0
  // of `flags` is set. Use ReleaseController instead, which closes the link first. Result: the
  // object's address. Without a record nothing is kept. Never from a notification callback. [host]
  virtual void* DeleteSelf(uint32_t flags) noexcept = 0;

 protected:
  ~IEngraver() = default;
};

// Number of operations in the table.
inline constexpr int kOperationCount = 126;

}  // namespace k7
