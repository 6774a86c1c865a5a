#!/usr/bin/env python3
"""Checks who includes whom in src/ and simulator/: a file includes only files on its own storey and on
those below it, and no two files include each other in a circle."""

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

# Trees in which the folder alone decides: the root, and its folders from the ground up.
FOLDERS = [
    ("simulator", ["common", "machine", "board", "wire", "faults", "app"]),
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


def folder_storey(path, folders):
    folder = path.split("/")[0]
    return folders.index(folder) if folder in folders else None


def check(root, storey_of):
    """The number of includes between files below `root`, and what is wrong with them."""
    faults = []
    checked = 0
    includes = {}
    for file in sorted(root.rglob("*.h")) + sorted(root.rglob("*.cpp")):
        own = str(file.relative_to(root).with_suffix(""))
        own_storey = storey_of(own)
        if own_storey is None:
            faults.append(f"{own}: stands on no storey")
            continue
        for target in re.findall(r'^#include "([^"]+)"', file.read_text(), re.M):
            if target.startswith("k7/") or not (root / target).exists():
                continue
            other = target.rsplit(".", 1)[0]
            if other == own:
                continue
            checked += 1
            other_storey = storey_of(other)
            if file.suffix == ".h":
                includes.setdefault(own, set()).add(other)
            if other_storey is not None and other_storey > own_storey:
                faults.append(f"{file.relative_to(root)} (storey {own_storey}) includes {target} "
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
    return checked, faults


def main():
    pure = pure_entries()
    results = [check(SRC, lambda path: storey(path, pure))]
    for name, folders in FOLDERS:
        results.append(check(SRC.parent / name, lambda path: folder_storey(path, folders)))
    for _, faults in results:
        for fault in faults:
            print("ERROR", fault)
    print(f"{sum(checked for checked, _ in results)} includes, "
          f"{sum(len(faults) for _, faults in results)} faults")
    return 1 if any(faults or not checked for checked, faults in results) else 0


if __name__ == "__main__":
    sys.exit(main())
