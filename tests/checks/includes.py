#!/usr/bin/env python3
"""No folder includes upwards, and every project header is included by its path.

Usage: includes.py SOURCE_FOLDER
"""
import pathlib
import re
import sys

# What each folder of src may include beside itself, direct neighbours only; the rest follows.
BELOW = {
    "core": [],
    "calendar": ["core"],
    "numerics": ["calendar"],
    "rates": ["numerics"],
    "projections": ["rates"],
    "realestate": ["projections"],
    "banking": ["realestate"],
    "accounting": ["realestate"],
    "lists": ["numerics"],
    "addin": ["banking", "accounting", "lists"],
    "commands": ["addin"],
    "hosts": ["commands"],
    "apps": ["hosts"],
}
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"')


def allowed(folder):
    found = {folder}
    for lower in BELOW[folder]:
        found |= allowed(lower)
    return found


def sources(root):
    for top in ("src", "hosts", "apps"):
        for path in sorted((root / top).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                yield path


def main(root):
    faults = []
    for path in sources(root):
        place = path.relative_to(root)
        folder = place.parts[1] if place.parts[0] == "src" else place.parts[0]
        if folder not in BELOW:
            faults.append(f"{place}: '{folder}' has no place in the order of folders")
            continue
        for number, line in enumerate(path.read_text().splitlines(), 1):
            match = INCLUDE.match(line)
            if not match:
                continue
            name = match.group(1)
            if not (root / "src" / name).is_file() and not (root / name).is_file():
                faults.append(f'{place}:{number}: "{name}" is not a path from src or the root')
            elif name.split("/")[0] not in allowed(folder):
                faults.append(f'{place}:{number}: {folder} may not include "{name}"')
    print("\n".join(faults) or "every include runs down the order of folders")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
