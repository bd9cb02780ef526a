#!/usr/bin/env python3
"""The pages of help in a real browser, opened as files: search by typing and by keyboard, narrow screens, contrast.

Usage: help_test.py QUEXEL
"""
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

from webdriver import Browser

CONTRAST = """
const parts = colour => colour.match(/[\\d.]+/g).map(Number);
const light = colour => parts(colour).slice(0, 3).map(c => c / 255)
  .map(c => c <= 0.03928 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4)
  .reduce((sum, c, i) => sum + c * [0.2126, 0.7152, 0.0722][i], 0);
const ground = element => {
  for (; element; element = element.parentElement) {
    const colour = getComputedStyle(element).backgroundColor;
    if (!/, 0\\)$/.test(colour)) return colour;
  }
  return "rgb(255, 255, 255)";
};
let least = 21;
for (const element of document.querySelectorAll("body *")) {
  const own = [...element.childNodes].some(node => node.nodeType === 3 && node.data.trim());
  if (!own || element.tagName === "SCRIPT") continue;
  const [a, b] = [light(getComputedStyle(element).color), light(ground(element))].sort((x, y) => y - x);
  least = Math.min(least, (a + 0.05) / (b + 0.05));
}
return least;
"""


class Help(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        holder = tempfile.TemporaryDirectory(prefix="quexel help ")  # a folder's name may hold a blank
        cls.addClassCleanup(holder.cleanup)
        cls.folder = pathlib.Path(holder.name)
        subprocess.run([quexel, "help", "--html", cls.folder], check=True, capture_output=True)
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.close)

    def setUp(self):
        self.browser.open(self.folder / "index.html")

    def tearDown(self):
        self.browser.devtools("Emulation.clearDeviceMetricsOverride")
        self.assertEqual(self.browser.complaints(), [])

    def type(self, words):
        self.browser.click("input[type=search]")
        self.browser.press(*(words if isinstance(words, list) else list(words)))

    def found(self):
        return self.browser.run("return [...document.querySelectorAll('#found dt')].map(e => e.textContent)")

    def page(self):
        return self.browser.run("return decodeURI(location.pathname).split('/').pop()")

    def wait_for(self, page):
        end = time.monotonic() + 10
        while self.page() != page and time.monotonic() < end:
            time.sleep(0.02)
        self.assertEqual(self.page(), page)

    def test_typing_finds_and_a_click_leads_on_and_back(self):
        self.assertTrue(self.browser.run("return document.getElementById('contents').offsetHeight > 0"))
        self.type("upward-only review")
        self.assertIn("reviews", self.found())
        self.assertTrue(self.browser.run("return document.getElementById('contents').hidden"))
        self.assertEqual(self.browser.run("return document.querySelector('#found p').textContent"),
                         f"{len(self.found())} pages")
        self.browser.click("#found a[href='topic-reviews.html']")
        self.wait_for("topic-reviews.html")
        self.browser.call("POST", "/back", {})
        self.wait_for("index.html")
        self.assertIn("reviews", self.found())
        self.assertEqual(self.browser.run("return document.querySelector('input[type=search]').value"),
                         "upward-only review")

    def test_the_keyboard_is_enough(self):
        self.type("monthend")
        self.assertEqual(self.found()[0], "MonthEnd")
        self.browser.press("Enter")
        self.wait_for("MonthEnd.html")
        # From a page: the words go to the index. A built-in function is found where its line is.
        self.type([*"vlookup", "Enter"])
        self.wait_for("index.html")
        self.assertIn("VLOOKUP", self.found())
        self.browser.run("document.querySelector('#found a').focus()")
        self.browser.press("Enter")
        self.wait_for("built-in.html")
        top = self.browser.run("return document.getElementById('VLOOKUP').getBoundingClientRect().top")
        self.assertLess(top, self.browser.run("return innerHeight"))

    def test_nothing_found_and_markup_as_words(self):
        self.type("<b>nosuchword&")
        self.assertEqual(self.found(), [])
        self.assertEqual(self.browser.run("return document.getElementById('found').textContent"), "Nothing found.")
        self.browser.press("Enter")  # leads nowhere
        self.assertEqual(self.page(), "index.html")
        self.browser.run("const box = document.querySelector('input'); box.value = '';"
                         "box.dispatchEvent(new Event('input'))")
        self.assertFalse(self.browser.run("return document.getElementById('contents').hidden"))

    def test_fits_a_narrow_screen(self):
        self.browser.devtools("Emulation.setDeviceMetricsOverride", width=360, height=740, deviceScaleFactor=2,
                              mobile=True)
        for page in ("index.html", "index.html?q=rent", "TStepIdxRentFcstR.html", "PVM.html", "topic-day-counts.html",
                     "topic-errors.html", "commands.html", "built-in.html", "category-real-estate.html",
                     *sorted(path.name for path in self.folder.glob("definitions-*.html"))):
            name, _, words = page.partition("?")
            self.browser.call("POST", "/url", {"url": (self.folder / name).as_uri() + ("?" + words if words else "")})
            self.assertLessEqual(self.browser.run("return document.documentElement.scrollWidth"), 360, page)

    def test_can_be_read_and_needs_no_network(self):
        for page in ("index.html", "Con.html", "topic-errors.html", "definitions-accounts.html"):
            self.browser.open(self.folder / page)
            self.assertGreaterEqual(self.browser.run(CONTRAST), 4.5, page)
            self.assertEqual(self.browser.run("return performance.getEntriesByType('resource').length"), 0)


if __name__ == "__main__":
    quexel = str(pathlib.Path(sys.argv.pop(1)).resolve())
    unittest.main()
