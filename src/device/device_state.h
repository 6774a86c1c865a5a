// The state record of one connected controller: every setting, counter, flag and handle.
//
// A name in brackets is the record mutex that guards a field; Polled fields are single stores that
// other threads poll. Fields without either are touched by the host's thread alone, or written
// before the threads that read them start.
#pragma once

#include <cstdint>
#include <memory>

#include "device/bounded_copy.h"
#include "device/polled.h"
#include "device/shared_text.h"
#include "k7/driver.h"

namespace k7 {

class WriteQueue;  // link/write_queue.h

// The seven record mutexes, in the order in which they are created. A plain enum, so that they
// read as they are called everywhere. Each is held for one short access, never two at once.
enum RecordMutex : int {
  flightMutex,  // linesInFlight
  runMutex,     // blocksRunning
  jobMutex,     // jobOpen
  ringMutex,    // ackRing and its four indexes
  waitMutex,    // waitFlag
  sendMutex,    // the link's write side: one line at a time
  aliveMutex,   // lastCheckTick, lastAnswerTick
  kRecordMutexCount
};

// What a tracked command line was, by what the reader thread does when it is queued, begun, ended.
enum class CommandTag : std::uint8_t {
  None = 0,
  Move = 1,       // XY move: the host is told of every stage
  Plunge = 2,     // plunge before a cut: tool on at its end
  JogStep = 3,    // nobody is told
  Lift = 4,       // tool off at its end
  LoneDwell = 5,  // plunge asked for by the host: told of every stage, dwells at its end
};

inline constexpr int kAckRingSize = 1024;
inline constexpr wchar_t kUnsetControllerId[] = L"0000000000000000";
inline constexpr wchar_t kDefaultFriendlyName[] = L"K7 System Controller";

// cutterState.
inline constexpr std::uint32_t kCutterDown = 1;
inline constexpr std::uint32_t kCutterUp = 2;

// roundAxisMode.
inline constexpr std::uint32_t kRoundOff = 0;
inline constexpr std::uint32_t kRoundReplacesX = 1;
inline constexpr std::uint32_t kRoundReplacesY = 2;

// rampDirection.
inline constexpr std::uint32_t kRampUp = 0;
inline constexpr std::uint32_t kRampDown = 1;
inline constexpr std::uint32_t kRampIdle = 2;

struct DeviceState {
  DeviceState() noexcept { CopyText(friendlyName, kDefaultFriendlyName); }

  std::uint32_t interfaceVersion = 998;
  std::uint64_t reservedWord = 0;

  // Link.
  Polled<LinkHandle> linkHandle{nullptr};  // serial handle or socket; null when detached
  SharedText<kIdCapacity> controllerId{kUnsetControllerId};  // written by [reader], polled
  wchar_t friendlyName[kNameCapacity] = L"";                 // shown by the host
  Polled<std::uint8_t> readerRun{0};    // 1 keeps the reader running; 0 asks it to stop
  Polled<std::uint8_t> readerAlive{0};  // 1 while the reader runs
  Polled<std::uint8_t> connected{0};    // 1 once the controller has answered; set by [reader]
  WriteQueue* writeQueue = nullptr;     // outstanding writes; made by attach, ended by detach
                                        //                                        [sendMutex]
  Polled<WindowHandle> connectNotifyWindow{nullptr};
  Polled<std::uint32_t> connectNotifyMessage{0};

