"""Workbook files, read and written by other tools of Python."""
import datetime
import warnings

import openpyxl
import pandas as pd
import pytest
from openpyxl.comments import Comment
from openpyxl.workbook.defined_name import DefinedName

import quexel


@pytest.fixture
def model(tmp_path):
    """A model as openpyxl writes it: values, formulas of the library and of everyone, a name, a comment."""
    book = openpyxl.Workbook()
    sheet = book.active
    sheet.title = "Lease"
    for row in [["Start", datetime.date(2026, 3, 25)], ["Years", 10], ["Rent", 1200.0],
                ["Expiry", "=DpY(B1,B2)"], ["Total", "=B2*B3*Growth"], ["Wrong", "=DateYMD(2026,13,1)"]]:
        sheet.append(row)
    sheet["B1"].number_format = sheet["B4"].number_format = "yyyy-mm-dd"
    sheet["B3"].comment = Comment("agreed at review", "Surveyor")
    book.create_sheet("Costs").append(["=Lease!B5/4", True])
    book.defined_names.append(DefinedName("Growth", attr_text="1.5"))
    book.save(tmp_path / "model.xlsx")
    return tmp_path / "model.xlsx"


def test_a_workbook_is_read_calculated_and_written_with_all_that_it_held(model, tmp_path):
    book = quexel.Workbook(model)
    assert book.sheets == ["Lease", "Costs"] and book.problems() == []
    assert book["B1"] == datetime.date(2026, 3, 25) and book["B4"] == datetime.date(2036, 3, 25)
    assert book["Costs!A1"] == 4500 and book["Costs!B1"] is True and book.evaluate("=Growth") == 1.5
    error = book.errors()[0]
    assert error.cell == error.origin and error.cell.endswith("B6") and error.value == "#NUM!" and "Mnth" in error.reason
    assert "13" in [step.value for step in book.explain("B6").find("Mnth")]
    book["B2"] = 5
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        book.save(tmp_path / "saved.xlsx")
    values = openpyxl.load_workbook(tmp_path / "saved.xlsx", data_only=True)
    assert values["Lease"]["B4"].value == datetime.datetime(2031, 3, 25) and values["Costs"]["A1"].value == 2250
    saved = openpyxl.load_workbook(tmp_path / "saved.xlsx")
    assert saved["Lease"]["B3"].comment.text == "agreed at review"
    assert saved["Lease"]["B5"].value == "=B2*B3*Growth" and saved["Lease"]["B2"].value == 5
    assert quexel.Workbook(tmp_path / "saved.xlsx")["Costs!A1"] == 2250


def test_a_formula_that_is_set_makes_a_new_file(model, tmp_path):
    book = quexel.Workbook(model)
    book["B5"] = "=B2*B3"
    book["C1"] = "signed"
    with warnings.catch_warnings(record=True):
        book.save(tmp_path / "saved.xlsx")
    saved = openpyxl.load_workbook(tmp_path / "saved.xlsx")
    assert saved["Lease"]["B5"].value == "=B2*B3" and saved["Lease"]["C1"].value == "signed"
    assert quexel.Workbook(tmp_path / "saved.xlsx")["Costs!A1"] == 3000
    book.save(tmp_path / "costs.csv", sheet="Costs")
    assert (tmp_path / "costs.csv").read_text().split() == ["3000,TRUE"]


def test_a_workbook_made_here_opens_elsewhere(tmp_path):
    book = quexel.Workbook()
    book["A1:B3"] = [["Lease", "Start"], ["Shop", datetime.date(2026, 3, 25)], ["Office", datetime.date(2027, 1, 1)]]
    book.add_sheet("Totals")
    book["Totals!A1"] = "=COUNTA(Sheet1!A2:A3)"
    book.save(tmp_path / "made.xlsx")
    table = pd.read_excel(tmp_path / "made.xlsx", sheet_name="Sheet1")
    assert list(table.Lease) == ["Shop", "Office"] and table.Start[1] == pd.Timestamp("2027-01-01")
    assert pd.read_excel(tmp_path / "made.xlsx", sheet_name="Totals", header=None).iloc[0, 0] == 2


def test_an_opendocument_workbook_is_read(tmp_path):
    table = pd.DataFrame({"Lease": ["Shop", "Office"], "Start": pd.to_datetime(["2026-03-25", "2027-01-01"]),
                          "Rent": [1200.5, 900.0]})
    table.to_excel(tmp_path / "leases.ods", index=False, engine="odf")
    book = quexel.Workbook.open(tmp_path / "leases.ods")
    assert book["A1:C1"].tolist() == [["Lease", "Start", "Rent"]]
    assert book["B3"] == datetime.date(2027, 1, 1) and book.evaluate("=SUM(C2:C3)") == 2100.5
    book.save(tmp_path / "leases.csv")
    assert quexel.Workbook(tmp_path / "leases.csv")["B3"] == datetime.date(2027, 1, 1)
    with pytest.raises(ValueError, match="leases.xls"):
        book.save(tmp_path / "leases.xls")


def test_what_is_no_workbook_is_refused_in_words(tmp_path):
    for name, content in [("broken.xlsx", b"PK\x03\x04 and no more"), ("text.xlsx", b"a,b\n1,2\n"),
                          ("old.xls", b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1" + bytes(600)), ("a.pdf", b"%PDF-1.7")]:
        (tmp_path / name).write_bytes(content)
        with pytest.raises(ValueError, match=name):
            quexel.Workbook(tmp_path / name)
    with pytest.raises(FileNotFoundError):
        quexel.Workbook(tmp_path / "none.xlsx")
