// The state record of one connected controller: every setting, counter, flag and handle, by
// subject.
//
// A field of type Guarded is reached through its lock alone. Polled fields are single stores that
// other threads poll. A name in brackets says which thread stores a field. Fields without any of
// this are touched by the host's thread alone, or written before the threads that read them start.
#pragma once

#include <cstdint>
#include <memory>

#include "base/bounded_copy.h"
#include "base/polled.h"
#include "base/shared_text.h"
#include "device/guarded.h"
#include "device/per_axis.h"
#include "k7/driver.h"

namespace k7 {

class WriteQueue;  // link/queue.h

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

// When the link was last found alive, ms.
struct AliveTicks {
  std::uint32_t lastCheckTick = 0;   // of the last liveness check
  std::uint32_t lastAnswerTick = 0;  // of the last sign of life; 0: none since the attach
};

// The link, and who is at its other end.
struct LinkState {
  Polled<LinkHandle> linkHandle{nullptr};  // serial handle or socket; null when detached
  Polled<std::uint32_t> linkType{kLinkNone};
  wchar_t portName[16] = L"";
  SharedText<kIdCapacity> controllerId{kUnsetControllerId};  // written by [reader], polled
  wchar_t friendlyName[kNameCapacity] = L"";                 // shown by the host
  Polled<std::uint8_t> connected{0};    // 1 once the controller has answered; set by [reader]
  Polled<std::uint8_t> readerRun{0};    // 1 keeps the reader running; 0 asks it to stop
  Polled<std::uint8_t> readerAlive{0};  // 1 while the reader runs
  // 1: nothing will come from the controller any more, so that nobody waits for it. Set by [reader]
  // when its reads keep failing, and by the sender of a line that failed; cleared by attach.
  Polled<std::uint8_t> lost{0};
  // Handles; made by AttachLink, closed by DetachLink.
  void* readerThread = nullptr;
  void* readerWake = nullptr;  // auto-reset event: the reader is to look at readerRun now
  void* newsEvent = nullptr;  // auto-reset event: the reader has changed what somebody may wait for
  Polled<std::int32_t> newsWaiters{0};  // threads that wait for newsEvent
  Polled<std::uint8_t> newsTold{0};     // 1: newsEvent is signalled, and nobody has woken since
  // The write side: one line at a time. Made by attach, ended by detach. The one lock that is held
  // across input and output.
  Guarded<WriteQueue*> writeQueue{nullptr};
  Guarded<AliveTicks> alive;
};

// One linear axis, from the settings file.
struct AxisMechanics {
  std::int32_t motorSteps = 0;   // per revolution
  std::int32_t microSteps = 0;   // per motor step
  float screwPitch = 0.0f;       // in per revolution
  std::uint8_t limitSwitch = 0;  // fitted: 1
};

// How the machine is built, from the settings file.
struct Mechanics {
  PerAxis<AxisMechanics> axis;
  std::uint8_t proxSwitch = 0;  // fitted: 1
  // Axis that the round fixture replaces: 0 none, 1 X, 2 Y.
  std::uint32_t roundAxisMode = kRoundOff;
  std::int32_t motorStepsRound = 0;  // per revolution
  std::int32_t microStepsRound = 0;  // per motor step
  float roundGearRatio = 0.0f;
  float roundCircumference = 0.0f;                               // in
  std::int32_t tableWidth = 0, tableHeight = 0, tableDepth = 0;  // thousandths of an inch
  std::int32_t xAxisFactor = 1, yAxisFactor = 1;                 // machine per host step
};

// What the controller has said of its switches: closed 1. [reader]
struct SwitchStates {
  PerAxis<Polled<std::uint8_t>> closed;
  Polled<std::uint8_t> switchProbe{0};
  Polled<std::uint8_t> switchesRead{0};  // a switch report has been read; never cleared
};

// Where the machine stands and where its homes are, machine steps.
struct Positions {
  PerAxis<Polled<std::int32_t>> last;  // of the last line sent
  std::int32_t parkedPosition = 0;     // of the axis that is not live: the round fixture's with
                                       // roundAxisMode 0, else the replaced linear axis's
  PerTableAxis<std::int32_t> saved;    // as loaded; while replaced: as parked
  PerTableAxis<Polled<std::int32_t>> tableHome;  // the host's origin; -1: wanted from [reader]
  Polled<std::int32_t> cutterHome{0};            // Z at which the cutter touches the work
  std::int32_t tableSurface = 0;                 // deepest Z that a plunge may reach
  // Of the linear axis that an active round fixture replaces, by its own screw.
  std::int32_t tableHomeRound = 0;
  float roundStepsPerInch = 0.0f;
  PerAxis<float> stepsPerMm;           // as last sent; 0 = never
  char lastFeedText[64] = "";          // number part of the last "G0 F" line
  Polled<std::uint8_t> tableHomed{0};  // set by [reader]
};

// The tags of the lines that have been sent, and how far the controller's reports have come.
struct TagRing {
  CommandTag ackRing[kAckRingSize] = {};
  std::int32_t ackRingIndex = 0;
  std::int32_t queuedIndex = 0, startedIndex = 0, finishedIndex = 0;
};

// The job, and what is under way in it.
struct JobState {
  Guarded<std::uint8_t> jobOpen{0};        // the controller reports blocks
  Guarded<std::int32_t> linesInFlight{0};  // lines sent, not yet begun
  Guarded<std::int32_t> blocksRunning{0};  // lines begun, not yet ended
  Guarded<TagRing> tagRing;
  Guarded<std::uint8_t> waitFlag{0};        // 1: a tool action is outstanding
  Polled<std::uint32_t> lastReportTick{0};  // ms, of the last line reported queued, begun or ended
  std::uint8_t firstMove = 0;               // 1: the next travel is the first of its job
  Polled<std::uint8_t> plungeHold{0};
  Polled<std::uint8_t> quietMoves{0};  // 1: the host is not told of moves
  Polled<std::int32_t> zMoveCount{0};  // lifts and plunges of this job
  Polled<std::int32_t> resetMarkX{0}, resetMarkY{0}, resetCountX{0}, resetCountY{0};
};

// The cutter and the tools beside it.
struct Tools {
  Polled<std::uint32_t> cutterMode{0};  // a kCutter number
  std::uint32_t cutterState = kCutterUp;
  float cutterLift = 0.001f;                                                 // in
  float engraveDepth = 0.0f;                                                 // in
  float traverseSpeed = 0.0f, cutterDownSpeed = 0.0f, cutterUpSpeed = 0.0f;  // in per s
  float engraveSpeed = 0.0f, gridSpeed = 0.0f;                               // in per s
  Polled<std::int32_t> engraveDelayMs{0};
  Polled<std::uint8_t> dontLowerAirZ{0};
  std::uint32_t engraveType = 0;         // non-zero: the spindle runs while the cutter is down
  Polled<std::uint8_t> probePending{0};  // 1 while a probe line is unanswered; [reader] clears
  std::uint32_t probeOnNextPlunge = 0;
  float probeOffset = 0.0f;  // in, taken off the probed surface
  std::uint32_t beadInsertTool = 0;
  std::int32_t beadToolOffsetX = 0, beadToolOffsetY = 0;  // thousandths of an inch
  std::uint32_t diodePointer = 0;
  std::int32_t diodeOffsetX = 0, diodeOffsetY = 0;  // thousandths of an inch
};

// The jog and its thread. At most one.
struct JogState {
  std::int32_t jogFast = 0, jogSlow = 0;  // thousandths of an inch per s
  Polled<std::uint32_t> jogActive{0};
  std::uint32_t jogDirection = 2;
  std::uint32_t jogSpeedMode = 1;
  std::uint32_t jogKey = 0;         // virtual-key code whose holding keeps the jog going
  std::uint32_t jogEndMessage = 0;  // sent to ownerWindow when the jog has ended
  void* jogThread = nullptr;        // handle; made by StartJog, closed by EndWorkers
  Polled<std::uint8_t> jogBusy{0};  // 1 from the start of a jog until its end message is due
};

// The spindle, its speed ramp and that one's thread. At most one.
struct SpindleState {
  std::uint8_t spindlePresent = 0;
  Polled<std::uint8_t> spindleOn{0};
  std::uint8_t spindleInhibit = 0;
  std::int32_t spindleMaxRpm = 0;
  Polled<std::int32_t> spindleRpm{0};    // chosen speed
  Polled<std::int32_t> spindleValue{0};  // speed last commanded, 0 = off
  Polled<std::uint32_t> rampDirection{kRampIdle};
  WindowHandle rampWindow = nullptr;
  std::uint32_t rampMessage = 0;
  std::uint32_t rampKey = 0;   // virtual-key code whose holding keeps the ramp going
  void* rampThread = nullptr;  // handle; made by StartSpindleRamp, closed by EndWorkers
};

// Whom the driver tells, and by which message numbers; 0: that one not.
struct NotifyState {
  Polled<WindowHandle> ownerWindow{nullptr};  // owns message boxes, gets the messages below
  Polled<std::uint32_t> msgQueued{0}, msgStarted{0}, msgFinished{0};
  Polled<std::uint32_t> msgExtra1{0};  // position: X, Y host steps from the table home
  Polled<std::uint32_t> msgExtra2{0};  // surface: tableSurface, lastZ in machine steps
  Polled<std::uint32_t> msgExtra3{0};  // jog along Z: lastZ in machine steps, 0
  Polled<NotifyCallback> notifyCallback{nullptr};
  Polled<std::uint64_t> notifyContext{0};
  Polled<WindowHandle> connectNotifyWindow{nullptr};
  Polled<std::uint32_t> connectNotifyMessage{0};
};

// Multi-pass runs.
struct PassState {
  std::uint32_t passCount = 0;
  std::uint32_t currentPass = 0;        // 1-based; 0 before the first
  float passDepth = 0.0f;               // in, of the pass under way
  std::unique_ptr<float[]> passDepths;  // in, passCount entries
};

// What the driver keeps for the host and hands back, or reads where the host says.
struct HostValues {
  std::uint32_t interfaceVersion = 998;
  std::uint64_t reservedWord = 0;
  std::uint8_t hostFlag = 0;
  wchar_t hostText[kNameCapacity] = L"";
  float scissors = -10.0f;
  std::uint8_t engraveByColor = 0;
  std::uint32_t hostColorTlsIndex = 0;
  std::uint32_t gridMode = kRunEngraving;
  std::unique_ptr<wchar_t[]> cameraId;  // null when empty
};

struct DeviceState {
  DeviceState() noexcept { CopyText(link.friendlyName, kDefaultFriendlyName); }

  LinkState link;
  Mechanics mechanics;
  SwitchStates switches;
  Positions position;
  JobState job;
  Tools tools;
  JogState jog;
  SpindleState spindle;
  NotifyState notify;
  PassState passes;
  HostValues host;
  Polled<std::uint8_t> stopWorkers{0};  // 1 asks a jog or ramp to end as if its key were released
};

// Calls `act` with each of the seven guarded values, which open and close together.
template <typename Act>
void ForEachGuarded(DeviceState& record, Act act) noexcept {
  act(record.job.linesInFlight);
  act(record.job.blocksRunning);
  act(record.job.jobOpen);
  act(record.job.tagRing);
  act(record.job.waitFlag);
  act(record.link.writeQueue);
  act(record.link.alive);
}

}  // namespace k7
