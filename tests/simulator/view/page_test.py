#!/usr/bin/env python3
"""The page of `k7sim --view` in a real browser: what it draws, says and lets its user do.

usage: page_test.py K7SIM [FILTER]

K7SIM is the program; with FILTER only the tests whose name contains it run. With K7_SCREENSHOTS=FOLDER
it takes pictures of the page there instead, in a wide window and in one of 400 pixels."""

import os
import pathlib
import re
import select
import signal
import subprocess
import sys
import tempfile
import unittest

from browser import DEADLINE_S, Browser, wait_until

K7SIM = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "k7sim").resolve()
WIDTH, HEIGHT = 4, 3  # inches, of the plate
PIXELS, MARGIN = 100, 0.7  # of the picture: pixels an inch, inches around the plate


class Simulator:
    """k7sim on a pseudo terminal, and the host on it."""

    def __init__(self, *arguments, port=0):
        self.folder = tempfile.TemporaryDirectory(prefix="k7-view-")
        self.path = pathlib.Path(self.folder.name)
        self.picture = self.path / "plate.svg"
        self.process = subprocess.Popen(
            [K7SIM, "--pty", self.path / "board", "--view", str(port), "--table",
             f"{WIDTH},{HEIGHT},2", "--surface", "plane:1", "--picture", self.picture, *arguments],
            stdout=subprocess.PIPE, text=True)
        self.address = None
        for line in self.process.stdout:
            if line.startswith("view "):
                self.address = line.split()[1]
            if line == "ready\n":
                break
        self.port = int(self.address.rstrip("/").rsplit(":", 1)[1])
        self.host = os.open(self.path / "board", os.O_RDWR | os.O_NOCTTY)
        self.read_until(rb"Smoothie\r\nok\r\n")

    def ask(self, *lines):
        """Sends lines as a host does: the next when the board has replied `ok`."""
        for line in lines:
            os.write(self.host, line.encode() + b"\n")
            self.read_until(rb"ok\r?\n")

    def read_until(self, pattern):
        got = b""
        while not re.search(pattern, got):
            if not select.select([self.host], [], [], DEADLINE_S)[0]:
                raise AssertionError(f"the board sent {got!r}, never {pattern!r}")
            got += os.read(self.host, 512)
        return got

    def end(self):
        self.process.terminate()
        return self.process.wait()

    def close(self):
        os.close(self.host)
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        self.process.stdout.close()
        self.folder.cleanup()


class Picture:
    """The cuts and travels of an SVG picture, in inches from the table home, as sorted lists of
    lines."""

    def __init__(self, svg):
        self.cuts = self._lines(re.findall(r'<path [^>]*data-depth="[^"]*" d="([^"]*)"', svg))
        self.travels = self._lines(re.findall(r'<path id="travel"[^>]* d="([^"]*)"', svg))

    @staticmethod
    def _lines(paths):
        lines = []
        for path in paths:
            for kind, x, y in re.findall(r"([ML])([-\d.]+) ([-\d.]+)", path):
                here = (float(x) / PIXELS - MARGIN, HEIGHT + MARGIN - float(y) / PIXELS)
                if kind == "L":
                    lines.append((*last, *here))
                last = here
        return sorted(lines)


# How many cuts along the plate the page has drawn; plunges and lifts are not among them.
CUTS = "view.strokes.filter(s => s[4] > 0 && (s[0] !== s[2] || s[1] !== s[3])).length"

# Two crossing cuts, the shallow one later, and an outline at a third depth; lengths in mm.
BEGIN = ["SetTableHomed", "G21", "G0 F3000", "M42", "G0 Z20"]
FIRST_CUTS = ["G0 X20 Y20", "G0 Z26.4", "G0 X80 Y50", "G0 Z20", "G0 X80 Y20", "G0 Z25.9",
              "G0 X20 Y50", "G0 Z20"]
LAST_CUTS = ["G0 X30 Y60", "G0 Z26", "G0 X70 Y60", "G0 X70 Y68", "G0 X30 Y68", "G0 X30 Y60", "G0 Z20",
             "G0 X5 Y70", "M400"]


