#!/usr/bin/python3
"""The tables of tables_bench.cpp in LibreOffice, by its own functions and as a modeller lays them out: a block of
cells for each thing that a rent depends on. Prints the least time in nanoseconds to calculate all of a workbook, and
the total of each table, as JSON. Needs what libreoffice.py needs.
"""
import json

import uno  # noqa: F401: opens com.sun.star to imports
from com.sun.star.beans import PropertyValue
from com.sun.star.sheet.FillDirection import TO_BOTTOM

from libreoffice import running_office
from tables import (GROWTH_STEPS, MARKET_GROWTH, MONTHS, QUARTERS, RENT_ROLL, REVIEW_MONTHS, STREAMS, fastest, leases,
                    streams)


def letters(column):
    name = ""
    while column >= 0:
        name = chr(ord("A") + column % 26) + name
        column = column // 26 - 1
    return name


class Sheet:
    """A sheet of a new workbook, filled by blocks of cells."""

    def __init__(self, desktop):
        hidden = PropertyValue(Name="Hidden", Value=True)
        self.document = desktop.loadComponentFromURL("private:factory/scalc", "_blank", 0, (hidden,))
        self.document.enableAutomaticCalculation(False)
        self.cells = self.document.Sheets.getByIndex(0)

    def fill(self, column, row, rows):
        """Puts rows of numbers or formulas from a column and a row, both counted from 0, on."""
        rows = [tuple(map(str, line)) for line in rows]
        area = self.cells.getCellRangeByPosition(column, row, column + len(rows[0]) - 1, row + len(rows) - 1)
        area.setFormulaArray(tuple(rows))

    def fill_down(self, column, row, count, formulas):
        """Puts a row of formulas and copies it down, until there are as many rows."""
        self.fill(column, row, [formulas])
        area = self.cells.getCellRangeByPosition(column, row, column + len(formulas) - 1, row + count - 1)
        area.fillAuto(TO_BOTTOM, 1)

    def measured(self, total):
        """Calculates everything, and gives what a cell shows."""
        def calculate():
            self.document.calculateAll()
            return self.cells.getCellRangeByName(total).Value

        found = fastest(calculate, turns=5)
        self.document.close(True)
        return found


def index_row(sheet, row, months, growth):
    """A row of what a unit is worth in each month of the row above it: the modeller's index, made cell from cell."""
    dates = ";".join(str(date) for date, _ in growth)
    rates = ";".join(str(rate) for _, rate in growth)
    sheet.fill(0, row + 2, [dates.split(";"), rates.split(";")])
    last = letters(len(growth) - 1)
    of_dates, of_rates = (f"$A${line}:${last}${line}" for line in (row + 3, row + 4))
    sheet.fill(10, row, [[1.0] + [
        f"={letters(9 + i)}{row + 1}*(1+LOOKUP({letters(9 + i)}$1;{of_dates};{of_rates}))"
        f"^(({letters(10 + i)}$1-{letters(9 + i)}$1)/12)" for i in range(1, len(months))]])


def rent_roll(desktop):
    """Inputs in A to H, then blocks of quarters: when the relet of now starts, the rent that passes, the rent due."""
    sheet = Sheet(desktop)
    terms, quarters = list(leases()), len(QUARTERS)
    n = len(terms)
    blocks = [10 + block * (quarters + 1) for block in range(3)]
    for block in blocks:
        sheet.fill(block, 0, [QUARTERS])
    sheet.fill(0, 1, terms)
    index_row(sheet, n + 2, QUARTERS, MARKET_GROWTH)

    def let(i):
        now = f"{letters(blocks[0] + i)}$1"
        return f"=IF({now}<$B2;0;$B2+INT(({now}-$B2)/($F2+12*$H2))*($F2+12*$H2)+$F2)"

    def passing(i):
        now, start = f"{letters(blocks[1] + i)}$1", f"{letters(blocks[0] + i)}2"
        before = "$E2" if i == 0 else f"{letters(blocks[1] + i - 1)}2"
        market = f"$D2*{letters(10 + i)}${n + 3}"
        since = f"({now}-IF({start}=0;$C2;{start}))"
        return (f"=IF(AND({start}>0;{now}={start});{market};IF(AND({since}>=0;MOD({since};{REVIEW_MONTHS})=0);"
                f"MAX({before};{market});{before}))")

    def due(i):
        now, start = f"{letters(blocks[2] + i)}$1", f"{letters(blocks[0] + i)}2"
        return f"=IF({now}>=IF({start}=0;$A2;{start}+$G2);{letters(blocks[1] + i)}2/4;0)"

    for block, formula in zip(blocks, (let, passing, due)):
        sheet.fill_down(block, 1, n, [formula(i) for i in range(quarters)])
    sheet.fill(0, n + 1, [[f"=SUM({letters(blocks[2])}2:{letters(blocks[2] + quarters - 1)}{n + 1})"]])
    return sheet.measured(f"A{n + 2}")


def growth_table(desktop):
    """Inputs in A to C, months in columns; two indices under the table, one for each kind of stream."""
    sheet = Sheet(desktop)
    rows = list(streams())
    n, months = len(rows), len(MONTHS)
    sheet.fill(10, 0, [MONTHS])
    sheet.fill(0, 1, [(end, rate, int(steps_up)) for end, rate, steps_up in rows])
    index_row(sheet, n + 2, MONTHS, GROWTH_STEPS)
    every_month = f"$K${n + 3}:${letters(9 + months)}${n + 3}"
    first_months = f"$K$1:${letters(9 + months)}$1"
    dates = f"$A${n + 5}:${letters(len(GROWTH_STEPS) - 1)}${n + 5}"
    columns = [letters(10 + i) for i in range(months)]
    sheet.fill(10, n + 6, [
        [f"=INDEX({every_month};MATCH(LOOKUP({column}$1;{dates});{first_months};0))" for column in columns],
        [f"=INDEX({every_month};MATCH({column}$1-MOD({column}$1;12);{first_months};0))" for column in columns]])
    sheet.fill_down(10, 1, n, [
        f"=IF({column}$1<$A2;$B2*IF($C2;{column}${n + 7};{column}${n + 8})/12;0)" for column in columns])
    sheet.fill(0, n + 1, [[f"=SUM(K2:{columns[-1]}{n + 1})"]])
    return sheet.measured(f"A{n + 2}")


def main():
    with running_office() as (_, desktop):
        print(json.dumps({RENT_ROLL: rent_roll(desktop), STREAMS: growth_table(desktop)}))


if __name__ == "__main__":
    main()
