#!/usr/bin/env python3
"""A header with its comments as doxygen wants them: those in front of a declaration and behind one,
and the head of the file."""

import re
import sys

lines = open(sys.argv[1]).read().splitlines()
head = True
for number, line in enumerate(lines):
    if head:
        if not line.startswith("//"):
            head = False
        else:
            line = ("/// \\file\n" if number == 0 else "") + "/" + line
    elif re.match(r"\s*// ", line):
        line = line.replace("// ", "/// ", 1)
    elif re.search(r"[;,]\s+// ", line):
        line = re.sub(r"([;,]\s+)// ", r"\1///< ", line)
    print(line)
