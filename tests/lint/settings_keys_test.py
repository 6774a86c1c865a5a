#!/usr/bin/env python3
"""Tests of settings_keys.py: the sources as they are pass, and each fault put into them is found."""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]

# File, pattern in it, what takes its place, what the lint says.
FAULTS = [
    ("motion/spindle_ramp.cpp", "namespace k7 {", 'const wchar_t* k = L"Ramp Time";', '"Ramp Time"'),
    ("motion/spindle_ramp.cpp", "namespace k7 {", 'const char* k = "Axis Z";', '"Axis Z"'),
    ("ui/table_home.cpp", 'L"Table Home"', 'L"Home"', 'the label "Table Home" is gone'),
    ("settings/schema.h", "&kScissors,", "", "kScissors stands 0 times"),
    ("settings/schema.h", "&kScissors,", "&kScissors, &kScissors,", "kScissors stands 2 times"),
    ("settings/schema.h", r"(&kFriendlyName,)(\s+)(&kScissors,)", r"\3\2\1", "not in the order"),
]
# The same for what is no fault.
GOOD = [
    ("motion/spindle_ramp.cpp", "namespace k7 {", '// "Ramp Time" is a key.\nnamespace k7 {'),
    ("motion/spindle_ramp.cpp", "namespace k7 {", 'const char* k = "Ramp Time:";'),
]


def run_on_copy(name, old, new):
    """Exit code and output of the lint on a copy of src with the change."""
    with tempfile.TemporaryDirectory() as folder:
        shutil.copytree(ROOT / "src", pathlib.Path(folder) / "src")
        file = pathlib.Path(folder) / "src" / name
        text, changes = re.subn(old, new, file.read_text(), count=1)
        if changes == 0:
            return 2, f"{name}: nothing to change"
        file.write_text(text)
        done = subprocess.run([sys.executable, ROOT / "tests/lint/settings_keys.py", folder],
                              capture_output=True, text=True)
        return done.returncode, done.stdout + done.stderr


passed = failed = 0
cases = [(name, old, new, 1, said) for name, old, new, said in FAULTS]
cases += [(name, old, new, 0, "0 faults") for name, old, new in GOOD]
for name, old, new, want, said in cases:
    code, output = run_on_copy(name, old, new)
    if code == want and said in output:
        passed += 1
    else:
        failed += 1
        print(f"ERROR {name}, {new!r}: exit code {code}:", output)
print(f"settings_keys_test: {passed} passed, {failed} failed")
sys.exit(1 if failed else 0)
