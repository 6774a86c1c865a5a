#!/usr/bin/env python3
"""Checks that forms.py finds what it is for: runs it on copies of .github with one fault each."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests/support"))
import lint_faults

FORM, CONFIG = ".github/ISSUE_TEMPLATE/machine.yml", ".github/ISSUE_TEMPLATE/config.yml"
WORKFLOW = ".github/workflows/ci.yml"

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

sys.exit(lint_faults.check("forms_test", "tests/lint/forms.py", [".github"],
                           [(name, re.escape(old), new, said) for name, old, new, said in FAULTS]))
