#!/usr/bin/env python3
"""quexel with workbook files: what it reads, what it gives back, and what it refuses.

Usage: workbooks_test.py QUEXEL
"""
import fcntl
import io
import json
import os
import pty
import re
import resource
import shutil
import struct
import subprocess
import sys
import tempfile
import termios
import unittest
import zipfile

from archives import MAIN, archive, ods, relations, xlsx, xlsx_parts

QUEXEL = ""


class Case(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)

    def path(self, name):
        return os.path.join(self.folder, name)

    def put(self, name, content):
        with open(self.path(name), "wb") as file:
            file.write(content if isinstance(content, bytes) else content.encode())
        return name

    def get(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def run_quexel(self, *arguments, status=0, **more):
        done = subprocess.run([QUEXEL, *arguments], cwd=self.folder, capture_output=True, text=True, timeout=300, **more)
        self.assertEqual(done.returncode, status, done.stderr + done.stdout)
        return done

    def values(self, name, sheet=0, status=0, arguments=()):
        done = self.run_quexel("calc", name, "--json", *arguments, status=status)
        return json.loads(done.stdout)["sheets"][sheet]["cells"]


class Reading(Case):
    STYLES = ('<numFmts><numFmt numFmtId="170" formatCode="dd/mm/yyyy"/></numFmts><cellXfs><xf numFmtId="0"/>'
              '<xf numFmtId="14"/><xf numFmtId="170"/><xf numFmtId="10"/></cellXfs>')

    def test_xlsx_kinds_of_cells(self):
        data = ('<sheetData><row r="1"><c r="A1"><v>1.5</v></c><c r="B1" t="s"><v>1</v></c><c r="C1" t="b"><v>1</v></c>'
                '<c r="D1" t="e"><v>#N/A</v></c><c r="E1" t="inlineStr"><is><r><t>in</t></r><r><t>line</t></r></is></c>'
                '<c r="F1" s="1"><v>46348</v></c><c r="G1" s="2"><f>F1+1</f><v>0</v></c><c r="H1" s="3"><v>0.125</v></c>'
                '<c r="I1" t="str"><f>B1&amp;"!"</f><v>old</v></c><c r="J1" t="d"><v>2026-11-22T00:00:00</v></c></row>'
                # A writer may leave the addresses out.
                '<row><c><v>7</v></c><c><f>A2*2</f></c></row></sheetData>')
        texts = ("<si><t>no</t></si>", '<si><r><t>ri</t></r><rPh sb="0" eb="1"><t>sound</t></rPh><r><t>ch_x0041_</t></r></si>')
        self.put("a.xlsx", xlsx(("S", data), styles=self.STYLES, texts=texts))
        cells = self.values("a.xlsx", arguments=["--dates"])
        self.assertEqual(cells, {
            "A1": 1.5, "B1": "richA", "C1": True, "D1": {"error": "#N/A", **cells["D1"]}, "E1": "inline",
            "F1": "2026-11-22", "G1": "2026-11-23", "H1": 0.125, "I1": "richA!", "J1": "2026-11-22", "A2": 7, "B2": 14})
        self.assertIn("12.5%", self.run_quexel("calc", "a.xlsx").stdout)

    def test_xlsx_formulas(self):
        data = ('<sheetData><row r="1"><c r="A1"><v>1</v></c><c r="B1"><f t="shared" ref="B1:B3" si="0">A1*$A$1+Rate</f></c>'
                '<c r="C1"><f t="array" ref="C1:C3">A1:A3*10</f><v>10</v></c><c r="D1"><f>_xll.MonthEnd(_xlfn.IFS(TRUE,38000))</f></c>'
                '<c r="E1"><f>SUM(Data!A1:A2)</f></c></row>'
                '<row r="2"><c r="A2"><v>2</v></c><c r="B2"><f t="shared" si="0"/></c><c r="C2"><v>99</v></c></row>'
                '<row r="3"><c r="A3"><v>3</v></c><c r="B3"><f t="shared" si="0"/></c><c r="C3"><v>99</v></c></row></sheetData>')
        other = '<sheetData><row r="1"><c r="A1"><v>4</v></c></row><row r="2"><c r="A2"><v>5</v></c></row></sheetData>'
        names = ('<definedName name="Rate">Data!$A$1</definedName>'
                 '<definedName name="_xlnm.Print_Area" localSheetId="0">S!$A$1</definedName>')
        # Targets may count from the archive's root.
        self.put("a.xlsx", xlsx(("S", data), ("Data", other), names=names, target="/xl/worksheets/sheet{}.xml"))
        cells = self.values("a.xlsx")
        self.assertEqual([cells[c] for c in ("B1", "B2", "B3", "C1", "C2", "C3", "D1", "E1")],
                         [5, 6, 7, 10, 20, 30, 38017, 9])

    def test_1904_dates(self):
        data = '<sheetData><row r="1"><c r="A1" s="1"><v>44886</v></c><c r="B1"><v>44886</v></c></row></sheetData>'
        self.put("a.xlsx", xlsx(("S", data), styles=self.STYLES, properties='<workbookPr date1904="1"/>'))
        self.assertEqual(self.values("a.xlsx", arguments=["--dates"]), {"A1": "2026-11-22", "B1": 44886})
        self.run_quexel("calc", "a.xlsx", "--in-place", status=1)
        self.run_quexel("calc", "a.xlsx", "--out", "b.xlsx")  # counts from 1900
        self.assertEqual(self.values("b.xlsx", arguments=["--dates"]), {"A1": "2026-11-22", "B1": 44886})

    def test_last_values_stand_in(self):
        data = ('<sheetData><row r="1"><c r="A1"><f>NOSUCH(1)</f><v>8</v></c><c r="B1"><f>A1*2</f><v>0</v></c>'
                '<c r="C1"><f>1+</f><v>9</v></c></row></sheetData>')
        self.put("a.xlsx", xlsx(("S", data)))
        done = self.run_quexel("calc", "a.xlsx", "--json", status=1)
        self.assertRegex(done.stderr, r"A1: .*NOSUCH")
        self.assertRegex(done.stderr, r"C1: ")
        self.assertEqual(json.loads(done.stdout)["sheets"][0]["cells"]["B1"]["error"], "#NAME?")
        self.assertEqual({"from": "A1", "error": "#NAME?"}.items() <= json.loads(done.stdout)["errors"][1].items(), True)
        self.assertEqual(self.values("a.xlsx", status=1, arguments=["--keep-values"]), {"A1": 8, "B1": 16, "C1": 9})

    def test_ods(self):
        def cell(kind, value="", text="", more=""):
            attribute = {"date": "date-value", "boolean": "boolean-value", "time": "time-value"}.get(kind, "value")
            return (f'<table:table-cell office:value-type="{kind}" office:{attribute}="{value}" {more}>'
                    f"<text:p>{text}</text:p></table:table-cell>")
        rows = (
            "<table:table-row>" + cell("float", 2, more='table:number-columns-repeated="2"') +
            '<table:table-cell table:number-columns-repeated="2"/>' + cell("date", "2026-11-22") + "</table:table-row>"
            '<table:table-row table:number-rows-repeated="2">' + cell("float", 5) +
            cell("float", 0, more='table:formula="of:=[.A2]*[.$B$1]"') + "</table:table-row>"
            '<table:table-row table:number-rows-repeated="100"><table:table-cell/></table:table-row>'
            "<table:table-row>" + cell("boolean", "true") + cell("percentage", 0.5) +
            '<table:table-cell office:value-type="string" office:string-value="" calcext:value-type="error">'
            "<text:p>#DIV/0!</text:p></table:table-cell>"
            '<table:table-cell office:value-type="string"><office:annotation><text:p>note</text:p></office:annotation>'
            "<text:p>two<text:s text:c=\"2\"/>words</text:p><text:p>below</text:p></table:table-cell>"
            + cell("float", 0, more='table:formula="of:={1;2|3;4}" table:number-matrix-columns-spanned="2" '
                                    'table:number-matrix-rows-spanned="1"') + cell("float", 9) + "</table:table-row>")
        other = "<table:table-row>" + cell("float", 0, more="table:formula=\"of:=SUM([$'My sheet'.A1:.B3])+Base\"") + "</table:table-row>"
        names = '<table:named-range table:name="Base" table:cell-range-address="$\'My sheet\'.$A$2"/>'
        self.put("a.ods", ods(("My sheet", rows), ("Sum", other), names=names))
        cells = self.values("a.ods", arguments=["--dates"])
        self.assertEqual(cells.pop("C104")["error"], "#DIV/0!")
        self.assertEqual(cells, {"A1": 2, "B1": 2, "E1": "2026-11-22", "A2": 5, "B2": 10, "A3": 5, "B3": 10, "A104": True,
                                 "B104": 0.5, "D104": "two  words\nbelow", "E104": 1, "F104": 2})
        self.assertEqual(self.values("a.ods", 1), {"A1": 2 + 2 + 5 + 10 + 5 + 10 + 5})


class Writing(Case):
    BOOK = xlsx_parts(("S", '<cols><col min="1" max="1" width="30"/></cols><sheetData><row r="1" ht="20"><c r="A1" s="1"><v>2</v></c>'
                            '<c r="B1" s="1" t="str"><f>A1*3</f><v>old</v></c><c r="C1"><f>1/(A1-2)</f></c></row></sheetData>'
                            '<conditionalFormatting sqref="A1"/>'),
                      styles="<fonts><font><b/></font></fonts><cellXfs><xf/><xf fontId=\"0\" numFmtId=\"2\"/></cellXfs>")
    BOOK["xl/media/image1.png"] = b"\x89PNG picture"

    def sheet_of(self, name):
        return zipfile.ZipFile(self.path(name)).read("xl/worksheets/sheet1.xml").decode()

    def test_the_input_is_never_written_over(self):
        model = archive(self.BOOK)
        self.put("a.xlsx", model)
        os.symlink("a.xlsx", self.path("link.xlsx"))
        os.link(self.path("a.xlsx"), self.path("hard.xlsx"))
        self.put("in.csv", "3\n")
        for target in ("a.xlsx", "./a.xlsx", "link.xlsx", "hard.xlsx"):
            done = self.run_quexel("calc", "a.xlsx", "--out", target, status=1)
            self.assertIn("--in-place", done.stderr)
            self.run_quexel("calc", "a.xlsx", "--trace", "B1", "--html", target, status=1)
            self.run_quexel("calc", "a.xlsx", "--report", target, status=1)
        self.run_quexel("calc", "a.xlsx", "--set", "A1:A1=@in.csv", "--out", "in.csv", status=1)
        self.assertEqual(self.get("a.xlsx"), model)
        self.assertEqual(self.get("in.csv"), b"3\n")

    def test_in_place_keeps_the_rest(self):
        self.put("a.xlsx", archive(self.BOOK))
        self.run_quexel("calc", "a.xlsx", "--set", "A1=5", "--in-place")
        self.assertEqual(self.values("a.xlsx"), {"A1": 5, "B1": 15, "C1": 1 / 3})
        kept = zipfile.ZipFile(self.path("a.xlsx"))
        for name, content in self.BOOK.items():
            if name != "xl/worksheets/sheet1.xml":
                self.assertEqual(kept.read(name), content.encode() if isinstance(content, str) else content)
        self.assertEqual(re.sub(r"<v>[^<]*</v>", "<v/>", self.sheet_of("a.xlsx")),
                         f'<worksheet xmlns="{MAIN}" xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships">'
                         '<cols><col min="1" max="1" width="30"/></cols><sheetData><row r="1" ht="20"><c r="A1" s="1"><v/></c>'
                         '<c r="B1" s="1"><f>A1*3</f><v/></c><c r="C1"><f>1/(A1-2)</f><v/></c></row></sheetData>'
                         '<conditionalFormatting sqref="A1"/></worksheet>')
        self.run_quexel("calc", "a.xlsx", "--set", "A1=2", "--out", "b.xlsx")
        self.assertIn('<c r="C1" t="e"><f>1/(A1-2)</f><v>#DIV/0!</v></c>', self.sheet_of("b.xlsx"))
        self.assertEqual(zipfile.ZipFile(self.path("b.xlsx")).read("xl/media/image1.png"), b"\x89PNG picture")

    def test_in_place_adds_cells(self):
        parts = xlsx_parts(("S", '<dimension ref="A1:B6"/><sheetData><row r="1" spans="1:2"><c r="A1"><v>2</v></c>'
                            '<c r="B1"><f>A1*3</f><v>6</v></c></row><row r="3" ht="20"/><row r="4"><c r="A4" s="1" cm="1">'
                            '<f t="array" ref="A4:A6">_xlfn.SEQUENCE(A1+1)</f><v>1</v></c></row>'
                            '<row r="5"><c r="A5"><v>2</v></c></row><row r="6"><c r="A6"><v>3</v></c></row>'
                            '<row r="8"><c r="A8"><f t="shared" ref="A8:B8" si="0">A1+1</f><v>3</v></c>'
                            '<c r="B8"><f t="shared" si="0"/><v>7</v></c></row></sheetData>'),
                           ("Empty", "<sheetData/>"), styles="<cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"10\"/></cellXfs>")
        parts["xl/calcChain.xml"] = f'<calcChain xmlns="{MAIN}"><c r="B1" i="1"/></calcChain>'
        parts["[Content_Types].xml"] = '<Types><Override PartName="/xl/calcChain.xml"/></Types>'
        parts["xl/_rels/workbook.xml.rels"] = relations(
            ("worksheet", "worksheets/sheet1.xml"), ("worksheet", "worksheets/sheet2.xml"), ("styles", "styles.xml"),
            ("calcChain", "calcChain.xml"))
        self.put("a.xlsx", archive(parts))
        self.run_quexel("calc", "a.xlsx", "--set", "A1=3", "--set", "D3=4", "--set", "C1==D3*2", "--set", "Empty!B2=x",
                        "--in-place")
        self.assertEqual(self.values("a.xlsx"), {"A1": 3, "B1": 9, "C1": 8, "D3": 4, "A4": 1, "A5": 2, "A6": 3, "A7": 4,
                                                 "A8": 4, "B8": 10})
        self.assertEqual(self.values("a.xlsx", sheet=1), {"B2": "x"})
        sheet = self.sheet_of("a.xlsx")
        self.assertIn('<dimension ref="A1:D8">', sheet)
        self.assertIn('<row r="1"><c r="A1">', sheet) # the span did not hold any more
        self.assertIn('<row r="3" ht="20"><c r="D3"><v>4</v></c></row>', sheet)
        self.assertIn('<f t="array" ref="A4:A7">', sheet)
        self.assertIn('<row r="7"><c r="A7" s="1"><v>4</v></c></row>', sheet)
        # A formula was added: the order of the last calculation does not name it.
        changed = zipfile.ZipFile(self.path("a.xlsx"))
        self.assertNotIn("xl/calcChain.xml", changed.namelist())
        for part in ("[Content_Types].xml", "xl/_rels/workbook.xml.rels"):
            self.assertNotIn(b"calcChain", changed.read(part))
        # An array that becomes shorter leaves nothing behind; a value takes the place of a formula.
        self.run_quexel("calc", "a.xlsx", "--set", "A1=1", "--set", "B1=5", "--set", "B8=6", "--in-place")
        self.assertEqual(self.values("a.xlsx"), {"A1": 1, "B1": 5, "C1": 8, "D3": 4, "A4": 1, "A5": 2, "A8": 2, "B8": 6})
        before = self.get("a.xlsx")
        for setting, reason in [("F1==SEQUENCE(3)", "F1 fills several cells"), ("F1=2026-11-22", "F1 would be a date")]:
            done = self.run_quexel("calc", "a.xlsx", "--set", setting, "--in-place", status=1)
            self.assertIn(reason, done.stderr)
        self.assertEqual(self.get("a.xlsx"), before)

    def test_a_model_in_csv_keeps_its_formulas(self):
        self.put("m.csv", 'Rate,0.05,"a, b"\nRent,"=ROUND(B1*100,1)"\n')
        self.run_quexel("calc", "m.csv", "--set", "B1=0.07", "--in-place")
        self.assertEqual(self.get("m.csv"), b'Rate,0.07,"a, b"\nRent,"=ROUND(B1*100,1)"\n')

    def test_what_is_lost_is_said(self):
        self.put("m.xlsm", archive({**self.BOOK, "xl/vbaProject.bin": b"macros"}))
        done = self.run_quexel("calc", "m.xlsm", "--out", "b.xlsx")
        self.assertRegex(done.stderr, r"not carried over.*macros")
        self.assertRegex(done.stderr, r"conditional formats")
        self.assertNotIn("xl/vbaProject.bin", zipfile.ZipFile(self.path("b.xlsx")).namelist())
        self.run_quexel("calc", "m.xlsm", "--set", "A1=4", "--in-place")
        self.assertEqual(zipfile.ZipFile(self.path("m.xlsm")).read("xl/vbaProject.bin"), b"macros")
        self.assertEqual(self.values("m.xlsm")["B1"], 12)

    def test_charts_and_widths(self):
        self.put("m.csv", "A long label in the first column,2026,2027\nCash,-5,=B2*-2\n")
        self.run_quexel("calc", "m.csv", "--out", "m.xlsx", "--chart", "Flow=Cash over B1:C1", "--chart", "B2:C2")
        parts = zipfile.ZipFile(self.path("m.xlsx"))
        drawn = parts.read("xl/charts/chart1.xml").decode()
        self.assertIn("Sheet1!$B$2:$C$2", drawn.replace("'", ""))
        self.assertIn("Flow", drawn)
        self.assertIn("xl/charts/chart2.xml", parts.namelist())
        self.assertGreater(float(re.search(r'<col min="1"[^>]* width="([\d.]+)"', self.sheet_of("m.xlsx")).group(1)), 30)

    def test_nothing_is_written_without_room(self):
        self.put("m.csv", "1,=A1\n")
        self.run_quexel("calc", "m.csv", "--out", "/dev/full", status=1)
        self.run_quexel("calc", "m.csv", "--out", "none/m.xlsx", status=1)
        self.run_quexel("calc", "m.csv", "--out", "m.ods", status=1)
        before = self.get("m.csv")
        limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (0, 0))
        subprocess.run([QUEXEL, "calc", "m.csv", "--set", "A1=2", "--in-place"], cwd=self.folder, preexec_fn=limit,
                       capture_output=True, timeout=60)
        self.assertEqual(self.get("m.csv"), before)


