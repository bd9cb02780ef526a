"""Single calls: Python's values in and out, keywords and defaults, errors."""
import concurrent.futures
import copy
import datetime
import decimal
import inspect
import pickle

import numpy as np
import pandas as pd
import pytest

import quexel

DAY = datetime.date(2024, 2, 3)
LEAP_DAY = datetime.date(2024, 2, 29)


@pytest.mark.parametrize("day", [
    DAY, datetime.datetime(2024, 2, 3, 18, 30), "2024-02-03", "2024-02-03T18:30:00", np.datetime64("2024-02-03"),
    np.datetime64("2024-02-03T23:59:59.999"), pd.Timestamp("2024-02-03 23:00", tz="Asia/Tokyo"), 45325, np.int32(45325),
    decimal.Decimal(45325), np.array(45325.0),
])
def test_a_day_in_any_form(day):
    assert quexel.MonthEnd(day) == LEAP_DAY


def test_days_before_the_first_year_are_not_read_as_years():
    # 24 March 1905 has the date number 1910, which as a number means the year.
    for day in (datetime.date(1905, 3, 24), "1905-03-24", np.datetime64("1905-03-24")):
        with pytest.raises(quexel.Error) as caught:
            quexel.MonthEnd(day)
        assert caught.value.kind == "errlibmindate"
    assert np.isnat(quexel.MonthEnd(np.array(["1905-03-24"], "M8[D]"), errors="nan"))[0]
    assert quexel.MonthEnd(1910) == datetime.date(1910, 1, 31)


def test_a_list_in_any_form():
    flows = [-100, 60, 60]
    root = (0.6 + (0.36 + 2.4) ** 0.5) / 2 - 1  # 100 x^2 = 60 x + 60 with x = 1 + r
    dates = ["2020-01-01", "2021-01-01", "2022-01-01"]
    forms = [(flows, dates), (tuple(flows), [datetime.date.fromisoformat(day) for day in dates]),
             (np.array(flows), np.array(dates, "M8[D]")), (pd.Series(flows), pd.Series(pd.to_datetime(dates))),
             (pd.Series(flows, dtype="Int64"), pd.DatetimeIndex(dates).tz_localize("Europe/London")),
             (iter_range(flows), pd.Series(dates, dtype="string")), (np.array([flows]), [[day] for day in dates])]
    for amounts, days in forms:
        assert quexel.IRRT(days, amounts) == pytest.approx(root, abs=1e-9)


def test_what_the_fuzzer_found():
    # NumPy 1.24 crashes where it reads bytes that are no dates as dates.
    assert quexel.MonthEnd(np.array([b"2026-02-10"]))[0] == np.datetime64("2026-02-28")
    # What is no date is one of the first days of the count, as a single text is.
    assert quexel.MonthEnd(np.array([b"bytes"]))[0] == quexel.MonthEnd("bytes")

    class Clearing:
        def __float__(self):
            flows.clear()
            return 1.0

    flows = [-100.0, Clearing(), 60.0, 60.0]
    with pytest.raises(ValueError, match="changed while it was read"):
        quexel.IRRT(["2020-01-01", "2021-01-01", "2022-01-01", "2023-01-01"], flows)
    with pytest.raises(ValueError, match="errors is"):
        quexel.MonthEnd([38000], errors=np.zeros(3))


class iter_range:
    """A sequence of one's own."""

    def __init__(self, items):
        self.items = items

    def __len__(self):
        return len(self.items)

    def __getitem__(self, i):
        return self.items[i]


def test_lists_come_back_as_arrays_whatever_their_length():
    quarters = quexel.DateSeq("2005-01-01", "2006-01-01", 4)
    assert quarters.dtype == "M8[D]" and list(quarters.astype(str)) == ["2005-04-01", "2005-07-01", "2005-10-01"]
    assert quexel.DateSeq("2005-01-01", "2005-05-01", 4).shape == (1,)
    assert quexel.DateSeq("2005-01-02", "2005-03-01", 4).shape == (0,)
    assert list(quexel.SortText(["2026-01-02", "b", "2026-01-01"])) == ["2026-01-01", "2026-01-02", "b"]
    assert quexel.RegSplit("a,b", ",").dtype == object


