// The numbers that the settings dialog only shows: maximum values and the last cutter.
#pragma once

#include <windows.h>

#include "settings/file.h"

namespace k7 {

enum class MaximumValues {
  AllShown,
  // KEEP: after the table setup the maximum of the grid speed stays as it was at opening.
  WithoutGridSpeed,
};

// Shows the maximum values of `file` beside the fields that they bound. [host]
void ShowMaximumValues(HWND dialog, const SettingsFile& file, MaximumValues which) noexcept;

// "Last Cutter: " and the setting of `file`. [host]
void ShowLastCutter(HWND dialog, const SettingsFile& file) noexcept;

}  // namespace k7
