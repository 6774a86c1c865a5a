#!/usr/bin/env python3
"""Checks that the driver waits where it says that it does: in device/polling, and in the few places
that wait for something else than the controller, each of which is named here with its reason."""

import pathlib
import re
import sys

SRC = pathlib.Path(__file__).resolve().parents[2] / "src"
WAIT = re.compile(r"\b(Sleep|SleepEx|SwitchToThread|WaitForSingleObject|WaitForSingleObjectEx|"
                  r"WaitForMultipleObjects|WaitForMultipleObjectsEx|MsgWaitForMultipleObjects|"
                  r"MsgWaitForMultipleObjectsEx|WSAWaitForMultipleEvents|GetMessageW|WaitMessage|"
                  r"SleepConditionVariableSRW|sleep_for|sleep_until|yield)\(")

# File, how many waits it holds, and what for.
PLACES = {
    "device/polling.cpp": (2, "the home of waiting"),
    "device/worker.cpp": (1, "a worker's thread ends after the one before it"),
    "link/link.cpp": (2, "the pause of a sender whose line has failed; whether a write has ended"),
    "link/link_io.cpp": (1, "the end of a cancelled operation, for a while"),
    "link/queue.cpp": (1, "the write of a line, 100 ms"),
    "link/reader.cpp": (2, "the link; the end of the process"),
    "link/reply_actions.cpp": (2, "the engrave delay, and that of the air head"),
}


def main():
    faults, total = [], 0
    for file in sorted(p for p in SRC.rglob("*") if p.suffix in (".h", ".cpp")):
        name = file.relative_to(SRC).as_posix()
        code = re.sub(r"//[^\n]*", "", file.read_text())
        found = len(WAIT.findall(code))
        total += found
        expected = PLACES.get(name, (0, ""))[0]
        if found != expected:
            faults.append(f"src/{name}: {found} waits, {expected} known in tests/lint/waits.py")
    for name in PLACES:
        if not (SRC / name).exists():
            faults.append(f"tests/lint/waits.py names {name}, which does not exist")
    for fault in faults:
        print(f"ERROR {fault}")
    print(f"{total} waits, {len(faults)} faults")
    return 1 if faults or total == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
