// The numbers and types that a host and its device share.
#pragma once

#include <stdint.h>

namespace k7 {

// Kinds of link, as GetLinkType reports them.
inline constexpr uint32_t kLinkNone = 0;
inline constexpr uint32_t kLinkSerial = 1;
inline constexpr uint32_t kLinkTcp = 2;

// Status numbers of MoveTo, EngraveTo, LowerCutter, LowerCutterContinue and TravelTo.
inline constexpr uint32_t kStatusNothing = 0;    // not connected, no job, or nothing to move
inline constexpr uint32_t kStatusSent = 1;       // a line went out
inline constexpr uint32_t kStatusOneShot = 2;    // manual cutter: mode used up, now normal
inline constexpr uint32_t kStatusProbed = 3;     // semi-automatic: surface probed, cutter up
inline constexpr uint32_t kStatusArmed = 4;      // semi-automatic: the next plunge will probe
inline constexpr uint32_t kStatusRefused = 100;  // would cut into the table; user was told

// Cutter modes, the setting "Cutter Mode".
inline constexpr uint32_t kCutterNone = 0;           // plunge to a known cutter home
inline constexpr uint32_t kCutterManual = 1;         // once per job, then kCutterNone
inline constexpr uint32_t kCutterAutomatic = 2;      // probe before every plunge
inline constexpr uint32_t kCutterSemiAutomatic = 3;  // probe once per job
inline constexpr uint32_t kCutterAirZ = 4;           // pneumatic head, no depth control

// Kinds of run, for SetGridMode.
inline constexpr uint32_t kRunEngraving = 0;
inline constexpr uint32_t kRunGrid = 1;
inline constexpr uint32_t kRunBrailleDrill = 2;
inline constexpr uint32_t kRunBrailleBeadInsert = 3;

// Commands of SetSpindle.
inline constexpr uint32_t kSpindleOff = 0;
inline constexpr uint32_t kSpindleEngrave = 1;
inline constexpr uint32_t kSpindleFull = 2;
inline constexpr uint32_t kSpindleInhibit = 3;
inline constexpr uint32_t kSpindleRelease = 4;

// Directions and speeds of StartJog.
inline constexpr uint32_t kJogYMinus = 0;
inline constexpr uint32_t kJogYPlus = 1;
inline constexpr uint32_t kJogXPlus = 2;
inline constexpr uint32_t kJogXMinus = 3;
inline constexpr uint32_t kJogZUp = 4;
inline constexpr uint32_t kJogZDown = 5;
inline constexpr uint32_t kJogFast = 0;
inline constexpr uint32_t kJogSlow = 1;

// Results of ShowSettingsDialog.
inline constexpr int64_t kSettingsRunJob = 1;
inline constexpr int64_t kSettingsCancelled = 2;  // also: the controller fell silent
inline constexpr int64_t kSettingsApplied = 101;

// Characters of a controller identity, and of the buffer that holds one with its terminator.
inline constexpr int kIdLength = 16;
inline constexpr int kIdCapacity = 24;
inline constexpr int kNameCapacity = 64;

// A window of the host (HWND) and the handle of a link (serial HANDLE or SOCKET), untyped so that
// this header needs nothing of Windows.
using WindowHandle = void*;
using LinkHandle = void*;

// Told of progress instead of a window message; runs on the driver's reader thread, which reads
// nothing further until it returns.
using NotifyCallback = void (*)(uint32_t message, uint64_t context);

}  // namespace k7
