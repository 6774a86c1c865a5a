#!/usr/bin/env python3
"""What the package was built from, as SPDX 2.3: the Debian packages linked into the programs, those that
built them, and the checksums of the programs.

bill_of_materials.py VERSION EPOCH BUILD_DIR STAGE LICENCES TOOL...

Which header libraries are in the programs is what the compiler has read (ninja's record of it). Writes
STAGE/k7driver.spdx.json, and the copyright file of each linked package into LICENCES.
"""

import datetime
import hashlib
import json
import pathlib
import re
import shutil
import subprocess
import sys

# The run-time code of the compiler and of Windows' C library: -static puts it into the programs. Their
# licences let it be passed on in programs under any licence.
RUN_TIME = ["gcc-mingw-w64-x86-64-posix-runtime", "mingw-w64-x86-64-dev"]
LICENCE_OF = {"gcc-mingw-w64-x86-64-posix-runtime": "GPL-3.0-or-later WITH GCC-exception-3.1",
              "mingw-w64-x86-64-dev": "ZPL-2.1", "libcli11-dev": "BSD-3-Clause",
              "nlohmann-json3-dev": "MIT", "libtomlplusplus-dev": "MIT", "libnanosvg-dev": "Zlib",
              "librapidxml-dev": "BSL-1.0 OR MIT", "libstb-dev": "MIT OR Unlicense",
              "libcpp-httplib-dev": "MIT"}


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def version_of(package):
    return output("dpkg-query", "-W", "-f=${Version}", package)


def linked(build):
    """Packages with headers that a compilation of a program has read, the compilers' own left out."""
    objects = re.findall(r"^(?:src|host)/\S+\.obj(?=:)", output("ninja", "-C", build, "-t", "deps"), re.M)
    if not objects:
        sys.exit(f"{build}: ninja has no record of what was compiled")
    files = set()
    for line in output("ninja", "-C", build, "-t", "deps", *objects).splitlines():
        path = line.strip()
        if line.startswith("    "):
            real = (pathlib.Path(build) / path).resolve()
            if str(real).startswith("/usr/include/"):
                files.add(str(real))
    found = output("dpkg-query", "-S", *sorted(files)) if files else ""
    return sorted({line.split(":")[0] for line in found.splitlines()})


def digest(path, kind):
    return hashlib.new(kind, path.read_bytes()).hexdigest()


def main():
    version, epoch, build, stage, licences, *tools = sys.argv[1:]
    stage, licences = pathlib.Path(stage), pathlib.Path(licences)
    in_programs = RUN_TIME + linked(build)
    licences.mkdir()
    for package in in_programs:
        shutil.copy(pathlib.Path("/usr/share/doc") / package / "copyright", licences / f"{package}.txt")

    def reference(package):
        return "SPDXRef-" + re.sub(r"[^A-Za-z0-9.-]", "-", package)

    def described(package):
        number = version_of(package)
        return {"SPDXID": reference(package), "name": package, "versionInfo": number,
                "downloadLocation": "NOASSERTION", "filesAnalyzed": False,
                "licenseConcluded": LICENCE_OF.get(package, "NOASSERTION"),
                "licenseDeclared": LICENCE_OF.get(package, "NOASSERTION"),
                "copyrightText": "NOASSERTION",
                "externalRefs": [{"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl",
                                  "referenceLocator": f"pkg:deb/debian/{package}@{number}"}]}

    files, relations = [], [{"spdxElementId": "SPDXRef-DOCUMENT", "relationshipType": "DESCRIBES",
                             "relatedSpdxElement": "SPDXRef-k7driver"}]
    for path in sorted(p for p in stage.rglob("*") if p.is_file()):
        name = path.relative_to(stage).as_posix()
        if name.split("/")[0] not in ("bin", "lib", "include"):
            continue
        files.append({"SPDXID": reference("File-" + name), "fileName": "./" + name,
                      "checksums": [{"algorithm": "SHA1", "checksumValue": digest(path, "sha1")},
                                    {"algorithm": "SHA256", "checksumValue": digest(path, "sha256")}],
                      "licenseConcluded": "NOASSERTION", "copyrightText": "NOASSERTION"})
        relations.append({"spdxElementId": "SPDXRef-k7driver", "relationshipType": "CONTAINS",
                          "relatedSpdxElement": files[-1]["SPDXID"]})
    relations += [{"spdxElementId": "SPDXRef-k7driver", "relationshipType": "STATIC_LINK",
                   "relatedSpdxElement": reference(package)} for package in in_programs]
    built_by = [tool for tool in tools if tool not in in_programs]
    relations += [{"spdxElementId": reference(package), "relationshipType": "BUILD_TOOL_OF",
                   "relatedSpdxElement": "SPDXRef-k7driver"} for package in built_by]
    created = datetime.datetime.fromtimestamp(int(epoch), datetime.timezone.utc)
    whole = hashlib.sha256(json.dumps(files).encode()).hexdigest()[:16]
    document = {
        "spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"k7driver-{version}",
        "documentNamespace": f"https://k7driver.invalid/spdx/k7driver-{version}-{whole}",
        "creationInfo": {"created": created.strftime("%Y-%m-%dT%H:%M:%SZ"),
                         "creators": ["Tool: k7-package"]},
        "packages": [{"SPDXID": "SPDXRef-k7driver", "name": "k7driver", "versionInfo": version,
                      "downloadLocation": "NOASSERTION", "filesAnalyzed": False,
                      "licenseConcluded": "MIT", "licenseDeclared": "MIT",
                      "copyrightText": "Copyright (c) the K7 Driver authors"}] +
                    [described(package) for package in in_programs + built_by],
        "files": files, "relationships": relations}
    (stage / "k7driver.spdx.json").write_text(json.dumps(document, indent=1) + "\n")


if __name__ == "__main__":
    main()