class WhatIf(Case):
    MODEL = "Price,100\nCount,3\nTotal,=B1*B2\nSeek,\"=GoalSeek(B3,450,B1,1)\"\n"

    def setUp(self):
        super().setUp()
        self.put("m.csv", self.MODEL)

    def test_set_and_get(self):
        self.assertEqual(self.run_quexel("calc", "m.csv", "--set", "B1=2e2", "--get", "B3").stdout, "600\n")
        self.put("in.csv", "10\n=B1+1\n")
        done = self.run_quexel("calc", "m.csv", "--set", "B1:B2=@in.csv", "--get", "B3", "--get", "A1:B1", "--json")
        self.assertEqual(json.loads(done.stdout), {"B3": 110, "A1:B1": {"rows": 1, "columns": 2, "cells": ["Price", 10]}})
        for wrong in ("B1", "=5", "Nothing=5", "B1:B2=@none.csv", "B1:C2=@in.csv", "B1==1+"):
            self.run_quexel("calc", "m.csv", "--set", wrong, status=1)

    def test_names(self):
        data = '<sheetData><row r="1"><c r="A1"><v>2</v></c><c r="B1"><f>Rate*10</f></c></row></sheetData>'
        self.put("a.xlsx", xlsx(("In put", data), names="<definedName name=\"Rate\">'In put'!$A$1</definedName>"
                                                        "<definedName name=\"Result\">'In put'!$B$1</definedName>"))
        self.assertEqual(self.run_quexel("calc", "a.xlsx", "--set", "rate=5%", "--get", "Result").stdout, "0.5\n")
        self.assertEqual(self.run_quexel("calc", "a.xlsx", "--get", "'In put'!B1").stdout, "20\n")

    def test_scenarios(self):
        self.put("s.csv", "Case,B1,B3\nBase,,\nHigh,200,\n\"Low, sold\",50,\n")
        done = self.run_quexel("calc", "m.csv", "--scenarios", "s.csv", "--output", "csv", "--get", "B2")
        self.assertEqual(done.stdout, 'Case,B1,B3,B2\nBase,100,300,3\nHigh,200,600,3\n"Low, sold",50,150,3\n')
        self.run_quexel("calc", "m.csv", "--scenarios", "s.csv", "--out", "t.xlsx")
        self.assertEqual(self.values("t.xlsx")["C3"], 600)
        self.put("w.csv", "Case,B3\nBase,\n")
        self.run_quexel("calc", "m.csv", "--scenarios", "w.csv", status=1)
        self.put("w.csv", "Nothing,B1\n,5\n")
        self.run_quexel("calc", "m.csv", "--scenarios", "w.csv", status=1)

    def test_goal_seek_says_where(self):
        done = self.run_quexel("calc", "m.csv", "--seek")
        self.assertRegex(done.stdout, r"B1 is 150, was 100; B3 shows 450, wanted 450")
        self.run_quexel("calc", "m.csv", "--seek", "--in-place")
        self.assertEqual(self.get("m.csv").decode(), self.MODEL.replace("100", "150", 1))


