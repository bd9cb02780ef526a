"""The code of docs/python.md runs and prints what the text shows."""
import doctest
import os
import pathlib
import re

ROOT = pathlib.Path(__file__).parents[2]


def test_the_tour():
    text = (ROOT / "docs/python.md").read_text()
    assert "```python" not in text  # which would not run
    blocks = list(re.finditer(r"^```pycon\n(.*?)^```$", text, re.MULTILINE | re.DOTALL))
    assert len(blocks) > 10
    flags = doctest.ELLIPSIS | doctest.NORMALIZE_WHITESPACE
    runner, report, names = doctest.DocTestRunner(verbose=False, optionflags=flags), [], {}
    before = os.getcwd()
    os.chdir(ROOT)
    try:
        for block in blocks:
            line = text[:block.start(1)].count("\n")
            test = doctest.DocTestParser().get_doctest(block[1], names, "python.md", "docs/python.md", line)
            runner.run(test, out=report.append, clear_globs=False)
            names = test.globs
    finally:
        os.chdir(before)
    assert not report, "".join(report)
