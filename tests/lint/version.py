#!/usr/bin/env python3
"""Checks that the version of CMakeLists.txt is the newest of CHANGELOG.md, that the changelog counts
downwards, and that no other file of the build repeats the number."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
# Files that would have to be changed with every version if they held it.
PROGRAMS = ("src", "host", "simulator", "cmake", "packaging", "examples", "include")
SUFFIXES = {".cpp", ".h", ".c", ".py", ".sh", ".in", ".rc", ".txt", ".cmake", ".pc"}


def faults_of(root):
    faults = []
    project = re.search(r"^project\(k7driver VERSION (\d+\.\d+\.\d+) ",
                        (root / "CMakeLists.txt").read_text(), re.M)
    if not project:
        return ["CMakeLists.txt: no project(k7driver VERSION a.b.c"], "?"
    version = project[1]
    listed = re.findall(r"^## (\d+\.\d+\.\d+) - (unreleased|\d{4}-\d{2}-\d{2})$",
                        (root / "CHANGELOG.md").read_text(), re.M)
    headings = len(re.findall(r"^## ", (root / "CHANGELOG.md").read_text(), re.M))
    numbers = [tuple(map(int, number.split("."))) for number, _ in listed]
    if not listed or headings != len(listed):
        faults.append("CHANGELOG.md: a heading is not '## a.b.c - unreleased' or a date")
    elif listed[0][0] != version:
        faults.append(f"CHANGELOG.md: newest is {listed[0][0]}, CMakeLists.txt says {version}")
    if numbers != sorted(set(numbers), reverse=True):
        faults.append("CHANGELOG.md: the versions do not count downwards")
    if any(when == "unreleased" for _, when in listed[1:]):
        faults.append("CHANGELOG.md: an older version is unreleased")
    for folder in PROGRAMS:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in SUFFIXES and path.is_file() and f'"{version}"' in path.read_text():
                faults.append(f'{path.relative_to(root)}: "{version}" is CMakeLists.txt\'s to say')
    return faults, version


def main():
    faults, version = faults_of(ROOT)
    for fault in faults:
        print(f"ERROR {fault}")
    print(f"version {version}, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
