#!/usr/bin/env python3
"""Checks docs/behaviour.md: each KEEP mark in the sources has its row, each row a test that exists."""

import collections
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
ROW = re.compile(r"^\| .+ \| \[[^]]+\]\(\.\./([^)]+)\) \| `(\w+\.\w+)` \|$")


def marks():
    found = collections.Counter()
    for folder in ("include", "src", "simulator", "host"):
        for file in (ROOT / folder).rglob("*"):
            if file.suffix in (".h", ".cpp", ".rc"):
                count = file.read_text().count("KEEP:")
                if count:
                    found[str(file.relative_to(ROOT))] = count
    return found


def tests():
    names = set()
    for file in (ROOT / "tests").rglob("*.cpp"):
        for suite, name in re.findall(r"\bTEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)", file.read_text()):
            names.add(f"{suite}.{name}")
    return names


def main():
    faults = []
    known_tests = tests()
    rows = collections.Counter()
    lines = (ROOT / "docs" / "behaviour.md").read_text().splitlines()
    for number, line in enumerate(lines, 1):
        if not line.startswith("| ") or "](../" not in line:
            continue
        match = ROW.match(line)
        if not match:
            faults.append(f"docs/behaviour.md:{number}: not behaviour, place and test")
            continue
        rows[match[1]] += 1
        if match[2] not in known_tests:
            faults.append(f"docs/behaviour.md:{number}: there is no test {match[2]}")
    marked = marks()
    for file in sorted(marked.keys() | rows.keys()):
        if marked[file] != rows[file]:
            faults.append(f"{file}: {marked[file]} KEEP marks, {rows[file]} rows in docs/behaviour.md")
    for fault in faults:
        print(f"ERROR {fault}")
    print(f"{sum(rows.values())} rows, {len(faults)} faults")
    return 1 if faults or not rows else 0


if __name__ == "__main__":
    sys.exit(main())