def test_types_of_results():
    assert type(quexel.DYear("2005-07-01")) is float
    assert quexel.IsLeap(2024) is True
    assert type(quexel.DaysInMonth("2024-02-03")) in (int, float) and quexel.DaysInMonth("2024-02-03") == 29
    assert quexel.DayName("2024-02-03") == "Saturday"
    assert quexel.Ev("1+2") == 3.0


def test_texts_with_more_than_ascii_and_their_limit():
    assert quexel.RegReplace("Müller & Söhne", "Söhne", "Töchter") == "Müller & Töchter"
    with pytest.raises(ValueError, match="255 bytes"):
        quexel.RegReplace("ü" * 128, "x", "y")


def test_arguments_bind_like_those_of_any_function():
    assert quexel.DpD(Days=30, TheDate="2026-01-01") == quexel.DpD("2026-01-01", 30) == datetime.date(2026, 1, 31)
    assert quexel.DpD("2026-01-01", 30, None, Periods=None) == datetime.date(2026, 1, 31)
    for call, message in [(lambda: quexel.DpD("2026-01-01"), "missing the argument 'Days'"),
                          (lambda: quexel.DpD("2026-01-01", 30, 5, 4, 1), "takes 4 arguments but 5"),
                          (lambda: quexel.DpD("2026-01-01", 30, Day=1), "no argument 'Day'"),
                          (lambda: quexel.DpD("2026-01-01", 30, Days=1), "several values for 'Days'"),
                          (lambda: quexel.DpD(object(), 30), "type object")]:
        with pytest.raises(TypeError, match=message):
            call()
    signature = inspect.signature(quexel.DpD)
    assert list(signature.parameters) == ["TheDate", "Days", "DayCount", "Periods", "errors"]
    assert signature.parameters["DayCount"].default == 5
    # What is not given and the default that is shown are the same.
    assert quexel.DpD("2024-01-31", 45) == quexel.DpD("2024-01-31", 45, signature.parameters["DayCount"].default,
                                                      signature.parameters["Periods"].default)


def test_an_error_says_what_where_and_why():
    with pytest.raises(quexel.Error) as caught:
        quexel.DateYMD(2005, 13, 1)
    error = caught.value
    assert (error.code, error.kind, error.function, error.routine, error.variable) == (
        "#NUM!", "errlibmax", "DateYMD", "DateYMD", "Mnth")
    assert str(error) == "DateYMD: Value greater than maximum allowed value: Mnth"
    for twin in (pickle.loads(pickle.dumps(error)), copy.copy(error)):
        assert str(twin) == str(error) and twin.variable == "Mnth"
    with pytest.raises(quexel.Error, match="TheDate") as caught:
        quexel.MonthEnd(float("nan"))
    assert caught.value.code == "#N/A"
    with pytest.raises(quexel.Error) as caught:
        quexel.MonthEnd(quexel.CellError("#DIV/0!"))
    assert caught.value.code == "#DIV/0!"
    assert quexel.MonthEnd(DAY) == LEAP_DAY  # an error leaves nothing behind


def test_error_values_are_data_where_a_function_takes_them():
    cells = [1.0, quexel.CellError("#N/A"), quexel.CellError("#NUM!"), None]
    assert quexel.CountErrors(cells) == 2
    assert list(quexel.ApplyToList.description)  # described, and so are all others
    assert quexel.CellError("#N/A") == "#N/A" and repr(quexel.CellError("#N/A")) == "CellError('#N/A')"


def test_functions_travel_by_name():
    assert pickle.loads(pickle.dumps(quexel.DpD)) is quexel.DpD
    assert quexel.function("DpD") is quexel.DpD and "DpD" in quexel.functions("Date and Time Calculations")
    assert "Date to start from" in quexel.DpD.__doc__ and repr(quexel.DpD).startswith("<function quexel.DpD(")


def test_calls_from_several_threads_do_not_mix():
    def work(seed):
        days = 40_000 + (np.arange(2000) * (seed + 1)) % 5000
        one_by_one = [quexel.DpD(float(day), seed) for day in days[:300]]
        return list(quexel.DpD(days, seed)[:300].astype(object)) == one_by_one == [
            datetime.date(1899, 12, 30) + datetime.timedelta(int(day) + seed) for day in days[:300]]

    with concurrent.futures.ThreadPoolExecutor(4) as pool:
        assert all(pool.map(work, range(8)))
