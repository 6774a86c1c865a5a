#!/usr/bin/env python3
"""Checks docs/wire_protocol.md against the code: every line that the driver sends and every text by
which it recognises a reply stands in the document, the document names no other command, and no
source but link/commands writes the text of a command."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
SRC = ROOT / "src"
COMMAND = re.compile(r"^(?:[GM]\d+\b|SmoothieIsConnected|config-[gs]et|TableIsHomed|SetTableHomed|"
                     r"SendBlockMessages)")
LITERAL = re.compile(r'(L|u8|u|U)?"((?:[^"\\\n]|\\.)*)"')


def literals(path):
    """The narrow string literals of a source; wide ones are for users."""
    text = re.sub(r"^#include.*$", "", path.read_text(), flags=re.M)
    text = re.sub(r"//[^\n]*", "", text.replace("'\"'", ""))
    return [literal for prefix, literal in LITERAL.findall(text) if not prefix]


def sent():
    """The texts of all commands, those with numbers up to where the number begins."""
    texts = set()
    for name in ("link/commands.h", "link/commands.cpp"):
        for literal in literals(SRC / name):
            text = literal.removesuffix("\\n").rstrip()
            if COMMAND.match(text):
                texts.add(text)
    return texts


def replies():
    """The texts of the reply table, in its order."""
    table = re.search(r"kReplies\[\] = \{\n(.*?)\n\};", (SRC / "link/reply.h").read_text(), re.S)[1]
    return re.findall(r'\{"([^"]+)", ', table)


def check_strays(faults):
    for path in sorted(p for p in SRC.rglob("*") if p.suffix in (".h", ".cpp")):
        name = path.relative_to(SRC).as_posix()
        if name in ("link/commands.h", "link/commands.cpp", "link/reply.h"):
            continue
        for literal in literals(path):
            if COMMAND.match(literal) or (literal.endswith("\\n") and literal != "\\n"):
                faults.append(f'src/{name} writes the line "{literal}": it belongs to link/commands')


def main():
    faults = []
    document = (ROOT / "docs" / "wire_protocol.md").read_text()
    named = re.findall(r"`([^`\n]+)`", document)
    commands, texts = sent(), replies()
    for command in sorted(commands):
        # What follows a letter is a number: "M44 S" is named as "M44 S252".
        end = "" if re.search(r" [A-Z]$", command) else r"(?![\w-])"
        if not any(re.match(re.escape(command) + end, text) for text in named):
            faults.append(f"docs/wire_protocol.md does not name {command}")
    sentence = document[document.index("## How a reply is recognised"):]
    if [t for t in re.findall(r"`([^`\n]+)`", sentence) if t in texts] != texts:
        faults.append("docs/wire_protocol.md does not give the texts of kReplies in their order")
    known = {command.split()[0] for command in commands}
    reply_words = {text.removesuffix("\\r\\n") for text in texts}
    for text in named:
        if not COMMAND.match(text) or text.removesuffix("\\r\\n") in reply_words:
            continue
        if text.split()[0] not in known:
            faults.append(f"docs/wire_protocol.md names {text}, which the driver does not send")
    check_strays(faults)
    for fault in faults:
        print(f"ERROR {fault}")
    print(f"{len(commands)} commands, {len(texts)} replies, {len(faults)} faults")
    return 1 if faults or not commands or not texts else 0


if __name__ == "__main__":
    sys.exit(main())
