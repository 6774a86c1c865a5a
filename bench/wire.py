#!/usr/bin/python3
"""./k7 bench wire: how many lines a second reach the machine, from the driver and from others.

Each sender talks to the same responder (k7_responder), which counts and times the lines itself. The
environment names the places: K7_BIN_WINDOWS, K7_BIN_NATIVE, WINEPREFIX, K7_BUILD.
"""

import json
import os
import pathlib
import platform
import re
import select
import signal
import statistics
import struct
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import wire_picture

WINDOWS = pathlib.Path(os.environ["K7_BIN_WINDOWS"])
NATIVE = pathlib.Path(os.environ["K7_BIN_NATIVE"])
PREFIX = pathlib.Path(os.environ["WINEPREFIX"])
OUT = pathlib.Path(os.environ["K7_BUILD"]) / "bench"
PORT = PREFIX / "dosdevices/com7"
IDENTITY = "BENCHBENCHBENCH0"

LINE_BYTES = 27
CONDITIONS = {
    "ideal": "ideal pty",
    "115200": "115200 baud",
    "1ms": "1000 lines/s, 1 ms",
    "5ms": "1000 lines/s, 5 ms",
}
# The most that can get through, in lines a second.
LIMITS = {"115200": 115200 / 10 / LINE_BYTES, "1ms": 1000.0, "5ms": 1000.0}
SENDERS = {
    "printcore": "printcore",
    "bare": "bare sender",
    "bare_window": "bare, window told",
    "window": "driver, window told",
    "callback": "driver, callback told",
}
COMMANDS = {
    "bare": ["wine", "k7_bare_sender.exe"],
    "bare_window": ["wine", "k7_bare_sender.exe", "window"],
    "window": ["wine", "k7_driver_sender.exe", "window"],
    "callback": ["wine", "k7_driver_sender.exe", "callback"],
}
PLACES = {"free": "two cores", "pinned": "one core"}
ROUNDS = 3
DEADLINE_S = 120


def settings():
    """All speeds the same, and a cutter home from which a plunge has no way to go: a call, a line."""
    def bits(number):
        return struct.unpack("<i", struct.pack("<f", number))[0]

    speed = bits(1.0)
    return (
        "[Axis Z]\r\n"
        f"Cutter Home={bits(-0.00125)}\r\nAir Z=0\r\n"
        "[Engrave Settings]\r\n"
        f"Traverse Speed={speed}\r\nEngrave Speed={speed}\r\n"
        f"Cutter Down Speed={speed}\r\nCutter Up Speed={speed}\r\n"
        "Engrave Depth=0\r\nEngrave Type=0\r\nCutter Mode=0\r\nEngrave Delay=0\r\n"
    )


class Talker:
    """A program that takes a line and answers with one."""

    def __init__(self, command, folder, cores=None):
        self.process = subprocess.Popen(
            command, cwd=folder, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, bufsize=1,
            preexec_fn=(lambda: os.sched_setaffinity(0, cores)) if cores else None)
        self.expect("ready")

    def answer(self):
        if not select.select([self.process.stdout], [], [], DEADLINE_S)[0]:
            self.process.kill()
            raise RuntimeError(f"{self.process.args}: no answer in {DEADLINE_S} s")
        return self.process.stdout.readline().strip()

    def expect(self, answer):
        line = self.answer()
        if line != answer:
            raise RuntimeError(f"{self.process.args}: {line!r} instead of {answer!r}")

    def ask(self, command):
        self.process.stdin.write(command + "\n")
        return self.answer()

    def do(self, command, answer):
        self.process.stdin.write(command + "\n")
        self.expect(answer)

    def end(self):
        self.process.stdin.close()
        self.process.wait(DEADLINE_S)
        self.process.stdout.close()


class Responder(Talker):
    def __init__(self, cores=None):
        super().__init__([str(NATIVE / "k7_responder"), str(PORT)], NATIVE, cores)

    def condition(self, name):
        self.do(f"condition {name}", "ok")

    def report(self, lines, line_bytes=None):
        """Lines a second, once all `lines` have come."""
        report = json.loads(self.ask("report"))
        if report["lines"] != lines:
            raise RuntimeError(f"{report['lines']} lines instead of {lines}")
        if line_bytes and (report["shortest"], report["longest"]) != (line_bytes, line_bytes):
            raise RuntimeError(f"lines are not {line_bytes} bytes long: {report}")
        return (lines - 1) / report["seconds"]


