#!/usr/bin/env python3
"""The house rules that a machine can check: layout by clang-format, no path of somebody's machine in any file.

Usage: house.py SOURCE_FOLDER format
       house.py SOURCE_FOLDER paths
"""
import pathlib
import re
import subprocess
import sys

MACHINE_PATH = re.compile(r"(?<![\w.)}])/(?:home|root|work|mnt|Users)/\w")
SKIPPED = {"build", ".git", "node_modules", ".cache", "__pycache__"}


def files(root, tops=()):
    for path in sorted(root.rglob("*")):
        parts = path.relative_to(root).parts
        if not SKIPPED & set(parts) and path.is_file() and (not tops or parts[0] in tops):
            yield path


def check_format(root):
    sources = [path for path in files(root, ("src", "hosts", "apps", "tests", "bench", "fuzz"))
               if path.suffix in (".h", ".cpp")]
    done = subprocess.run(["clang-format", "--dry-run", *sources], capture_output=True, text=True)
    faults = dict.fromkeys(re.findall(r"^(.+?):\d+:\d+: warning:", done.stderr, re.MULTILINE))
    for fault in faults:
        print(f"{pathlib.Path(fault).relative_to(root)} is not in the layout of .clang-format; run scripts/format")
    return 1 if faults or done.returncode else 0


def check_paths(root):
    faults = []
    for path in files(root):
        try:
            lines = path.read_text().splitlines()
        except UnicodeDecodeError:
            continue
        faults += [f"{path.relative_to(root)}:{number}: a path of a machine: {line.strip()}"
                   for number, line in enumerate(lines, 1) if MACHINE_PATH.search(line)]
    print("\n".join(faults) or "no path of a machine")
    return 1 if faults else 0


if __name__ == "__main__":
    check = {"format": check_format, "paths": check_paths}[sys.argv[2]]
    sys.exit(check(pathlib.Path(sys.argv[1]).resolve()))
