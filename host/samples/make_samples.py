#!/usr/bin/env python3
"""Writes the sample drawings beside it: plotter files in units of 1/1016 inch, table home at (0, 0).

plate.plt      a name plate of 6 x 3.5 inches with border, ornaments, rosettes and lettering
grid.plt       a plain grid, spiral.plt one long stroke, lettering.plt the alphabet
braille.plt    dots only, for the braille runs

Lengths in this script are inches; run it again after a change and commit the drawings with it.
"""

import math
import os

UNITS_PER_INCH = 1016


def arc(cx, cy, rx, ry, start, end, steps=None):
    """Points of an elliptic arc; angles in degrees, counter-clockwise when end > start."""
    steps = steps or max(2, round(abs(end - start) / 15))
    return [
        (cx + rx * math.cos(math.radians(a)), cy + ry * math.sin(math.radians(a)))
        for a in (start + (end - start) * i / steps for i in range(steps + 1))
    ]


# Letters of single lines, capitals 6 units high: the width of each, then its strokes.
def _letters():
    bowl = lambda y0, y1, x: [(0, y0), (x, y0)] + arc(x, (y0 + y1) / 2, 4 - x, (y1 - y0) / 2, -75,
                                                    75, 6) + [(x, y1), (0, y1)]
    ring = arc(2.2, 3, 2.2, 3, 90, 450, 24)
    return {
        " ": (2.4, []),
        "A": (4.4, [[(0, 0), (2.2, 6), (4.4, 0)], [(0.73, 2), (3.67, 2)]]),
        "B": (4, [[(0, 0), (0, 6)], bowl(0, 3.2, 2.3), bowl(3.2, 6, 2.1)[1:]]),
        "C": (4.2, [arc(2.3, 3, 2.3, 3, 45, 315, 18)]),
        "D": (4.2, [[(0, 0), (0, 6)], [(0, 6), (1.6, 6)] + arc(1.6, 3, 2.6, 3, 90, -90, 14) +
                    [(0, 0)]]),
        "E": (3.6, [[(3.6, 6), (0, 6), (0, 0), (3.6, 0)], [(0, 3.1), (2.8, 3.1)]]),
        "F": (3.5, [[(3.5, 6), (0, 6), (0, 0)], [(0, 3.1), (2.7, 3.1)]]),
        "G": (4.4, [arc(2.3, 3, 2.3, 3, 45, 330, 18) + [(4.29, 2.7), (2.6, 2.7)]]),
        "H": (4.2, [[(0, 0), (0, 6)], [(4.2, 0), (4.2, 6)], [(0, 3.1), (4.2, 3.1)]]),
        "I": (0.4, [[(0.2, 0), (0.2, 6)]]),
        "J": (2.8, [[(2.8, 6), (2.8, 1.4)] + arc(1.4, 1.4, 1.4, 1.4, 0, -165, 10)]),
        "K": (4, [[(0, 0), (0, 6)], [(3.8, 6), (0, 2.5)], [(1.2, 3.6), (4, 0)]]),
        "L": (3.4, [[(0, 6), (0, 0), (3.4, 0)]]),
        "M": (5, [[(0, 0), (0.3, 6), (2.5, 1), (4.7, 6), (5, 0)]]),
        "N": (4.2, [[(0, 0), (0, 6), (4.2, 0), (4.2, 6)]]),
        "O": (4.4, [ring]),
        "P": (3.9, [[(0, 0), (0, 6)], bowl(2.7, 6, 2.2)]),
        "Q": (4.4, [ring, [(2.6, 1.6), (4.3, -0.4)]]),
        "R": (4.1, [[(0, 0), (0, 6)], bowl(2.8, 6, 2.2), [(2, 2.8), (4.1, 0)]]),
        "S": (3.8, [arc(1.95, 4.5, 1.65, 1.5, 30, 260, 12) + arc(1.9, 1.55, 1.8, 1.55, 85, -155,
                                                                 12)]),
        "T": (4, [[(0, 6), (4, 6)], [(2, 6), (2, 0)]]),
        "U": (4.2, [[(0, 6), (0, 2.1)] + arc(2.1, 2.1, 2.1, 2.1, 180, 360, 12) + [(4.2, 6)]]),
        "V": (4.4, [[(0, 6), (2.2, 0), (4.4, 6)]]),
        "W": (6, [[(0, 6), (1.5, 0), (3, 5), (4.5, 0), (6, 6)]]),
        "X": (4, [[(0, 0), (4, 6)], [(0, 6), (4, 0)]]),
        "Y": (4.2, [[(0, 6), (2.1, 3), (4.2, 6)], [(2.1, 3), (2.1, 0)]]),
        "Z": (3.8, [[(0, 6), (3.8, 6), (0, 0), (3.8, 0)]]),
        "0": (3.8, [arc(1.9, 3, 1.9, 3, 90, 450, 20)]),
        "1": (1.8, [[(0, 4.7), (1.5, 6), (1.5, 0)]]),
        "2": (3.7, [arc(1.8, 4.3, 1.7, 1.7, 165, -35, 10) + [(0, 0), (3.7, 0)]]),
        "3": (3.7, [arc(1.7, 4.55, 1.5, 1.45, 150, -90, 10)[:-1] +
                    arc(1.7, 1.6, 1.9, 1.55, 90, -150, 10)]),
        "4": (3.9, [[(2.9, 0), (2.9, 6), (0, 1.7), (3.9, 1.7)]]),
        "5": (3.7, [[(3.3, 6), (0.4, 6), (0.2, 3.3)] + arc(1.7, 2, 1.9, 2, 125, -145, 12)]),
        "6": (3.8, [arc(3.6, 2.2, 3.5, 3.8, 100, 180, 6) + arc(1.9, 1.9, 1.8, 1.9, 180, 540, 18)]),
        "7": (3.8, [[(0, 6), (3.8, 6), (1.3, 0)]]),
        "8": (3.7, [arc(1.85, 4.55, 1.5, 1.45, -90, 270, 16), arc(1.85, 1.55, 1.85, 1.55, 90, 450,
                                                                  18)]),
        "9": (3.8, [arc(1.9, 4.1, 1.8, 1.9, 0, 360, 18) + arc(0.2, 3.8, 3.5, 3.8, 0, -80, 6)]),
        ".": (0.4, [arc(0.2, 0.15, 0.15, 0.15, 0, 360, 6)]),
        "-": (2, [[(0, 2.8), (2, 2.8)]]),
    }