class Replacing(Case):
    """quexel replace over all forms of a model."""

    def replace(self, *arguments, status=0):
        return self.run_quexel("replace", *arguments, status=status).stdout

    def workbook(self):
        data = ('<sheetData><row r="1"><c r="A1"><v>10</v></c><c r="B1"><f t="shared" ref="B1:B3" si="0">A1*2</f></c>'
                '<c r="C1" s="1"><f t="array" ref="C1:C3">A1:A3*10</f><v>1</v></c><c r="D1" t="s"><v>0</v></c>'
                '<c r="E1"><f>_xlfn.IFS(A1&gt;0,_xll.MonthEnd(38000))</f></c></row>'
                '<row r="2"><c r="A2"><v>20</v></c><c r="B2"><f t="shared" si="0"/></c><c r="C2"/></row>'
                '<row r="3"><c r="A3"><v>30</v></c><c r="B3"><f t="shared" si="0"/></c><c r="C3"/></row></sheetData>'
                '<mergeCells><mergeCell ref="G1:H1"/></mergeCells>')
        other = '<sheetData><row r="1"><c r="A1"><f>SUM(S!B1:B3)</f><v>0</v></c></row></sheetData>'
        parts = xlsx_parts(("S", data), ("In put", other), styles='<cellXfs><xf numFmtId="0"/><xf numFmtId="10"/></cellXfs>',
                           texts=("<si><t>total 10 =1</t></si>",))
        parts["xl/calcChain.xml"] = f'<calcChain xmlns="{MAIN}"><c r="B1" i="1"/><c r="E1"/></calcChain>'
        parts["xl/_rels/workbook.xml.rels"] = parts["xl/_rels/workbook.xml.rels"].replace(
            "</Relationships>", '<Relationship Id="rId9" Type="x/calcChain" Target="calcChain.xml"/></Relationships>')
        parts["[Content_Types].xml"] = '<Types><Override PartName="/xl/calcChain.xml" ContentType="c"/></Types>'
        return archive(parts)

    def test_formulas_and_constants_of_a_workbook(self):
        self.put("a.xlsx", self.workbook())
        shown = self.replace("a.xlsx", "--find", r"\b10\b|\*2$", "--replace", "7", status=0)
        for line in ("'S'!A1 +10 +-> +7", r"'S'!B1 +=A1\*2 +-> +=A17", r"'S'!C1 +=A1:A3\*10 +-> +=A1:A3\*7",
                     "'S'!D1 +total 10 =1 +-> +total 7 =1"):
            self.assertRegex(shown, line)
        self.assertTrue(shown.endswith("6 of 10 filled cells would change; --write changes the file\n"), shown)
        self.assertEqual(self.get("a.xlsx"), self.workbook())

        # The first of a shared formula changes; those that shared it keep theirs.
        done = self.replace("a.xlsx", "--find", r"\*2$|\*10$", "--replace", "*3", "--where", "S!A1:C1", "--write")
        self.assertIn("2 of 3 filled cells changed; the former file is a.xlsx.bak\n", done)
        self.assertEqual(self.get("a.xlsx.bak"), self.workbook())
        cells = self.values("a.xlsx")
        self.assertEqual([cells[c] for c in ("A1", "B1", "B2", "B3", "C1", "C3", "D1", "E1")],
                         [10, 30, 40, 60, 30, 90, "total 10 =1", 38017])
        self.assertEqual(self.values("a.xlsx", sheet=1), {"A1": 130})
        with zipfile.ZipFile(io.BytesIO(self.get("a.xlsx"))) as changed:
            sheet = changed.read("xl/worksheets/sheet1.xml").decode()
            self.assertIn('<f t="array" ref="C1:C3">A1:A3*3</f>', sheet)
            self.assertIn("<f>_xlfn.IFS(A1&gt;0,_xll.MonthEnd(38000))</f>", sheet)  # as it was
            self.assertIn("<mergeCells>", sheet)
            self.assertIn("<v>130</v>", changed.read("xl/worksheets/sheet2.xml").decode())
            self.assertNotIn("xl/calcChain.xml", changed.namelist())  # Excel takes one that disagrees for damage
            for part in ("[Content_Types].xml", "xl/_rels/workbook.xml.rels"):
                self.assertNotIn("calcChain", changed.read(part).decode())
        os.replace(self.path("a.xlsx.bak"), self.path("a.xlsx"))  # one step undoes it
        self.assertEqual(self.values("a.xlsx")["B1"], 20)

    def test_what_cannot_change_stays_and_is_reported(self):
        self.put("a.xlsx", self.workbook())
        done = self.replace("a.xlsx", "--find", r"^=A1\*2|^=A1:A3", "--replace", "=(", "--write", status=1)
        self.assertRegex(done, r"B1 .*stays as it was: character \d+: ")
        self.assertRegex(done, r"C1 .*stays as it was")
        self.assertIn("0 of 10 filled cells would change\n", done)
        self.assertEqual(self.get("a.xlsx"), self.workbook())
        # A broken formula behind a blank leaves its cell alone, while another one changes.
        self.replace("a.xlsx", "--find", r"^=A1\*2|total 10", "--replace", " =(", "--write", status=1)
        cells = self.values("a.xlsx")
        self.assertEqual((cells["B1"], cells["D1"]), (20, " =( =1"))
        os.replace(self.path("a.xlsx.bak"), self.path("a.xlsx"))
        self.put("m.csv", "5,=A1*2,=A1+\n")
        done = self.replace("m.csv", "--find", r"(\d)\*2|\+", "--replace", "$1*(", "--write", status=1)
        self.assertRegex(done, "B1 .*stays as it was: ")
        self.assertIn("1 of 3 filled cells changed", done)  # what was broken before may be on its way to be mended
        self.assertEqual(self.get("m.csv").decode(), "5,=A1*2,=A1*(\n")

    def test_a_formula_becomes_a_constant_and_a_date_stays_one(self):
        self.put("m.csv", "2026-01-31,=1+1,x\n")
        self.run_quexel("calc", "m.csv", "--out", "a.xlsx")
        self.replace("a.xlsx", "--find", r"2026-01|^=1\+1$", "--replace", "2027-03", "--write")
        self.assertEqual(self.values("a.xlsx", arguments=["--dates"]), {"A1": "2027-03-31", "B1": "2027-03", "C1": "x"})

    def test_ods_goes_to_a_new_workbook(self):
        cell = '<table:table-cell office:value-type="float" office:value="5"{}/>'
        self.put("a.ods", ods(("S", "<table:table-row>" + cell.format("") +
                               cell.format(' table:formula="of:=[.A1]*2"') + "</table:table-row>")))
        self.assertRegex(self.replace("a.ods", "--find", "[*]2", "--replace", "*3"), r"B1  =A1\*2  ->  =A1\*3")
        done = self.run_quexel("replace", "a.ods", "--find", "[*]2", "--replace", "*3", "--write", status=1)
        self.assertIn("--out FILE.xlsx writes a new one", done.stderr)
        self.replace("a.ods", "--find", "[*]2", "--replace", "*3", "--out", "b.xlsx")
        self.assertEqual(self.values("b.xlsx"), {"A1": 5, "B1": 15})
        self.run_quexel("replace", "a.ods", "--find", "5", "--replace", "6", "--where", "Nothing!A1", status=1)


