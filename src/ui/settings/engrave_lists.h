// Single lists and fields of the settings dialog that are filled again after the table setup.
// `path` is the settings file to read or write; null: the controller's own. All need a device
// (dialogDevice); without one they do nothing and results are 0. [host]
#pragma once

#include <windows.h>

#include <cstdint>

#include "settings/file.h"

namespace k7 {

// The file that `path` names; null: the controller's own. Needs a device.
SettingsFile EngraveFile(const wchar_t* path) noexcept;
// Whether the file says that the Z axis is a pneumatic head.
bool HasAirZ(const SettingsFile& file) noexcept;

// Steps per inch that the machine can do. KEEP: the first entry is selected whatever is stored.
void FillResolutionList(HWND dialog, const wchar_t* path) noexcept;
// Writes the selected resolution, and 1 for both axis factors.
void SaveResolution(HWND dialog, const wchar_t* path) noexcept;

void FillEngraveTypeList(HWND dialog, const wchar_t* path) noexcept;
// The modes that the machine's switches, the selected engrave type and the kind of Z axis allow.
void FillCutterModeList(HWND dialog, const wchar_t* path) noexcept;

// Copies of a multi-pass run.
std::int32_t ReadPassCopies(const SettingsFile& file) noexcept;

// One field holds the copies or the depth of a pass. This labels it and shows the copies of
// dialogState.
void ShowPassCopies(HWND dialog) noexcept;
// Shows or hides the depth of the last pass, which only passes by depth have.
void ShowFinishDepth(HWND dialog, bool show) noexcept;

// Shows or hides the circumference of the round fixture with its label.
void ShowCircumference(HWND dialog, bool show) noexcept;

// Motor speed times gear ratio.
std::int32_t MaxSpindleRpm(const wchar_t* path) noexcept;
// The stored speed of `path`, bounded by the controller's own maximum, and whether it is shown.
void FillSpindleRpm(HWND dialog, const wchar_t* path) noexcept;

// Labels the engrave depth, which in the automatic mode is the pressure of a spring.
void ShowEngraveDepthLabel(HWND dialog, int cutterMode) noexcept;

}  // namespace k7
