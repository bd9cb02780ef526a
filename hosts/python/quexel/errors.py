"""What goes wrong: the exception of a call, and the error values of cells."""

from __future__ import annotations


class Error(ValueError):
    """A call of a function that has failed.

    code      what a cell of a spreadsheet would show, as "#NUM!"
    kind      the class of the error, as "errlibmax"; "" if the function returned an error value
    function  the function that was called
    routine   the routine in which the error was found; often the function itself
    variable  the argument or variable that is wrong; "" if there is none
    message   what is wrong
    index     in a call over arrays the place of the element: a number, or a tuple for several dimensions
    """

    def __init__(self, function: str, code: str, kind: str, routine: str, variable: str, message: str,
                 index: int | tuple[int, ...] | None = None) -> None:
        super().__init__(function, code, kind, routine, variable, message, index)
        self.function = function
        self.code = code
        self.kind = kind
        self.routine = routine
        self.variable = variable
        self.message = message
        self.index = index

    def __str__(self) -> str:
        found_in = f" (in {self.routine})" if self.routine not in ("", self.function) else ""
        place = "" if self.index is None else f", element {self.index}"
        return f"{self.function}{place}: {self.message}{found_in}"

    def __reduce__(self):
        return type(self), (*self.args[:-1], self.index)


class CellError(str):
    """An error value of a cell: CellError("#N/A"). It equals its text, and a function takes it as the error that it is."""

    __slots__ = ()

    def __repr__(self) -> str:
        return f"CellError({str.__repr__(self)})"
