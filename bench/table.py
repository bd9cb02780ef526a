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
    "DepreciatedValue, straight line": 300,
    "DepreciatedValue, declining balance": 300,
    "DepreciatedValue, sum of years' digits": 300,
    "DepPool of 50 lots": 30e3,
    "ProdProf of one period": 3e3,
    "CapValue, whole call": 300,
    "EqYield, whole call": 10e3,
    "CapValueDCF of 20 years, whole call": 20e3,
    "CapValueDCFG of 20 annual rents, whole call": 20e3,
    "PVConGrow of 30 years by quarters": 60e3,
    "RentGrow of a period after four reviews": 1.5e3,
    "RentGrowR of a period in the fifth relet": 8e3,
    "rent roll of 1,000 leases by 40 quarters": 250e6,
    "twin of FStepGrow over 360 months": 200e3,
    "50,000 mixed cells recalculated": 50e6,
    "library opened, all rows registered, and closed": 20e6,
    "trace of 1,000,000 items, the file beside": 400e6,
}
PEERS = pathlib.Path(__file__).parent / "peers"
LIBREOFFICE = PEERS / "libreoffice.py"
TABLES = {"NumPy": PEERS / "tables_numpy.py", "LibreOffice": PEERS / "tables_libreoffice.py"}
SAME_TOTAL = 1e-9
UNITS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def shown(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3), ("ns", 1)):
        if nanoseconds >= size or unit == "ns":
            return f"{nanoseconds / size:.3g} {unit}"


def measured(program, options, totals):
    """The times of each benchmark; where it made a table, the total of that goes to `totals`."""
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
        if "total" in entry:
            totals.setdefault(what, {})[whose] = entry["total"]
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


def add_tables(times, totals):
    """Beside the tables of the workbook the same by peers, where these are there and give the same total."""
    for whose, program in TABLES.items() if totals else ():
        run = subprocess.run([program], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
        if run.returncode != 0:
            print(f"bench: {whose} could not be measured", file=sys.stderr)
            continue
        for what, found in json.loads(run.stdout).items():
            if what in totals:
                times[what][whose] = found["time"]
                totals[what][whose] = found["total"]
    for what, found in totals.items():
        ours = next(iter(found.values()))
        other = [whose for whose, total in found.items() if abs(total - ours) > SAME_TOTAL * abs(ours)]
        if other:
            sys.exit(f"bench: {what}: not the total of {', '.join(other)}: {found}")
        print(f"{what}: {', '.join(found)} all give {ours:.9g}, within {SAME_TOTAL:g} of it\n")


def main():
    table = [("what", "ours", "peers, and how many times ours", "aim")]
    totals = {}
    times_of = measured(sys.argv[1], sys.argv[2:], totals)
    add_libreoffice(times_of)
    add_tables(times_of, totals)
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
