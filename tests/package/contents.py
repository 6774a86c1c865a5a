#!/usr/bin/env python3
"""An unpacked package: links of its pages, its bill of materials, its files. contents.py FOLDER VERSION"""

import json
import pathlib
import re
import sys
import urllib.parse

WANTED = ["LICENSE", "CHANGELOG.md", "README.txt", "SHA256SUMS", "k7driver.spdx.json", "bin/k7driver.dll",
          "bin/k7host.exe", "include/k7/driver.h", "include/k7/driver_c.h", "lib/libk7driver.dll.a",
          "lib/k7driver.lib", "lib/k7driver.def", "lib/cmake/k7driver/k7driver-config.cmake",
          "lib/pkgconfig/k7driver.pc", "examples/square.cpp", "examples/square.c",
          "examples/python/k7driver.py", "docs/guides/index.html", "docs/guides.pdf",
          "docs/api/index.html", "licences/libcli11-dev.txt"]


def links(folder, faults):
    """Links of the pages to files of the package; parts of a page in the guides alone."""
    pages = sorted((folder / "docs").rglob("*.html"))
    parts = {page: set(re.findall(r' id="([^"]+)"', page.read_text())) for page in pages}
    for page in pages:
        for target in re.findall(r'(?:href|src)="([^"]*)"', page.read_text()):
            if re.match(r"\w+:", target) or not target:
                continue
            path, _, part = target.partition("#")
            file = (page.parent / urllib.parse.unquote(path)).resolve() if path else page
            if not file.exists():
                faults.append(f"{page.relative_to(folder)}: {target} does not exist")
            elif part and page.parent.name == "guides" and part not in parts.get(file, {part}):
                faults.append(f"{page.relative_to(folder)}: {target}: no such part")
    return len(pages)


def materials(folder, version, faults):
    document = json.loads((folder / "k7driver.spdx.json").read_text())
    known = {item["SPDXID"] for item in document["packages"] + document["files"]} | {"SPDXRef-DOCUMENT"}
    if len(known) != len(document["packages"]) + len(document["files"]) + 1:
        faults.append("k7driver.spdx.json: two things have one name")
    for relation in document["relationships"]:
        for end in ("spdxElementId", "relatedSpdxElement"):
            if relation[end] not in known:
                faults.append(f"k7driver.spdx.json: {relation[end]} is not described")
    if document["packages"][0]["versionInfo"] != version:
        faults.append("k7driver.spdx.json: another version")
    linked = [r["relatedSpdxElement"] for r in document["relationships"]
              if r["relationshipType"] == "STATIC_LINK"]
    if "SPDXRef-libcli11-dev" not in linked:
        faults.append("k7driver.spdx.json: the library that reads the host's command line is missing")


def main():
    folder, version = pathlib.Path(sys.argv[1]).resolve(), sys.argv[2]
    faults = [f"{name} is missing" for name in WANTED if not (folder / name).is_file()]
    count = links(folder, faults)
    materials(folder, version, faults)
    api = "".join(page.read_text() for page in (folder / "docs" / "api").glob("*.html"))
    for word in ("EngraveTo", "ConnectToController", "K7Operations", "kStatusProbed", "cuts to (x, y)"):
        if word not in api:
            faults.append(f"docs/api: nothing about {word}")
    for fault in faults:
        print(f"ERROR {fault}")
    print(f"{count} pages, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
