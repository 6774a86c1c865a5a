// The settings that the table setup dialog shows and saves.
#pragma once

#include <windows.h>

#include "settings/file.h"

namespace k7 {

// Fills every field from the controller's settings file, and sets the dialogs' flags for the
// switches, the spindle and the round fixture that are there. Needs a device. [host]
void FillPermanentSettings(HWND dialog) noexcept;

// Writes every field to the controller's settings file and sets the dialogs' flags to the check
// boxes. Nothing is checked: what is no number is saved as 0, or as typed where the file holds
// text. Without a device: nothing. [host]
void SavePermanentSettings(HWND dialog) noexcept;

// The number that a field stands for as the file holds it, with its default: whole and decimal
// numbers as they are, thousandths in inches; 0 for any other control. [host]
float StoredNumber(const SettingsFile& file, int control) noexcept;

// Single displays, shown anew after the file has changed. [host]
void ShowTableHomes(HWND dialog, const SettingsFile& file) noexcept;
void ShowBeadToolOffsets(HWND dialog, const SettingsFile& file) noexcept;
void ShowDiodeOffsets(HWND dialog, const SettingsFile& file) noexcept;

}  // namespace k7
