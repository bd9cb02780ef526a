"""A workbook without a window: formulas of the library and the everyday ones of a spreadsheet, calculated in Python."""

from __future__ import annotations

import os
import pathlib
import warnings
from typing import Any, NamedTuple

import numpy as np

from . import _core
from . import values as _cells
from .explanation import Explanation


class Problem(NamedTuple):
    """Something wrong with a cell of a workbook."""

    cell: str
    message: str


class ErrorCell(NamedTuple):
    """A cell of a workbook that shows an error value."""

    cell: str
    value: str
    reason: str
    origin: str  # the cell in which the error came up first


class GoalSeeks(NamedTuple):
    """What the goal seeks of a workbook came to."""

    failures: int
    report: str


class Workbook:
    """A workbook of sheets, cells and names.

        book = Workbook("model.xlsx")
        book["B2"] = datetime.date(2026, 3, 25)
        book["B3"] = "=MonthEnd(B2)"
        book["B3"]                          # datetime.date(2026, 3, 31)

    A cell is addressed as "B7", "Costs!B7" or by a name; so is a range, which is read and set as an array. A cell is
    calculated when it is read, so that no call is needed after a change. A cell reads as float, str, bool,
    datetime.date, CellError, or None if it is blank. A text that begins with "=" is set as a formula.
    """

    def __init__(self, path: str | os.PathLike[str] | None = None) -> None:
        if path is None:
            self._book = _core.Book()
            return
        file = pathlib.Path(path)
        try:
            self._book = _core.Book(file.name, file.read_bytes())
        except ValueError as error:
            raise ValueError(f"{file.name}: {error}") from None
        self.calculate()

    @classmethod
    def open(cls, path: str | os.PathLike[str]) -> Workbook:
        """The workbook of an .xlsx, .ods or .csv file; a .csv file is a workbook of one sheet."""
        return cls(path)

    def save(self, path: str | os.PathLike[str], *, sheet: str | None = None, dates: bool = True) -> None:
        """Writes the workbook as an .xlsx file, or the values of one sheet (the first) as a .csv file.

        The .xlsx file that was read is written with its new results and all else as it was, if only numbers were set in
        it; otherwise a new one is made, and a warning says what it does not keep, as charts. `dates=False` writes the
        numbers of dates to a .csv file.
        """
        file = pathlib.Path(path)
        if file.suffix.lower() == ".xlsx":
            content, not_kept = self._book.xlsx()
            if not_kept:
                warnings.warn(f"{file.name}: not kept: {', '.join(not_kept)}", stacklevel=2)
        elif file.suffix.lower() in (".csv", ".txt"):
            content = self._book.csv(0 if sheet is None else self._sheet(sheet), dates)
        else:
            raise ValueError(f"{file.name}: a workbook is written to an .xlsx or a .csv file")
        file.write_bytes(content)

    @property
    def sheets(self) -> list[str]:
        """The names of the sheets."""
        return self._book.sheets()

    def add_sheet(self, name: str) -> None:
        if any(name.casefold() == known.casefold() for known in self.sheets):
            raise ValueError(f"there is a sheet {name!r}")
        self._book.add_sheet(name)

    def _sheet(self, name: str) -> int:
        for i, known in enumerate(self.sheets):
            if name.casefold() == known.casefold():
                return i
        raise KeyError(name)

    def _area(self, address: str) -> tuple[int, range, range]:
        sheet, top, left, bottom, right = self._book.area(address)
        rows, columns = self._book.used(sheet)
        if bottom - top > max(rows, 65535):  # a whole column: what the sheet uses of it
            bottom = max(rows, 1) - 1
        if right - left > max(columns, 1023):
            right = max(columns, 1) - 1
        return sheet, range(top, bottom + 1), range(left, right + 1)

    def __getitem__(self, address: str) -> Any:
        sheet, rows, columns = self._area(address)
        if len(rows) == 1 and len(columns) == 1:
            return self._book.get(sheet, rows[0], columns[0])
        values = np.empty((len(rows), len(columns)), dtype="O")
        for i, row in enumerate(rows):
            for j, column in enumerate(columns):
                values[i, j] = self._book.get(sheet, row, column)
        if all(type(value) is float for value in values.flat):
            return values.astype("f8")
        return values

    def __setitem__(self, address: str, value: Any) -> None:
        sheet, rows, columns = self._area(address)
        if isinstance(value, (str, type(None))) or np.ndim(value) == 0:
            for row in rows:
                for column in columns:
                    self._set(sheet, row, column, value)
            return
        table = value if isinstance(value, (list, tuple)) else list(_cells.as_array(value))
        lines = [list(line) if isinstance(line, (list, tuple, np.ndarray)) else [line] for line in table]
        if len(rows) == 1 and len(columns) == len(lines) > 1 and all(len(line) == 1 for line in lines):
            lines = [[line[0] for line in lines]]
        if len(rows) == 1 and len(columns) == 1:  # the upper left cell of where it goes
            rows = range(rows[0], rows[0] + len(lines))
            columns = range(columns[0], columns[0] + max(map(len, lines), default=0))
        if len(lines) != len(rows) or any(len(line) != len(columns) for line in lines):
            raise ValueError(f"{address} has {len(rows)} rows and {len(columns)} columns, and the values have not")
        for row, line in zip(rows, lines):
            for column, item in zip(columns, line):
                self._set(sheet, row, column, item)

    def _set(self, sheet: int, row: int, column: int, value: Any) -> None:
        if isinstance(value, str) and value.startswith("=") and len(value) > 1:
            self._book.set_formula(sheet, row, column, value)
        else:
            self._book.set(sheet, row, column, value)

    def formula(self, cell: str) -> str | None:
        """The formula of a cell with its equals sign, or None."""
        sheet, rows, columns = self._area(cell)
        return self._book.formula(sheet, rows[0], columns[0])

    def define(self, name: str, formula: str) -> None:
        """Gives a cell, a range or a formula a name: define("Rate", "B2")."""
        self._book.define_name(name, formula)

    def calculate(self, *, everything: bool = False) -> None:
        """Calculates what has changed, and what is calculated anew each time, as random numbers; or everything."""
        self._book.calculate(everything)

    def evaluate(self, formula: str) -> Any:
        """The value of a formula that is in no cell."""
        return self._book.evaluate(formula)

    def explain(self, what: str) -> Explanation:
        """How the value of a cell, or of a formula that begins with "=", comes about."""
        if what.startswith("="):
            result, trace = self._book.explain_formula(what)
        else:
            sheet, rows, columns = self._area(what)
            result, trace = self._book.explain(sheet, rows[0], columns[0])
        return Explanation(trace, result, None)

    def seek_goals(self) -> GoalSeeks:
        """Runs the goal seeks that the cells ask for with GoalSeek(), in their order."""
        failures, report = self._book.seek()
        return GoalSeeks(failures, "\n".join(line for line in report.splitlines() if line.strip()))

    def problems(self) -> list[Problem]:
        """What is wrong with the file as it was read and with the formulas as they are now."""
        return [Problem(cell, message) for cell, message in self._book.problems()]

    def errors(self) -> list[ErrorCell]:
        """The cells that show an error value, with its cause."""
        return [ErrorCell(*error) for error in self._book.errors()]

    def __repr__(self) -> str:
        rows, columns = self._book.used(0)
        more = f" and {len(self.sheets) - 1} more sheets" if len(self.sheets) > 1 else ""
        return f"<Workbook: {self.sheets[0]} of {rows} rows and {columns} columns{more}>"