class Printing(Case):
    def on_terminal(self, columns, *arguments):
        """What quexel prints on a terminal of so many columns."""
        master, slave = pty.openpty()
        fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 40, columns, 0, 0))
        child = subprocess.Popen([QUEXEL, *arguments], cwd=self.folder, stdout=slave, stderr=subprocess.DEVNULL)
        os.close(slave)
        printed = b""
        while True:
            try:
                piece = os.read(master, 4096)
            except OSError:
                break
            if not piece:
                break
            printed += piece
        os.close(master)
        self.assertEqual(child.wait(), 0)
        return printed.decode().splitlines()

    def test_tables_fit_the_terminal(self):
        self.put("m.csv", "A label of more than thirty characters," + ",".join(str(10**8 + i) for i in range(20)) + "\n")
        lines = self.on_terminal(60, "calc", "m.csv")
        self.assertLessEqual(max(map(len, lines)), 60)
        self.assertIn("100000000", lines[0])
        self.assertRegex(self.on_terminal(60, "calc", "m.csv", "--wide")[0], "100000019")
        self.assertIn("100000019", self.run_quexel("calc", "m.csv").stdout)  # a pipe has no width

    def test_forms(self):
        self.put("m.csv", "Name,Value\na|b,1.5\n")
        self.assertEqual(self.run_quexel("calc", "m.csv", "--output", "markdown").stdout,
                         "| Name | Value |\n| --- | ---: |\n| a\\|b | 1.5 |\n")
        self.assertEqual(self.run_quexel("eval", "{1,2;3,4}", "--output", "csv").stdout, "1,2\n3,4\n")
        self.assertEqual(self.run_quexel("eval", "MonthEnd(38000)", "--json", "--dates").stdout, '"2004-01-31"\n')
        lines = self.run_quexel("eval", "-", input="{1,2;3,\"a\"}\n\n1+\n2\n", status=1)
        self.assertEqual(lines.stdout, '{1,2;3,"a"}\n\n\n2\n')
        self.assertRegex(lines.stderr, "line 3: ")

    def test_reasons(self):
        done = self.run_quexel("eval", "DateYMD(2005,13,1)")
        self.assertRegex(done.stderr, "greater than maximum")
        self.put("m.csv", "=1/0,=A1+1,=B1\n")
        lines = self.run_quexel("calc", "m.csv").stderr.splitlines()
        self.assertEqual(len(lines), 3)
        self.assertRegex(lines[2], r"C1: #DIV/0!: .*, from A1$")

    def test_help_knows_every_option_and_topic(self):
        topics = re.findall(r"^  (\S+)  +\S", self.run_quexel("help").stdout, re.M)
        known = {command: self.run_quexel(command, "--help").stdout for command in ("calc", "eval", "trace")}
        self.assertGreater(len(topics), 4)
        for topic in topics:
            page = self.run_quexel("help", topic).stdout
            for command, line in re.findall(r"^  quexel (calc|eval|trace) (.*)$", page, re.M):
                for option in re.findall(r"(?<!\S)--[a-z-]+", line):
                    self.assertIn(option, known[command], topic)
        self.assertIn("--scenarios", self.run_quexel("help", "calc").stdout)
        self.run_quexel("help", "nothing", status=1)

    def test_completion_and_manual(self):
        script = self.run_quexel("completion", "bash").stdout
        asked = script + '\nPATH=' + os.path.dirname(QUEXEL) + ':$PATH\nask() { COMP_WORDS=("$@"); ' \
            'COMP_CWORD=$(($# - 1)); _quexel; echo "${COMPREPLY[*]}"; }\n' \
            "ask quexel ca; ask quexel calc --sc; ask quexel help MonthEn; ask quexel calc m.csv --output m\n"
        done = subprocess.run(["bash", "-c", asked], capture_output=True, text=True, timeout=60)
        self.assertEqual(done.stdout.splitlines()[:2], ["calc", "--scenarios"], done.stderr)
        self.assertIn("MonthEnd", done.stdout.splitlines()[2].split())
        self.assertEqual(done.stdout.splitlines()[3], "markdown")
        manual = self.run_quexel("man").stdout
        for option in ("in\\-place", "scenarios", "keep\\-values"):
            self.assertIn("\\-\\-" + option, manual)


