#!/usr/bin/env python3
"""What must compile and what must not.

Usage: compile.py SOURCE_FOLDER COMPILER headers   every header compiles alone, twice included
       compile.py SOURCE_FOLDER COMPILER refused   each tests/compile_fail/*.cpp fails, for the reason it states

A file that must not compile states its reason in comments, each a piece of the compiler's message:

    // expect: more arguments than the routine takes

With REPAIRED defined the same file must compile, so that it fails for nothing but that reason.
"""
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys

EXPECT = re.compile(r"//\s*expect:\s*(.+?)\s*$", re.MULTILINE)


def compile_text(compiler, root, text, *flags):
    command = [compiler, "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Werror", "-Wno-unused-const-variable",
               f"-I{root / 'src'}", f"-I{root}", *flags, "-x", "c++", "-"]
    return subprocess.run(command, input=text, capture_output=True, text=True, env={**os.environ, "LC_ALL": "C"})


def header_fault(compiler, root, path):
    name = path.relative_to(root)
    done = compile_text(compiler, root, f'#include "{path}"\n#include "{path}"\n')
    return f"{name} does not compile alone:\n{done.stderr}" if done.returncode else None


def refused_fault(compiler, root, path):
    name = path.relative_to(root)
    text = path.read_text()
    reasons = EXPECT.findall(text)
    if not reasons:
        return f"{name}: no '// expect: ...' comment"
    done = compile_text(compiler, root, text)
    if done.returncode == 0:
        return f"{name} compiles, and must not"
    absent = [reason for reason in reasons if reason not in done.stderr]
    if absent:
        return f"{name}: the compiler does not say {absent}, but:\n{done.stderr}"
    done = compile_text(compiler, root, text, "-DREPAIRED")
    return f"{name} does not compile when repaired:\n{done.stderr}" if done.returncode else None


def main(root, compiler, what):
    if what == "headers":
        check = header_fault
        paths = [path for top in ("src", "hosts", "apps") for path in sorted((root / top).rglob("*.h"))]
    else:
        check = refused_fault
        paths = sorted((root / "tests" / "compile_fail").glob("*.cpp"))
    if not paths:
        print(f"{what}: nothing to check")
        return 1
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        faults = [fault for fault in pool.map(lambda path: check(compiler, root, path), paths) if fault]
    print("\n".join(faults) or f"{what}: {len(paths)} files as they should be")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve(), sys.argv[2], sys.argv[3]))
