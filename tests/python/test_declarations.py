"""What Python offers is what the functions' declarations say: names, arguments, examples, types."""
import inspect
import math
import os
import pathlib
import re
import subprocess

import numpy as np
import pytest

import quexel

ROOT = pathlib.Path(__file__).parents[2]
REGISTER = [line.split("\t") for line in (ROOT / "tests/golden/registration.tsv").read_text().splitlines()]
FUNCTIONS = {row[2]: row[3] for row in REGISTER if row[4] == "1"}


def test_every_function_of_the_register_has_its_name_and_arguments():
    assert set(quexel.functions()) == set(FUNCTIONS)
    for name, arguments in FUNCTIONS.items():
        function = getattr(quexel, name)
        names = [argument["name"] for argument in function.description["arguments"]]
        whole = ",".join(f"[{argument['name']}]" if argument["optional"] else argument["name"]
                         for argument in function.description["arguments"])
        assert arguments == whole if len(whole) <= 255 else (",".join(names) + ",").startswith(arguments.removesuffix("..."))
        assert list(inspect.signature(function).parameters) == [*names, "errors"]
        assert function.__doc__ and function.category
        shown = function.__doc__.partition("In a worksheet:\n")[2].partition("\n\n")[0].splitlines()
        assert shown and all(re.match(r" +=.+  (= |gives (#|an empty cell))", example) for example in shown), shown


def arguments_of(call):
    """The texts of a formula's arguments: "F(1,{2,3},\"a,b\")" has three."""
    depth, quoted, texts = 0, False, [""]
    for letter in call[call.index("(") + 1:call.rindex(")")]:
        quoted ^= letter == '"'
        depth += (not quoted) * ((letter in "({") - (letter in ")}"))
        if letter == "," and depth == 0 and not quoted:
            texts.append("")
        else:
            texts[-1] += letter
    return texts


def split_example(example):
    """The call of an example, how the result compares, and what with: MonthEnd(38000) = 38017."""
    depth, quoted = 0, False
    for i, letter in enumerate(example):
        quoted ^= letter == '"'
        depth += (not quoted) * ((letter in "({") - (letter in ")}"))
        if depth == 0 and letter == ")" and not quoted:
            return example[:i + 1], example[i + 1:].split(maxsplit=1)
    raise ValueError(example)


def comparable(value):
    """A result as lists of numbers and texts, dates as their numbers."""
    if isinstance(value, np.ndarray):
        if value.dtype.kind == "M":
            value = value.astype("i8") + 25569.0
        return [comparable(item) for item in value.ravel()]
    if hasattr(value, "toordinal"):
        return float(value.toordinal() - 693594)
    if isinstance(value, float) and math.isnan(value):
        return None
    return value.item() if isinstance(value, np.generic) else value


@pytest.mark.parametrize("name", sorted(FUNCTIONS))
def test_examples_give_in_python_what_a_workbook_gives(name):
    function = getattr(quexel, name)
    tried = 0
    for example in function.description["examples"]:
        call, comparison = split_example(example)
        texts = [text.strip() for text in arguments_of(call)]
        refers = any(re.search(r"\b[A-Z]{1,3}\d+\b(?!\()", re.sub(r'"[^"]*"', "", text)) for text in texts)
        if not call.startswith(name + "(") or comparison[0] not in ("=", "~", "!") or refers:
            continue  # what only a workbook can do: more than one call, or a reference to cells
        tried += 1
        book = quexel.Workbook()
        values = [book.evaluate("=" + text) if text else None for text in texts] if texts != [""] else []
        expected = book.evaluate("=" + call)
        if isinstance(expected, quexel.CellError):
            with pytest.raises(quexel.Error) as caught:
                function(*values)
            assert caught.value.code == expected, example
            kinds = comparison[1].split()[1:] if comparison[0] == "!" else []
            assert not kinds or caught.value.kind == kinds[0], example
            continue
        got, wanted = comparable(function(*values)), comparable(expected)
        if isinstance(got, list) and not isinstance(wanted, list):
            wanted = [] if wanted is None else [wanted]  # Python has lists of one item
        assert function.description["volatile"] or got == wanted, example
    if not tried:
        pytest.skip("no example is a single call")


GOOD = """
import datetime
import numpy as np
import pandas as pd
import quexel

a: datetime.date = quexel.DpD("2026-01-15", 30)
b: float = quexel.DYear(datetime.date(2026, 1, 15))
c: bool = quexel.IsLeap(np.datetime64("2026-01-15"))
d: str = quexel.DayName(45000)
e = quexel.DateSeq("2005-01-01", "2006-01-01", 4).astype("M8[M]")
f: quexel.Collected = quexel.DpD(["2026-01-15"], np.arange(3), errors="collect")
g = quexel.DpD(pd.Series(["2026-01-15"]), 30, errors="nan")
h = quexel.IRRT(["2024-01-01", "2025-01-01"], [-100, 110]) + 1.0
i = quexel.explain(quexel.DpD, "2026-01-15", 30).result
j: float = quexel.Ramp("2026-01-15", 3, "2026-01-15", "2027-01-15", 10, 20)
k = quexel.over(quexel.IRRT, each="Cashflows")([1], [[2]])
"""
BAD = """
import quexel
quexel.DpD("2026-01-15", Dais=30)
quexel.DpD("2026-01-15")
x: int = quexel.DayName(45000)
quexel.DpD("2026-01-15", 30, errors="ignore")
"""


def test_stubs_are_sound_and_catch_mistakes(tmp_path):
    uses = tmp_path / "uses"
    uses.mkdir()
    for name, text in [("__init__", ""), ("good", GOOD), ("bad", BAD)]:
        (uses / f"{name}.py").write_text(text)
    path = os.pathsep.join([str(pathlib.Path(quexel.__file__).parents[1]), str(tmp_path)])
    checked = subprocess.run(["mypy", "--no-error-summary", "--ignore-missing-imports", "-p", "quexel", "-p", "uses"],
                             capture_output=True, text=True, cwd=tmp_path,
                             env={**os.environ, "MYPYPATH": path, "MYPY_CACHE_DIR": str(tmp_path / "cache")})
    faults = [line for line in checked.stdout.splitlines() if ": note:" not in line]
    assert [line for line in faults if "uses/bad.py" not in line] == [] and not checked.stderr
    assert sorted({int(line.split("bad.py:")[1].split(":")[0]) for line in faults}) == [3, 4, 5, 6], faults
