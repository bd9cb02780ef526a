"""How a result came about: the trace of a calculation as a tree."""

from __future__ import annotations

import dataclasses
import html
import os
from typing import Any, Iterator

from . import _core
from .errors import Error


@dataclasses.dataclass
class Step:
    """One line of a trace with the lines below it."""

    name: str
    value: str
    description: str
    children: list[Step] = dataclasses.field(default_factory=list)

    def __iter__(self) -> Iterator[Step]:
        """This step and all below it, in the order of their lines."""
        steps = [self]
        while steps:
            step = steps.pop()
            yield step
            steps.extend(reversed(step.children))


class Explanation:
    """A result with the steps that lead to it.

    result   what the calculation gave; None if it failed
    error    why it failed, or None
    steps    the tree of its steps

    print() shows the tree as text, a notebook shows it as a page, and save() writes that page to a file.
    """

    def __init__(self, trace: Any, result: Any, error: Error | None) -> None:
        self._trace = trace
        self.result = result
        self.error = error
        self.steps: list[Step] = []
        path: list[Step] = []
        for depth, name, value, description, _ in trace.lines():
            step = Step(name, value, description)
            (path[depth - 1].children if depth else self.steps).append(step)
            path[depth:] = [step]

    def find(self, name: str) -> list[Step]:
        """The steps of a name, as "DayCount"."""
        return [step for root in self.steps for step in root if step.name == name]

    def __str__(self) -> str:
        lines = [(depth * "  " + name, value, description)
                 for depth, name, value, description, _ in self._trace.lines()]
        widths = [min(most, max((len(line[i]) for line in lines), default=0)) for i, most in enumerate((56, 24))]
        text = [f"{name:{widths[0]}}  {value:{widths[1]}}  {' '.join(description.split())}".rstrip()
                for name, value, description in lines]
        return "\n".join(text)

    def __repr__(self) -> str:
        outcome = f"error={str(self.error)!r}" if self.error else f"result={self.result!r}"
        return f"<Explanation of {self._trace.subject}: {outcome}, {len(self._trace.lines())} lines>"

    def html(self) -> str:
        """The tree as one page that needs nothing but a browser."""
        return self._trace.html("" if self.error else str(self.result))

    def _repr_html_(self) -> str:
        height = min(600, 120 + 22 * len(self._trace.lines()))
        return f'<iframe srcdoc="{html.escape(self.html())}" style="width:100%;height:{height}px;border:0"></iframe>'

    def save(self, path: str | os.PathLike[str]) -> None:
        """Writes the page to a file."""
        with open(path, "w", encoding="utf-8") as file:
            file.write(self.html())


def explain(function: Any, /, *args: Any, **kwargs: Any) -> Explanation:
    """The result of a call with the trace of how it came about; a failure is in `error` and not raised.

    The first argument is a function of the library, followed by its own arguments, or a formula as a spreadsheet has it:

    >>> explain(quexel.MonthEnd, "2026-02-10")
    >>> explain("=MonthEnd(DATE(2026,2,10))")
    """
    if isinstance(function, str):
        result, trace = _core.Book().explain_formula(function)
        return Explanation(trace, result, None)
    if not isinstance(function, _core.Function):
        raise TypeError("explain() takes a function of the library, or a formula")
    given = [repr(value) for value in args] + [f"{name}={value!r}" for name, value in kwargs.items()]
    subject = f"{function.__name__}({', '.join(given)})"
    longest = 300
    if len(subject) > longest:
        subject = subject[:longest] + "..."
    return Explanation(*function._explain(subject, *args, **kwargs))
