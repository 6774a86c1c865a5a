"""The module as built: exports, imports, version resource, and whether it is reproducible.

module.py exports|imports DLL      module.py version DLL TOP_CMAKELISTS
module.py import_library LIBRARY   module.py def DEF_FILE
module.py relink BUILD_DIR WORK_DIR
"""

import pathlib
import re
import shutil
import subprocess
import sys

EXPORTS = ["ConnectToController", "EnumerateControllers", "GetControllerInfo", "ReleaseController"]
# What every Windows has had since 10: nothing of the compiler's run-time library among it.
SYSTEM = {"advapi32.dll", "comctl32.dll", "comdlg32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll",
          "ole32.dll", "shell32.dll", "user32.dll", "ws2_32.dll"}


def run(*command, **options):
    return subprocess.run(command, check=True, capture_output=True, text=True, **options).stdout


def headers(dll):
    return run("x86_64-w64-mingw32-objdump", "-p", dll)


def expect(found, wanted, what):
    if found != wanted:
        sys.exit(f"{what}: found {found}, expected {wanted}")


def exports(dll):
    names = headers(dll).split("[Ordinal/Name Pointer] Table", 1)[1]
    found = re.findall(r"^\s+\[\s*\d+\].*\s(\S+)$", names.split("\n\n", 1)[0], re.M)
    expect(sorted(found), EXPORTS, "exports")


def imports(dll):
    found = {name.lower() for name in re.findall(r"DLL Name: (\S+)", headers(dll))}
    if not found:
        sys.exit("no imports found")
    if found - SYSTEM:
        sys.exit(f"imports beyond Windows: {sorted(found - SYSTEM)}")


def version_strings(dll):
    """Key and value texts of the string table, found by their UTF-16 bytes."""
    data = pathlib.Path(dll).read_bytes()
    start = data.find("VS_VERSION_INFO".encode("utf-16-le"))
    if start < 0:
        sys.exit("no version resource")
    fixed = data.find(bytes.fromhex("bd04effe"), start)
    numbers = [int.from_bytes(data[fixed + 8 + i:fixed + 10 + i], "little") for i in (2, 0, 6, 4)]
    block = data[start - 6:start - 6 + int.from_bytes(data[start - 6:start - 4], "little")]
    texts = [text for text in block.decode("utf-16-le", "replace").split("\0") if text]
    return numbers, texts


def version(dll, cmake_lists):
    wanted = re.search(r"project\(k7driver VERSION (\d+\.\d+\.\d+)", open(cmake_lists).read())[1]
    numbers, texts = version_strings(dll)
    expect(numbers, [int(part) for part in wanted.split(".")] + [0], "file version")
    for key, value in (("FileVersion", wanted), ("ProductVersion", wanted),
                       ("OriginalFilename", "k7driver.dll"), ("InternalName", "k7driver"),
                       ("ProductName", None), ("CompanyName", None), ("FileDescription", None)):
        at = [i for i, text in enumerate(texts) if text.endswith(key)]
        if not at or at[0] + 1 == len(texts):
            sys.exit(f"version resource without {key}")
        if value is not None:
            expect(texts[at[0] + 1], value, key)


def import_library(library):
    symbols = run("x86_64-w64-mingw32-nm", library)
    found = sorted(set(re.findall(r" T (\w+)$", symbols, re.M)))
    expect(found, EXPORTS, "functions of the import library")
    if b"k7driver.dll" not in pathlib.Path(library).read_bytes():
        sys.exit("the import library does not name k7driver.dll")


def definition(path):
    lines = open(path).read().split()
    expect(lines[:3], ["LIBRARY", "k7driver", "EXPORTS"], "head of the .def file")
    expect(sorted(lines[3:]), EXPORTS, "names of the .def file")


def relink(build, work):
    """Links a second time, beside the build, with the build's own command."""
    work = pathlib.Path(work) / "relink"
    work.mkdir()
    commands = run("ninja", "-C", build, "-t", "commands", "bin/k7driver.dll").splitlines()
    command = commands[-1]
    for output in ("bin/k7driver.dll", "lib/libk7driver.dll.a"):
        again = work / pathlib.Path(output).name
        if output not in command:
            sys.exit(f"{output} is not in the link command: {command}")
        command = command.replace(output, str(again))
    run("sh", "-c", command, cwd=build)
    first = pathlib.Path(build) / "bin/k7driver.dll"
    if first.read_bytes() != (work / first.name).read_bytes():
        shutil.copy(work / first.name, str(first) + ".relinked")
        sys.exit(f"{first} differs from {first}.relinked")


def main():
    {"exports": exports, "imports": imports, "version": version, "import_library": import_library,
     "def": definition, "relink": relink}[sys.argv[1]](*sys.argv[2:])


main()
