#!/usr/bin/python3
"""./k7 bench faults: what printcore does with the faults of a machine that falls silent.

Streams a file to k7sim, which is disturbed in the middle, and says whether printcore ends by itself.
usage: printcore_faults.py K7SIM
"""

import pathlib
import subprocess
import sys
import tempfile
import time

FAULTS = {
    "nothing": None,
    "all answers to a line are withheld": "match=X100,do=withhold",
    "the machine halts": "match=X100,do=halt,text=ALARM: Hard limit +X",
    "nothing is sent any more": "match=X100,do=silent",
    "the line is closed": "match=X100,do=close",
}
LINES = 200
UNDISTURBED_S = 60  # it takes one or two
HANGS_S = 20        # the driver's longest time of its own is 2 s


def ends(simulator, fault, folder):
    """Whether printcore has ended by itself within the time."""
    port = folder / "port"
    job = folder / "job.gcode"
    job.write_text("".join(f"G1 X{i}\n" for i in range(1, LINES + 1)))
    arguments = [simulator, "--pty", port, "--homed", "--speed", "max"]
    if fault:
        arguments += ["--fault", fault]
    board = subprocess.Popen(arguments, stdout=subprocess.PIPE, text=True, cwd=folder)
    while board.stdout.readline() != "ready\n":
        if board.poll() is not None:
            sys.exit("k7sim did not start")
    sender = subprocess.Popen(["printcore", port, job], stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, cwd=folder)
    until = time.monotonic() + (HANGS_S if fault else UNDISTURBED_S)
    while sender.poll() is None and time.monotonic() < until:
        time.sleep(0.05)
    ended = sender.poll() is not None
    sender.kill()
    sender.wait()
    board.terminate()
    board.wait()
    return ended


def main():
    hung = 0
    for name, fault in FAULTS.items():
        with tempfile.TemporaryDirectory() as folder:
            ended = ends(pathlib.Path(sys.argv[1]).resolve(), fault, pathlib.Path(folder))
        print(f"{name}: {'ends' if ended else f'has not ended after {HANGS_S} s'}", flush=True)
        if fault:
            hung += not ended
        elif not ended:
            sys.exit("printcore does not even get through undisturbed")
    print(f"printcore hangs on {hung} of {len(FAULTS) - 1}")


if __name__ == "__main__":
    main()
