"""Writes the type stubs of the package from the declarations of its functions: python3 -m quexel.stubs FILE."""

from __future__ import annotations

import pathlib
import sys
from typing import Any

from .catalogue import CATALOGUE, docstring

HEAD = '''\
"""Worksheet functions for property, project finance and banking models, with explanations of every result."""

import datetime
from collections.abc import Iterable
from typing import Any, Literal, Protocol, Sequence, Union, overload

import numpy as np
import numpy.typing as npt

from . import scale as scale
from ._core import Function as Function
from .arrays import Collected as Collected
from .arrays import over as over
from .errors import CellError as CellError
from .errors import Error as Error
from .explanation import Explanation as Explanation
from .explanation import Step as Step
from .explanation import explain as explain
from .workbook import ErrorCell as ErrorCell
from .workbook import GoalSeeks as GoalSeeks
from .workbook import Problem as Problem
from .workbook import Workbook as Workbook

__version__: str

def function(name: str) -> Function: ...
def functions(category: str | None = None) -> list[str]: ...

class _Series(Protocol):
    """A series or an index of pandas."""
    @property
    def dtype(self) -> Any: ...
    def __len__(self) -> int: ...
    def __getitem__(self, key: Any, /) -> Any: ...
    def to_numpy(self) -> npt.NDArray[Any]: ...

_Number = Union[float, np.number[Any]]
_Truth = Union[bool, float, np.bool_]
_Date = Union[datetime.date, np.datetime64, str, _Number]
_Value = Union[_Date, _Truth, CellError]
_Numbers = Union[_Series, npt.NDArray[Any], Sequence[Any]]
'''

SCALARS = {"number": "_Number", "integer": "_Number", "boolean": "_Truth", "date": "_Date", "text": "str",
           "any": "_Value", "date or number": "_Date", "period start": "_Date", "period length": "_Number | None"}
LISTS = {"list": "_Numbers | _Value", "sequence": "_Numbers | _Number | str"}
RESULTS = {"number": "float", "integer": "int", "boolean": "bool", "text": "str",
           "date": "datetime.date | Any",  # None for the zero date
           "sequence": "npt.NDArray[np.float64]"}
ITEMS = {"number": "npt.NDArray[np.float64]", "integer": "npt.NDArray[np.float64]", "date": "npt.NDArray[np.datetime64]",
         "date or number": "npt.NDArray[np.float64]"}


def parameters(arguments: list[dict[str, Any]], arrays: bool) -> str:
    """The arguments with their types, and as defaults those that they have in a worksheet."""
    texts, needs_default = [], False
    for argument in arguments:
        kind = argument["kind"]
        type_ = LISTS.get(kind) or SCALARS[kind] + (" | _Numbers" if arrays else "")
        needs_default = needs_default or argument["optional"]
        if needs_default:
            default = argument["default"]
            type_ = f"{type_} | None"
            type_ += f" = {default!r}" if argument["optional"] and isinstance(default, (int, float, str)) else " = None"
        texts.append(f"{argument['name']}: {type_}")
    return ", ".join(texts)


def stub(description: dict[str, Any]) -> str:
    """The overloads of one function: values in and a value out, arrays, and arrays with the errors collected."""
    name, arguments = description["name"], description["arguments"]
    gives = description["gives"]
    result = RESULTS.get(gives, "Any") if gives != "list" else ITEMS.get(description["gives_items"], "npt.NDArray[Any]")
    many = parameters(arguments, True)
    start = f"{many}, " if many else ""
    return f'''
@overload
def {name}({parameters(arguments, False)}) -> {result}:
    r"""{docstring(description, "    ").strip()}
    """
@overload
def {name}({start}*, errors: Literal["raise", "nan"] = "raise") -> Any: ...
@overload
def {name}({start}*, errors: Literal["collect"]) -> Collected: ...
'''


def stubs() -> str:
    return HEAD + "".join(stub(known.description) for known in CATALOGUE.values())


if __name__ == "__main__":
    pathlib.Path(sys.argv[1]).write_text(stubs(), encoding="utf-8")