class Hostile(Case):
    def refused(self, name, content, message):
        self.put(name, content)
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        done = self.run_quexel("calc", name, "--out", "out.xlsx", status=1)
        used = resource.getrusage(resource.RUSAGE_CHILDREN)
        self.assertRegex(done.stderr, message)
        self.assertEqual(sorted(os.listdir(self.folder)), [name])
        self.assertLess(used.ru_utime + used.ru_stime - before.ru_utime - before.ru_stime, 90)
        self.assertLess(used.ru_maxrss, 2.5e6, "kilobytes of the largest process")
        os.remove(self.path(name))

    def test_cut_short(self):
        whole = xlsx(("S", "<sheetData>" + "".join(f'<row><c><v>{i}</v></c></row>' for i in range(2000)) + "</sheetData>"))
        for size in (4, 30, len(whole) // 2, len(whole) - 5):
            self.refused("a.xlsx", whole[:size], "damaged|no workbook")
        broken = bytearray(whole)
        broken[len(whole) // 2] ^= 0xFF  # in the middle of the packed sheet
        self.put("b.xlsx", bytes(broken))
        done = subprocess.run([QUEXEL, "calc", "b.xlsx"], cwd=self.folder, capture_output=True, text=True, timeout=60)
        self.assertIn(done.returncode, (0, 1))

    def test_other_kinds_of_files(self):
        ole = b"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + bytes(500)
        self.refused("a.xlsx", ole + "EncryptedPackage".encode("utf-16-le"), "password")
        self.refused("a.xls", ole, r"Excel 97 to 2003.*save it as \.xlsx")
        self.refused("a.xlsx", archive({"[Content_Types].xml": "", "xl/workbook.bin": ""}), "binary workbook")
        self.refused("a.xlsx", archive({"readme.txt": "words"}), "no workbook")
        self.refused("a.xlsx", b"Rent,5\n", "name ends in .xlsx")
        self.refused("a.csv", xlsx(("S", "<sheetData/>")), "rename it")
        self.refused("a.ods", xlsx(("S", "<sheetData/>")), "rename it")
        self.refused("a.ods", ods(("S", ""), manifest="<manifest><encryption-data/></manifest>"), "password")
        self.refused("a.xlsx", b"%PDF-1.4", "PDF")

    def test_entities_and_document_types(self):
        laughs = '<!DOCTYPE x [<!ENTITY a "ha"><!ENTITY b "&a;&a;&a;">]>'
        outside = '<!DOCTYPE x [<!ENTITY a SYSTEM "file:///etc/passwd">]>'
        for declared in (laughs, outside):
            parts = xlsx_parts(("S", "<sheetData/>"))
            parts["xl/worksheets/sheet1.xml"] = declared + parts["xl/worksheets/sheet1.xml"]
            self.refused("a.xlsx", archive(parts), "declares a document type")

    def test_nested_and_numerous(self):
        self.refused("a.xlsx", xlsx(("S", "<a>" * 100000 + "</a>" * 100000)), "nested too deeply")
        self.refused("a.xlsx", xlsx(("S", "<sheetData/>"), styles="<cellXfs>" + "<xf/>" * 1000000 + "</cellXfs>"),
                     "more than 65,000 styles")
        cell = '<table:table-cell office:value-type="float" office:value="1" table:number-columns-repeated="16384"/>'
        self.refused("a.ods", ods(("S", f'<table:table-row table:number-rows-repeated="1048576">{cell}</table:table-row>')),
                     "more than 16 million cells")

    def test_zip_bomb(self):
        # 1.2 GB of blanks in 5 MB.
        blanks, parts = b" " * (1 << 20), xlsx_parts(("S", "<sheetData/>"))
        content = io.BytesIO()
        with zipfile.ZipFile(content, "w", zipfile.ZIP_DEFLATED, compresslevel=1) as made:
            for name, part in parts.items():
                if not name.endswith("sheet1.xml"):
                    made.writestr(name, part)
            with made.open("xl/worksheets/sheet1.xml", "w", force_zip64=True) as sheet:
                sheet.write(f'<worksheet xmlns="{MAIN}"><sheetData>'.encode())
                for _ in range(1200):
                    sheet.write(blanks)
        self.refused("a.xlsx", content.getvalue(), "unpacks to more than 1 GB")


if __name__ == "__main__":
    QUEXEL = os.path.abspath(sys.argv.pop(1))
    unittest.main()
