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
}

# The reference host shows what a host can do with include/k7 alone. One of its rooms looks into the
# driver: settings files are read and mended by the driver's own table of keys, since a second table
# would be wrong one day. Folder of host/, and the folder of src/ that it may include.
VISITS = {"settings": "settings"}


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
            if not (tree / name).exists():
                faults += [f"{own} includes {name} of {other}/" for other in STOREYS
                           if (ROOT / other / name).exists()]
                continue
            checked += 1
            target = pathlib.PurePosixPath(name)
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


def check_host(tree):
    """Faults of the host's includes of the driver, and the number of includes that were looked at."""
    faults, checked = [], 0
    for file in sorted(p for p in tree.rglob("*") if p.suffix in (".h", ".cpp")):
        room = file.relative_to(tree).parent.as_posix()
        for name in re.findall(r'^#include "([^"]+)"', file.read_text(), re.M):
            checked += 1
            if (tree / name).exists() or (ROOT / "include" / name).exists():
                continue
            if not (ROOT / "src" / name).exists():
                continue  # made by the build
            if VISITS.get(room) != pathlib.PurePosixPath(name).parent.as_posix():
                faults.append(f"{file.relative_to(tree)} includes {name} of src/")
    return faults, checked


def main():
    failed = False
    faults, checked = check_host(ROOT / "host")
    for fault in faults:
        print(f"ERROR host: {fault}")
    print(f"host: {checked} includes, {len(faults)} faults")
    failed = bool(faults) or checked == 0
    for name, storeys in STOREYS.items():
        faults, checked = check(ROOT / name, storeys)
        for fault in faults:
            print(f"ERROR {name}: {fault}")
        print(f"{name}: {len(storeys)} storeys, {checked} includes, {len(faults)} faults")
        failed = failed or bool(faults) or checked == 0
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
