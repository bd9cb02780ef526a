"""The functions of the library as objects of Python: names, signatures and help, all from their declarations."""

from __future__ import annotations

import inspect
import textwrap
from typing import Any

from . import _core

CATALOGUE: dict[str, Any] = {}


def signature(description: dict[str, Any]) -> inspect.Signature:
    """The arguments by their names; an optional one has the default that it has in a worksheet."""
    parameters, needs_default = [], False
    for argument in description["arguments"]:
        needs_default = needs_default or argument["optional"]
        default = argument["default"] if argument["optional"] else None if needs_default else inspect.Parameter.empty
        parameters.append(inspect.Parameter(argument["name"], inspect.Parameter.POSITIONAL_OR_KEYWORD, default=default))
    parameters.append(inspect.Parameter("errors", inspect.Parameter.KEYWORD_ONLY, default="raise"))
    return inspect.Signature(parameters)


def limits(argument: dict[str, Any]) -> str:
    """What an argument may be, as ". Range: 0 to 999", unless its help says so."""
    low, high = (None if limit is None else f"{limit:g}" for limit in (argument["low"], argument["high"]))
    if low is None and high is None or f"{low} to {high}" in argument["help"]:
        return ""
    words = f"{low} to {high}" if low and high else f"from {low}" if low else f"up to {high}"
    return f". Range: {words}"


def docstring(description: dict[str, Any], indent: str = "") -> str:
    """What the function does, its arguments with units and ranges, its defaults, and examples as they are typed."""
    def wrapped(text: str, first: str, rest: str) -> str:
        return textwrap.fill(text, 100, initial_indent=first, subsequent_indent=rest)

    lines = [wrapped(description["help"] + ".", "", "")]
    if description["arguments"]:
        lines += ["", "Arguments:"]
        for argument in description["arguments"]:
            text = argument["help"] + limits(argument)
            if argument["optional"]:
                default = "nothing" if argument["default"] is None else repr(argument["default"])
                meaning = argument["default_meaning"] or ""
                more = f", {meaning}" if meaning and not meaning.endswith(default) else ""
                text += f". Default: {default}{more}"
            lines.append(wrapped(text, f"    {argument['name']}: ", "        "))
    lines += ["", "Raises:", "    quexel.Error: with the message, the routine and the variable"]
    if description["examples"]:
        lines += ["", "In a worksheet:", *(f"    {example}" for example in description["examples_as_typed"])]
    related = [name for name in description["see_also"].split(",") if name in CATALOGUE]
    if related:
        lines += ["", "See also: " + ", ".join(related)]
    return textwrap.indent("\n".join(lines), indent)


def function(name: str) -> Any:
    """The function of a name."""
    return CATALOGUE[name]


def functions(category: str | None = None) -> list[str]:
    """The names of the functions, or of those of a category, as "Date and Time Calculations"."""
    return [name for name, known in CATALOGUE.items() if category is None or known.category == category]


def _repr(known: Any) -> str:
    names = ", ".join(argument["name"] for argument in known.description["arguments"])
    return f"<function quexel.{known.__name__}({names})>"


def _describe() -> None:
    setattr(_core.Function, "__repr__", _repr)
    setattr(_core.Function, "__reduce__", lambda known: (function, (known.__name__,)))
    for known in _core.functions():
        description = known._describe()
        CATALOGUE[description["name"]] = known
        known.description = description
    for name, known in sorted(CATALOGUE.items()):
        CATALOGUE[name] = CATALOGUE.pop(name)
        known.__name__ = known.__qualname__ = name
        known.__module__ = "quexel"
        known.category = known.description["category"].removeprefix("QX: ")
        known.__signature__ = signature(known.description)
        known.__doc__ = docstring(known.description)


_describe()
