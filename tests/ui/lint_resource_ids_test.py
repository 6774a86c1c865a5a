#!/usr/bin/env python3
"""Checks that lint_resource_ids.py finds what it is for: runs it on copies of the sources with one
fault each. Needs nothing built."""
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests/support"))
import lint_faults

HEADER, SCRIPT = "src/ui/resource_ids.h", "src/ui/dialogs.rc"

# What is done to which file, and what the lint then says.
FAULTS = [
    (HEADER, r"#define IDC_SC_DEPTH 1148\n", "", "dialogs.rc: IDD_SET_CUTTER: IDC_SC_DEPTH is not in"),
    (HEADER, r"#define IDD_SET_CUTTER 108\n", "", "dialogs.rc: IDD_SET_CUTTER is not in"),
    (HEADER, r"IDC_SC_DEPTH 1148", "IDC_SC_DEPTH 1147", "are both 1147"),
    (HEADER, r"\Z", "#define IDC_SC_GHOST 1199\n", "IDC_SC_GHOST is in no template"),
    (SCRIPT, r"IDC_SC_DEPTH,", "1148,", "control 1148 has no name"),
    (SCRIPT, r"EDITTEXT IDC_SC_DEPTH[^\n]*\n", "", "IDC_SC_DEPTH is in no template"),
    (SCRIPT, r"IDC_SC_DEPTH,", "IDC_SC_DEEP,", "IDC_SC_DEEP is not in resource_ids.h"),
    ("src/ui/set_cutter_dialog.cpp", r"IDC_SC_DEPTH", "IDC_SC_DEEP",
     "src/ui/set_cutter_dialog.cpp: IDC_SC_DEEP is not in resource_ids.h"),
    ("tests/ui/small_dialogs_template_test.cpp", r"\{1147,", "{9999,",
     "IDC_SC_DEPTH_LABEL is mentioned nowhere else"),
]

sys.exit(lint_faults.check("lint_resource_ids_test", "tests/ui/lint_resource_ids.py",
                           ["src", "tests/ui"], FAULTS))
