#!/usr/bin/env python3
"""The report of a model in a real browser: tables, charts, explanations a click away, and on paper.

Usage: report_test.py SOURCE_FOLDER QUEXEL
"""
import base64
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

from webdriver import Browser

MODEL = '''Year,2026,2027,2028
Net cash flow,-1000,=B2*-0.5,=C2*1.2
Month end,=MonthEnd(38000),"=MonthEnd(DateYMD(2005,13,1))",=C3+1
<b>markup</b>,</script>,"=A4&""!""",
'''


class Report(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        holder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(holder.cleanup)
        folder = pathlib.Path(holder.name)
        (folder / "model.csv").write_text(MODEL)
        subprocess.run([quexel, "calc", "model.csv", "--report", "report.html", "--chart", "Flow=net cash flow over year"],
                       cwd=folder, check=True, capture_output=True)
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.close)
        cls.browser.open(folder / "report.html")
        cls.folder = folder

    def tearDown(self):
        self.assertEqual(self.browser.complaints(), [])

    def text(self, selector):
        return self.browser.run("return [...document.querySelectorAll(arguments[0])].map(e => e.textContent)", selector)

    def test_shows_tables_errors_and_charts(self):
        self.assertEqual(self.text("h1"), ["model.csv"])
        self.assertEqual(self.text("main h2"), ["Sheet1", "Errors"])
        self.assertIn("600", self.text("td"))
        self.assertIn("<b>markup</b>!", self.text("td"))
        errors = self.browser.run("return [...document.querySelectorAll('table:last-of-type tr')]"
                                  ".map(r => [...r.cells].map(c => c.textContent))")
        rows = {row[0]: row for row in errors if len(row) == 4}
        self.assertEqual(rows["D3"][1:2] + rows["D3"][3:], [rows["C3"][1], "C3"])
        self.assertTrue(rows["C3"][2])
        # Three columns, the first below the line of zero, the second half as high above it.
        bars = self.browser.run("return [...document.querySelectorAll('svg rect')].map(r => [r.y.baseVal.value, r.height.baseVal.value])")
        zero = self.browser.run("return document.querySelector('svg .zero').y1.baseVal.value")
        self.assertEqual(len(bars), 3)
        self.assertAlmostEqual(bars[0][0], zero, delta=0.2)
        self.assertAlmostEqual(bars[1][0] + bars[1][1], zero, delta=0.2)
        self.assertAlmostEqual(bars[1][1], bars[0][1] / 2, delta=0.2)
        self.assertEqual(self.browser.run("return performance.getEntriesByType('resource').length"), 0)

    def test_explains_a_cell(self):
        self.browser.click("[data-cell=B3] button")
        panel = self.text("#trace")[0]
        self.assertIn("MonthEnd(38000)", panel)
        self.assertIn("31Jan2004", panel)
        self.assertGreater(len(self.text("#trace details")), 3)
        self.browser.click("[data-cell=D3] button")
        self.assertIn("from C3", self.text("#trace")[0])
        self.assertIn("Reads C3", self.text("#trace")[0])
        self.browser.press("Escape")
        self.assertTrue(self.browser.run("return document.getElementById('trace').hidden"))
        self.assertEqual(self.browser.run("return document.activeElement.closest('td').dataset.cell"), "D3")

    def test_prints_on_one_page_without_the_panel(self):
        self.browser.click("[data-cell=B3] button")
        paper = base64.b64decode(self.browser.call("POST", "/print", {"page": {"width": 21.0, "height": 29.7}}))
        self.assertEqual(len(re.findall(rb"/Type\s*/Page\b", paper)), 1)
        self.browser.press("Escape")

    def test_a_long_model_stays_a_page_that_opens(self):
        lines = "".join(f"{i},=A{i}*2\n" for i in range(1, 6001))
        (self.folder / "long.csv").write_text(lines)
        subprocess.run([quexel, "calc", "long.csv", "--report", "long.html"], cwd=self.folder, check=True)
        page = (self.folder / "long.html").read_text()
        self.assertIn("The first 2000 rows", page)
        self.assertLess(len(page), 2_000_000)


if __name__ == "__main__":
    source, quexel = pathlib.Path(sys.argv.pop(1)), str(pathlib.Path(sys.argv.pop(1)).resolve())
    unittest.main()
