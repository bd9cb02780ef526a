#!/usr/bin/env python3
"""The spelling of what users and developers read: pages of help, documents, options of the program, comments of headers.

British English, by hunspell, and the terms of words.txt. A name in running text, PmtsPerYear or trace_topic, must be one
that exists: of a function, an argument, a command, or in the sources. Phrases that a native reader stumbles over are
found too, in the comments of all sources.

Usage: spelling.py SOURCE_FOLDER PROGRAM
"""
import html.parser
import json
import pathlib
import re
import subprocess
import sys
import tempfile

WORD = re.compile(r"(?<![\w.^])[A-Za-z][A-Za-z0-9_]*(?:'[a-z]+)?")
PHRASES = {
    r"(?<!compiler )\b(?:is|are|was|were|be) told\b|\btold to the (?:user|trace|host)\b": "is reported, shown, given",
    r"\btells (?:whether|if|what|which|its|the|of|about)\b(?! compiler)": "says, shows, returns",
    r"\bstands? (?:in|at|on|under|beside|behind|where|there|above|below)\b": "is",
    r"\bleft out\b": "omitted",
    r"\bat every moment\b": "continuously",
    r"\b(?:a|an empty) text\b(?! (?:box|file|editor|field|string))": "a string, text",
    r"\bin arrear\b": "in arrears",
    r"\bmisses the\b|\bthat (?:it|they) miss(?:es)?\b": "lacks",
    r"\bby hand\b(?=.*\btest)|\btested by hand\b": "manually",
    r"\bas its table states\b|\bto the letter\b": "no line speaks of a document behind the code",
}
# As they were written, for those who search for them.
KEPT = ("BiAnnually in arrear", "Annually in arrear", "Quarterly in arrear", "quarterly in arrear", "Monthly in arrear",
        "qtrly in arrear", "Quarter Days in arrear")
NAME = re.compile(r"\w[A-Z0-9_]|^[A-Z]$")  # capitals inside, digits: no word of the language


class Text(html.parser.HTMLParser):
    """The running text of a page, without code."""

    def __init__(self, page):
        super().__init__()
        self.skipped, self.parts = 0, []
        self.feed(page)

    def handle_starttag(self, tag, attributes):
        self.skipped += tag in ("code", "pre", "script", "style")

    def handle_endtag(self, tag):
        self.skipped -= tag in ("code", "pre", "script", "style")
        self.parts.append(" " if tag in ("em", "strong", "a", "span") else "\n")

    def handle_data(self, data):
        if not self.skipped:
            self.parts.append(data)


def running_text(markdown):
    text = re.sub(r"^```.*?^```", "", markdown, flags=re.S | re.M)
    text = re.sub(r"^    .*$", "", text, flags=re.M)
    return re.sub(r"`[^`]*`|\]\([^)]*\)|<[^>]*>|\w+\.(md|csv)\b", " ", text)


def comments(code, known_names):
    """The comments, without names of the code: those are mostly in small letters."""
    found = "\n".join(re.findall(r"//+<?(.*)", code))
    found = re.sub(r"NOLINT.*|`[^`]*`|\"[^\"\n]*\"|[\w/*{}]+\.(h|cpp|py|md|qxl|txt|html)\b", " ", found)
    return WORD.sub(lambda token: "" if token[0] in known_names else token[0], found)


def texts(root, program, known_names):
    """What is read, by where it is."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([program, "help", "--html", folder], check=True, stderr=subprocess.DEVNULL)
        for path in sorted(pathlib.Path(folder).glob("*.html")):
            yield f"help page {path.name}", "".join(Text(path.read_text()).parts)
    yield "hosts/excel/Install.html", "".join(Text((root / "hosts/excel/Install.html").read_text()).parts)
    for path in sorted([*root.glob("*.md"), *root.glob("docs/*.md")]):
        yield str(path.relative_to(root)), running_text(path.read_text())
    for path in sorted(root.rglob("*.h")):
        if path.relative_to(root).parts[0] in ("src", "apps", "hosts", "tests"):
            yield str(path.relative_to(root)), comments(path.read_text(), known_names)
    manual = subprocess.run([program, "man"], capture_output=True, text=True, check=True).stdout
    yield "quexel man", re.sub(r"^\.(B|TH|br|nf|fi|TP).*$|--?[a-z-]+|'[^']*'|^  quexel .*$", " ", manual.replace("\\", ""), flags=re.M)


def stilted(place, text):
    """Phrases that are better said otherwise."""
    lines = re.sub(r"\s+", " ", text)
    for sentence in KEPT:
        lines = lines.replace(sentence, "")
    for pattern, better in PHRASES.items():
        for found in re.finditer(pattern, lines):
            yield f"{place}: \"{lines[max(0, found.start() - 30):found.end() + 20].strip()}\": rather {better}"


def declared(program):
    found = set()
    for function in json.loads(subprocess.run([program, "functions", "--json"], capture_output=True, check=True).stdout):
        found |= {function["name"], *(argument["name"] for argument in function["arguments"])}
    return found


def in_code(root):
    found = set()
    for top in ("src", "apps", "hosts", "tests"):
        for path in (root / top).rglob("*"):
            if path.suffix in (".h", ".cpp"):
                found |= set(re.findall(r"\w+", re.sub(r"//.*", "", path.read_text())))
    return found


def unknown(words):
    done = subprocess.run(["hunspell", "-d", "en_GB", "-l"], input="\n".join(words), capture_output=True, text=True,
                          check=True)
    return set(done.stdout.split())


def main(root, program):
    terms = {line for line in (root / "tests/checks/words.txt").read_text().splitlines() if not line.startswith("#")}
    known, known_names = declared(program), in_code(root)
    places, seen_terms, phrases = {}, set(), []
    for path in sorted(path for top in ("src", "apps", "hosts", "tests") for path in (root / top).rglob("*")
                       if path.suffix in (".h", ".cpp")):
        phrases += stilted(path.relative_to(root), comments(path.read_text(), known_names=set()))
    for place, text in texts(root, program, known_names):
        if not place.endswith(".h"):  # whose comments have been looked at above, names and all
            phrases += stilted(place, text)
        for token in WORD.findall(text):
            word = re.sub(r"'s?$", "", token)
            if word in terms or word.lower() in terms:
                seen_terms.add(word if word in terms else word.lower())
            elif word not in known and not (NAME.search(word) and word in known_names):
                places.setdefault(word, place)
    plain = [word for word in places if not NAME.search(word)]
    faults = sorted({word for word in places if NAME.search(word)} | unknown(plain))
    for word in faults:
        print(f"{places[word]}: {word}")
    for word in sorted(terms - seen_terms):
        print(f"tests/checks/words.txt: {word} is no longer used")
    print("\n".join(phrases), end="\n" if phrases else "")
    return 1 if faults or phrases or terms - seen_terms else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve(), sys.argv[2]))
