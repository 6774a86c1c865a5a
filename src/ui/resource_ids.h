// Identifiers of the dialogs and their controls, shared by dialogs.rc and the code. Plain macros:
// the resource compiler reads this file, too.
#pragma once

#define IDD_CONTROLLER_SETTINGS 101
#define IDD_SET_TABLE_HOME 102
#define IDD_TABLE_SETUP 104
#define IDD_COLOR_SETTINGS 105
#define IDD_SET_CUTTER 108
#define IDD_SET_TABLE_ZERO 110