LETTERS = _letters()
SPACING = 1.5


def text_width(text, height):
    return (sum(LETTERS[c][0] + SPACING for c in text) - SPACING) * height / 6


def lettering(text, x, y, height):
    """Strokes of a line of text; (x, y) is the left end of its base line."""
    strokes = []
    for c in text:
        width, shapes = LETTERS[c]
        strokes += [[(x + px * height / 6, y + py * height / 6) for px, py in s] for s in shapes]
        x += (width + SPACING) * height / 6
    return strokes


def centred(text, x, y, height):
    return lettering(text, x - text_width(text, height) / 2, y, height)


def broad(strokes, nib, copies):
    """The strokes as a slanted broad nib draws them: copies side by side."""
    return [
        [(px + nib * (i / (copies - 1) - 0.5), py + nib * 0.5 * (i / (copies - 1) - 0.5))
         for px, py in s] for s in strokes for i in range(copies)
    ]


def notched(x0, y0, x1, y1, r):
    """A frame whose corners curve inwards."""
    return (arc(x0, y0, r, r, 90, 0, 8) + arc(x1, y0, r, r, 180, 90, 8) +
            arc(x1, y1, r, r, 270, 180, 8) + arc(x0, y1, r, r, 360, 270, 8) + [(x0, y0 + r)])


