#!/usr/bin/env python3
"""Help as a folder of pages: every link leads somewhere, every function has a page with an example, every example of a
topic is true, and no page shows the notation in which examples are tested.

    help_test.py PROGRAM
"""
import html.parser
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

PROGRAM = sys.argv.pop(1)


def run(*arguments, **more):
    return subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, timeout=120, **more)


class Page(html.parser.HTMLParser):
    """What a page links to, what can be linked to in it, its elements' balance, and the texts of its blocks."""

    VOID = {"meta", "input", "br"}

    def __init__(self, text):
        super().__init__()
        self.links, self.anchors, self.examples, self.open, self.faults = [], set(), [], [], []
        self.in_example = False
        self.feed(text)
        self.faults += self.open

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        if "href" in values:
            self.links.append(values["href"])
        if "id" in values:
            self.anchors.add(values["id"])
        if tag == "pre" and values.get("class") == "example":
            self.examples.append("")
            self.in_example = True
        if tag not in self.VOID:
            self.open.append(tag)

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            self.faults.append("/" + tag)
        self.in_example = self.in_example and tag != "pre"

    def handle_data(self, data):
        if self.in_example:
            self.examples[-1] += data


class Help(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.temporary = tempfile.TemporaryDirectory()
        cls.folder = pathlib.Path(cls.temporary.name) / "help"
        written = run("help", "--html", str(cls.folder))
        assert written.returncode == 0, written.stderr
        cls.texts = {path.name: path.read_text() for path in cls.folder.iterdir()}
        cls.pages = {name: Page(text) for name, text in cls.texts.items()}
        cls.functions = json.loads(run("functions", "--json").stdout)

    @classmethod
    def tearDownClass(cls):
        cls.temporary.cleanup()

    def test_every_link_leads_somewhere_and_every_page_is_reached(self):
        reached = {"index.html"}
        for name, page in self.pages.items():
            self.assertEqual(page.faults, [], name)
            for link in page.links:
                target, _, anchor = link.partition("#")
                target = target or name
                self.assertIn(target, self.pages, f"{name} links to {link}")
                if anchor:
                    self.assertIn(anchor, self.pages[target].anchors, f"{name} links to {link}")
                reached.add(target)
        self.assertEqual(reached, set(self.pages))
        self.assertEqual(len({name.lower() for name in self.pages}), len(self.pages), "names differ by more than case")

    def test_every_function_has_a_page_with_examples_as_a_user_types_them(self):
        for function in self.functions:
            name = function["name"]
            page = self.pages[name + ".html"]
            self.assertTrue(page.examples, name)
            for argument in function["arguments"]:
                self.assertIn(f"<td><code>{argument['name']}</code></td>", self.texts[name + ".html"])
            for example in page.examples:
                self.assertRegex(example, r"^=.+  (= |gives (#|an empty cell))")
                self.assertNotRegex(example, r" [~!] |\berr[a-z]+$| 1e-\d+$")

    def test_an_error_of_an_example_comes_with_its_reason(self):
        for name, text in self.texts.items():
            for after in re.findall(r"gives #[A-Z/0!]+</pre>\n(.*)", text):
                self.assertRegex(after, r'<p class="soft">.', name)

    def test_the_examples_of_the_topics_hold(self):
        cases = []
        for name in self.texts:
            if name.startswith("topic-"):
                text = run("help", name[len("topic-"):-len(".html")]).stdout
                cases += re.findall(r"^  (=\S.*)  = (.+)$", text, re.M)
        self.assertGreater(len(cases), 15)
        answers = run("eval", "-", input="".join(formula + "\n" for formula, _ in cases)).stdout.splitlines()
        self.assertEqual(answers, [value for _, value in cases])

    def test_limits_and_errors_come_from_the_function(self):
        text = self.texts["Con.html"]
        self.assertIn("A number, 0 to 999; default: 0", text)
        self.assertRegex(text, r"ProjMode above 7</td><td><code>#NUM!</code></td><td>Value greater than maximum")
        self.assertIn("A list of dates", self.texts["DateSeq.html"])
        for name in ("Switch", "Unique"):
            self.assertIn(f"a function {name.upper()} of their own", self.texts[name + ".html"])

    def test_search_finds_what_is_meant_first(self):
        def found(*words):
            return [line.split()[0] for line in run("help", "--search", *words).stdout.splitlines() if line[2:3] != " "]

        self.assertEqual(found("monthend")[0], "MonthEnd")
        self.assertIn("VLOOKUP", found("vlookup"))
        self.assertIn("reviews", found("upward-only"))
        self.assertIn("day-counts", found("30/360", "day", "count"))
        self.assertIn("accounts", found("sinking", "fund"))
        self.assertTrue(run("help", "accounts").stdout.startswith("# Accounts\n"))
        self.assertIn("<ol>\n<li>Interest is paid on cash", self.texts["definitions-accounts.html"])
        self.assertEqual(run("help", "--search", "nosuchword").returncode, 1)
        listed = json.loads(re.search(r'<script id="pages" type="application/json">(.*?)</script>',
                                      self.texts["index.html"], re.S)[1])
        for entry in listed:
            target, _, anchor = entry["page"].partition("#")
            self.assertIn(target, self.pages)
            if anchor:
                self.assertIn(anchor, self.pages[target].anchors)
        self.assertEqual({entry["name"] for entry in listed} & {"MonthEnd", "VLOOKUP", "reviews", "CPPQX_TraceShow"},
                         {"MonthEnd", "VLOOKUP", "reviews", "CPPQX_TraceShow"})


if __name__ == "__main__":
    unittest.main()
