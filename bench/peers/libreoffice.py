#!/usr/bin/python3
"""The 50,000 cells of sheet_bench.cpp in LibreOffice, by its own functions: the least processor time of several turns, in
nanoseconds, as JSON.

Needs the packages libreoffice-calc-nogui and python3-uno, and the Python of the latter.
"""
import contextlib
import json
import os
import pathlib
import signal
import subprocess
import tempfile
import time

import uno
from com.sun.star.beans import PropertyValue
from com.sun.star.connection import NoConnectException

PERIODS = 5000
TURNS = 10
PATIENCE = 60  # seconds for the office to answer


def formulas(row):
    here, before = row + 1, row
    return (
        "36526" if row == 0 else f"=EOMONTH(A{before}+15;0)",
        f"=DAY(EOMONTH(A{here};0))",
        f'=TEXT(A{here};"dddd")',
        f"=AND(A{here}>=40000;B{here}=31)",
        f"=IF(D{here};$M$2*(1+$M$1/12)^2;0)",
        "=E1" if row == 0 else f"=F{before}+E{here}",
        f"=ROUND(E{here}*B{here}/365;2)",
        f"=SUM(E{here}:G{here})",
        f"=(A{here}-DATE(YEAR(A{here});1;1))/(DATE(YEAR(A{here})+1;1;1)-DATE(YEAR(A{here});1;1))",
        f'=C{here}&" "&TEXT(A{here};"mmm")',
    )


def connect(pipe):
    context = uno.getComponentContext()
    resolver = context.ServiceManager.createInstanceWithContext("com.sun.star.bridge.UnoUrlResolver", context)
    deadline = time.monotonic() + PATIENCE
    while True:
        try:
            return resolver.resolve(f"uno:pipe,name={pipe};urp;StarOffice.ComponentContext")
        except NoConnectException:
            if time.monotonic() > deadline:
                raise
            time.sleep(0.2)


def family(office):
    """The processes of the office: the one started, and those that it started."""
    parents = {}
    for stat in pathlib.Path("/proc").glob("[0-9]*/stat"):
        try:
            parents[int(stat.parent.name)] = int(stat.read_text().rpartition(")")[2].split()[1])
        except OSError:  # ended meanwhile
            continue
    known = {office.pid}
    while grown := {child for child, parent in parents.items() if parent in known} - known:
        known |= grown
    return known


def processor_time(processes):
    """What all their threads have used so far, in nanoseconds."""
    threads = (thread for process in processes for thread in pathlib.Path(f"/proc/{process}/task").glob("*/schedstat"))
    return sum(int(thread.read_text().split()[0]) for thread in threads)


def fastest(office, work):
    times, processes = [], family(office)
    for turn in range(TURNS):
        start = processor_time(processes)
        work(turn)
        times.append(processor_time(processes) - start)
    return min(times)


def measured(office, desktop):
    document = desktop.loadComponentFromURL(
        "private:factory/scalc", "_blank", 0, (PropertyValue(Name="Hidden", Value=True),)
    )
    sheet = document.Sheets.getByIndex(0)
    sheet.getCellRangeByName("M1").Value = 0.05
    rent = sheet.getCellRangeByName("M2")
    rent.Value = 1250.0
    document.enableAutomaticCalculation(False)
    columns = zip(*(formulas(row) for row in range(PERIODS)))
    for letter, column in zip("ABCDEFGHIJ", columns):
        cells = sheet.getCellRangeByName(f"{letter}1:{letter}{PERIODS}")
        cells.setFormulaArray(tuple((formula,) for formula in column))

    def recalculate(_):
        document.calculateAll()

    def change(turn):
        rent.Value = 1001.0 + turn
        document.calculate()

    times = {
        "50,000 mixed cells recalculated": fastest(office, recalculate),
        "one input of 50,000 cells changed": fastest(office, change),
    }
    if sheet.getCellRangeByName("F5000").Value <= 0.0 or sheet.getCellRangeByName("A2").Value != 36556.0:
        raise SystemExit("LibreOffice did not calculate the cells")
    document.close(True)
    return times


@contextlib.contextmanager
def running_office():
    """An office without windows, its process and its desktop, which ends with the block."""
    with tempfile.TemporaryDirectory() as profile:
        pipe = f"qx_bench_{os.getpid()}"  # another office may be at work
        office = subprocess.Popen(
            ["soffice", "--headless", "--norestore", f"-env:UserInstallation=file://{profile}",
             f"--accept=pipe,name={pipe};urp;"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        )
        try:
            context = connect(pipe)
            desktop = context.ServiceManager.createInstanceWithContext("com.sun.star.frame.Desktop", context)
            yield office, desktop
            desktop.terminate()
            office.wait(PATIENCE)
        finally:
            for process in family(office):
                with contextlib.suppress(ProcessLookupError):
                    os.kill(process, signal.SIGKILL)


def main():
    with running_office() as (office, desktop):
        print(json.dumps(measured(office, desktop)))


if __name__ == "__main__":
    main()
