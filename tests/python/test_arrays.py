"""Calls over arrays, series and tables."""
import datetime

import numpy as np
import pandas as pd
import pytest

import quexel

STARTS = np.array(["2024-01-31", "2024-02-29", "2024-12-31"], "M8[D]")


def test_arrays_equal_single_calls_and_broadcast():
    days = np.array([[1.0], [30.0]])
    table = quexel.DpD(STARTS, days)
    assert table.shape == (2, 3) and table.dtype == "M8[D]"
    for i in range(2):
        for j in range(3):
            assert table[i, j].item() == quexel.DpD(STARTS[j], float(days[i, 0]))
    reversed_view = quexel.DpD(STARTS[::-1], np.asfortranarray(days))
    assert (reversed_view == table[:, ::-1]).all()
    with pytest.raises(ValueError):
        quexel.DpD(STARTS, [1, 2])
    assert quexel.DpD(np.array([], "M8[D]"), 1).shape == (0,)


@pytest.mark.parametrize("starts", [
    list(STARTS.astype(str)), tuple(STARTS.astype(object)), STARTS.astype("M8[ns]"), STARTS.astype("U"),
    STARTS.astype("i8") + 25569, pd.DatetimeIndex(STARTS), [pd.Timestamp(day) for day in STARTS],
    np.array([datetime.date(2024, 1, 31), "2024-02-29", 45657], "O"),
])
def test_dates_in_any_array(starts):
    assert (np.asarray(quexel.DpM(starts, 1)).astype("M8[D]")
            == np.array(["2024-02-29", "2024-03-31", "2025-01-31"], "M8[D]")).all()


def test_series_keep_their_index():
    leases = pd.DataFrame({"start": pd.to_datetime(["2024-01-31", None, "2024-12-31"]),
                           "days": pd.array([30, 30, None], "Int64")}, index=["a", "b", "c"])
    ends = quexel.DpD(leases.start, 30, errors="nan")
    assert isinstance(ends, pd.Series) and list(ends.index) == ["a", "b", "c"]
    assert ends["a"] == pd.Timestamp("2024-03-01") and pd.isna(ends["b"])
    both = quexel.DpD(leases.start, leases.days, errors="nan")
    assert list(both.isna()) == [False, True, True]
    years = quexel.DYear(leases[["start"]].dropna())
    assert isinstance(years, pd.DataFrame) and years.shape == (2, 1)
    with pytest.raises(ValueError, match="indexes"):
        quexel.DpD(leases.start, pd.Series([1, 2, 3]))


def test_failures_raise_stay_empty_or_are_collected():
    months = [1, 13, 2, 0]
    with pytest.raises(quexel.Error) as caught:
        quexel.DateYMD(2005, months, 1)
    assert caught.value.index == 1 and str(caught.value).startswith("DateYMD, element 1: Value greater")
    assert list(np.isnat(quexel.DateYMD(2005, months, 1, errors="nan"))) == [False, True, False, True]
    values, errors = quexel.DateYMD(2005, months, 1, errors="collect")
    assert np.isnat(values).sum() == 2
    assert [(error.index, error.kind) for error in errors] == [(1, "errlibmax"), (3, "errlibmin")]
    table = quexel.DateYMD(2005, np.reshape(months, (2, 2)), 1, errors="collect")
    assert [error.index for error in table.errors] == [(0, 1), (1, 1)]
    single = quexel.DateYMD(2005, 13, 1, errors="collect")
    assert np.isnat(single.values) and single.errors[0].variable == "Mnth"
    with pytest.raises(ValueError, match="'collect'"):
        quexel.DateYMD(2005, months, 1, errors="ignore")


def test_results_that_are_no_numbers():
    assert list(quexel.DayName(STARTS)) == ["Wednesday", "Thursday", "Tuesday"]
    leap = quexel.IsLeap([2023, 2024])
    assert leap.dtype == bool and list(leap) == [False, True]
    assert quexel.IsLeap([2023, float("nan")], errors="nan")[1] is not True
    lists = quexel.DateSeq(["2005-01-01", "2006-01-01"], ["2006-01-01", "2007-01-01"], 4)
    assert lists.shape == (2, 3) and lists.dtype == "M8[D]"
    ragged = quexel.DateSeq("2005-01-01", ["2006-01-01", "2007-01-01"], 4)
    assert [len(dates) for dates in ragged] == [3, 7]


def test_a_list_of_times_without_a_length_is_a_time_base():
    starts = ["2024-01-01", "2024-04-01", "2024-07-01"]
    rent = dict(Start="2024-02-01", Finish="2024-06-01", StartRate=1200, FinishRate=1200)
    by_base = quexel.Ramp(starts, None, **rent)
    assert by_base == pytest.approx([200, 200, 0], rel=1e-9)  # two months of 100 in each of the first two quarters
    assert quexel.Ramp(starts, 3, **rent) == pytest.approx(by_base)
    many = quexel.Ramp(starts, None, **{**rent, "StartRate": [1200, 2400], "FinishRate": [1200, 2400]})
    assert many.shape == (2, 3) and many[1] == pytest.approx(2 * by_base)
    assert quexel.Ramp(starts, None, "2024-02-01", "2024-06-01", 1200, 1200).sum() == pytest.approx(
        quexel.Ramp("2024-01-01", 9, **rent))


def test_over_varies_lists_too():
    flows = pd.DataFrame({2024: [-100.0, -100.0], 2025: [60.0, 110.0], 2026: [60.0, 0.0]}, index=["a", "b"])
    dates = ["2024-01-01", "2025-01-01", "2026-01-01"]
    times, values = [argument["name"] for argument in quexel.IRRT.description["arguments"]][:2]
    rates = quexel.over(quexel.IRRT, each=values)(**{values: flows, times: dates})
    assert isinstance(rates, pd.Series) and rates["b"] == pytest.approx(0.1, abs=1e-9)
    assert rates["a"] == pytest.approx((0.6 + (0.36 + 2.4) ** 0.5) / 2 - 1, abs=1e-9)
    ragged = quexel.over(quexel.IRRT, each=[values, times], errors="nan")
    assert ragged(**{values: [[-100, 110], [100, 100], [-100, 60, 60]], times: [dates[:2], dates[:2], dates]}
                  ) == pytest.approx([0.1, np.nan, rates["a"]], abs=1e-9, nan_ok=True)
    with pytest.raises(TypeError, match="no argument 'Flow'"):
        quexel.over(quexel.IRRT, each="Flow")


def test_a_million_calls_make_no_object_each():
    import tracemalloc

    days = np.arange(1_000_000) % 3650 + 43831.0
    tracemalloc.start()
    ends = quexel.DpD(days, 30.0, 5.0, 4.0)
    _, peak = tracemalloc.get_traced_memory()
    tracemalloc.stop()
    assert (ends.astype("i8") == days + 30 - 25569).all()
    assert peak < 6 * days.nbytes
