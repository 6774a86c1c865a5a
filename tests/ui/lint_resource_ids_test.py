#!/usr/bin/env python3
"""Checks that lint_resource_ids.py finds what it is for: runs it on copies of the sources with one
fault each. Needs nothing built."""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
LINT = ROOT / "tests" / "ui" / "lint_resource_ids.py"
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


def run_on_copy(fault=None):
    """Exit code and output of the lint on a copy of the tree with the fault."""
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder)
        for part in ("src", "tests/ui"):
            shutil.copytree(ROOT / part, copy / part)
        if fault is not None:
            name, pattern, replacement, _ = fault
            file = copy / name
            text, count = re.subn(pattern, lambda _: replacement, file.read_text(), count=1)
            if count != 1:
                return 0, f"{name}: nothing to spoil"
            file.write_text(text)
        done = subprocess.run([sys.executable, LINT, copy], capture_output=True, text=True)
        return done.returncode, done.stdout + done.stderr


passed = failed = 0
code, output = run_on_copy()
if code == 0:
    passed += 1
else:
    failed += 1
    print("ERROR the sources as they are:", output)
for fault in FAULTS:
    code, output = run_on_copy(fault)
    if code == 1 and fault[3] in output:
        passed += 1
    else:
        failed += 1
        print(f"ERROR {fault[0]}, {fault[1]}: exit code {code}:", output)
print(f"lint_resource_ids_test: {passed} passed, {failed} failed")
sys.exit(1 if failed else 0)
