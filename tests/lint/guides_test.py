#!/usr/bin/env python3
"""guides.py and version.py find what they are there to find."""

import pathlib
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True

import guides
import version

PAGE = guides.ROOT / "docs" / "page.md"


def faults_of(text):
    faults = []
    guides.listings("page", text, faults)
    known = guides.programs()
    for command in guides.commands(text):
        guides.check_command("page", command, known, faults)
    guides.check_build("page", text, faults)
    guides.links("page", PAGE, text, faults)
    return faults


class Guides(unittest.TestCase):
    def test_a_piece_of_an_example_is_a_listing(self):
        self.assertEqual(faults_of("```cpp\nint main(int count, char** arguments) {\n```\n"), [])
        self.assertEqual(len(faults_of("```cpp\nint main(int x) {\n```\n")), 1)
        self.assertEqual(faults_of("```\nanything\n```\n"), [])

    def test_commands_and_options_are_those_of_the_programs(self):
        good = "    k7sim --pty /tmp/a --speed 50     # words --with-dashes\n    ./k7 test Homing\nand `k7host info ID`\n"
        self.assertEqual(faults_of(good), [])
        self.assertEqual(len(faults_of("    k7sim --no-such 3\n")), 1)
        self.assertEqual(len(faults_of("    ./k7 tset\n")), 1)
        self.assertEqual(len(faults_of("`k7host engrvae FILE --home`\n")), 1)

    def test_presets_options_and_links_exist(self):
        good = "cmake --preset msvc -DK7_HOST=OFF [g](glossary.md) [u](https://example.org)"
        self.assertEqual(faults_of(good), [])
        self.assertEqual(len(faults_of("cmake --preset msvcc -DK7_HOTS=OFF")), 2)
        self.assertEqual(len(faults_of("[g](glosary.md) [h](glossary.md#no-such-part)")), 2)

    def test_each_package_has_a_row(self):
        faults = []
        guides.packages("readonly PACKAGES_A=(one two)\nreadonly PACKAGES_B=(three)\n",
                        "| `one`, `three` | why |\n| two | `two` |\n", faults)
        self.assertEqual(len(faults), 1)


class Version(unittest.TestCase):
    def faults(self, project, changelog):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            (root / "CMakeLists.txt").write_text(f"project(k7driver VERSION {project} LANGUAGES C)\n")
            (root / "CHANGELOG.md").write_text(changelog)
            return version.faults_of(root)[0]

    def test_the_newest_version_is_that_of_the_project(self):
        self.assertEqual(self.faults("1.2.0", "## 1.2.0 - unreleased\n## 1.1.0 - 2026-01-02\n"), [])
        self.assertEqual(len(self.faults("1.2.1", "## 1.2.0 - unreleased\n")), 1)
        self.assertEqual(len(self.faults("1.2.0", "## 1.2.0 - soon\n")), 1)
        self.assertEqual(len(self.faults("1.2.0", "## 1.2.0 - unreleased\n## 1.3.0 - 2026-01-02\n")), 1)


if __name__ == "__main__":
    unittest.main()
