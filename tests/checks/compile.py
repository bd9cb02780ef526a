#!/usr/bin/env python3
"""What must compile and what must not.

Usage: compile.py SOURCE_FOLDER COMPILER headers   every header compiles alone, twice included
       compile.py SOURCE_FOLDER COMPILER refused   the faults in tests/compile_fail/*.cpp are refused

A file of tests/compile_fail compiles as it stands. Each fault in it is a branch for a macro, with a piece of the
message that the compiler must give when the macro is defined:

    #ifdef NO_HELP // expect: the function has no help
"""
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys

FAULT = re.compile(r"^#\s*(?:ifdef|elifdef|if|elif)\s+(?:defined\()?(\w+)\)?\s*//\s*expect:\s*(.+?)\s*$", re.MULTILINE)


def compile_text(compiler, root, text, *flags):
    command = [compiler, "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Werror", "-Wno-unused-const-variable",
               f"-I{root / 'src'}", f"-I{root}", *flags, "-x", "c++", "-"]
    return subprocess.run(command, input=text, capture_output=True, text=True, env={**os.environ, "LC_ALL": "C"})


def headers(root):
    for path in (path for top in ("src", "hosts", "apps") for path in sorted((root / top).rglob("*.h"))):
        if "#include <windows.h>" in path.read_text():
            continue  # the build for Windows compiles it
        def fault(compiler, path=path):
            done = compile_text(compiler, root, f'#include "{path}"\n#include "{path}"\n')
            return f"{path.relative_to(root)} does not compile alone:\n{done.stderr}" if done.returncode else None
        yield fault


def refused(root):
    for path in sorted((root / "tests" / "compile_fail").glob("*.cpp")):
        name = path.relative_to(root)
        text = path.read_text()

        def sound(compiler, name=name, text=text):
            done = compile_text(compiler, root, text)
            return f"{name} does not compile as it stands:\n{done.stderr}" if done.returncode else None
        yield sound
        for macro, message in FAULT.findall(text):
            def fault(compiler, name=name, text=text, macro=macro, message=message):
                done = compile_text(compiler, root, text, f"-D{macro}")
                if done.returncode == 0:
                    return f"{name} compiles with {macro}, and must not"
                if message not in done.stderr:
                    return f"{name}: with {macro} the compiler does not say '{message}', but:\n{done.stderr}"
            yield fault


def main(root, compiler, what):
    checks = list({"headers": headers, "refused": refused}[what](root))
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        faults = [fault for fault in pool.map(lambda check: check(compiler), checks) if fault]
    print("\n".join(faults) or f"{what}: {len(checks)} as they should be")
    return 1 if faults or not checks else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve(), sys.argv[2], sys.argv[3]))
