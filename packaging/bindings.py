#!/usr/bin/env python3
"""Writes what other languages load the driver with, from the C++ headers in include/k7: driver_c.h and
the table of examples/python/k7driver.py.

bindings.py            writes both
bindings.py --check    fails when one of them is not what it would write
"""

import pathlib
import re
import sys
import textwrap

ROOT = pathlib.Path(__file__).resolve().parents[1]
INCLUDE = ROOT / "include" / "k7"
HEADER = INCLUDE / "driver_c.h"
MODULE = ROOT / "examples" / "python" / "k7driver.py"
COUNT = 126
WIDTH = 100

TYPES = {"void", "bool", "uint8_t", "int32_t", "uint32_t", "int64_t", "uint64_t", "float", "void*",
         "wchar_t*", "const wchar_t*", "const char*", "int32_t*", "uint8_t*", "const uint32_t*"}
# C++ name of a type, its name in C.
IN_C = {"WindowHandle": "K7WindowHandle", "LinkHandle": "K7LinkHandle",
        "NotifyCallback": "K7NotifyCallback"}
IN_PYTHON = {"void": "None", "bool": "c_bool", "uint8_t": "c_uint8", "int32_t": "c_int32",
             "uint32_t": "c_uint32", "int64_t": "c_int64", "uint64_t": "c_uint64",
             "float": "c_float", "void*": "c_void_p", "wchar_t*": "c_wchar_p",
             "const wchar_t*": "c_wchar_p", "const char*": "c_char_p",
             "int32_t*": "POINTER(c_int32)", "uint8_t*": "POINTER(c_uint8)",
             "const uint32_t*": "POINTER(c_uint32)", "WindowHandle": "c_void_p",
             "LinkHandle": "c_void_p", "NotifyCallback": "NotifyCallback"}


class Operation:
    def __init__(self, result, name, parameters, comment):
        self.result, self.name, self.comment = result, name, comment
        self.parameters = []  # (type, name)
        for text in filter(None, (p.strip() for p in parameters.split(","))):
            kind, name = text.rsplit(" ", 1)
            self.parameters.append((kind, name))
        for kind in [self.result] + [kind for kind, _ in self.parameters]:
            if kind not in TYPES and kind not in IN_C:
                sys.exit(f"{self.name}: no type of other languages is known for {kind}")


def operations():
    """The operations in slot order; `comment` is that in front of the first of those it speaks of."""
    found, comment = [], []
    for file in ("surface.h", "engraver.h"):
        text = (INCLUDE / file).read_text()
        body = re.findall(r"^((?:  // .*\n)+)|^  virtual ((?:.|\n)*?)\((?P<p>(?:.|\n)*?)\) noexcept = 0;",
                          text, re.M)
        for said, head, parameters in body:
            if said:
                comment = [line[5:] for line in said.splitlines()]
                continue
            result, name = head.rsplit(" ", 1)
            found.append(Operation(result, name, " ".join(parameters.split()), " ".join(comment)))
            comment = []
    if len(found) != COUNT:
        sys.exit(f"{len(found)} operations found in include/k7, not {COUNT}")
    return found


def constants():
    """Groups of constants.h: what is said before the group, and its (name, value, remark)."""
    groups, said = [], []
    for line in (INCLUDE / "constants.h").read_text().splitlines():
        if match := re.match(r"inline constexpr \w+ (k\w+) = (\w+);(?:\s+// (.*))?$", line):
            if said is not None:
                groups.append((" ".join(said), []))
                said = None
            groups[-1][1].append((match[1], match[2], match[3]))
        elif line.startswith("// "):
            said = (said or []) + [line[3:]]
        elif not line:
            said = []
    return groups


def c_constant(name):
    """kStatusOneShot: K7_STATUS_ONE_SHOT."""
    words = re.findall(r"[A-Z][a-z]*?(?=[A-Z]|$)|[A-Z]+(?=[A-Z]|$)", name[1:])
    return "K7_" + re.sub(r"(?<=_[A-Z])_(?=[A-Z](_|$))", "_", "_".join(words).upper())


def c_words(text, names):
    """A sentence of the C++ headers as one of the C header."""
    for name in names:
        text = re.sub(rf"\b{name}\b", c_constant(name), text)
    text = re.sub(r"\bk([A-Z]\w+) (numbers?)\b", lambda m: c_constant("k" + m[1]) + "_ " + m[2], text)
    return text


def comment_lines(text, indent=""):
    return textwrap.wrap(text, WIDTH, initial_indent=indent + "// ", subsequent_indent=indent + "// ",
                         break_long_words=False, break_on_hyphens=False)


def c_type(kind):
    return IN_C.get(kind, kind)


def declaration(operation):
    head = f"  {c_type(operation.result)} (*{operation.name})("
    parameters = ["K7Device* self"] + [f"{c_type(k)} {n}" for k, n in operation.parameters]
    lines, line = [], head
    for i, parameter in enumerate(parameters):
        piece = parameter + (", " if i + 1 < len(parameters) else ");")
        if len((line + piece).rstrip()) > WIDTH:
            lines.append(line.rstrip())
            line = " " * len(head)
        line += piece
    return lines + [line]


