#!/usr/bin/env python3
"""Checks docs/operations.md and the switchboard: slot numbers and names of include/k7, what each slot
of src/module/smoothieboard.cpp calls, and the table say the same, and a slot only tests the record and
then makes one call, or reads or writes one field of the record."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
COUNT = 126
RECORD = "device/device_state.h"
PLACEHOLDERS = {
    "DoNothing()": "does nothing",
    "return Zero()": "returns 0",
    "return False()": "returns false",
    "return One()": "returns 1",
    "return One() == 1": "returns true",
}

CALL = r"(?:k7::)?(?P<call>\w+)\([^()]*\)"
FIELD = r"record_->(?P<field>\w+\.\w+)(?:\.Get\(\))?"
CAST = r"static_cast<[\w:]+>\(record_->(?P<cast>\w+\.\w+)\)"
NEUTRAL = r"[\w:.{}-]+"
# The forms of a slot, written on one line.
FORMS = [
    re.compile(rf"return record_ \? (?:{CALL}|{FIELD}|{CAST}) : {NEUTRAL};"),
    re.compile(rf"return record_ && {CALL}(?: \? 1 : 0)?;"),
    re.compile(rf"if \(record_\) {CALL};(?: return 0;)?"),
    re.compile(rf"if \(record_\) {FIELD} = \w+;"),
]


def header_slots(faults):
    """Operations in the order of the headers; the comment in front of each names its slot."""
    names = []
    for file in ("surface.h", "engraver.h"):
        first, last = None, None
        for line in (ROOT / "include" / "k7" / file).read_text().splitlines():
            if match := re.match(r"  // (\d+)(?: to (\d+))?: ", line):
                first, last = int(match[1]), int(match[2] or match[1])
            elif match := re.match(r"  virtual .*?(\w+)\(", line):
                if first is None or not first <= len(names) <= last:
                    faults.append(f"include/k7/{file}: {match[1]} is slot {len(names)}, not {first}")
                names.append(match[1])
    return names


def switchboard(faults):
    """What each slot does: a placeholder's words, or what it calls, or its field of the record."""
    header = (ROOT / "src" / "module" / "smoothieboard.h").read_text()
    done = {}
    for name, body in re.findall(r"(\w+)\([^)]*\) noexcept override \{ (.*?); \}", header):
        if body not in PLACEHOLDERS:
            faults.append(f"smoothieboard.h: {name} is no placeholder: {body}")
        done[name] = PLACEHOLDERS.get(body)
    source = (ROOT / "src" / "module" / "smoothieboard.cpp").read_text()
    for name, body in re.findall(r"^[^\n]*Smoothieboard::(\w+)\([^)]*\) noexcept \{\n(.*?)\n\}",
                                 source, re.M | re.S):
        if name in ("Create", "DeleteSelf"):  # the beginning and the end of the object
            continue
        line = " ".join(body.split())
        match = next((m for form in FORMS if (m := form.fullmatch(line))), None)
        if match is None:
            faults.append(f"smoothieboard.cpp: {name} does more than one call or field: {line}")
            continue
        groups = match.groupdict()
        done[name] = f"`{groups.get('call') or groups.get('field') or groups.get('cast')}`"
    end = re.search(r"Smoothieboard::~Smoothieboard\(\) \{\n(.*?)\n\}", source, re.S)
    match = FORMS[2].fullmatch(" ".join(end[1].split())) if end else None
    done["DeleteSelf"] = f"`{match['call']}`" if match else None
    return done


def table(faults):
    """Rows of the document: operation, what does it, file."""
    rows = {}
    for line in (ROOT / "docs" / "operations.md").read_text().splitlines():
        if match := re.fullmatch(r"\| (\d+) \| `(\w+)` \| (.+) \| (.+) \|", line):
            rows[int(match[1])] = (match[2], match[3], match[4])
    if sorted(rows) != list(range(COUNT)):
        faults.append(f"docs/operations.md: not the slots 0 to {COUNT - 1}")
    return rows


def listed():
    """tests/abi/operations.txt: name and function by slot number."""
    lines = (ROOT / "tests" / "abi" / "operations.txt").read_text().splitlines()
    rows = [line.split() for line in lines if not line.startswith("#")]
    return {int(number): (name, function) for number, name, function in rows}


def check_place(slot, doer, place, faults):
    if not doer.startswith("`"):
        if place != "placeholder":
            faults.append(f"docs/operations.md: slot {slot} is a placeholder")
        return
    match = re.fullmatch(r"\[(.+)\]\(\.\./src/(.+)\)", place)
    path = ROOT / "src" / match[1] if match else None
    if match is None or match[1] != match[2] or not path.exists():
        faults.append(f"docs/operations.md: slot {slot} names no file of src/")
        return
    name = doer.strip("`")
    if "." in name:
        if match[1] != RECORD:
            faults.append(f"docs/operations.md: slot {slot} is a field of {RECORD}")
    elif not re.search(rf"\b{name}\(", path.read_text()):
        faults.append(f"docs/operations.md: slot {slot}: {match[1]} has no {name}")


def main():
    faults = []
    names, done, rows, abi = header_slots(faults), switchboard(faults), table(faults), listed()
    if len(names) != COUNT:
        faults.append(f"include/k7: {len(names)} operations, not {COUNT}")
    for slot, name in enumerate(names):
        row = rows.get(slot, ("", "", ""))
        doer = done.get(name)
        if row[:2] != (name, doer):
            faults.append(f"docs/operations.md: slot {slot} is {name}, done by {doer}, not {row[:2]}")
        else:
            check_place(slot, doer, row[2], faults)
        function = doer.strip("`") if doer and doer.startswith("`") and "." not in doer else "-"
        if abi.get(slot) != (name, function):
            faults.append(f"tests/abi/operations.txt: slot {slot} is {name} {function}")
    for fault in faults:
        print(f"ERROR {fault}")
    print(f"{len(names)} operations, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
