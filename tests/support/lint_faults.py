"""Tests of lints: each is run on copies of the sources, as they are and with one change each."""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]


def run_on_copy(lint, parts, change=None):
    """Exit code and output of a lint on a copy of some folders, with a change: file, pattern in it, and
    what takes the place of the first that matches."""
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder)
        for part in parts:
            shutil.copytree(ROOT / part, copy / part)
        if change is not None:
            name, pattern, replacement = change
            text, count = re.subn(pattern, replacement, (copy / name).read_text(), count=1)
            if count != 1:
                return 2, f"{name}: nothing to change"
            (copy / name).write_text(text)
        done = subprocess.run([sys.executable, ROOT / lint, copy], capture_output=True, text=True)
        return done.returncode, done.stdout + done.stderr


def check(test, lint, parts, faults, good=()):
    """Exit code of a test, whose counts it prints: the lint passes the folders `parts` as they are. With
    each change of `faults` it fails, with one of `good` it passes, and says what stands last there."""
    cases = [(None, 0, "")]
    cases += [(change, 1, said) for *change, said in faults]
    cases += [(change, 0, said) for *change, said in good]
    passed = failed = 0
    for change, want, said in cases:
        code, output = run_on_copy(lint, parts, change)
        if code == want and said in output:
            passed += 1
        else:
            failed += 1
            print(f"ERROR {change or 'as it is'}: exit code {code}:", output)
    print(f"{test}: {passed} passed, {failed} failed")
    return 1 if failed else 0
