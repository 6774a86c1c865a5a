"""A host in Python: finds the first engraving machine, homes it and engraves a square of one inch.

usage: square.py [PATH_OF_K7DRIVER_DLL]
"""

import sys
import time

import k7driver


def link_is_lost(machine):
    """CheckAlive asks for a sign of life and tells whether the last one is recent: a second 0 counts."""
    if machine.CheckAlive():
        return False
    time.sleep(0.5)
    return not machine.CheckAlive()


def engrave(machine):
    x, y = int(machine.GetXStepsPerUnit()), int(machine.GetYStepsPerUnit())  # an inch, in host steps
    print(f"{machine.text('GetFriendlyName')}: {x} x {y} steps an inch")
    machine.EnsureTableHome(None)
    # A driver with nobody to tell makes no engrave delays and switches no air head.
    finished = []
    machine.on_progress(lambda message, _: finished.append(message) if message == 3 else None)
    if not machine.BeginJob():
        return False
    good = True
    for number in range(1, machine.GetPassCount() + 1):
        machine.StartPass(number, x, y, None, 0)
        machine.MoveTo(x, y)
        for to in ((2 * x, y), (2 * x, 2 * y), (x, 2 * y), (x, y)):
            status = machine.EngraveTo(*to)
            if status == k7driver.STATUS_PROBED:  # the surface is known now: the same cut again
                status = machine.EngraveTo(*to)
            good = good and status == k7driver.STATUS_SENT and not link_is_lost(machine)
    if good:
        machine.MoveTo(0, 0)  # lifts the cutter and parks
    machine.EndJob()  # waits until the machine stands still
    machine.SetSpindle(k7driver.SPINDLE_OFF)
    print(f"{len(finished)} moves")
    return good and not link_is_lost(machine)


def main(library):
    driver = k7driver.Driver(library)
    found = driver.find()
    if not found:
        print("No machine found.")
        return 1
    with driver.connect(found[0][0]) as machine:
        good = engrave(machine)
    print("done" if good else "The job was broken off.")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1] if len(sys.argv) > 1 else "k7driver.dll"))
