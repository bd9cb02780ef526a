#!/usr/bin/env python3
"""The trace's page in a real browser: read, clicked, searched and used by keyboard.

Usage: trace_page_test.py PAGE_WRITER     (the program made from trace_pages.cpp)
"""
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

from webdriver import Browser

OUTLINE = """return [...document.querySelectorAll("#rows > .row")].map(row =>
    ".".repeat(row.ariaLevel - 1) + (row.ariaExpanded === "true" ? "-" : row.ariaExpanded === "false" ? "+" : " ")
    + row.querySelector(".text").textContent)"""
OCCURRING = ["Error", "External Function", "Arguments", "Return Value", "Function Return", "Function called internally",
             "Warning", "Information", "Argument Value", "Inputs", "Input Value", "Loop Pass"]
FAILED_AT_FIRST = ["+DYear", "-DpD", ".-DpD", ".. Warning", ".. Info", "..-Loop Pass", "... Error"]


class TracePage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.pages = pathlib.Path(cls.folder.name)
        subprocess.run([writer, cls.folder.name], check=True)
        cls.browser = Browser()

    @classmethod
    def tearDownClass(cls):
        cls.browser.close()
        cls.folder.cleanup()

    def page(self, name):
        self.browser.open(self.pages / name)

    def tearDown(self):
        self.assertEqual(self.browser.complaints(), [])

    def outline(self):
        return self.browser.run(OUTLINE)

    def selected(self):
        """Name, value and description of the selected row, which must be in sight."""
        return self.browser.run("""
            const row = document.querySelector('[aria-selected="true"]'), tree = document.getElementById("tree");
            const at = row.getBoundingClientRect(), box = tree.getBoundingClientRect();
            if (at.bottom > box.bottom + 1 || at.top < document.getElementById("head").getBoundingClientRect().bottom - 1)
                throw "the selected row is out of sight";
            if (tree.getAttribute("aria-activedescendant") !== row.id) throw "the active row is not told";
            return [".text", ".value", ".description"].map(part => row.querySelector(part).textContent)""")

    def test_shows_columns_legend_summary_and_note(self):
        self.page("failed.html")
        run = self.browser.run
        self.assertEqual(run("return document.title"), 'Quexel Trace: DpD(38000, "<i>")')
        self.assertEqual(run("return document.querySelector('h1').textContent"), "Quexel Trace")
        self.assertEqual(run("return document.getElementById('subject').textContent"), 'DpD(38000, "<i>")')
        self.assertEqual(run("return [...document.querySelectorAll('[role=columnheader]')].map(c => c.textContent)"),
                         ["Function, Variable Name or Message Type", "Value", "Description"])
        self.assertEqual(run("return document.getElementById('legend-title').textContent"), "Legend")
        self.assertEqual(run("return [...document.querySelectorAll('#legend li')].map(l => l.textContent).sort()"),
                         sorted(OCCURRING), "no entry that does not occur")
        self.assertRegex(run("return document.getElementById('summary').textContent"), r"^\d+ msecs 15 lines $")
        self.assertIn("A copy of this output has been written to text file called qx_Trace.qxl, located in current "
                      "working directory.", run("return document.querySelector('footer').textContent"))
        self.assertEqual(run("return performance.getEntriesByType('resource').length"), 0, "nothing is fetched")

    def test_opens_at_the_error(self):
        self.page("failed.html")
        self.assertEqual(self.outline(), FAILED_AT_FIRST)
        self.assertEqual(self.selected()[2].split(" \n")[0],
                         "Error LIB17: Value less than minimum allowed value  Variable Days")
        self.assertIn("DpD › DpD › Loop Pass", self.browser.run("return document.getElementById('detail').textContent"))
        self.assertEqual(self.browser.run("""const row = document.querySelector(".error");
            return [row.ariaLevel, row.ariaPosInSet, row.ariaSetSize, row.querySelector(".icon").ariaLabel]"""),
                         ["4", "1", "1", "Error"])

    def digest(self):
        return self.browser.run("return document.getElementById('digest').innerText")

    def test_says_in_short_why_it_failed(self):
        self.page("failed.html")
        self.assertIn("= #NUM! Value less than minimum allowed value (Days).", self.digest())
        self.assertIn("1 call before it", self.digest())
        self.browser.click("#item-0 .text")
        self.browser.click("#digest button")
        self.assertEqual(self.selected()[0], "Error")
        self.browser.click("#item-0 .text")
        self.browser.press("Home", "e")
        self.assertEqual(self.selected()[0], "Error")

    def test_says_in_short_what_a_modeller_asks_first(self):
        self.page("solved.html")
        text = self.digest()
        self.assertIn("= 0.1", text)
        tables = self.browser.run("""return [...document.querySelectorAll("#digest table")].map(table =>
            [...table.rows].map(row => [...row.cells].map(cell => cell.textContent)))""")
        self.assertEqual(tables[0], [["Dates", "2 values", ""], ["Cashflows", "2 values", ""], ["IRRAccOpt", "1e-10", "default"]])
        self.assertEqual(tables[1], [["", "Dates", "Cashflows"], ["1", "2005", "-100"], ["2", "2006", "110"]])
        self.assertEqual(tables[2][0][0], "pvt")
        self.assertRegex(tables[2][0][1], r"^40 calls, rate from 0.05 to 0.099968[78]; last result 0.00284")
        self.assertIn("Solve Successful. Result = 0.1", text)
        self.assertRegex(text, r"PV\(110\) at time 1 years = 100\.00284\d+")
        self.assertNotIn("Error", self.browser.run("return document.getElementById('legend').textContent"))

    def test_folds_the_trials_of_a_search(self):
        self.page("solved.html")
        self.browser.click("#item-0 .text")
        self.browser.press("End", "Up", "Right")
        outline = self.outline()
        self.assertEqual(outline.count("..+pvt"), 5)
        self.assertIn("36 more", self.browser.run("return document.getElementById('rows').textContent"))
        self.browser.press("/", *"36 more")
        self.assert_hits("1 of 1")
        self.browser.press("Down", "Right")
        first = self.browser.run("""const row = document.querySelector('[aria-selected="true"]').nextElementSibling;
            return [row.ariaLevel, row.ariaSetSize]""")
        self.assertEqual(first, ["4", "36"])

    def test_compares_two_traces(self):
        self.page("compared.html")
        rows = self.browser.run("""return [...document.querySelectorAll("#digest tr")].map(row =>
            [row.className, ...[...row.cells].map(cell => cell.textContent)])""")
        self.assertEqual(rows[0], ["", "", "Before", "After"])
        self.assertEqual(rows[1], ["changed", "≠ Formula", "IRRT(A1:A2, B1:B2)", "IRRT(A1:A2, C1:C2)"])
        self.assertEqual(rows[2], ["", "Result", "0.1", "0.1"])
        self.assertEqual(rows[-1][:2], ["changed", "≠ pvt"])
        self.assertEqual(self.browser.run("""return [...document.querySelectorAll('[role=columnheader]')].map(c => c.textContent)"""),
                         ["Function, Variable Name or Message Type", "Before", "After"])
        self.browser.click("#next-difference")
        row = self.browser.run("""const row = document.querySelector('[aria-selected="true"]');
            return [row.classList.contains("gone"), row.querySelector(".sign").textContent, row.querySelector(".text").textContent,
                    row.querySelectorAll(".value")[1].textContent]""")
        self.assertEqual(row, [True, "−", "pvt", ""], "the fortieth trial")
        self.browser.press("Home")
        self.browser.click("#previous-difference")
        self.assertEqual(self.browser.run("return document.querySelector('[aria-selected=\"true\"]').id"), "item-0")

    def test_fits_a_phone(self):
        self.browser.devtools("Emulation.setDeviceMetricsOverride", width=390, height=844, deviceScaleFactor=1, mobile=True)
        try:
            for name in ("failed.html", "solved.html", "compared.html"):
                self.page(name)
                wide = self.browser.run("""return [...document.querySelectorAll("body > *, #rows > .row, .row > div, #digest *")]
                    .filter(e => e.getBoundingClientRect().right > innerWidth + 1 && e.getBoundingClientRect().width > 0)
                    .filter(e => !e.closest(".list")).map(e => e.outerHTML.slice(0, 90))""")
                self.assertEqual(wide, [])
                self.assertEqual(self.browser.run("return document.documentElement.scrollWidth"), 390)
                heights = self.browser.run("""return [...document.querySelectorAll("#rows > .row")].map(r => r.offsetHeight)""")
                self.assertEqual(set(heights), {50}, "two lines a row")
        finally:
            self.browser.devtools("Emulation.clearDeviceMetricsOverride")

    def test_shows_any_text_as_it_is(self):
        self.page("failed.html")
        texts = self.browser.run("return [...document.querySelectorAll('.description')].map(d => d.textContent)")
        self.assertEqual(texts[3], "</script><script>document.title = 'broken out'</script>")
        self.assertEqual(texts[4], '<b>bold</b> &amp; "quoted" \\ back€ café € ok\x01')

    def test_opens_and_closes_by_mouse(self):
        self.page("failed.html")
        self.browser.click("#item-0 .twisty")
        self.assertEqual(self.outline()[:4], ["-DYear", ".+Inputs", ".+DYear", "-DpD"])
        self.browser.click("#item-1 .twisty")
        self.assertEqual(self.outline()[2], "..+TheDate")
        self.browser.click("#item-0 .twisty")
        self.assertEqual(self.outline(), FAILED_AT_FIRST)
        self.browser.click("#expand")
        self.assertEqual(len(self.outline()), 15)
        self.browser.press("End")
        self.browser.click("#collapse")
        self.assertEqual(self.outline(), ["+DYear", "+DpD"])
        self.assertEqual(self.selected()[0], "DpD", "what was selected is now inside it")

    def test_tells_inputs_from_arguments(self):
        self.page("failed.html")
        self.browser.click("#expand")
        labels = self.browser.run("return [...document.querySelectorAll('#rows .icon')].slice(0, 8).map(i => i.ariaLabel)")
        self.assertEqual(labels, ["External Function", "Inputs", "Input Value", "Return Value", "Function Return",
                                  "Function called internally", "Arguments", "Argument Value"])

    def test_is_used_by_keyboard(self):
        self.page("failed.html")
        press = self.browser.press
        self.browser.click("#item-0 .text")
        press("Right")
        self.assertEqual(self.selected()[0], "DYear")
        press("Right")
        self.assertEqual(self.selected()[0], "Inputs")
        press("Enter")
        self.assertEqual(self.outline()[2], "..+TheDate")
        press("Down", "Down", "Up", "Left")
        self.assertEqual(self.selected()[0], "Inputs")
        press("Space")
        self.assertEqual(self.outline()[2], ".+DYear")
        press("Left")
        self.assertEqual(self.selected()[0], "DYear")
        press("Left")
        self.assertEqual(self.outline(), FAILED_AT_FIRST)
        press("End")
        self.assertEqual(self.selected()[0], "Error")
        press("Down", "Right")
        self.assertEqual(self.selected()[0], "Error")
        press("Home", "Up", "Left")
        self.assertEqual(self.selected()[0], "DYear")
        press("/")
        self.assertEqual(self.browser.run("return document.activeElement.id"), "find")
        press("Escape")
        self.assertEqual(self.browser.run("return document.activeElement.id"), "tree")
        press("f", held="Control")
        self.assertEqual(self.browser.run("return document.activeElement.id"), "find")

    def assert_hits(self, told):
        """What the search box tells, once it has caught up with the keys."""
        end = time.monotonic() + 5
        while True:
            hits = self.browser.run("return document.getElementById('hits').textContent")
            if hits == told or time.monotonic() > end:
                return self.assertEqual(hits, told)
            time.sleep(0.02)

    def test_finds_in_all_columns(self):
        self.page("failed.html")
        press = self.browser.press
        self.browser.click("#collapse")
        press("/", *"14jan")
        self.assert_hits("1 of 2")
        self.assertEqual(self.selected()[0], "Return Value")
        self.assertEqual(self.browser.run("return document.querySelector('mark').textContent"), "14Jan")
        press("Enter")
        self.assert_hits("2 of 2")
        self.assertEqual(self.selected()[2], "Date to take the year of")
        press("Enter")
        self.assert_hits("1 of 2")  # around the end
        press("Enter", held="Shift")
        self.assert_hits("2 of 2")
        self.browser.click("#previous")
        self.assert_hits("1 of 2")
        self.browser.click("#next")
        self.assert_hits("2 of 2")
        press("/", *"lib17")  # what was there is selected, and typed over
        self.assert_hits("1 of 1")
        self.assertEqual(self.selected()[0], "Error")
        press(*"0")
        self.assert_hits("not found")
        press("Escape", "/", *"Loop Pass")
        self.assert_hits("1 of 1")

    def test_stays_quick_with_150000_items(self):
        started = time.monotonic()
        self.page("long.html")
        self.assertEqual(self.outline()[:3], ["-IRR", ".+Loop Pass", ".+Loop Pass"])
        self.browser.click("#expand")
        self.browser.press("End")
        self.assertEqual(self.selected()[2], "the last line")
        self.assertLess(self.browser.run("return document.getElementsByTagName('*').length"), 2000)
        self.browser.press("Home", "PageDown")
        self.assertRegex(self.selected()[0], "^x1[0-9]$")
        self.browser.press("/", *"299499")
        self.assert_hits("1 of 1")
        self.assertEqual(self.selected()[:2], ["x499", "299499"])
        self.assertLess(time.monotonic() - started, 20)

    def test_tells_that_there_is_nothing(self):
        self.page("empty.html")
        self.assertEqual(self.outline(), [" Nothing To Report"])
        self.assertEqual(self.browser.run("return document.title"), "Quexel Trace")

    def test_prints_what_is_open(self):
        self.page("failed.html")
        self.browser.devtools("Emulation.setEmulatedMedia", media="print")
        self.browser.run("dispatchEvent(new Event('beforeprint'))")
        self.assertEqual(self.browser.run("""const table = document.getElementById("paper");
            return [getComputedStyle(table).display, table.tHead.rows[0].cells.length, table.tBodies[0].rows.length,
                    getComputedStyle(document.getElementById("tree")).display]"""), ["table", 3, 7, "none"])
        self.browser.run("dispatchEvent(new Event('afterprint'))")
        self.browser.devtools("Emulation.setEmulatedMedia", media="")

    def test_contrast_is_enough_in_light_and_dark(self):
        self.page("failed.html")
        grounds = set()
        for scheme in ("light", "dark"):
            self.browser.devtools("Emulation.setEmulatedMedia",
                                  features=[{"name": "prefers-color-scheme", "value": scheme}])
            ground, pairs = self.browser.run("""
                const luminance = colour => {
                    const [r, g, b] = colour.match(/[\\d.]+/g).map(v => (v /= 255) <= 0.03928 ? v / 12.92
                                                                   : ((v + 0.055) / 1.055) ** 2.4);
                    return 0.2126 * r + 0.7152 * g + 0.0722 * b;
                };
                const ground = element => {
                    for (; element; element = element.parentElement) {
                        const colour = getComputedStyle(element).backgroundColor;
                        if (colour !== "rgba(0, 0, 0, 0)") return colour;
                    }
                };
                const seen = "#digest p, #digest b, #digest th, #digest td, #digest summary, #legend .icon, .text, .description, .value, #summary, footer div, #head div, #detail div";
                return [ground(document.getElementById("tree")), [...document.querySelectorAll(seen)].map(element => {
                    const [a, b] = [luminance(getComputedStyle(element).color), luminance(ground(element))];
                    return [(Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05), element.outerHTML.slice(0, 80)];
                })]""")
            grounds.add(ground)
            self.assertGreater(len(pairs), 40)
            self.assertGreaterEqual(min(pairs)[0], 4.5, min(pairs))
        self.assertEqual(len(grounds), 2)
        self.browser.devtools("Emulation.setEmulatedMedia", features=[])


if __name__ == "__main__":
    writer = str(pathlib.Path(sys.argv.pop(1)).resolve())
    unittest.main(verbosity=2)
