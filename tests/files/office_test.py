#!/usr/bin/env python3
"""A round trip through LibreOffice: every value that we write arrives there, and comes back.

Usage: office_test.py SOURCE_FOLDER QUEXEL
"""
import json
import math
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as tree

NAMES = {prefix: f"urn:oasis:names:tc:opendocument:xmlns:{name}:1.0"
         for prefix, name in [("office", "office"), ("table", "table"), ("text", "text")]}
CALCEXT = "{urn:org:documentfoundation:names:experimental:calc:xmlns:calcext:1.0}value-type"
KINDS = r'''Text 5,"=""=1""&""+1""",empty,,TRUE,=NOT(E1)
0.1,-1e300,12345678901234.5,=A2/3,2026-11-22,=E2+0.5
#N/A,=1/0,"=""a""&A1","=MonthEnd(E2)","{=A2:B2*{1;2}}",{}
"quoted ""text"" <&>",line,é中,12%,{},{}
Spilled,"=TRANSPOSE(A2:B2)",,,,
,,,,,
'''


def named(prefix, name):
    return f"{{{NAMES[prefix]}}}{name}"


def days(text):
    """An ISO date, with a time or not, as a day's number."""
    import datetime
    moment = datetime.datetime.fromisoformat(text[:26])
    return (moment - datetime.datetime(1899, 12, 30)) / datetime.timedelta(days=1)


def text_of(element):
    """The text of a paragraph; several blanks are an element of their own."""
    text = element.text or ""
    for inner in element:
        blanks = int(inner.get(named("text", "c"), 1)) if inner.tag == named("text", "s") else 0
        text += " " * blanks + text_of(inner) + (inner.tail or "")
    return text


def value_of(cell):
    kind = cell.get(named("office", "value-type"))
    text = "\n".join(text_of(paragraph) for paragraph in cell.findall("text:p", NAMES))
    if cell.get(CALCEXT) == "error":
        return {"error": text}
    if kind in ("float", "percentage", "currency"):
        return float(cell.get(named("office", "value")))
    if kind == "date":
        return days(cell.get(named("office", "date-value")))
    if kind == "boolean":
        return cell.get(named("office", "boolean-value")) == "true"
    return text if kind == "string" else None


def read_fods(path):
    """The values of a flat OpenDocument file, by sheet and by (row, column)."""
    sheets = []
    for table in tree.parse(path).getroot().iter(named("table", "table")):
        cells, formulas, row = {}, {}, 0
        for line in table.iter(named("table", "table-row")):
            column = 0
            for cell in line:
                repeated = int(cell.get(named("table", "number-columns-repeated"), 1))
                value = value_of(cell) if repeated < 1000 else None
                if value is not None:
                    for i in range(repeated):
                        cells[row, column + i] = value
                formula = cell.get(named("table", "formula"), "")
                height, width = (int(cell.get(named("table", f"number-matrix-{way}-spanned"), 1)) for way in ("rows", "columns"))
                formulas.update({(row + i, column + j): formula for i in range(height) for j in range(width) if formula})
                column += repeated
            row += int(line.get(named("table", "number-rows-repeated"), 1))
        for place, formula in formulas.items():
            if isinstance(cells.get(place), dict):
                cells[place]["formula"] = formula
                cells[place]["is_array"] = list(formulas.values()).count(formula) > 1
        sheets.append(cells)
    return sheets


def address(text):
    letters, digits = re.fullmatch(r"([A-Z]+)(\d+)", text).groups()
    column = 0
    for letter in letters:
        column = 26 * column + ord(letter) - 64
    return int(digits) - 1, column - 1


class RoundTrip(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.holder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.holder.cleanup)
        cls.folder = pathlib.Path(cls.holder.name)
        (cls.folder / "kinds.csv").write_text(KINDS)
        sources = [cls.folder / "kinds.csv", *sorted((source / "examples").glob("*.csv"))]
        cls.models = [path.stem for path in sources]
        for path in sources:
            subprocess.run([quexel, "calc", path, "--out", cls.folder / (path.stem + ".xlsx")], check=True,
                           capture_output=True)
        for form in ("fods", "ods", "xlsx"):
            subprocess.run(["soffice", f"-env:UserInstallation=file://{cls.folder}/profile", "--headless", "--convert-to",
                            form, "--outdir", cls.folder / form, *(cls.folder / (m + ".xlsx") for m in cls.models)],
                           check=True, capture_output=True, timeout=500)

    def calculated(self, path):
        done = subprocess.run([quexel, "calc", path, "--json"], capture_output=True, text=True, timeout=60)
        return [{address(cell): value for cell, value in sheet["cells"].items()}
                for sheet in json.loads(done.stdout)["sheets"]]

    def compare(self, model, wanted, found):
        self.assertEqual(len(found), len(wanted), model)
        for number, sheet in enumerate(wanted):
            for cell, value in sheet.items():
                other = found[number].get(cell)
                # It calculates truth values, errors and arrays anew in any case, and does not know our functions.
                if isinstance(other, dict) and "_xll." in other.get("formula", "") and (
                        isinstance(value, (bool, dict)) or other["is_array"]):
                    self.assertEqual(other["error"], "#NAME?")
                    continue
                where = f"{model}, sheet {number}, row and column {cell}"
                if isinstance(value, dict):
                    self.assertEqual(other and other.get("error"), value["error"], where)
                elif isinstance(value, (bool, str)):
                    self.assertEqual(other, value, where)
                else:
                    self.assertTrue(isinstance(other, (int, float)) and math.isclose(other, value, rel_tol=1e-14, abs_tol=1e-9),
                                    f"{where}: {other} for {value}")

    def test_libreoffice_shows_our_values(self):
        """The results that the file holds: LibreOffice shows these for functions that it does not know."""
        for model in self.models:
            self.compare(model, self.calculated(self.folder / (model + ".xlsx")), read_fods(self.folder / "fods" / (model + ".fods")))

    def test_its_files_are_calculated_as_ours(self):
        for model in self.models:
            wanted = self.calculated(self.folder / (model + ".xlsx"))
            for form in ("ods", "xlsx"):
                self.compare(f"{model}.{form}", wanted, self.calculated(self.folder / form / f"{model}.{form}"))


if __name__ == "__main__":
    source, quexel = pathlib.Path(sys.argv.pop(1)), sys.argv.pop(1)
    unittest.main()