HEAD = """\
// The driver for C, and for every language that can load C: four exported functions, and the
// device's 126 operations as a struct of function pointers in the order of their slots. Written by
// packaging/bindings.py from the C++ headers beside this one; change those.
//
// An operation is called through the table, with the device as the first argument:
//
//   K7Device* machine = ConnectToController(id);
//   if (machine != NULL && machine->operations->BeginJob(machine)) ...
//
// The table is that of the C++ class in engraver.h, and the calling convention is the one that
// 64-bit Windows has, so nothing lies between a C host and the driver. Include this file or
// driver.h in one source, not both: they declare the same four functions.
//
"""


def conventions():
    """The part of driver.h that holds for every operation."""
    text = (INCLUDE / "driver.h").read_text()
    return re.search(r"// Conventions that hold(?:.|\n)*?(?=\n#pragma once)", text)[0]


def exported():
    """The exports: comment, result, name, parameters."""
    text = (INCLUDE / "driver.h").read_text()
    found = re.findall(r"((?:^// .*\n)+)K7_API (\S+) (\w+)\((.*?)\) noexcept;", text, re.M)
    return [(" ".join(line[3:] for line in said.splitlines()), result, name, parameters)
            for said, result, name, parameters in found]


def header():
    groups = constants()
    names = [name for _, rows in groups for name, _, _ in rows]
    out = [HEAD.rstrip("\n"), conventions(), "#pragma once", "", "#include <stdbool.h>", "#include <stddef.h>",
           "#include <stdint.h>", "", "#ifdef __cplusplus", 'extern "C" {', "#endif", ""]
    for said, rows in groups:
        out += comment_lines(c_words(said, names)) + ["enum {"]
        width = max(len(f"  {c_constant(n)} = {v},") for n, v, _ in rows)
        for name, value, remark in rows:
            line = f"  {c_constant(name)} = {value},"
            out.append(line.ljust(width) + f"  // {c_words(remark, names)}" if remark else line)
        out += ["};", ""]
    out += comment_lines("A window of the host (HWND) and the handle of a link (serial HANDLE or SOCKET), "
                         "untyped so that this header needs nothing of Windows.")
    out += ["typedef void* K7WindowHandle;", "typedef void* K7LinkHandle;", ""]
    out += comment_lines("Told of progress instead of a window message; runs on the driver's reader "
                         "thread, which reads nothing further until it returns.")
    out += ["typedef void (*K7NotifyCallback)(uint32_t message, uint64_t context);", ""]
    out += comment_lines("A connected machine: its first word is the address of its operations. What follows "
                         "that word is the driver's own.")
    out += ["typedef struct K7Operations K7Operations;", "typedef struct K7Device {",
            "  const K7Operations* operations;", "} K7Device;", ""]
    out += comment_lines("The operations, in the order of their slots, each 8 bytes. The number in front "
                         "of a comment is the slot.")
    out += ["struct K7Operations {"]
    for operation in operations():
        if operation.comment:
            out += comment_lines(c_words(operation.comment, names), "  ")
        out += declaration(operation)
    out += ["};", "", "#if defined(_WIN32)", "#define K7_C_API __declspec(dllimport)", "#else",
            "#define K7_C_API", "#endif", ""]
    for said, result, name, parameters in exported():
        result = result.replace("k7::IEngraver*", "K7Device*")
        parameters = parameters.replace("k7::IEngraver*", "K7Device*") or "void"
        out += comment_lines(c_words(said, names)) + [f"K7_C_API {result} {name}({parameters});", ""]
    out += ["#ifdef __cplusplus", "}  // extern \"C\"", "#endif"]
    return "\n".join(out) + "\n"


def python_table():
    lines = []
    for slot, operation in enumerate(operations()):
        kinds = [IN_PYTHON[kind] for kind, _ in operation.parameters]
        line = f'    ("{operation.name}", {IN_PYTHON[operation.result]}, [{", ".join(kinds)}]),  # {slot}'
        if len(line) > WIDTH:
            head = f'    ("{operation.name}", {IN_PYTHON[operation.result]},'
            line = f'{head}\n     [{", ".join(kinds)}]),  # {slot}'
        lines.append(line)
    return lines


def python_constants():
    return [f"{c_constant(name)[3:]} = {value}" for _, rows in constants() for name, value, _ in rows]


def module(text):
    """The Python module with its generated parts written afresh."""
    for mark, lines in (("constants", python_constants()), ("operations", python_table())):
        begin, end = f"# {mark}: begin\n", f"# {mark}: end\n"
        if text.count(begin) != 1 or text.count(end) != 1:
            sys.exit(f"{MODULE.name}: the marks of its {mark} are missing")
        before, rest = text.split(begin)
        after = rest.split(end)[1]
        text = before + begin + "".join(line + "\n" for line in lines) + end + after
    return text


def main():
    wanted = {HEADER: header(), MODULE: module(MODULE.read_text())}
    stale = [path for path, text in wanted.items() if not path.exists() or path.read_text() != text]
    if sys.argv[1:] == ["--check"]:
        for path in stale:
            print(f"ERROR {path.relative_to(ROOT)} is not that of include/k7: run packaging/bindings.py")
        return 1 if stale else 0
    for path in stale:
        path.write_text(wanted[path])
        print(f"{path.relative_to(ROOT)} written")
    return 0


if __name__ == "__main__":
    sys.exit(main())
