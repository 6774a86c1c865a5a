"""Slot numbers of the operation table, as compilers lay it out.

slots.py source OPERATIONS            a C++ source with one member pointer for each operation
slots.py c_header OPERATIONS          a C++ source that compares driver_c.h with the C++ headers
slots.py microsoft OPERATIONS ASM     compares clang's assembler text for the Microsoft ABI
slots.py mingw OPERATIONS ASM         compares the assembler text of the MinGW compiler
slots.py table OPERATIONS DLL         compares the table in the module as built
slots.py calls OPERATIONS OBJECT      compares what each operation of the switchboard calls
"""

import pathlib
import re
import subprocess
import sys

COUNT = 126


def operations(path):
    """The hand-written table: name by slot number."""
    rows = [line.split() for line in open(path) if not line.startswith("#")]
    table = {int(number): name for number, name, _ in rows}
    if sorted(table) != list(range(COUNT)) or len(set(table.values())) != COUNT:
        sys.exit(f"{path}: not {COUNT} different operations")
    return table


def source(table):
    print('#include "k7/driver.h"')
    for name in table.values():
        print(f'extern "C" {{ extern const auto slot_{name} = &k7::IEngraver::{name}; }}')
    print(f"static_assert(k7::kOperationCount == {COUNT});")


def c_header(table):
    """Offset and signature of each operation, and the value of each constant."""
    print("""\
#include "k7/driver_c.h"
#include "k7/engraver.h"

template <typename Member>
struct AsC;
template <typename Class, typename Result, typename... Parameters>
struct AsC<Result (Class::*)(Parameters...) noexcept> {
  using Function = Result (*)(K7Device*, Parameters...);
};
template <typename A, typename B>
constexpr bool kSame = false;
template <typename A>
constexpr bool kSame<A, A> = true;
""")
    for slot, name in table.items():
        print(f"static_assert(offsetof(K7Operations, {name}) == {8 * slot});")
        print(f"static_assert(kSame<decltype(K7Operations::{name}), "
              f"AsC<decltype(&k7::IEngraver::{name})>::Function>);")
    print(f"static_assert(sizeof(K7Operations) == {8 * COUNT});")
    include = pathlib.Path(__file__).resolve().parents[2] / "include" / "k7"
    ours = re.findall(r"inline constexpr \w+ (k\w+) = ", (include / "constants.h").read_text())
    theirs = re.findall(r"^  (K7_\w+) = ", (include / "driver_c.h").read_text(), re.M)
    if [name.lower() for name in ours] != ["k" + name[3:].replace("_", "").lower() for name in theirs]:
        sys.exit("driver_c.h has other constants than constants.h")
    for cpp, c in zip(ours, theirs):
        print(f"static_assert(k7::{cpp} == {c});")


def first_quads(text):
    """First pointer-sized word of each slot_ variable."""
    pattern = r"^slot_(\w+):.*\n\s+\.quad\s+(\S+)"
    return {name: word.strip('"') for name, word in re.findall(pattern, text, re.M)}


def microsoft(text):
    """A member pointer is a thunk that jumps through the object's table at its offset."""
    body = re.compile(
        r'^"(\?\?_9[^"]+)":.*\n# %bb\.0:\n'
        r"\s+movq\s+\(%rcx\), %rax\n"  # the object's table
        r"\s+(?:rex64 )?(?:movq|jmpq)\s+\*?(\d*)\(%rax\)", re.M)
    thunks = {label: int(offset or 0) // 8 for label, offset in body.findall(text)}
    return {name: thunks.get(word) for name, word in first_quads(text).items()}


def mingw(text):
    """A member pointer's first word is the offset in the table plus one."""
    return {name: (int(word) - 1) // 8 for name, word in first_quads(text).items()}


def own_table(dll):
    """The table in the module as built: two words of its own, then the operations' addresses."""
    out = subprocess.run(["x86_64-w64-mingw32-nm", dll], check=True, capture_output=True, text=True)
    symbols = {name: int(address, 16)
               for address, name in re.findall(r"^(\w+) \w (_Z\w+)$", out.stdout, re.M)}
    operation = {}
    for symbol, address in symbols.items():
        if name := re.match(r"_ZN2k713Smoothieboard(\d+)(\w+)", symbol):
            operation[address] = name[2][:int(name[1])]
    start = symbols["_ZTVN2k713SmoothieboardE"] + 16
    out = subprocess.run(
        ["x86_64-w64-mingw32-objdump", "-s", f"--start-address={start}",
         f"--stop-address={start + 8 * COUNT}", dll], check=True, capture_output=True, text=True)
    data = bytes.fromhex("".join(
        line[11:46] for line in out.stdout.splitlines() if re.match(r" [0-9a-f]{9} ", line)))
    slots = range(len(data) // 8)
    return {operation.get(int.from_bytes(data[8 * i:8 * i + 8], "little"), f"slot {i}"): i
            for i in slots}


def called(path):
    """The driver's functions that each operation calls, from the relocations of its object file."""
    out = subprocess.run(["x86_64-w64-mingw32-objdump", "-dr", path], check=True,
                         capture_output=True, text=True).stdout
    calls, operation = {}, None
    for line in out.splitlines():
        if match := re.match(r"[0-9a-f]+ <(\w+)>:", line):
            name = re.match(r"_ZN2k713Smoothieboard(\d+)(\w+)", match[1])
            operation = name[2][:int(name[1])] if name else None
        elif operation and (match := re.search(r"REL32\s+_ZN2k7(\d+)([A-Za-z]\w+)", line)):
            name, arguments = match[2][:int(match[1])], match[2][int(match[1]):]
            if name != "Smoothieboard" and arguments != "E":  # a variable
                calls.setdefault(operation, set()).add(name)
    return calls


def compare_calls(path, object_file):
    """The end of an object, DeleteSelf, is the destructor's: left out."""
    found = called(object_file)
    wrong = []
    for number, name, wanted in [l.split() for l in open(path) if not l.startswith("#")][:-1]:
        want = set() if wanted == "-" else set(wanted.split(","))
        if found.get(name, set()) != want:
            wrong.append(f"slot {number} {name}: calls {sorted(found.get(name, set()))}")
    if wrong:
        sys.exit("\n".join(wrong))


def compare(table, found):
    wrong = [f"{name}: slot {number}, found {found.get(name)}"
             for number, name in table.items() if found.get(name) != number]
    wrong += [f"{name}: not in the list" for name in found if name not in table.values()]
    if wrong:
        sys.exit("\n".join(wrong[:5] + [f"{len(wrong)} wrong"]))


def main():
    what, table = sys.argv[1], operations(sys.argv[2])
    if what == "source":
        source(table)
    elif what == "c_header":
        c_header(table)
    elif what == "calls":
        compare_calls(sys.argv[2], sys.argv[3])
    elif what == "table":
        compare(table, own_table(sys.argv[3]))
    else:
        reader = {"microsoft": microsoft, "mingw": mingw}[what]
        compare(table, reader(open(sys.argv[3]).read()))


main()