class Page(unittest.TestCase):
    browser = None

    @classmethod
    def setUpClass(cls):
        cls.browser = Browser()
        cls.browser.size(1280, 900)

    @classmethod
    def tearDownClass(cls):
        cls.browser.close()

    def look(self, simulator):
        self.addCleanup(simulator.close)
        self.browser.open(simulator.address)
        self.browser.wait_for("view.connection === 'live' && view.state !== null")
        return simulator

    def say(self, selector, text):
        wait_until(lambda: text in self.browser.text(selector),
                   f"{selector} says '{text}', it says '{self.browser.text(selector)}'")

    def assert_same_lines(self, drawn, wanted):
        self.assertEqual(len(drawn), len(wanted))
        for one, other in zip(sorted(drawn), wanted):
            for a, b in zip(one, other):
                self.assertAlmostEqual(a, b, delta=2e-4)

    def test_a_job_is_drawn_as_it_is_cut_and_as_in_the_picture(self):
        simulator = self.look(Simulator("--speed", "max"))
        self.say("#tool", "above the plate")
        os.write(simulator.host, b"SetTableHomed\n")
        simulator.ask(*BEGIN[1:], *FIRST_CUTS, "M400")
        # The page has drawn the first half before the host sends the other.
        self.browser.wait_for(CUTS + " === 2")
        simulator.ask(*LAST_CUTS)
        self.browser.wait_for(CUTS + " === 6")
        self.say("#machine", "at rest")
        self.say("#cut", "cut 9.1 in")
        self.say("#spindle", "on")
        self.say("#homed", "yes")
        self.say("#wire", "G0 X30 Y60")
        self.browser.click("button[data-line=report]")
        self.say("#answer", "report: done")
        svg = simulator.picture.read_text()

        strokes = self.browser.run("return view.strokes")
        wanted = Picture(svg)
        self.assert_same_lines([tuple(s[:4]) for s in strokes if s[4] > 0], wanted.cuts)
        self.assert_same_lines([tuple(s[:4]) for s in strokes if s[4] == 0], wanted.travels)

        without_travels = re.sub(r'<path id="travel"[^>]*>', "", svg)
        cut, different = self.compare_pixels(without_travels)
        self.assertGreater(cut, 5000)
        self.assertLess(different, 0.01 * cut)
        self.browser.click("#travels")
        self.assertGreater(self.compare_pixels(without_travels)[1], 200)
        self.assertEqual(self.browser.complaints(simulator.address), [])

    def compare_pixels(self, svg):
        """Draws the picture over the page's own drawing, in its size. The result is how many pixels
        the picture shows as cut, and how many differ by more than the smoothing of edges."""
        return self.browser.run("""
            view.withoutHead = true;
            view.askAll();
            const image = new Image();
            const [svg, wide, high, margin] = arguments;
            image.src = 'data:image/svg+xml;base64,' + btoa(svg);
            return image.decode().then(async () => {
              while (!view.isDrawn()) await new Promise(requestAnimationFrame);
              const own = document.getElementById('plate'), p = view.place;
              const other = document.createElement('canvas').getContext('2d');
              other.canvas.width = own.width;
              other.canvas.height = own.height;
              other.drawImage(image, p.x - margin * p.scale, p.y - (high + margin) * p.scale,
                              (wide + 2 * margin) * p.scale, (high + 2 * margin) * p.scale);
              const inside = [p.x + 0.2 * p.scale, p.y - (high - 0.2) * p.scale,
                              (wide - 0.4) * p.scale, (high - 0.4) * p.scale].map(Math.round);
              const a = own.getContext('2d').getImageData(...inside).data;
              const b = other.getImageData(...inside).data;
              let cut = 0, different = 0;
              for (let i = 0; i < a.length; i += 4) {
                if (b[i + 2] < 0x80) ++cut;
                if (Math.abs(a[i] - b[i]) > 60) ++different;
              }
              return [cut, different];
            });""", svg, WIDTH, HEIGHT, MARGIN)

    def test_a_fault_halts_the_board_and_the_page_says_so(self):
        simulator = self.look(Simulator())
        self.say("#machine", "at rest")
        self.browser.choose("#do", "halt")
        self.browser.choose("#when", "match")
        self.browser.type("#match", "M106")
        self.browser.type("#say", "ALARM: Kill button\\n")
        self.browser.click("#fault button")
        self.say("#faults", '0× {"do":"halt"')
        os.write(simulator.host, b"M106\n")
        self.say("#machine", "HALTED")
        self.say("#alarm", "ALARM: Kill button")
        self.say("#faults", '1× {"do":"halt"')
        self.say("#wire", "ALARM: Kill button")
        self.browser.click("button[data-line=resume]")
        self.say("#machine", "at rest")
        self.say("#alarm", "")
        # A fault for now, with the settings of the form as they stand.
        self.browser.choose("#when", "")
        self.browser.click("#fault button")
        self.say("#machine", "HALTED")
        self.assertEqual(self.browser.complaints(simulator.address), [])

    def test_buttons_do_what_the_control_pipe_does(self):
        simulator = self.look(Simulator())
        self.browser.type("form[data-verb=halt] input", "ALARM: by hand")
        self.browser.click("form[data-verb=halt] button.stop")
        self.say("#machine", "HALTED")
        simulator.read_until(b"ALARM: by hand\n")
        self.browser.click("button[data-line=resume]")
        self.say("#machine", "at rest")
        self.browser.click("button[data-line='switch probe 1']")
        self.browser.wait_for("document.querySelector('#switch-probe .held').textContent === 'closed'")
        self.say("#switch-probe .state", "closed")
        self.browser.type("#position", "1,2,0.5")
        self.browser.click("form[data-verb=position] button")
        self.say("#head", "X 1.0000Y 2.0000Z 0.5000")
        self.browser.type("#work", "plane:0.25")
        self.browser.click("form[data-verb=surface] button")
        self.say("#surface", "plane:0.25")
        self.browser.click("button[data-line='homed 1']")
        self.say("#homed", "yes")
        self.browser.type("#line", "position 1,2")
        self.browser.click("#any button")
        self.say("#answer", "position takes X,Y,Z in inches")
        self.browser.type("#text", "// NOTICE")
        self.browser.click("form[data-verb=send] button")
        simulator.read_until(b"// NOTICE\r\n")

    def test_each_command_and_each_fault_has_a_control(self):
        self.look(Simulator())
        missing = self.browser.run("""
            const has = verb => document.querySelector(`[data-verb="${verb}"], #${verb},
                [data-line="${verb}"], [data-line^="${verb} "]`);
            return view.hello.commands.map(c => c.verb).filter(verb => !has(verb))""")
        self.assertEqual(missing, [])
        self.assertIn("withhold", self.browser.text("#do"))

    def test_the_page_says_that_the_simulator_has_ended(self):
        simulator = self.look(Simulator("--speed", "max"))
        os.write(simulator.host, b"SetTableHomed\n")
        simulator.ask(*BEGIN[1:], *FIRST_CUTS, "M400")
        self.browser.click("button[data-line=quit]")
        self.browser.accept()
        self.say("#notice", "The simulator has ended")
        self.say("#notice", "2 strokes, 0.039 in deep, 0 errors")
        self.say("#notice", "in, homed, spindle on")
        self.assertEqual(simulator.process.wait(), 0)
        self.assertEqual(self.browser.text("#link"), "ended")
        self.assertTrue(self.browser.run("return document.querySelector('button.stop').disabled"))
        # The last state and the whole drawing stay.
        self.assertEqual(self.browser.run("return " + CUTS), 2)

    def test_the_page_says_that_the_connection_is_lost_and_finds_the_next_simulator(self):
        simulator = self.look(Simulator())
        first = self.browser.run("return view.hello.run")
        simulator.process.kill()
        self.say("#notice", "The connection to the simulator is lost")
        simulator.process.wait()
        self.addCleanup(Simulator(port=simulator.port).close)
        self.browser.wait_for("view.connection === 'live' && view.hello.run !== arguments[0]", first)
        self.assertEqual(self.browser.text("#notice"), "")

    def test_the_page_says_that_the_simulator_is_silent(self):
        simulator = self.look(Simulator())
        self.browser.run("view.patienceSeconds = 2.5")
        simulator.process.send_signal(signal.SIGSTOP)
        self.say("#notice", "No word from the simulator")
        simulator.process.send_signal(signal.SIGCONT)
        self.browser.wait_for("view.connection === 'live'")

    def take_pictures(self):
        folder = os.environ["K7_SCREENSHOTS"]
        simulator = self.look(Simulator("--speed", "30"))
        os.write(simulator.host, b"SetTableHomed\n")
        simulator.ask(*BEGIN[1:], *FIRST_CUTS, *LAST_CUTS[:-1], "G0 X50 Y20", "G0 Z26", "G0 F300")
        self.browser.run("view.command('fault {\"reply\":\"EX\",\"nth\":20,\"do\":\"drop\"}')")
        self.browser.wait_for(CUTS + " === 6 && view.state.depth > 0.02")
        simulator.ask("G0 X85 Y68")
        self.browser.wait_for("view.state.moving && view.state.head.x > 2.5")
        self.addCleanup(self.browser.size, 1280, 900)
        for width, height in ((1280, 900), (400, 1700)):
            self.browser.size(width, height)
            self.browser.wait_for("view.isDrawn() && innerWidth === arguments[0]", width)
            self.browser.screenshot(f"{folder}/view-{width}.png")

    def test_the_page_fits_a_narrow_window(self):
        self.look(Simulator("--speed", "max"))
        self.addCleanup(self.browser.size, 1280, 900)
        for width in (400, 800, 1280):
            self.browser.size(width, 800)
            self.browser.wait_for("view.isDrawn() && innerWidth === arguments[0]", width)
            self.assertLessEqual(self.browser.run("return document.documentElement.scrollWidth"), width)
            outside = self.browser.run("""
                return [...document.querySelectorAll('button, input, select, canvas')].filter(e => {
                  const box = e.getBoundingClientRect();
                  return box.right > innerWidth || box.left < 0;
                }).map(e => e.outerHTML)""")
            self.assertEqual(outside, [])


def main():
    names = [name for name in unittest.TestLoader().getTestCaseNames(Page)
             if len(sys.argv) < 3 or sys.argv[2] in name]
    if "K7_SCREENSHOTS" in os.environ:
        names = ["take_pictures"]
    result = unittest.TextTestRunner(stream=sys.stdout, verbosity=2).run(
        unittest.TestSuite(unittest.defaultTestLoader.suiteClass([Page(name) for name in names])))
    for test, _ in result.failures + result.errors:
        print(f"ERROR {test.id()}")
    failed = len(result.failures) + len(result.errors)
    print(f"view: {result.testsRun - failed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
