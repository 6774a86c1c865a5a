#!/usr/bin/env python3
"""Checks who includes whom: the folders of a tree are its storeys, and a file includes only files of
its own storey or of those below, and none of another tree but where VISITS says so. No two headers
include each other in a circle."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]

# From the ground up. Every file of a tree stands in one of its folders; "" is the tree itself.
STOREYS = {
    "src": [
        "base",
        "device",
        "settings",
        "link",
        "motion",
        "job",
        "session",
        "ui/common",
        "ui",
        "ui/table_setup",
        "ui/settings",
        "module",
    ],
    "simulator": ["common", "machine", "board", "wire", "faults", "view", "app"],
    "host": [
        "drawing",
        "drawing/hpgl",
        "drawing/svg",
        "core",
        "trace",
        "args",
        "settings",
        "doctor",
        "app",
    ],
}

# The reference host shows what a host can do with include/k7 alone. One of its rooms looks into the
# driver: settings files are read and mended by the driver's own table of keys, since a second table
# would be wrong one day.
VISITS = {("host", "settings"): ("src", "settings")}


def check(tree, storeys):
    """Faults of one tree and the number of includes that were looked at."""
    faults, checked, headers = [], 0, {}
    for file in sorted(p for p in tree.rglob("*") if p.suffix in (".h", ".cpp", ".rc")):
        own = file.relative_to(tree)
        if own.parent.as_posix() not in storeys:
            faults.append(f"{own}: its folder is no storey")
            continue
        floor = storeys.index(own.parent.as_posix())
        for name in re.findall(r'^#include "([^"]+)"', file.read_text(), re.M):
            target = pathlib.PurePosixPath(name)
            if not (tree / name).exists():
                visit = VISITS.get((tree.name, own.parent.as_posix()))
                faults += [f"{own} includes {name} of {other}/" for other in STOREYS
                           if (ROOT / other / name).exists() and visit != (other, target.parent.as_posix())]
                continue
            checked += 1
            if file.suffix == ".h":
                headers.setdefault(own.as_posix(), set()).add(name)
            if target.parent.as_posix() not in storeys[: floor + 1]:
                faults.append(f"{own} includes {name}, which stands above it")
    for start in headers:
        seen, todo = set(), list(headers[start])
        while todo:
            header = todo.pop()
            if header == start:
                faults.append(f"{start} includes itself in a circle")
                break
            if header not in seen:
                seen.add(header)
                todo.extend(headers.get(header, ()))
    return faults, checked


def main():
    failed = False
    for name, storeys in STOREYS.items():
        faults, checked = check(ROOT / name, storeys)
        for fault in faults:
            print(f"ERROR {name}: {fault}")
        print(f"{name}: {len(storeys)} storeys, {checked} includes, {len(faults)} faults")
        failed = failed or bool(faults) or checked == 0
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
