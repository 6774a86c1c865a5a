// The settings dialog's list of material profiles: named sets of engrave settings, kept as files in
// the controller's material folder.
#pragma once

#include <windows.h>

namespace k7 {

// Fills the list from the material folder and selects the entry equal to `name` (null: the list's
// text). "Delete..." is enabled with a selection and disabled without; both stay as they are when
// the folder cannot be searched. KEEP: the selected position counts the files in the order in which
// they are found, the list is sorted. [host]
void FillMaterialList(HWND dialog, const wchar_t* name) noexcept;

// No profile is selected any more: the fields were changed. [host]
void ClearMaterialSelection(HWND dialog) noexcept;

// Commands of the dialog. [host]
void OnPickMaterial(HWND dialog) noexcept;
void OnSaveMaterial(HWND dialog) noexcept;
void OnDeleteMaterial(HWND dialog) noexcept;
void OnImportNotice(HWND dialog) noexcept;

}  // namespace k7
