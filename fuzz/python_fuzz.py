#!/usr/bin/python3
"""Hostile objects for every function of the module for Python, its workbooks and its arrays.

    PYTHONPATH=build/release/python fuzz/python_fuzz.py 60 [SEED]

Whatever comes in, a call gives a result or raises an exception of Python's or of the module's own; it neither crashes
nor takes more than a few seconds. The seed of a run and the call that fails are printed, so that it can be repeated.
"""
import datetime
import decimal
import faulthandler
import fractions
import random
import reprlib
import sys
import time

import numpy as np

import quexel

FUNCTIONS = [getattr(quexel, name) for name in quexel.functions()]
SHORT = reprlib.Repr()
SHORT.maxdepth = 3
LONGEST = 5  # seconds that one call may take
EXPECTED = (quexel.Error, TypeError, ValueError, OverflowError, RecursionError, ArithmeticError, LookupError,
            AttributeError, UnicodeError, MemoryError, BufferError)


class Liar:
    """A sequence that does not keep to its own length, or fails on the way."""

    def __init__(self, claimed, kept, failure=None):
        self.claimed, self.kept, self.failure = claimed, kept, failure

    def __len__(self):
        return self.claimed

    def __getitem__(self, i):
        if isinstance(i, int) and 0 <= i < self.kept:
            return float(i)
        raise self.failure or IndexError(i)

    def __repr__(self):
        return f"Liar({self.claimed}, {self.kept}, {self.failure!r})"


class Number:
    """Something that says it is a number."""

    def __init__(self, answer):
        self.answer = answer

    def __float__(self):
        if isinstance(self.answer, BaseException):
            raise self.answer
        return self.answer

    __index__ = __float__

    def __repr__(self):
        return f"Number({self.answer!r})"


class Shrinking(list):
    """A list that loses its items while it is read."""

    def __getitem__(self, i):
        self.clear()
        return super().__getitem__(i)

    def __iter__(self):
        for item in super().__iter__():
            self.clear()
            yield item


def circle():
    items = [1.0]
    items.append(items)
    return items


def deep(depth):
    items = 1.0
    for _ in range(depth):
        items = [items]
    return items


def arrays(draw):
    yield np.array(draw.choice([1.5, np.nan, np.inf, 45000]))
    yield np.ones(draw.randrange(50), draw.choice(["i1", "u8", "f2", "f4", ">f8", "f16", "?"]))
    yield np.arange(60.0).reshape(3, 4, 5)[:, ::-2, draw.randrange(5)]
    yield np.array(["2026-11-22", "NaT"], draw.choice(["M8[D]", "M8[ns]", "M8[Y]", "M8[as]"]))
    yield np.array([1, "x", None, 2.5, [1]], object)
    yield np.array(["a", "1e400", "\ud800"])
    yield np.array([1 + 2j])
    yield np.array([b"bytes"])
    yield np.array([(1, 2.0)], [("a", "i4"), ("b", "f8")])
    yield np.empty((0, 3))
    yield np.lib.stride_tricks.as_strided(np.zeros(1), (draw.randrange(1, 20000),), (0,))
    yield np.ma.masked_array([1.0, 2.0], [True, False])


def values(draw):
    """One value of each kind."""
    yield from (None, True, 0, -1, 10**400, -(2**63), 2**31, 38000, 45000.5, float("nan"), float("-inf"), 5e-324, "",
                "2026-11-22", "2026-13-45", "=1+1", "x" * draw.randrange(400), "é\0\ud800", b"\xff", bytearray(3),
                memoryview(b"ab"), datetime.date.min, datetime.date.max, datetime.datetime(2026, 1, 1, 23, 59),
                datetime.time(1), datetime.timedelta(3), decimal.Decimal("NaN"), decimal.Decimal("1e999"),
                fractions.Fraction(1, 3), 1j, object(), int, len, quexel, {}, {1: 2}, {3.0}, frozenset(), range(5),
                range(10**12), iter([1.0]), (x for x in (1, 2)), circle(), deep(draw.choice([3, 500, 50000])), [], [[]],
                [[1], [2, 3]], [None, 1, "x"], ["2026-01-31", "2026-02-28"], [1.0] * draw.choice([2, 300, 20000]),
                Liar(3, 3), Liar(10**9, 3), Liar(3, 1), Liar(-1, 1), Liar(3, 2, RuntimeError("no")), Liar(2.5, 1),
                Number(1.5), Number("x"), Number(ZeroDivisionError()), Shrinking([1.0, 2.0, 3.0]))
    yield from arrays(draw)


def sensible(draw):
    """What most arguments want, so that calls get beyond the first."""
    return draw.choice([0.05, 1, 12, 38000, 38365, "2026-11-22", [38000, 38365, 38730], [100.0, 110.0, 120.0], None,
                        np.array([38000.0, 38365.0]), 4, True])


def call_of_function(draw, hostile):
    function = draw.choice(FUNCTIONS)
    odds = draw.choice([0.1, 0.5, 1.0])
    count = draw.randrange(12)
    arguments = [draw.choice(hostile) if draw.random() < odds else sensible(draw) for _ in range(count)]
    keywords = {}
    if draw.random() < 0.2:
        keywords[draw.choice(["errors", "TheDate", "nonsense", "out"])] = draw.choice(hostile)
    words = f"{function.__name__} {SHORT.repr(arguments)} {SHORT.repr(keywords)}"
    return words, lambda: function(*arguments, **keywords)


def call_of_workbook(draw, hostile):
    book = quexel.Workbook()
    address = draw.choice(["A1", "B2:C5", "A:A", "1:3", "XFD1048576", "ZZZ9", "", "Sheet1!A1", "No!A1", None, 5, "A1#",
                           "A1:XFD1048576"])
    value = draw.choice([*hostile, "=SEQUENCE(3)", "=A1", "=SUM(", "=1/0", "=REPT(\"a\",32767)", "=NPV(0.1,A1:C9)"])

    def work():
        book[address] = value
        book.calculate()
        return book[address]

    return f"book[{address!r}] = {SHORT.repr(value)}", work


def main():
    faulthandler.enable()
    faulthandler.dump_traceback_later(10 * LONGEST, exit=True)
    seconds = float(sys.argv[1]) if len(sys.argv) > 1 else 60.0
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else random.randrange(10**6)
    print("seed", seed, flush=True)
    draw = random.Random(seed)
    np.seterr(all="ignore")
    end = time.monotonic() + seconds
    calls = answers = 0
    while time.monotonic() < end:
        if calls % 20 == 0:  # some of them last only once
            hostile = list(values(draw))
        words, work = draw.choice([call_of_function, call_of_function, call_of_workbook])(draw, hostile)
        faulthandler.dump_traceback_later(10 * LONGEST, exit=True)
        if "-v" in sys.argv:
            print(words, flush=True)
        start = time.monotonic()
        calls += 1
        try:
            work()
            answers += 1
        except EXPECTED:
            pass
        except Exception as error:
            if str(error) != "no":  # of the objects above
                print(words, file=sys.stderr)
                raise
        if time.monotonic() - start > LONGEST:
            raise SystemExit(f"{time.monotonic() - start:.1f} s: {words}")
    print(f"{calls} calls, {answers} answers")


if __name__ == "__main__":
    main()
