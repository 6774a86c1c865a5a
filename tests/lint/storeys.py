#!/usr/bin/env python3
"""Checks who includes whom in src/: a file includes only files on storeys below its own, and no two
files include each other in a circle."""

import pathlib
import re
import sys

SRC = pathlib.Path(__file__).resolve().parents[2] / "src"

# Where a file stands. The first pattern that matches the path without its extension decides; pure
# code, which decides and carries nothing out, is ground whatever its folder.
STOREYS = [
    (6, r"module/"),
    (5, r"device/smoothieboard"),
    (3, r"device/identity|settings/(load|library_folders|camera_id)$|motion/(jog|go_to)|job/"),
    (0, r"device/|ui/resource_ids"),
    (1, r"link/|settings/"),
    (2, r"motion/"),
    (4, r"ui/"),
]


def pure_entries():
    text = (SRC.parent / "cmake" / "pure.cmake").read_text()
    return set(re.findall(r"^\s+([a-z_]+/[a-z_0-9]+)$", text, re.M))


def storey(path, pure):
    if path in pure:
        return 0
    for level, pattern in STOREYS:
        if re.match(pattern, path):
            return level
    return None


def main():
    pure = pure_entries()
    faults = []
    checked = 0
    includes = {}
    for file in sorted(SRC.rglob("*.h")) + sorted(SRC.rglob("*.cpp")):
        own = str(file.relative_to(SRC).with_suffix(""))
        own_storey = storey(own, pure)
        if own_storey is None:
            faults.append(f"{own}: stands on no storey")
            continue
        for target in re.findall(r'^#include "([^"]+)"', file.read_text(), re.M):
            if target.startswith("k7/") or not (SRC / target).exists():
                continue
            other = target.rsplit(".", 1)[0]
            if other == own:
                continue
            checked += 1
            other_storey = storey(other, pure)
            if file.suffix == ".h":
                includes.setdefault(own, set()).add(other)
            if other_storey is not None and other_storey > own_storey:
                faults.append(f"{file.relative_to(SRC)} (storey {own_storey}) includes {target} "
                              f"(storey {other_storey})")
    for start in includes:
        seen, todo = set(), list(includes[start])
        while todo:
            item = todo.pop()
            if item == start:
                faults.append(f"{start}.h includes itself in a circle")
                break
            if item not in seen:
                seen.add(item)
                todo.extend(includes.get(item, ()))
    for fault in faults:
        print("ERROR", fault)
    print(f"{checked} includes, {len(faults)} faults")
    return 1 if faults or checked == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
