#!/usr/bin/env python3
"""Runs the benchmarks and prints one table: ours beside each peer's, measured in the same run, and the aim.

    bench/table.py build/release/bench/qx_bench [options of Google Benchmark]

A benchmark is named "what is measured: whose"; the fastest of its repetitions counts, since a shared machine only
ever adds.
"""
import json
import pathlib
import re
import shutil
import subprocess
import sys

AIMS = {  # nanoseconds
    "frame and conversion of four arguments": 60,
    "date number to year, month, day": 5,
    "year, month, day to date number": 5,
    "business day, UK": 10,
    "business day, New York": 10,
    "day count 6, actual/actual in period": 200,
    "day count 13, business days/252": 200,
    "day count 2.03, actual/360 with actual/365 stubs": 200,
    "day count": 15,  # all others
    "internal rate of return of 60 dated flows": 3e3,
    "UniSpread of one period": 200,
    "SCurve of one period": 200,
    "MkPmts of 100 payments": 300,
    "DepreciatedValue": 300,
    "DepPool of 50 lots": 30e3,
    "ProdProf of one period": 3e3,
    "CapValue, whole call": 300,
    "EqYield, whole call": 10e3,
    "CapValueDCF of 20 years, whole call": 20e3,
    "CapValueDCFG of 20 annual rents, whole call": 20e3,
    "50,000 mixed cells recalculated": 50e6,
    "library opened, all rows registered, and closed": 20e6,
    "trace of 1,000,000 items, the file beside": 400e6,
}
LIBREOFFICE = pathlib.Path(__file__).parent / "peers" / "libreoffice.py"
UNITS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def shown(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3), ("ns", 1)):
        if nanoseconds >= size or unit == "ns":
            return f"{nanoseconds / size:.3g} {unit}"


def measured(program, options):
    options = ["--benchmark_repetitions=20", "--benchmark_min_time=0.02", *options]
    run = subprocess.run([program, "--benchmark_format=json", *options], stdout=subprocess.PIPE, check=True)
    times = {}
    for entry in json.loads(run.stdout)["benchmarks"]:
        if entry["run_type"] != "iteration":
            continue
        what, _, whose = re.sub("/(iterations|repeats):.*", "", entry["run_name"]).rpartition(": ")
        time = entry["cpu_time"] * UNITS[entry["time_unit"]]
        known = times.setdefault(what, {})
        known[whose] = min(known.get(whose, time), time)
    return times


def add_libreoffice(times):
    """Beside the workbook that we recalculate, the same in LibreOffice, if it is there."""
    workbooks = [what for what in times if "50,000" in what and not what.endswith("read")]
    if not workbooks or not shutil.which("soffice"):
        return
    run = subprocess.run([LIBREOFFICE], stdout=subprocess.PIPE, check=False)
    if run.returncode != 0:
        print("bench: LibreOffice could not be measured", file=sys.stderr)
        return
    measured_there = json.loads(run.stdout)
    for what in workbooks:
        times[what]["LibreOffice"] = measured_there[what]


def main():
    table = [("what", "ours", "peers, and how many times ours", "aim")]
    times_of = measured(sys.argv[1], sys.argv[2:])
    add_libreoffice(times_of)
    for what, times in times_of.items():
        ours = times.pop("ours", None)
        peers = ", ".join(f"{whose} {shown(time)}" + (f" ({time / ours:.2g})" if ours else "") for whose, time in times.items())
        aim = AIMS.get(what, AIMS["day count"] if what.startswith("day count") else None)
        verdict = "" if aim is None else shown(aim) + ("" if ours is None or ours <= aim else ", missed")
        table.append((what, shown(ours) if ours else "", peers, verdict))
    widths = [max(len(row[i]) for row in table) for i in range(4)]
    for row in table:
        print("| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |")
        if row is table[0]:
            print("|" + "|".join("-" * (width + 2) for width in widths) + "|")


if __name__ == "__main__":
    main()
