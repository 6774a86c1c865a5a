#!/usr/bin/env python3
"""The Python module and its host, run natively against fake_driver.c: every operation reaches its slot,
texts, numbers and callbacks pass. What only Windows can show is not shown here: UTF-16 in wchar_t, and
the module's loading of the real DLL. usage: python_test.py (needs gcc)"""

import contextlib
import ctypes
import io
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "examples" / "python"))
sys.dont_write_bytecode = True

import k7driver  # noqa: E402
import square  # noqa: E402

# Result and parameters of ctypes for the types of driver_c.h.
CTYPES = {"void": None, "bool": ctypes.c_bool, "uint8_t": ctypes.c_uint8, "float": ctypes.c_float,
          "int32_t": ctypes.c_int32, "uint32_t": ctypes.c_uint32, "int64_t": ctypes.c_int64,
          "uint64_t": ctypes.c_uint64, "void*": ctypes.c_void_p, "wchar_t*": ctypes.c_wchar_p,
          "const wchar_t*": ctypes.c_wchar_p, "const char*": ctypes.c_char_p,
          "int32_t*": ctypes.POINTER(ctypes.c_int32), "uint8_t*": ctypes.POINTER(ctypes.c_uint8),
          "const uint32_t*": ctypes.POINTER(ctypes.c_uint32), "K7WindowHandle": ctypes.c_void_p,
          "K7LinkHandle": ctypes.c_void_p, "K7NotifyCallback": k7driver.NotifyCallback}


def header_operations():
    """The members of K7Operations, read from the C header."""
    text = (ROOT / "include" / "k7" / "driver_c.h").read_text()
    body = re.search(r"struct K7Operations \{(.*?)^\};", text, re.M | re.S)[1]
    body = " ".join(re.sub(r"//.*", "", body).split())
    for result, name, parameters in re.findall(r"([\w ]+\*?) \(\*(\w+)\)\(K7Device\* self(.*?)\);", body):
        kinds = [p.strip().rsplit(" ", 1)[0] for p in parameters.split(",")[1:]]
        yield name, CTYPES[result.strip()], [CTYPES[kind] for kind in kinds]


class PythonModule(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        library = os.path.join(cls.folder.name, "fake_driver.so")
        subprocess.run(["gcc", "-shared", "-fPIC", "-std=c11", "-Wall", "-Wextra", "-Werror",
                        "-I", ROOT / "include", "-o", library,
                        ROOT / "tests" / "examples" / "fake_driver.c"], check=True)
        cls.path = library
        cls.library = ctypes.CDLL(library)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def number(self, name):
        return ctypes.c_int32.in_dll(self.library, name).value

    def connect(self, usable):
        self.library.Prepare(usable)
        return k7driver.Driver(self.path).connect("PYTHONMACHINE001")

    def test_the_table_is_that_of_the_c_header(self):
        self.assertEqual(list(header_operations()), k7driver.OPERATIONS)
        self.assertEqual(len(k7driver.OPERATIONS), 126)

    def test_the_constants_are_those_of_the_c_header(self):
        text = (ROOT / "include" / "k7" / "driver_c.h").read_text()
        for name, value in re.findall(r"^  K7_(\w+) = (\d+),", text, re.M):
            self.assertEqual(getattr(k7driver, name), int(value))

    def test_each_method_calls_its_slot(self):
        with self.connect(0) as machine:
            for slot, (name, _, parameters) in enumerate(k7driver.OPERATIONS):
                getattr(machine, name)(*[kind() for kind in parameters])
                self.assertEqual(self.number("called"), slot, name)

    def test_texts_floats_flags_and_callbacks_pass(self):
        seen = []
        with self.connect(1) as machine:
            self.assertEqual(machine.text("GetFriendlyName"), "Bench é")
            self.assertEqual(machine.GetXStepsPerUnit(), 4000.5)
            self.assertIs(machine.BeginJob(), True)
            machine.on_progress(lambda message, context: seen.append((message, context)))
            machine.MoveTo(1, 2)
            machine.on_progress(None)
            machine.MoveTo(3, 4)
        self.assertEqual(seen, [(3, 0)])

    def test_a_machine_is_released_once_and_not_used_after(self):
        machine = self.connect(1)
        machine.release()
        machine.release()
        self.assertEqual(self.number("released"), 1)
        with self.assertRaises(ValueError):
            machine.GetPassCount()

    def test_an_unknown_identity_raises(self):
        with self.assertRaisesRegex(ConnectionError, "NOBODY was not found"):
            k7driver.Driver(self.path).connect("NOBODY")

    def test_the_host_engraves_the_square_in_each_pass(self):
        self.library.Prepare(1)
        said = io.StringIO()
        with contextlib.redirect_stdout(said):
            self.assertEqual(square.main(self.path), 0)
        self.assertEqual(said.getvalue(), "Bench é: 4000 x 4000 steps an inch\n11 moves\ndone\n")
        path = (ctypes.c_uint32 * 2 * 64).in_dll(self.library, "path")
        went = [tuple(path[i]) for i in range(self.number("moves"))]
        corners = [(4000, 4000), (8000, 4000), (8000, 8000), (4000, 8000), (4000, 4000)]
        self.assertEqual(went, corners * 2 + [(0, 0)])
        self.assertEqual(self.number("released"), 1)


if __name__ == "__main__":
    unittest.main()
