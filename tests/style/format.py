#!/usr/bin/env python3
"""Checks with clang-format that every C++ source is formatted, and that no line is longer than 120 characters."""

import pathlib
import subprocess
import sys

FOLDERS = ["include", "src", "platform", "qml", "tools", "examples", "tests", "bench"]

formatter, root = sys.argv[1], pathlib.Path(sys.argv[2])
files = sorted(str(path) for folder in FOLDERS for path in (root / folder).rglob("*") if path.suffix in (".h", ".cpp"))
assert files
status = subprocess.run([formatter, "--dry-run", "--Werror", *files]).returncode
for name in files:
    for number, line in enumerate(open(name, encoding="utf-8"), 1):
        # Raw strings cannot be broken.
        if len(line.rstrip("\n")) > 120 and 'R"(' not in line:
            print(f"{name}:{number}: longer than 120 characters")
            status = 1
sys.exit(status)
