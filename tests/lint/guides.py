#!/usr/bin/env python3
"""Checks what the guides and READMEs show: every listing is a piece of a file that a test compiles or runs,
every command and option is one that the program has, every link leads to a file or a part of one, and
docs/building.md says of each package what it is for."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGES = [ROOT / "README.md", ROOT / "CONTRIBUTING.md", ROOT / "host" / "README.md",
         ROOT / "simulator" / "README.md", *sorted((ROOT / "docs").glob("*.md"))]
LISTED = {"c": ["examples/*.c"], "cpp": ["examples/*.cpp", "host/app/*.cpp"], "python": ["examples/python/*.py"],
          "cmake": ["examples/CMakeLists.txt"]}

def texts(*patterns):
    return "\n".join(path.read_text() for pattern in patterns for path in sorted(ROOT.glob(pattern)))


def programs():
    """Words and options that each program knows, from where it declares them."""
    k7 = (ROOT / "k7").read_text()
    host = texts("host/**/*.cpp")
    simulator = texts("simulator/**/*.cpp")
    common = {"--help", "--version"}

    def options(text):
        return set(re.findall(r'["\s,\[](--[a-z][a-z-]*)', text)) | common
    return {"./k7": (set(re.findall(r"^  ([a-z][a-z-]*) ", k7, re.M)), options(k7)),
            "k7host": (set(re.findall(r'"([a-z][a-z-]*)"', host)), options(host)),
            "k7sim": (None, options(simulator))}


def listings(page, text, faults):
    count = 0
    for language, body in re.findall(r"^```(\w+)\n(.*?)^```$", text, re.M | re.S):
        if language not in LISTED:
            continue
        count += 1
        sources = [path for pattern in LISTED[language] for path in ROOT.glob(pattern)]
        if not any(body in path.read_text() for path in sources):
            faults.append(f"{page}: a listing is not a piece of {LISTED[language][0]}: {body.splitlines()[0]}")
    return count


def commands(text):
    """Lines that show a command, and spans in the text that do."""
    for line in re.findall(r"^(?:    |)((?:\./k7|k7host|k7sim)(?: .*|))$", text, re.M):
        yield re.split(r"\s+#|\s{2,}", line)[0]
    for span in re.findall(r"`((?:\./k7|k7host|k7sim) [^`]+)`", text):
        yield span


def check_command(page, command, known, faults):
    program, *words = command.split()
    names, options = known[program]
    if names is not None and words and re.fullmatch(r"[a-z][a-z-]*", words[0]) and words[0] not in names:
        faults.append(f"{page}: {program} has no {words[0]}: {command}")
    for option in re.findall(r"(?<![\w-])--[a-z][a-z-]*", command):
        if option not in options:
            faults.append(f"{page}: {program} has no {option}: {command}")


def check_build(page, text, faults):
    """Presets and options of CMake that the pages name."""
    presets = set(re.findall(r'"name": "([\w-]+)"', (ROOT / "CMakePresets.json").read_text()))
    declared = texts("CMakeLists.txt", "cmake/*.cmake")
    for preset in re.findall(r"cmake --preset ([\w-]+)", text):
        if preset not in presets:
            faults.append(f"{page}: no preset {preset}")
    for option in re.findall(r"-D(K7_\w+)", text):
        if option not in declared:
            faults.append(f"{page}: no option {option}")


def packages(k7, page, faults):
    """Each Debian package that ./k7 installs has its row, with what it is for."""
    installed = {name for names in re.findall(r"^readonly PACKAGES_\w+=\((.*?)\)", k7, re.M | re.S)
                 for name in names.split()}
    explained = set(re.findall(r"`([^`]+)`", "\n".join(
        line.split("|")[1] for line in page.splitlines() if line.startswith("| `"))))
    faults += [f"docs/building.md: what is {name} for? ./k7 installs it" for name in
               sorted(installed - explained)]


def parts(path):
    """Names of the headings, as the links to them are written."""
    return {re.sub(r"[^\w]+", "-", title.lower()).strip("-")
            for title in re.findall(r"^#+ (.*)$", path.read_text(), re.M)}


def links(page, path, text, faults):
    for target in re.findall(r"\]\(([^)\s]+)\)", re.sub(r"```.*?```", "", text, flags=re.S)):
        if re.match(r"[a-z]+:", target):
            continue
        file, _, part = target.partition("#")
        to = (path.parent / file).resolve() if file else path
        if not to.exists():
            faults.append(f"{page}: {target} leads nowhere")
        elif part and to.suffix == ".md" and part not in parts(to):
            faults.append(f"{page}: {target}: no such part")


def main():
    faults, known, listed, shown = [], programs(), 0, 0
    for path in PAGES:
        text, page = path.read_text(), path.relative_to(ROOT)
        listed += listings(page, text, faults)
        for command in commands(text):
            shown += 1
            check_command(page, command, known, faults)
        check_build(page, text, faults)
        links(page, path, text, faults)
    packages((ROOT / "k7").read_text(), (ROOT / "docs" / "building.md").read_text(), faults)
    guide = (ROOT / "docs" / "host_guide.md").read_text()
    if (ROOT / "examples" / "square.cpp").read_text() not in guide:
        faults.append("docs/host_guide.md: its host is not the whole of examples/square.cpp")
    for fault in faults:
        print(f"ERROR {fault}")
    print(f"{len(PAGES)} pages, {listed} listings, {shown} commands, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
