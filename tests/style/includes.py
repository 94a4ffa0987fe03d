#!/usr/bin/env python3
"""Compares every include with the table "Folders" of ARCHITECTURE.md, whose last column says what a folder may include from."""

import pathlib
import re
import sys

root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".").resolve()
# Where `#include <...>` is looked up; a quoted name belongs to the file's own folder.
ROOTS = ["include", "platform/include", "platform", "src", "bench", "examples", "qml", "tests", "tools"]
SOURCES = ["include", "src", "platform", "qml", "tools", "examples"]


def rows():
    """Yields each folder of the table with the folders that it may include from."""
    text = (root / "ARCHITECTURE.md").read_text(encoding="utf-8")
    table = text.split("| folder |", 1)[1].split("\n\n", 1)[0]
    for line in table.splitlines()[2:]:
        cells = [cell.strip() for cell in re.split(r"(?<!\\)\|", line)[1:-1]]
        allowed = re.findall(r"`([^`]+)`", cells[2])
        for folder in re.findall(r"`([^`]+)`", cells[0]):
            yield folder.rstrip("/"), [name.rstrip("/") for name in allowed], "anything" in cells[2]


def target(file, name):
    """The file of this project that an include names, relative to the root."""
    places = [file.parent] + [root / folder for folder in ROOTS]
    for place in places:
        if (place / name).is_file():
            return (place / name).resolve().relative_to(root).as_posix()
    return None


def main():
    table = sorted(rows(), key=lambda row: -len(row[0]))
    problems = []
    for folder in SOURCES:
        for file in sorted((root / folder).rglob("*")):
            if file.suffix not in (".h", ".cpp"):
                continue
            path = file.relative_to(root).as_posix()
            row = next((row for row in table if path.startswith(row[0] + "/")), None)
            if row is None:
                problems.append(f"{path}: the table has no row for its folder")
                continue
            own, allowed, anything = row
            for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
                found = re.match(r'#include (["<])([^">]+)[">]', line)
                included = target(file, found[2]) if found else None
                if included is None:
                    continue
                if found[1] == '"' and "/" in found[2]:
                    problems.append(f"{path}:{number}: <{found[2]}> is written from a root of the project, in angle brackets")
                if not anything and not any(included.startswith(place + "/") for place in [own, *allowed]):
                    problems.append(f"{path}:{number}: {own} may not include {included}")
    for problem in problems:
        print(problem)
    return 1 if problems else 0


sys.exit(main())
