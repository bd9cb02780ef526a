"""Workbooks and explanations."""
import datetime
import html
import html.parser
import pathlib
import re

import numpy as np
import pandas as pd
import pytest

import quexel

ROOT = pathlib.Path(__file__).parents[2]


@pytest.fixture
def book():
    return quexel.Workbook()


def test_values_of_every_type_go_in_and_come_out(book):
    values = [1.5, True, "2026-02-10", "", datetime.date(2026, 2, 10), datetime.datetime(2026, 2, 10, 12, 30),
              quexel.CellError("#DIV/0!"), None, "x" * 400]
    for value in values:
        book["A1"] = value
        assert book["A1"] == value and type(book["A1"]) is type(value)
    book["A1"], book["A2"] = pd.Timestamp("2026-02-10"), np.float64("nan")
    assert book["A1"] == datetime.date(2026, 2, 10) and book["A2"] == "#N/A"
    with pytest.raises(TypeError):
        book["A1"] = object()


def test_a_change_reaches_what_depends_on_it(book):
    book["A1:A3"] = np.array([1.0, 2.0, 3.0])
    book["B1"] = "=SUM(A1:A3)"
    book["C1"] = "=DpD(DATE(2026,1,15),B1)"
    assert book["B1"] == 6 and book["C1"] == datetime.date(2026, 1, 21)
    book["A2"] = 12
    assert book["B1"] == 16 and book["C1"] == datetime.date(2026, 1, 31)
    book["A2"] = "=B1"  # a circle
    assert book["B1"] == "#REF!" and "B1" in book.problems()[0].cell + book.problems()[0].message


def test_ranges_names_and_sheets(book):
    book["B2"] = [["Rent", 100], ["Rates", 20]]
    assert book["B2:C3"].tolist() == [["Rent", 100.0], ["Rates", 20.0]]
    assert book["C2:C3"].dtype == float and book["C:C"].shape == (3, 1)
    book["A5:C5"] = [1, 2, 3]
    assert book["A5:C5"].tolist() == [[1, 2, 3]]
    book["A6:C7"] = 0
    assert book["A6:C7"].sum() == 0
    with pytest.raises(ValueError, match="B2:C3 has 2 rows"):
        book["B2:C3"] = [1, 2, 3]
    book.add_sheet("Costs")
    book["Costs!A1"] = "=Sheet1!C2*2"
    book.define("Total", "Costs!A1")
    assert book.sheets == ["Sheet1", "Costs"] and book["Total"] == 200 and book.evaluate("=Total+1") == 201
    book["Total"] = 7
    assert book["Costs!A1"] == 7
    for address in ("Nothing", "A1+1", "5"):
        with pytest.raises((KeyError, ValueError)):
            book[address]
    with pytest.raises(ValueError):
        book.add_sheet("costs")


def test_what_cannot_be_read_is_said(book):
    for formula, message in [("=1+", "character"), ("=Nothing(1)", "Nothing"), ("=nothing+1", "nothing")]:
        with pytest.raises(ValueError, match=message):
            book.evaluate(formula)
    with pytest.raises(ValueError, match="character 4"):
        book["A1"] = "=1+)"
    book["A1"] = "=Nothing(1)"
    assert book["A1"] == "#NAME?" and any("Nothing" in problem.message for problem in book.problems())


def test_a_model_of_the_examples_as_the_program_calculates_it(tmp_path):
    for path in sorted((ROOT / "examples").glob("*.csv")):
        book = quexel.Workbook.open(path)
        assert book.problems() == [], path.name
        book.save(tmp_path / path.name)
        again = quexel.Workbook(tmp_path / path.name)
        rows = len(path.read_text().splitlines())
        pairs = zip(again[f"A1:H{rows}"].flat, book[f"A1:H{rows}"].flat)
        # A text that begins with an equals sign is a formula in a file.
        assert all(a == b or str(b).lstrip().startswith("=") for a, b in pairs), path.name


def test_goal_seeks_of_a_model_run():
    book = quexel.Workbook(ROOT / "examples/land_price.csv")
    outcome = book.seek_goals()
    assert outcome.failures == 0 and outcome.report.count("Completed") == 2
    assert quexel.Workbook().seek_goals().failures == 0


def test_an_explanation_is_the_tree_of_its_lines():
    why = quexel.explain(quexel.DpD, "2026-01-15", Days=30)
    assert why.result == datetime.date(2026, 2, 14) and why.error is None
    assert [step.name for step in why.steps] == ["DpD"]
    lines = [step.name for root in why.steps for step in root]
    assert lines == [line.lstrip().split("  ")[0] for line in str(why).splitlines()]
    assert any(step.value == "15Jan2026" for step in why.find("TheDate"))
    assert "DpD('2026-01-15', Days=30)" in repr(why)
    # The trace leaves the same result behind, no file, and is off again.
    assert quexel.DpD("2026-01-15", 30) == why.result and not list(pathlib.Path.cwd().glob("qx_Trace*"))


def test_a_failure_is_explained_where_it_happened(book):
    why = quexel.explain(quexel.DateYMD, 2026, 13, 1)
    assert why.result is None and why.error.variable == "Mnth"
    assert "Mnth" in why.find("Error")[0].description
    book["A1"] = 13
    book["B1"] = "=DateYMD(2026,A1,1)"
    in_book = book.explain("B1")
    assert in_book.result == "#NUM!" and in_book.find("Error")[0].description == why.find("Error")[0].description
    with pytest.raises(KeyError):
        book.explain("A1")
    assert quexel.explain("=MonthEnd(DATE(2026,2,10))").result == datetime.date(2026, 2, 28)
    with pytest.raises(TypeError):
        quexel.explain(len, [1])
    with pytest.raises(TypeError, match="missing"):
        quexel.explain(quexel.DpD)


def test_a_notebook_shows_the_page(tmp_path):
    why = quexel.explain(quexel.RegReplace, "<b>&\"quoted\"", "b", "i")
    page = why.html()
    frame = why._repr_html_()
    found = re.fullmatch(r'<iframe srcdoc="([^"]*)" style="[^"]*"></iframe>', frame)
    assert html.unescape(found[1]) == page and page.lstrip().lower().startswith("<!doctype html>")
    why.save(tmp_path / "why.html")
    assert (tmp_path / "why.html").read_text(encoding="utf-8") == page
