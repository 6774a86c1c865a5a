#!/usr/bin/env python3
"""Checks that driver_c.h and the table of the Python module are those of the C++ headers."""

import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.exit(subprocess.run([sys.executable, ROOT / "packaging" / "bindings.py", "--check"]).returncode)
