#!/usr/bin/env python3
"""Runs the benchmarks and prints one table: how many times ours each peer takes, our time, and the aim.

    bench/table.py build/release/bench/qx_bench [options of Google Benchmark]

A benchmark is named "what is measured: whose". The runs of all are shuffled among each other, so that ours and a peer's
meet the same minutes of the machine; processor time counts, and of many runs the fastest, since a shared machine only
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
    "UniSpread of one period": 200,
    "SCurve of one period": 200,
    "MkPmts of 100 payments": 300,
    "DepreciatedValue, straight line": 300,
    "DepreciatedValue, declining balance": 300,
    "DepreciatedValue, sum of years' digits": 300,
    "DepPool of 50 lots": 30e3,
    "ProdProf of one period": 3e3,
    "Loan of 40 advances, interest of a period": 4e3,
    "MortgageQ over 300 months": 1e6,
    "Mortgage over 300 months": 1e6,
    "LoanPool of 1,000 loans, interest paid": 1.5e6,
    "LoanPool of 1,000 loans, balance": 1.5e6,
    "LoanSolve, an advance": 200e3,
    "LoanSolve, a repayment rate": 200e3,
    "LoanSolve, an interest rate": 200e3,
    "LoanSolve, the repayment date": 200e3,
    "account over 120 quarters, run": 10e6,
    "account over 120 quarters, a further output": 20e3,
    "OptionMonte of 100,000 paths": 10e6,
    "CapValue, whole call": 300,
    "EqYield, whole call": 10e3,
    "CapValueDCF of 20 years, whole call": 20e3,
    "CapValueDCFG of 20 annual rents, whole call": 20e3,
    "PVConGrow of 30 years by quarters": 60e3,
    "RentGrow of a period after four reviews": 1.5e3,
    "RentGrowR of a period in the fifth relet": 8e3,
    "rent roll of 1,000 leases by 40 quarters": 250e6,
    "twin of FStepGrow over 360 months": 200e3,
    "50,000 mixed cells recalculated": 9e6,
    "one input of 50,000 cells changed": 6e6,
    "one input with one dependent changed": 1e3,
    "library opened, all rows registered, and closed": 20e6,
    "trace of 1,000,000 items, the file beside": 400e6,
}
RELATIVE_AIMS = {  # at most so many times a peer's time
    "internal rate of return of 60 dated flows, whole call": (1.5, "plain Newton"),
    "internal rate of return of 100 dated flows, whole call": (1.5, "plain Newton"),
}
WORKBOOKS = ("50,000 mixed cells recalculated", "one input of 50,000 cells changed")
PEERS = pathlib.Path(__file__).parent / "peers"
LIBREOFFICE = PEERS / "libreoffice.py"
TABLES = {"NumPy": PEERS / "tables_numpy.py", "LibreOffice": PEERS / "tables_libreoffice.py"}
SAME_TOTAL = 1e-9
UNITS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def shown(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3), ("ns", 1)):
        if nanoseconds >= size or unit == "ns":
            return f"{nanoseconds / size:.3g} {unit}"


def ratio(times):
    return f"{times:.2g}" if times < 100 else f"{float(f'{times:.2g}'):,.0f}"


def measure(program, options, times, totals):
    """Runs the benchmarks; keeps the fastest time of each in times[what][whose], and the total of a table that one made
    in totals[what][whose]."""
    options = ["--benchmark_repetitions=20", "--benchmark_enable_random_interleaving=true", "--benchmark_min_time=0.02",
               *options]
    run = subprocess.run([program, "--benchmark_format=json", *options], stdout=subprocess.PIPE, check=True)
    entries = [entry for entry in json.loads(run.stdout)["benchmarks"] if entry["run_type"] == "iteration"]
    entries.sort(key=lambda entry: entry["family_index"])  # as they stand in the files, not as they were shuffled
    sizes = {}  # of one benchmark that runs at several
    for entry in entries:
        name = re.sub("/(iterations|repeats):.*", "", entry["run_name"])
        entry["named"] = what, whose, size = re.fullmatch(r"(.*): (\D+)(?:/(\d+))?", name).groups()
        sizes.setdefault((what, whose), set()).add(size)
    for entry in entries:
        what, whose, size = entry["named"]
        if len(sizes[what, whose]) > 1:
            what = f"{what}, {int(size):,}"
        time = entry["cpu_time"] * UNITS[entry["time_unit"]]
        known = times.setdefault(what, {})
        known[whose] = min(known.get(whose, time), time)
        if "total" in entry:
            totals.setdefault(what, {})[whose] = entry["total"]


def measure_libreoffice(program, times):
    """The same workbook in LibreOffice, if it is there, between two runs of ours."""
    if not times.keys() & set(WORKBOOKS) or not shutil.which("soffice"):
        return
    run = subprocess.run([LIBREOFFICE], stdout=subprocess.PIPE, check=False)
    if run.returncode != 0:
        print("bench: LibreOffice could not be measured", file=sys.stderr)
        return
    measure(program, [f"--benchmark_filter={'|'.join(WORKBOOKS)}"], times, {})
    for what, time in json.loads(run.stdout).items():
        times[what]["LibreOffice"] = time


def verdict(what, ours, peers):
    """The aim, and whether it was missed."""
    if what in RELATIVE_AIMS:
        most, peer = RELATIVE_AIMS[what]
        return f"{most} times {peer}" + (", missed" if ours > most * peers[peer] else "") if peer in peers else ""
    aim = AIMS.get(what, AIMS["day count"] if what.startswith("day count") else None)
    return "" if aim is None else shown(aim) + (", missed" if ours > aim else "")


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
    program, options = sys.argv[1], sys.argv[2:]
    times_of, totals = {}, {}
    measure(program, options, times_of, totals)
    measure_libreoffice(program, times_of)
    add_tables(times_of, totals)
    table = [("what", "the peer takes, times ours", "ours", "aim")]
    for what, times in sorted(times_of.items(), key=lambda item: len(item[1]) == 1):  # those with a peer first
        ours = times.pop("ours", None)
        if ours is None:
            continue
        peers = ", ".join(f"{whose} {ratio(time / ours)}" for whose, time in times.items())
        table.append((what, peers, shown(ours), verdict(what, ours, times)))
    widths = [max(len(row[i]) for row in table) for i in range(4)]
    for row in table:
        print("| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |")
        if row is table[0]:
            print("|" + "|".join("-" * (width + 2) for width in widths) + "|")


if __name__ == "__main__":
    main()