  // Mechanics, from the settings file.
  std::int32_t motorStepsX = 0, motorStepsY = 0, motorStepsZ = 0, motorStepsRound = 0;  // per rev
  std::int32_t microStepsX = 0, microStepsY = 0, microStepsZ = 0, microStepsRound = 0;  // per step
  std::uint32_t roundAxisMode =
      kRoundOff;  // axis that the round fixture replaces: 0 none, 1 X, 2 Y
  float screwPitchX = 0.0f, screwPitchY = 0.0f, screwPitchZ = 0.0f;  // in per revolution
  float roundGearRatio = 0.0f;
  float roundCircumference = 0.0f;                                                    // in
  std::uint8_t limitSwitchX = 0, limitSwitchY = 0, limitSwitchZ = 0, proxSwitch = 0;  // fitted: 1
  Polled<std::uint8_t> switchX{0}, switchY{0}, switchZ{0}, switchProbe{0};  // closed: 1  [reader]
  Polled<std::uint8_t> switchesRead{0};  // a switch report has been read; never cleared  [reader]
  Polled<std::uint8_t> dontLowerAirZ{0};
  std::int32_t tableWidth = 0, tableHeight = 0, tableDepth = 0;  // thousandths of an inch
  std::int32_t jogFast = 0, jogSlow = 0;                         // thousandths of an inch per s
  Polled<std::uint8_t> tableHomed{0};                            // set by [reader]

  // Host notification.
  Polled<WindowHandle> ownerWindow{nullptr};  // owns message boxes, gets the messages below
  Polled<std::uint32_t> msgQueued{0}, msgStarted{0}, msgFinished{0};
  Polled<std::uint32_t> msgExtra1{0};  // position: X, Y host steps from the table home
  Polled<std::uint32_t> msgExtra2{0};  // surface: tableSurface, lastZ in machine steps
  Polled<std::uint32_t> msgExtra3{0};  // jog along Z: lastZ in machine steps, 0

  // Position, machine steps.
  Polled<std::int32_t> lastX{0}, lastY{0}, lastZ{0};  // of the last line sent
  std::int32_t parkedPosition = 0;  // of the axis that is not live: the round fixture's with
                                    // roundAxisMode 0, else the replaced linear axis's
  std::int32_t savedPositionX = 0, savedPositionY = 0;  // as loaded; while replaced: as parked
  float roundStepsPerInch = 0.0f;  // of the replaced *linear* axis while a fixture is active
  char lastFeedText[64] = "";      // number part of the last "G0 F" line
  float stepsPerMmX = 0.0f, stepsPerMmY = 0.0f, stepsPerMmZ = 0.0f;  // as last sent; 0 = never

  // Job.
  std::uint8_t jobOpen = 0;        // the controller reports blocks              [jobMutex]
  std::int32_t linesInFlight = 0;  // lines sent, not yet begun                  [flightMutex]
  std::int32_t blocksRunning = 0;  // lines begun, not yet ended                 [runMutex]
  std::uint32_t cutterState = kCutterUp;
  void* mutexes[kRecordMutexCount] = {};  // made by attach, closed by detach; null in between

  // Homes, machine steps.
  Polled<std::int32_t> tableHomeX{0}, tableHomeY{0};  // the host's origin
  Polled<std::int32_t> cutterHome{0};                 // Z at which the cutter touches the work
  std::int32_t tableHomeRound = 0;  // home of the replaced linear axis while a fixture is active;
                                    // as loaded, in steps of the fixture
  std::int32_t tableSurface = 0;    // deepest Z that a plunge may reach

  // Engraving, from the settings file.
  float cutterLift = 0.001f;  // in
  float engraveDepth = 0.0f;  // in
  float passDepth = 0.0f;     // in, of the pass under way
  float traverseSpeed = 0.0f, cutterDownSpeed = 0.0f, cutterUpSpeed = 0.0f;  // in per s
  float engraveSpeed = 0.0f, gridSpeed = 0.0f;                               // in per s
  std::uint8_t firstMove = 0;  // 1: the next travel is the first of its job