def rounded(x0, y0, x1, y1, r):
    """A frame with rounded corners."""
    return (arc(x1 - r, y0 + r, r, r, -90, 0, 6) + arc(x1 - r, y1 - r, r, r, 0, 90, 6) +
            arc(x0 + r, y1 - r, r, r, 90, 180, 6) + arc(x0 + r, y0 + r, r, r, 180, 270, 6) +
            [(x1 - r, y0)])


def curl(x, y, sx, sy, size):
    """A corner scroll: two volutes that grow out of one stem towards the corner at (x, y)."""
    def volute(turn):
        points = []
        for i in range(27):
            a = math.radians(-90 + 20 * i)
            r = 0.36 * (1 - i / 30)
            u, v = 0.95 + r * math.cos(a), 0.42 + r * math.sin(a)
            points.append((u, v) if turn else (v, u))
        return points

    shapes = [[(0.1, 0.1)] + volute(True), [(0.1, 0.1)] + volute(False),
              [(0.1, 0.1), (0.34, 0.48), (0.62, 0.62), (0.48, 0.34), (0.1, 0.1)]]
    return [[(x + sx * u * size, y + sy * v * size) for u, v in s] for s in shapes]


def rosette(cx, cy, radius, petals):
    """Rings of crossing petals around a star and a hub."""
    strokes = []
    for i in range(petals):
        a0 = 2 * math.pi * i / petals
        for reach, inner, span in ((1.0, 0.52, 3), (0.66, 0.3, 2)):
            points = []
            for k in range(13):
                t = k / 12
                a = a0 + span * 2 * math.pi / petals * t
                r = radius * (inner + (reach - inner) * math.sin(math.pi * t))
                points.append((cx + r * math.cos(a), cy + r * math.sin(a)))
            strokes.append(points)
    for i in range(petals // 2):
        a = 4 * math.pi * i / petals
        half = math.pi / petals
        at = lambda r, b: (cx + radius * r * math.cos(b), cy + radius * r * math.sin(b))
        strokes.append([at(0.1, a), at(0.19, a - half), at(0.28, a), at(0.19, a + half),
                        at(0.1, a)])
    strokes.append(arc(cx, cy, radius * 0.07, radius * 0.07, 0, 360, 12))
    strokes.append(arc(cx, cy, radius * 1.06, radius * 1.06, 0, 360, 48))
    return strokes


def band(x0, x1, y, height, waves):
    """Three shifted waves between two lines."""
    strokes = [[(x0, y - height), (x1, y - height)], [(x1, y + height), (x0, y + height)]]
    steps = waves * 8
    for shift in range(3):
        points = [(x0 + (x1 - x0) * i / steps,
                   y + 0.78 * height * math.sin(2 * math.pi * (i / 8 + shift / 3)))
                  for i in range(steps + 1)]
        strokes.append(points if shift % 2 == 0 else points[::-1])
    return strokes


def divider(cx, y, half):
    """A line swelling to a lozenge with a dot on each side."""
    strokes = [[(cx - half, y), (cx - 0.22, y)], [(cx + half, y), (cx + 0.22, y)],
               [(cx - 0.12, y), (cx, y + 0.07), (cx + 0.12, y), (cx, y - 0.07), (cx - 0.12, y)]]
    for side in (-1, 1):
        strokes.append(arc(cx + side * 0.17, y, 0.022, 0.022, 0, 360, 8))
        for i in range(4):
            x = cx + side * (0.34 + 0.16 * i)
            size = 0.055 - 0.009 * i
            strokes.append([(x - size, y), (x, y + size), (x + size, y), (x, y - size),
                            (x - size, y)])
    return strokes


def screw(cx, cy):
    return [arc(cx, cy, 0.07, 0.07, 0, 360, 20), [(cx - 0.045, cy - 0.045),
                                                 (cx + 0.045, cy + 0.045)]]


def plate():
    x0, y0, x1, y1 = 0.5, 0.5, 6.5, 4.0
    cx = (x0 + x1) / 2
    strokes = [rounded(x0, y0, x1, y1, 0.22), notched(x0 + 0.1, y0 + 0.1, x1 - 0.1, y1 - 0.1, 0.2),
               notched(x0 + 0.15, y0 + 0.15, x1 - 0.15, y1 - 0.15, 0.2)]
    for x, y in ((x0, y0), (x1, y0), (x1, y1), (x0, y1)):
        sx, sy = (1 if x == x0 else -1), (1 if y == y0 else -1)
        strokes += screw(x + sx * 0.16, y + sy * 0.16)
        strokes += curl(x + sx * 0.3, y + sy * 0.3, sx, sy, 0.36)
    strokes += band(x0 + 0.95, x1 - 0.95, y1 - 0.37, 0.085, 20)
    strokes += broad(centred("K7 DRIVER", cx, 2.62, 0.6), 0.045, 4)
    strokes += divider(cx, 2.36, 1.9)
    strokes += rosette(x0 + 1.22, 1.68, 0.5, 20)
    strokes += broad(centred("READY", cx, 1.62, 0.46), 0.03, 3)
    strokes += centred("ENGRAVING SYSTEM", cx, 1.32, 0.13)
    strokes += centred("TABLE 25 X 16 IN  -  NO. 0007", cx, 1.1, 0.09)
    strokes += rosette(x1 - 1.22, 1.68, 0.5, 20)
    strokes += band(x0 + 0.95, x1 - 0.95, y0 + 0.35, 0.06, 24)
    return strokes


def grid():
    lines = []
    for i in range(9):
        at = 0.5 + i * 0.5
        ends = [(0.5, at), (4.5, at)]
        lines.append(ends if i % 2 == 0 else ends[::-1])
    for i in range(9):
        at = 0.5 + i * 0.5
        ends = [(at, 0.5), (at, 4.5)]
        lines.append(ends if i % 2 == 0 else ends[::-1])
    return lines


def spiral():
    points = []
    for i in range(8 * 36 + 1):
        a = math.radians(10 * i)
        points.append((2 + 0.19 * a / math.tau * math.cos(a), 2 + 0.19 * a / math.tau * math.sin(a)))
    return [points]


def alphabet():
    return (lettering("ABCDEFGHI", 0.5, 2.5, 0.5) + lettering("JKLMNOPQR", 0.5, 1.8, 0.5) +
            lettering("STUVWXYZ", 0.5, 1.1, 0.5) + lettering("0123456789", 0.5, 0.4, 0.5))


def braille():
    """"k7 ready" in cells of 0.1 x 0.1 inch dots, 0.25 inch apart."""
    cells = {"k": (1, 3), "#": (3, 4, 5, 6), "g": (1, 2, 4, 5), " ": (), "r": (1, 2, 3, 5),
             "e": (1, 5), "a": (1,), "d": (1, 4, 5), "y": (1, 3, 4, 5, 6)}
    dots = []
    for i, c in enumerate("k#g ready"):
        dots += [[(0.5 + 0.25 * i + (0.1 if n > 3 else 0), 0.8 - 0.1 * ((n - 1) % 3))]
                 for n in cells[c]]
    return dots


def write(name, strokes):
    unit = lambda v: str(round(v * UNITS_PER_INCH))
    out = ["IN;SP1;"]
    for stroke in strokes:
        points = []
        for x, y in stroke:
            text = unit(x) + "," + unit(y)
            if not points or points[-1] != text:
                points.append(text)
        out.append("PU" + points[0] + ";PD" + ",".join(points[1:]) + ";")
    out.append("PU;SP0;")
    with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), name), "w",
              newline="\n") as f:
        f.write("\n".join(out) + "\n")


if __name__ == "__main__":
    write("plate.plt", plate())
    write("grid.plt", grid())
    write("spiral.plt", spiral())
    write("lettering.plt", alphabet())
    write("braille.plt", braille())
