#!/usr/bin/env python3
"""Opens the windows of the add-in under Wine on a screen of its own, and keeps pictures of them.

Usage: windows_test.py EXCEL_BUILD_FOLDER     (pictures are left in its folder windows)
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

LONGEST = 240  # seconds


def screen():
    """A virtual screen with the number that it has chosen."""
    read, write = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1400x1000x24", "-nolisten", "tcp"],
                              pass_fds=[write], stderr=subprocess.DEVNULL)
    os.close(write)
    with os.fdopen(read) as answer:
        number = answer.readline().strip()
    return server, ":" + number


def colours(picture):
    return int(subprocess.run(["identify", "-format", "%k", picture], capture_output=True, text=True, check=True).stdout)


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    library = build / "QuexelLb.xll"
    if not library.exists():
        print(f"{library} is missing: scripts/build excel")
        return 1
    pictures = build / "windows"
    shutil.rmtree(pictures, ignore_errors=True)
    pictures.mkdir()
    server, display = screen()
    failed = False
    try:
        with tempfile.TemporaryDirectory(prefix="quexel-windows-") as folder:
            environment = dict(os.environ, DISPLAY=display, WINEPREFIX=str(build / "wine"), WINEDEBUG="-all",
                               WINEDLLOVERRIDES="mscoree,mshtml,winebrowser.exe=;winemenubuilder.exe=d")
            # Without a window manager: Windows draws the frames itself.
            subprocess.run(["wine", "reg", "add", r"HKCU\Software\Wine\X11 Driver", "/v", "Managed", "/d", "N", "/f"],
                           env=environment, stdout=subprocess.DEVNULL, check=True, timeout=200)
            program = subprocess.Popen(["wine", build / "windows.exe", library, "."], cwd=folder, env=environment)
            end = time.monotonic() + LONGEST
            while program.poll() is None and time.monotonic() < end:
                for wanted in pathlib.Path(folder).glob("*.wanted"):
                    picture = pictures / (wanted.stem + ".png")
                    subprocess.run(["import", "-display", display, "-window", "root", picture], check=True)
                    wanted.unlink()
                time.sleep(0.05)
            if program.poll() is None:
                program.kill()
                print("the windows were not closed in time")
                failed = True
        failed = failed or program.returncode != 0
        for name in ("trace_error", "trace_520", "trace_1200", "trace_144_dots", "find_replace"):
            picture = pictures / (name + ".png")
            if not picture.exists() or colours(picture) < 20:
                print(f"{picture} shows no window")
                failed = True
    finally:
        server.terminate()
        server.wait()
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