def cpu_seconds(pid):
    """Processor time, user and system, of a process with all its threads, ended ones included."""
    return time.clock_gettime((~pid << 3) | 2)  # the number of a process's clock, as Linux makes it


def server_folder():
    place = PREFIX.stat()
    return f"server-{place.st_dev:x}-{place.st_ino:x}"


def prefix_processes():
    """Processes of the Wine prefix; the server is the first."""
    found = []
    for folder in pathlib.Path("/proc").iterdir():
        if not folder.name.isdigit():
            continue
        try:
            if (folder / "comm").read_text().startswith("wineserver"):
                if os.readlink(folder / "cwd").endswith("/" + server_folder()):
                    found.insert(0, int(folder.name))
            elif f"WINEPREFIX={PREFIX}\0".encode() in (folder / "environ").read_bytes():
                if (folder / "comm").read_text().strip().endswith((".exe", "wine64-preloader")):
                    found.append(int(folder.name))
        except OSError:
            continue
    return found


def pin(cores):
    """Every process of the prefix onto these cores, each thread of it."""
    for pid in prefix_processes():
        try:
            for thread in os.listdir(f"/proc/{pid}/task"):
                os.sched_setaffinity(int(thread), cores)
        except OSError:
            continue


class Meter:
    """Processor time of a sender and of its Wine server from here on."""

    def __init__(self, sender):
        self.pid = sender.process.pid
        self.server = prefix_processes()[0]
        self.start = self.now()

    def now(self):
        return cpu_seconds(self.pid), cpu_seconds(self.server)

    def spent(self):
        return [now - start for now, start in zip(self.now(), self.start)]


def lines_for(condition, sender, lines):
    """The slower, the fewer, so that the whole takes minutes; None: not measured."""
    if sender == "bare_window" and condition != "ideal":
        return None  # it stands beside the driver where nothing but the programs sets the pace
    share = {"ideal": 1, "115200": 0.12}.get(condition, 0.2)
    if sender == "printcore":
        share = 0.1 if condition == "ideal" else 0.025
    elif sender.endswith("window") and condition == "ideal":
        share = 0.5
    return max(int(lines * share), 40)


def run_printcore(responder, condition, lines, cores):
    drawing = OUT / "printcore.gcode"
    drawing.write_text("".join(
        f"G0 X{(4 + i * 37 % 1000 / 125) * 25.4:.6f} Y{(4 + i * 59 % 1000 / 125) * 25.4:.6f}\n"
        for i in range(lines)))
    responder.condition(condition)
    before = os.times()
    subprocess.run(["printcore", os.path.realpath(PORT), str(drawing)], check=True,
                   timeout=DEADLINE_S, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                   preexec_fn=(lambda: os.sched_setaffinity(0, cores)) if cores else None)
    after = os.times()
    cpu = (after.children_user + after.children_system
           - before.children_user - before.children_system)
    return {"rate": responder.report(lines), "cpu": cpu, "server": 0.0, "lines": lines}


def run_round(sender, lines, cores):
    """One process of the sender through all conditions."""
    results = {}
    responder = Responder(cores)
    if cores:
        pin(cores)
    try:
        if sender == "printcore":
            return {name: run_printcore(responder, name, lines_for(name, sender, lines), cores)
                    for name in CONDITIONS}
        program = Talker(COMMANDS[sender], WINDOWS, cores)
        for name in CONDITIONS:
            count = lines_for(name, sender, lines)
            if count is None:
                continue
            responder.condition(name)
            meter = Meter(program)
            program.do(f"run {count}", "done")
            cpu, server = meter.spent()
            results[name] = {"rate": responder.report(count, LINE_BYTES), "cpu": cpu,
                             "server": server, "lines": count}
        program.do("quit", "")
        program.end()
        return results
    finally:
        responder.end()
        if cores:
            pin(os.sched_getaffinity(0))


