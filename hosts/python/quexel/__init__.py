"""Worksheet functions for property, project finance and banking models, with explanations of every result.

    >>> import quexel
    >>> quexel.MonthEnd("2026-02-10")
    datetime.date(2026, 2, 28)

Each function has its worksheet name, and its argument names as keywords; help(quexel.MonthEnd) describes one, and
quexel.functions() lists them. Arguments that take one value take arrays, too, and broadcast as NumPy does. Calls from
several threads are safe, and one runs at a time; more processes go faster: see quexel.scale.
"""

from . import scale as scale
from ._core import Function as Function
from ._core import version as __version__
from .arrays import Collected as Collected
from .arrays import over as over
from .errors import CellError as CellError
from .errors import Error as Error
from .explanation import Explanation as Explanation
from .explanation import Step as Step
from .explanation import explain as explain
from .catalogue import CATALOGUE as _CATALOGUE
from .catalogue import function as function
from .catalogue import functions as functions
from .workbook import ErrorCell as ErrorCell
from .workbook import GoalSeeks as GoalSeeks
from .workbook import Problem as Problem
from .workbook import Workbook as Workbook

_OWN = ["CellError", "Collected", "Error", "ErrorCell", "Explanation", "Function", "GoalSeeks", "Problem", "Step",
        "Workbook", "explain", "function", "functions", "over", "scale"]
assert not set(_OWN) & set(_CATALOGUE), "a function has the name of something else in the package"
globals().update(_CATALOGUE)
__all__ = [*_OWN, *_CATALOGUE]