  // Command tags.
  std::int32_t ackRingIndex = 0;                                      // [ringMutex]
  std::int32_t queuedIndex = 0, startedIndex = 0, finishedIndex = 0;  // [ringMutex]
  std::int32_t xAxisFactor = 1, yAxisFactor = 1;                      // machine per host step
  Polled<std::int32_t> resetMarkX{0}, resetMarkY{0}, resetCountX{0}, resetCountY{0};
  Polled<std::int32_t> zMoveCount{0};    // lifts and plunges of this job
  Polled<std::uint8_t> quietMoves{0};    // 1: the host is not told of moves
  Polled<std::uint8_t> probePending{0};  // 1 while a probe line is unanswered; [reader] clears
  Polled<std::uint32_t> cutterMode{0};   // a kCutter number

  // Jog.
  Polled<std::uint32_t> jogActive{0};
  std::uint32_t jogDirection = 2;
  std::uint32_t jogSpeedMode = 1;
  std::uint32_t jogKey = 0;         // virtual-key code whose holding keeps the jog going
  std::uint32_t jogEndMessage = 0;  // sent to ownerWindow when the jog has ended

  Polled<std::uint8_t> plungeHold{0};
  Polled<std::uint8_t> spindleOn{0};
  std::uint32_t engraveType = 0;  // non-zero: the spindle runs while the cutter is down
  std::uint32_t probeOnNextPlunge = 0;
  float probeOffset = 0.0f;  // in, taken off the probed surface
  std::uint8_t hostFlag = 0;

  // Spindle.
  std::int32_t spindleMaxRpm = 0;
  Polled<std::int32_t> spindleRpm{0};    // chosen speed
  Polled<std::int32_t> spindleValue{0};  // speed last commanded, 0 = off
  Polled<std::uint32_t> rampDirection{kRampIdle};
  WindowHandle rampWindow = nullptr;
  std::uint32_t rampMessage = 0;
  std::uint32_t rampKey = 0;  // virtual-key code whose holding keeps the ramp going

  float scissors = -10.0f;
  Polled<std::uint32_t> linkType{kLinkNone};
  wchar_t portName[16] = L"";
  std::uint8_t engraveByColor = 0;
  std::uint8_t spindlePresent = 0;
  std::uint8_t spindleInhibit = 0;
  std::uint8_t waitFlag = 0;  // a tool action is outstanding     [waitMutex]
  Polled<std::int32_t> engraveDelayMs{0};
  std::uint32_t lastCheckTick = 0;   // ms, of the last liveness check   [aliveMutex]
  std::uint32_t lastAnswerTick = 0;  // ms, of the last sign of life     [aliveMutex]
  std::uint32_t hostColorTlsIndex = 0;
  Polled<NotifyCallback> notifyCallback{nullptr};
  Polled<std::uint64_t> notifyContext{0};

  // Accessories, thousandths of an inch.
  std::uint32_t beadInsertTool = 0;
  std::int32_t beadToolOffsetX = 0, beadToolOffsetY = 0;
  std::uint32_t diodePointer = 0;
  std::int32_t diodeOffsetX = 0, diodeOffsetY = 0;

  // Passes.
  std::uint32_t passCount = 0;
  std::uint32_t currentPass = 0;        // 1-based; 0 before the first
  std::unique_ptr<float[]> passDepths;  // in, passCount entries
  std::unique_ptr<wchar_t[]> cameraId;  // null when empty
  std::uint32_t gridMode = kRunEngraving;
  wchar_t hostText[kNameCapacity] = L"";
  CommandTag ackRing[kAckRingSize] = {};  // [ringMutex]

  // The driver's own threads on this record. At most one of each.
  void* readerThread = nullptr;         // handle; made by AttachLink, closed by DetachLink
  void* jogThread = nullptr;            // handle; made by StartJog, closed by EndWorkers
  void* rampThread = nullptr;           // handle; made by StartSpindleRamp, closed by EndWorkers
  Polled<std::uint8_t> stopWorkers{0};  // 1 asks a jog or ramp to end as if its key were released
  Polled<std::uint8_t> jogBusy{0};      // 1 from the start of a jog until its end message is due
};

}  // namespace k7
