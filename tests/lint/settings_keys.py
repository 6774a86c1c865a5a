#!/usr/bin/env python3
"""Checks that the schema of the settings file holds every section and key: none of their texts stands
in another source, and the list of rows names every row once, in order.

An argument is another checkout to check."""

import pathlib
import re
import sys

ROOT = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else __file__).resolve()
if ROOT.is_file():
    ROOT = ROOT.parents[2]
SCHEMA = "settings/schema.h"

# Labels shown to people that happen to read like a key. A label may change, a key may not.
LABELS = {
    ("job/pass_status.cpp", "Air Z"),
    ("job/tool_offsets.cpp", "Diode Pointer"),
    ("ui/settings/engrave_lists.cpp", "Air Z"),
    ("ui/settings/engrave_lists.cpp", "Engrave Depth"),
    ("ui/settings/engrave_lists.cpp", "Pass Copies"),
    ("ui/settings/engrave_settings_load.cpp", "Max Pass Depth"),
    ("ui/settings/engrave_settings_load.cpp", "Pass Copies"),
    ("ui/table_home.cpp", "Table Home"),
}

TOKEN = re.compile(r'//[^\n]*|/\*.*?\*/|#include[^\n]*|(?P<wide>L?)"(?P<text>(?:[^"\\\n]|\\.)*)"', re.S)


def texts(source, wide_only=False):
    """The string literals of a source, without those in comments and includes."""
    return [m["text"] for m in TOKEN.finditer(source)
            if m["text"] and (m["wide"] or not wide_only)]


def main():
    schema = (ROOT / "src" / SCHEMA).read_text()
    names = set(texts(schema, wide_only=True))
    faults = []
    labels_found = set()
    for file in sorted(p for p in (ROOT / "src").rglob("*") if p.suffix in (".h", ".cpp")):
        own = file.relative_to(ROOT / "src").as_posix()
        if own == SCHEMA:
            continue
        for text in texts(file.read_text()):
            if (own, text) in LABELS:
                labels_found.add((own, text))
            elif text in names:
                faults.append(f'src/{own}: "{text}" is a section or key: take its row of {SCHEMA}')
    for own, text in sorted(LABELS - labels_found):
        faults.append(f'src/{own}: the label "{text}" is gone: take it off the list of this lint')

    head, _, tail = schema.partition("kRows[] = {")
    rows = re.findall(r"^inline constexpr auto (k\w+) =", head, re.M)
    listed = re.findall(r"&(k\w+)", tail)
    for row in rows:
        if listed.count(row) != 1:
            faults.append(f"src/{SCHEMA}: {row} stands {listed.count(row)} times in kRows")
    if not faults and rows != listed:
        faults.append(f"src/{SCHEMA}: kRows is not in the order of the rows")
    for fault in faults:
        print(f"ERROR {fault}")
    print(f"{len(names)} sections and keys, {len(rows)} rows, {len(faults)} faults")
    return 1 if faults or not rows else 0


if __name__ == "__main__":
    sys.exit(main())
