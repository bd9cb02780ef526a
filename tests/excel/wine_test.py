#!/usr/bin/env python3
"""Repeats under Wine, in the add-in for Excel, every worksheet call that the cases and examples make natively.

Usage: wine_test.py SOURCE_FOLDER RECORDER EXCEL_BUILD_FOLDER
"""
import os
import pathlib
import subprocess
import sys
import tempfile

LARGEST = 40_000_000  # bytes of the add-in; a static that is not all zero shows here


def main():
    source, recorder, build = (pathlib.Path(path).resolve() for path in sys.argv[1:4])
    library = build / "QuexelLb.xll"
    if not library.exists():
        print(f"{library} is missing: scripts/build excel")
        return 1
    if library.stat().st_size > LARGEST:
        print(f"{library} has {library.stat().st_size} bytes, more than {LARGEST}")
        return 1
    content = library.read_bytes()
    for path in {source, build, pathlib.Path.home(), pathlib.Path("/usr/include")}:
        if str(path).encode() in content:
            print(f"{library} holds the path {path} of the machine that has built it")
            return 1
    for text in ("QuexelLb.xll", "ProductVersion"):
        if text.encode("utf-16-le") not in content:
            print(f"{library} has no version resource with {text}")
            return 1
    with tempfile.TemporaryDirectory(prefix="quexel-excel-") as folder:
        transcript = pathlib.Path(folder) / "transcript"
        with transcript.open("wb") as file:
            subprocess.run([recorder, source / "tests" / "cases"], stdout=file, cwd=folder, check=True, timeout=300)
        environment = dict(os.environ, WINEPREFIX=str(build / "wine"), WINEDEBUG="-all",
                           WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d")
        environment.pop("DISPLAY", None)
        done = subprocess.run(["wine", build / "replay.exe", library, source / "tests" / "golden" / "registration.tsv",
                               transcript], cwd=folder, env=environment, timeout=500)
    return done.returncode


if __name__ == "__main__":
    sys.exit(main())
