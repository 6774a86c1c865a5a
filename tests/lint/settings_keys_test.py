#!/usr/bin/env python3
"""Tests of settings_keys.py: the sources as they are pass, and each fault put into them is found."""

import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests/support"))
import lint_faults

# File, pattern in it, what takes its place, what the lint says.
FAULTS = [
    ("src/motion/spindle_ramp.cpp", "namespace k7 {", 'const wchar_t* k = L"Ramp Time";', '"Ramp Time"'),
    ("src/motion/spindle_ramp.cpp", "namespace k7 {", 'const char* k = "Axis Z";', '"Axis Z"'),
    ("src/ui/table_home.cpp", 'L"Table Home"', 'L"Home"', 'the label "Table Home" is gone'),
    ("src/settings/schema.h", "&kScissors,", "", "kScissors stands 0 times"),
    ("src/settings/schema.h", "&kScissors,", "&kScissors, &kScissors,", "kScissors stands 2 times"),
    ("src/settings/schema.h", r"(&kFriendlyName,)(\s+)(&kScissors,)", r"\3\2\1", "not in the order"),
]
# The same for what is no fault.
GOOD = [
    ("src/motion/spindle_ramp.cpp", "namespace k7 {", '// "Ramp Time" is a key.\nnamespace k7 {', "0 faults"),
    ("src/motion/spindle_ramp.cpp", "namespace k7 {", 'const char* k = "Ramp Time:";', "0 faults"),
]

sys.exit(lint_faults.check("settings_keys_test", "tests/lint/settings_keys.py", ["src"], FAULTS, GOOD))