def calls_counted(pid, work):
    """System calls of a process and its threads during `work`; None when strace may not look."""
    summary = OUT / "strace.txt"
    summary.unlink(missing_ok=True)
    tracer = subprocess.Popen(["strace", "-f", "-c", "-S", "calls", "-o", str(summary), "-p",
                               str(pid)], stdin=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    if "attached" not in tracer.stderr.readline():
        tracer.wait()
        return None
    time.sleep(0.3)
    work()
    tracer.send_signal(signal.SIGINT)
    tracer.stderr.read()
    tracer.wait()
    counts = {}
    for line in summary.read_text().splitlines():
        row = re.match(r"\s*[\d.]+\s+[\d.]+\s+\d+\s+(\d+)\s+(?:\d+\s+)?(\w+)$", line)
        if row:
            counts[row[2]] = int(row[1])
    total = counts.pop("total", sum(counts.values()))
    return {"total": total, **counts}


def run_stroke_costs(sender, lines):
    """System calls a stroke on the ideal pty, of the process and of the Wine server."""
    responder = Responder()
    responder.condition("ideal")
    program = Talker(COMMANDS[sender], WINDOWS)
    program.do("run 100", "done")
    found = {}
    for whose, pid in (("process", program.process.pid), ("server", prefix_processes()[0])):
        counts = calls_counted(pid, lambda: program.do(f"run {lines}", "done"))
        found[whose] = counts and {name: count / lines for name, count in counts.items()
                                   if count >= lines / 50}
    program.do("quit", "")
    program.end()
    responder.end()
    return found


def run_idle(sender, strokes):
    """Share of a core while connected: idle, and at one stroke a second."""
    responder = Responder()
    responder.condition("ideal")
    program = Talker(COMMANDS[sender], WINDOWS)
    shares = {}
    time.sleep(0.5)
    for name, work in (("idle", lambda: time.sleep(5)),
                       ("paced", lambda: program.do(f"pace {strokes}", "done"))):
        meter, start = Meter(program), time.monotonic()
        work()
        cpu, server = meter.spent()
        seconds = time.monotonic() - start
        shares[name] = {"process": cpu / seconds, "server": server / seconds}
    program.do("quit", "")
    program.end()
    responder.end()
    return shares


def median(rounds, *path):
    values = []
    for result in rounds:
        for key in path:
            result = result[key]
        values.append(result)
    return statistics.median(values)


class Verdicts:
    def __init__(self):
        self.rows = []

    def at_least(self, what, value, target):
        self.add(what, value, target, value >= target, "at least")

    def at_most(self, what, value, target):
        self.add(what, value, target, value <= target, "at most")

    def add(self, what, value, target, reached, bound):
        self.rows.append({"what": what, "value": value, "target": target, "bound": bound,
                          "reached": reached})
        distance = abs(value - target) / target * 100
        print(f"  {'reached' if reached else 'MISSED'} by {distance:.1f} %".ljust(24)
              + f"{what}: {value:.4g} ({bound} {target:g})")


def judge(measured, idle):
    verdicts = Verdicts()
    for place, rounds in measured.items():
        for sender, own_kind in (("callback", "bare"), ("window", "bare_window")):
            who = f"{SENDERS[sender]}, {PLACES[place]}"

            def ratio(other, of, condition="ideal"):
                """Of the two as they stood side by side in a round."""
                return statistics.median(of(r[sender][condition]) / of(r[other][condition])
                                         for r in rounds)

            def rate(run):
                return run["rate"]

            def cpu(run):
                return run["cpu"] / run["lines"]

            verdicts.at_least(f"{who}: ideal pty, times printcore", ratio("printcore", rate), 25)
            for other in dict.fromkeys(("bare", own_kind)):
                verdicts.at_least(f"{who}: ideal pty, times {SENDERS[other]}", ratio(other, rate), 1)
                verdicts.at_most(f"{who}: ideal pty, processor time, times {SENDERS[other]}",
                                 ratio(other, cpu), 1.5)
            for condition, share in (("115200", 0.995), ("1ms", 0.99), ("5ms", 0.99)):
                verdicts.at_least(f"{who}: share of {CONDITIONS[condition]}",
                                  median(rounds, sender, condition, "rate") / LIMITS[condition],
                                  share)
                verdicts.at_most(f"{who}: {CONDITIONS[condition]}, processor time, times bare sender",
                                 ratio("bare", cpu, condition), 1.5)
    for sender, shares in idle.items():
        verdicts.at_most(f"{SENDERS[sender]}: % of a core, connected and idle",
                         100 * shares["idle"]["process"], 1)
        verdicts.at_most(f"{SENDERS[sender]}: % of a core, a stroke a second",
                         100 * shares["paced"]["process"], 2)
    return verdicts.rows


def machine():
    model = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    wine = subprocess.run(["wine", "--version"], capture_output=True, text=True).stdout.strip()
    return {"processor": model[1] if model else platform.machine(), "cores": os.cpu_count(),
            "kernel": platform.release(), "wine": wine, "load": os.getloadavg()[0]}


def print_table(measured):
    for place, rounds in measured.items():
        print(f"\nLines a second, {PLACES[place]} (median of {len(rounds)})")
        print(" " * 24 + "".join(f"{title:>20}" for title in CONDITIONS.values()))
        for sender, title in SENDERS.items():
            print(f"  {title:<22}" + "".join(
                f"{median(rounds, sender, name, 'rate'):20.1f}" if name in rounds[0][sender]
                else f"{'-':>20}" for name in CONDITIONS))
        print("Processor time of 10,000 lines, s: the sender's process; with the Wine server")
        for sender, title in SENDERS.items():
            print(f"  {title:<22}", end="")
            for name in rounds[0][sender]:
                scale = 10000 / median(rounds, sender, name, "lines")
                cpu = median(rounds, sender, name, "cpu") * scale
                server = median(rounds, sender, name, "server") * scale
                print(f"{f'{cpu:.2f}; {cpu + server:.2f}':>20}", end="")
            print()


def print_costs(measured, costs, idle):
    print("\nA stroke on the ideal pty, two cores")
    for sender in COMMANDS:
        cpu = median(measured["free"], sender, "ideal", "cpu")
        server = median(measured["free"], sender, "ideal", "server")
        lines = median(measured["free"], sender, "ideal", "lines")
        print(f"  {SENDERS[sender]:<22} {cpu / lines * 1e6:.1f} us of processor time,"
              f" {(cpu + server) / lines * 1e6:.1f} us with the Wine server")
        for whose, counts in costs[sender].items():
            if counts is None:
                print(f"    system calls of the {whose}: strace may not look here")
                continue
            calls = ", ".join(f"{name} {count:.2f}" for name, count in counts.items()
                              if name != "total")
            print(f"    system calls of the {whose}: {counts['total']:.2f} ({calls})")
    print("\nShare of a core while connected: the process, the Wine server")
    for sender, shares in idle.items():
        for name, title in (("idle", "idle"), ("paced", "a stroke a second")):
            print(f"  {SENDERS[sender]:<22} {title:<18} {100 * shares[name]['process']:.2f} %,"
                  f" {100 * shares[name]['server']:.2f} %")


def main():
    lines = int(sys.argv[1]) if len(sys.argv) > 1 else 10000
    OUT.mkdir(parents=True, exist_ok=True)
    folder = PREFIX / "drive_c/ProgramData/Penfold Hatch/Veltrana/Controllers"
    folder.mkdir(parents=True, exist_ok=True)
    (folder / f"{IDENTITY}.ini").write_text(settings(), newline="")
    about = machine()
    measured = {}
    for place, cores in (("free", None), ("pinned", {min(os.sched_getaffinity(0))})):
        measured[place] = []
        for number in range(ROUNDS):
            print(f"  {PLACES[place]}, round {number + 1} of {ROUNDS}", file=sys.stderr)
            measured[place].append({sender: run_round(sender, lines, cores) for sender in SENDERS})
    idle = {sender: run_idle(sender, 10) for sender in ("window",)}
    costs = {sender: run_stroke_costs(sender, max(lines // 10, 40)) for sender in COMMANDS}
    print_table(measured)
    print_costs(measured, costs, idle)
    print("\nTargets")
    verdicts = judge(measured, idle)
    result = {"machine": about, "lines": lines, "rounds": measured, "idle": idle,
              "calls": costs, "verdicts": verdicts}
    (OUT / "wire.json").write_text(json.dumps(result, indent=1) + "\n")
    rounds = measured["free"]
    rates = {sender: {name: median(rounds, sender, name, "rate") for name in rounds[0][sender]}
             for sender in SENDERS}
    (OUT / "wire.svg").write_text(wire_picture.draw(rates, SENDERS, CONDITIONS, LIMITS))
    missed = sum(not row["reached"] for row in verdicts)
    print(f"\n{len(verdicts) - missed} targets reached, {missed} missed"
          f" ({about['processor']}, {about['cores']} cores, {about['wine']}; other programs made a load"
          f" of {about['load']:.1f} before)")


if __name__ == "__main__":
    main()
