"""Values of NumPy, pandas and the standard library as the few types that cells are made of."""

from __future__ import annotations

import datetime
import sys
from typing import Any

import numpy as np
from numpy.typing import NDArray

UNIX_SERIAL = 25569  # 1 January 1970 as a date number
FIRST_SERIAL = 3654  # 1 January 1910, the library's first day
FIRST_DECIMAL_YEAR = 1910  # numbers from here to the first day are years
DAY = np.timedelta64(1, "D")


def plain(value: Any) -> Any:
    """One value as None, bool, float, int, str, datetime.date or datetime.datetime; a missing one as NaN."""
    if isinstance(value, np.ndarray) and value.ndim == 0:
        value = value[()]
    if isinstance(value, np.datetime64):
        return float("nan") if np.isnat(value) else value.astype("M8[us]").item()
    if type(value).__name__ in ("NaTType", "NAType"):
        return float("nan")
    if isinstance(value, datetime.datetime):  # a Timestamp; a time zone is that of the reader
        return datetime.datetime(value.year, value.month, value.day, value.hour, value.minute, value.second,
                                 value.microsecond)
    if isinstance(value, datetime.date):
        return datetime.date(value.year, value.month, value.day)
    if isinstance(value, np.generic):
        return value.item()
    return float(value) if hasattr(value, "__float__") else value


def serials(days: NDArray[Any], *, as_dates: bool = True) -> NDArray[Any]:
    """datetime64 as date numbers, NaT as NaN. As dates, those before 1910 become numbers below any year."""
    whole = days.astype("M8[D]")
    numbers = whole.astype("i8") + float(UNIX_SERIAL)
    if days.dtype != whole.dtype:
        numbers += (days - whole) / DAY
    numbers[numbers < 61] -= 1  # 1900 counts as a leap year
    if as_dates:
        numbers[numbers < FIRST_SERIAL] = np.minimum(numbers[numbers < FIRST_SERIAL], FIRST_DECIMAL_YEAR - 1)
    numbers[np.isnat(days)] = np.nan
    return numbers


def days(numbers: NDArray[Any]) -> NDArray[Any]:
    """Date numbers as datetime64[D], NaN as NaT."""
    missing = np.isnan(numbers)
    whole = np.floor(np.where(missing, 0, numbers))
    result = (whole + (whole < 61) - UNIX_SERIAL).astype("i8").astype("M8[D]")  # 1900 counts as a leap year
    result[missing] = np.datetime64("NaT")
    return result


def column(values: Any, keeps_text: bool) -> NDArray[Any]:
    """Any array-like as an array of float64 where its items are numbers or dates, else of objects."""
    dtype = getattr(values, "dtype", None)
    if getattr(dtype, "tz", None) is not None:  # pandas: the dates that the reader of that time zone sees
        values = (values.dt if hasattr(values, "dt") else values).tz_localize(None)
    elif hasattr(dtype, "na_value") and getattr(dtype, "kind", "O") in "iuf":  # pandas: numbers that may be missing
        values = values.to_numpy(dtype="f8", na_value=np.nan)
    array = as_array(values)
    if array.dtype.kind == "S":  # NumPy 1.24 may crash where it reads bytes as dates
        array = np.char.decode(array, "utf-8", "replace")
    kind = array.dtype.kind
    if kind in "iuf":
        return array.astype("f8", copy=False)
    if kind == "M":
        return serials(array, as_dates=not keeps_text)
    if kind == "U":
        if not keeps_text and array.size:
            try:
                return serials(array.astype("M8[s]"))
            except ValueError:
                pass
        return array.astype("O")
    if kind in "Ob":
        return array.astype("O", copy=False)
    raise TypeError(f"no cell holds a value of type {array.dtype}")


def as_array(values: Any) -> NDArray[Any]:
    """A list or the like as an array; texts beside numbers stay what they are."""
    if isinstance(values, np.ndarray):
        return values
    if "pandas" in sys.modules and hasattr(values, "to_numpy"):
        return values.to_numpy()
    if not isinstance(values, (list, tuple)):
        values = list(values)
    array = np.asarray(values, dtype="O")
    if array.size and all(type(item) in (float, int) for item in array.flat):
        return array.astype("f8")
    return array


def table(values: Any, keeps_text: bool) -> NDArray[Any]:
    """The cells of a list: one dimension stands as a column, two as they are."""
    if hasattr(values, "columns") and hasattr(values, "iloc"):  # a table of pandas, of a type in each column
        parts = [column(values.iloc[:, i], keeps_text) for i in range(values.shape[1])]
        array = np.column_stack(parts) if parts else np.empty((len(values), 0))
    else:
        array = column(values, keeps_text)
    if array.ndim > 2:
        raise ValueError("a list of cells has at most two dimensions")
    return np.ascontiguousarray(array.reshape(-1, 1) if array.ndim == 1 else array)
