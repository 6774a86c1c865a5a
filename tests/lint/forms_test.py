#!/usr/bin/env python3
"""Checks that forms.py finds what it is for: runs it on copies of .github with one fault each."""
import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
FORM, CONFIG, WORKFLOW = "ISSUE_TEMPLATE/machine.yml", "ISSUE_TEMPLATE/config.yml", "workflows/ci.yml"

# What is replaced by what in which file, and what the lint then says.
FAULTS = [
    (FORM, "name: It does", "name: It: does", "mapping values are not allowed"),
    (FORM, "description: A machine", "about: A machine", "has no description"),
    (FORM, "type: input", "type: line", "unknown type line"),
    (FORM, "id: port", "id: driver", "'driver' stands there twice"),
    (FORM, "label: Port", "title: Port", "no label"),
    (FORM, "label: Port", "label: Photo", "'Photo' stands there twice"),
    (FORM, "- Simulated controller (k7sim)", "- yes", "options are not texts"),
    (FORM, "- Simulated controller (k7sim)", "- None", "an option twice, or None"),
    (FORM, "required: true", "required: always", "required is neither true nor false"),
    (CONFIG, "true", "perhaps", "blank_issues_enabled"),
    (WORKFLOW, "on:\n", "when:\n", "is started by nothing"),
    (WORKFLOW, "runs-on: windows-latest", "runs: windows-latest", "job windows: no runs-on"),
    (WORKFLOW, "run: .ci/run", "command: .ci/run", "not one of run and uses"),
]


def run_on_copy(name="", old="", new=""):
    """Exit code and output of the lint on a copy of .github with the fault."""
    with tempfile.TemporaryDirectory() as folder:
        shutil.copytree(ROOT / ".github", pathlib.Path(folder) / ".github")
        if name:
            file = pathlib.Path(folder) / ".github" / name
            if old not in file.read_text():
                return 0, f"{name}: nothing to spoil"
            file.write_text(file.read_text().replace(old, new, 1))
        done = subprocess.run([sys.executable, ROOT / "tests/lint/forms.py", folder],
                              capture_output=True, text=True)
        return done.returncode, done.stdout + done.stderr


passed = failed = 0
code, output = run_on_copy()
if code == 0:
    passed += 1
else:
    failed += 1
    print("ERROR the files as they are:", output)
for name, old, new, said in FAULTS:
    code, output = run_on_copy(name, old, new)
    if code == 1 and said in output:
        passed += 1
    else:
        failed += 1
        print(f"ERROR {name}, {old!r}: exit code {code}:", output)
print(f"forms_test: {passed} passed, {failed} failed")
sys.exit(1 if failed else 0)
