"""Calls over arrays: an argument that takes one value takes an array, and its items are the values of one call each."""

from __future__ import annotations

import sys
from typing import Any, Callable, Iterable, NamedTuple

import numpy as np
from numpy.typing import NDArray

from . import values as cells
from .errors import Error

TEXT_KINDS = ("text", "any")
ERRORS = ("raise", "nan", "collect")


class Collected(NamedTuple):
    """What errors="collect" returns: the results, NaN or NaT where a call failed, and an Error for each of these."""

    values: Any
    errors: list[Error]


def spread(function: Any, values: list[Any], spreading: list[int], errors: str, each: Iterable[int] = ()) -> Any:
    """Calls a function for the elements of the arguments `spreading`, and for the lists of the arguments `each`."""
    if not isinstance(errors, str) or errors not in ERRORS:
        raise ValueError(f"errors is {errors!r}; it is one of {', '.join(map(repr, ERRORS))}")
    each = list(each)
    if not spreading and not each:
        return once(function, values, errors)
    arguments = function.description["arguments"]
    columns = [(i, cells.column(values[i], arguments[i]["kind"] in TEXT_KINDS)) for i in spreading]
    columns += [(i, lists(values[i], arguments[i]["items"] in TEXT_KINDS)) for i in each]
    frame = labels([values[i] for i in (*spreading, *each)])
    shape = np.broadcast_shapes(*(column.shape for _, column in columns))
    stretched = [(i, np.broadcast_to(column, shape)) for i, column in columns]
    fixed = [None if i in spreading or i in each else value for i, value in enumerate(values)]
    results, failures = function._call_many(fixed, stretched, shape, errors)
    faults = [at(error, position, shape) for position, error in failures]
    if faults and errors == "raise":
        raise faults[0]
    results = labelled(tidy(results, function.description), frame, shape)
    return Collected(results, faults) if errors == "collect" else results


def once(function: Any, values: list[Any], errors: str) -> Any:
    """A call without arrays under a rule for errors."""
    try:
        result, faults = function(*values), []
    except Error as error:
        if errors == "raise":
            raise
        result, faults = (np.datetime64("NaT") if function.description["gives"] == "date" else float("nan")), [error]
    return Collected(result, faults) if errors == "collect" else result


def at(error: Error, position: int, shape: tuple[int, ...]) -> Error:
    error.index = position if len(shape) == 1 else tuple(map(int, np.unravel_index(position, shape)))
    return error


def lists(value: Any, keeps_text: bool) -> NDArray[Any]:
    """An array whose elements are the lists of one call each: the rows of an array or a table, or a list's items."""
    if hasattr(value, "columns") and hasattr(value, "iloc"):
        value = cells.table(value, keeps_text)
    if not isinstance(value, np.ndarray):
        value = list(value)
    shape = value.shape[:-1] if isinstance(value, np.ndarray) and value.ndim > 1 else (len(value),)
    array = np.empty(shape, dtype="O")
    for place in np.ndindex(shape):
        array[place] = value[place] if isinstance(value, np.ndarray) else value[place[0]]
    return array


def tidy(results: NDArray[Any], description: dict[str, Any]) -> NDArray[Any]:
    """The results in the type that the function declares, or that all of them have."""
    gives = description["gives"]
    if gives == "date" and results.dtype != object:
        return cells.days(results)
    if gives == "boolean" and results.dtype != object:
        return results.astype(bool) if not np.isnan(results).any() else np.where(
            np.isnan(results), np.nan, results.astype(bool).astype("O"))
    if results.dtype != object or not results.size:
        return results
    items = results.ravel()
    if all(type(item) is float or item is None for item in items):
        return results.astype("f8")
    shapes = {item.shape for item in items if isinstance(item, np.ndarray)}
    if len(shapes) != 1:
        return results
    shape = shapes.pop()
    kinds = {item.dtype for item in items if isinstance(item, np.ndarray)}
    kind = kinds.pop() if len(kinds) == 1 else np.dtype("O")
    if kind.kind not in "fMO":
        kind = np.dtype("O")
    missing = np.full(shape, np.datetime64("NaT") if kind.kind == "M" else np.nan, dtype=kind)
    return np.stack([item if isinstance(item, np.ndarray) else missing for item in items]).reshape(results.shape + shape)


def labels(values: list[Any]) -> Any:
    """The series or table whose index the results get, or None. Those of one call must have the same index."""
    pandas = sys.modules.get("pandas")
    given = [] if pandas is None else [v for v in values if isinstance(v, (pandas.Series, pandas.DataFrame))]
    if any(not value.index.equals(given[0].index) for value in given):
        raise ValueError("series of different indexes; reindex them first")
    return max(given, key=lambda value: int(value.ndim), default=None)


def labelled(results: NDArray[Any], frame: Any, shape: tuple[int, ...]) -> Any:
    """Results with the index of a series or a table, if there is one for each row of them."""
    if frame is None or shape != frame.shape[:len(shape)]:
        return results
    pandas = sys.modules["pandas"]
    if results.ndim == 1:
        return pandas.Series(results, index=frame.index)
    if results.ndim == 2:
        columns = frame.columns if frame.shape == results.shape else None
        return pandas.DataFrame(results, index=frame.index, columns=columns)
    return results


class Over:
    """A function with rules for arrays; made by over()."""

    def __init__(self, function: Any, each: tuple[str, ...], errors: str) -> None:
        self.function = function
        self.each = each
        self.errors = errors
        names = [argument["name"] for argument in function.description["arguments"]]
        unknown = [name for name in each if name not in names]
        if unknown:
            raise TypeError(f"{function.__name__}() has no argument '{unknown[0]}'")
        self._each = [names.index(name) for name in each]

    def __call__(self, *args: Any, errors: str | None = None, **kwargs: Any) -> Any:
        values, spreading = self.function._bind(*args, **kwargs)
        each = [i for i in self._each if values[i] is not None]
        return spread(self.function, values, [i for i in spreading if i not in each], errors or self.errors, each)

    def __repr__(self) -> str:
        return f"quexel.over({self.function.__name__}, each={self.each!r}, errors={self.errors!r})"


def over(function: Any, *, each: str | Iterable[str] = (), errors: str = "raise") -> Callable[..., Any]:
    """A function whose calls over arrays follow these rules.

    each    names of arguments that take a list and get another one in each call: the rows of an array or a table, or
            the items of a list of lists
    errors  what a call that fails does: "raise" its Error, leave NaN or NaT ("nan"), or that and collect the Errors
            ("collect", which returns the values and the errors)

    >>> quexel.over(quexel.NPVM, each="Values", errors="nan")   # one present value for each row
    """
    return Over(function, (each,) if isinstance(each, str) else tuple(each), errors)
