#!/usr/bin/env python3
"""Matches control numbers between dialogs.rc, resource_ids.h and the code of the dialogs.

Fails when code or script use a name that the header does not define, when a dialog holds the same
number twice, when a name of the header is used by no template, or when a template's control is never
mentioned elsewhere. Run from anywhere, with another source folder as its argument if wanted; needs
nothing built.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else __file__).resolve()
ROOT = ROOT if ROOT.is_dir() else ROOT.parents[2]
UI = ROOT / "src" / "ui"
STANDARD = {"IDOK": 1, "IDCANCEL": 2}
# Commands that no control sends.
NO_CONTROL = {"IDC_CS_IMPORT_NOTICE"}

errors = []


def strip_comments(text):
    return re.sub(r"//[^\n]*", "", text)


header = strip_comments((UI / "resource_ids.h").read_text())
defined = {m[1]: int(m[2]) for m in re.finditer(r"#define\s+(ID[CD]_\w+)\s+\(?(-?\d+)\)?", header)}

script = strip_comments((UI / "dialogs.rc").read_text())
templates = {}
for m in re.finditer(r"^(IDD_\w+)\s+DIALOGEX\b.*?^BEGIN\b(.*?)^END\b", script, re.S | re.M):
    if m[1] not in defined:
        errors.append(f"dialogs.rc: {m[1]} is not in resource_ids.h")
    controls = re.findall(r"\b(ID(?:C_\w+|OK|CANCEL))\b", m[2])
    bare = re.findall(r'^\s*[A-Z0-9]+\s+(?:"[^"\n]*"\s*,\s*)?(-?\d+)\s*,', m[2], re.M)
    for number in bare:
        errors.append(f"dialogs.rc: {m[1]}: control {number} has no name")
    seen = {}
    for name in controls:
        number = STANDARD.get(name, defined.get(name))
        if number is None:
            errors.append(f"dialogs.rc: {m[1]}: {name} is not in resource_ids.h")
        elif number in seen:
            errors.append(f"dialogs.rc: {m[1]}: {name} and {seen[number]} are both {number}")
        else:
            seen[number] = name
    templates[m[1]] = set(controls)

in_templates = set().union(*templates.values()) if templates else set()
code = {}
for path in sorted(ROOT.glob("src/**/*")) + sorted(ROOT.glob("tests/**/*_test.cpp")):
    if path.suffix in (".cpp", ".h") and path.name != "resource_ids.h":
        for name in re.findall(r"\bID[CD]_\w+\b", strip_comments(path.read_text())):
            code.setdefault(name, path.relative_to(ROOT))

for name, path in code.items():
    if name.startswith(("IDC_ARROW", "IDC_WAIT")):
        continue
    if name not in defined:
        errors.append(f"{path}: {name} is not in resource_ids.h")
    elif name.startswith("IDC_") and name not in in_templates | NO_CONTROL:
        errors.append(f"{path}: {name} is in no template")
for name in defined:
    if name.startswith("IDC_") and name not in in_templates | NO_CONTROL:
        errors.append(f"resource_ids.h: {name} is in no template")

# A control is mentioned when the code names it or a template test lists its number.
tests = "\n".join(strip_comments(p.read_text()) for p in ROOT.glob("tests/ui/**/*_test.cpp"))
for dialog, controls in templates.items():
    for name in sorted(controls - STANDARD.keys()):
        if name not in code and not re.search(rf"\{{\s*{defined.get(name)}\s*,", tests):
            errors.append(f"dialogs.rc: {dialog}: {name} is mentioned nowhere else")

for error in errors:
    print(error)
print(f"{len(templates)} dialogs, {len(in_templates)} controls, {len(errors)} errors")
sys.exit(1 if errors or not templates else 0)
