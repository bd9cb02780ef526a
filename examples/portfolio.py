#!/usr/bin/env python3
"""The rents of a portfolio, quarter by quarter: a million leases, on one process or on as many as there are.

    python3 examples/portfolio.py --leases 20000                              # in this process
    python3 examples/portfolio.py --workers 4 --out rents                     # in four, a million leases
    python3 examples/portfolio.py --on tcp://scheduler:8786 --out /shared/rents   # on a Dask cluster

The leases are made up, the same ones for the same seed, in parts of one size: a part is all that a process holds at a
time. --check compares some of them with a calculation in NumPy.
"""
import argparse
import time

import numpy as np
import pandas as pd

import quexel
from quexel import scale

FIRST_QUARTER = np.datetime64("2026-01")
GROWTH = 0.025  # of market rents, a year
VOID, RENT_FREE, RELET_YEARS, REVIEW_MONTHS = 6, 3, 10, 60

# The function that projects a rent. What follows knows it under this name only; arguments() says what it takes.
PROJECTION = quexel.over(quexel.RentGrowR, each=["BrksOrExp", "MktRent_s"])


def arguments(leases: pd.DataFrame) -> dict[str, object]:
    """What the projection takes of a table of leases beside the quarters."""
    return {"RentStart": leases.start, "BrksOrExp": leases[["expiry"]], "FirstRev": leases.review,
            "MktRent_s": leases[["market_rent"]], "InitRent": leases.rent,
            "GrowthDates": [FIRST_QUARTER.astype("M8[D]")], "GrowthRates": [GROWTH], "RevMos": REVIEW_MONTHS,
            "UOTog": [np.datetime64("1990-01-01")],  # upward only from then on
            "RelVoid_s": [VOID], "RelRF_s": [RENT_FREE], "RelTerm_s": [RELET_YEARS],
            "DayCount": 3.0}  # actual days of a year of 365


def make_leases(numbers: range, seed: int = 1) -> pd.DataFrame:
    """Leases of these numbers that run in the first quarter: offices and shops of 5 to 25 years, with a review every
    five years."""
    random = np.random.default_rng([seed, numbers.start])
    count = len(numbers)
    months = 12 * random.choice([5, 10, 15, 20, 25], count)
    start = FIRST_QUARTER - random.integers(0, months)
    passed = (FIRST_QUARTER - start).astype(int)
    review = start + REVIEW_MONTHS * np.maximum(1, -(-passed // REVIEW_MONTHS))
    rent = np.round(random.lognormal(10.5, 0.8, count), -2) + 5000.0
    return pd.DataFrame({"lease": np.arange(numbers.start, numbers.stop), "start": start.astype("M8[D]"),
                         "expiry": (start + months).astype("M8[D]"), "review": review.astype("M8[D]"), "rent": rent,
                         "market_rent": np.round(rent * random.uniform(0.9, 1.6, count), -2)})


def project(numbers: range, quarters: int = 40) -> pd.DataFrame:
    """The rent of each lease, and of the relet after it, in each quarter."""
    leases = make_leases(numbers)
    edges = (FIRST_QUARTER + 3 * np.arange(quarters + 1)).astype("M8[D]")
    rents = PROJECTION(edges, None, **arguments(leases))  # a time base: each quarter ends where the next begins
    return pd.concat([leases[["lease"]], rents.set_axis(edges.astype(str), axis=1).iloc[:, :quarters]], axis=1)


def project_in_numpy(numbers: range, quarters: int = 40) -> pd.DataFrame:
    """The same rents without the library, for all leases and quarters at once: each rent from one review to the next,
    until the first relet ends."""
    leases = make_leases(numbers)
    edges = (FIRST_QUARTER + 3 * np.arange(quarters + 1)).astype("M8[D]")
    start, expiry, review = (leases[name].to_numpy().astype("M8[M]") for name in ["start", "expiry", "review"])
    market_rent = leases.market_rent.to_numpy()
    rents = np.zeros((len(leases), quarters))

    def market(month):
        return market_rent * (1.0 + GROWTH) ** ((month - FIRST_QUARTER).astype(int) / 12)

    def add(begin, end, rent):
        begin, end = begin.astype("M8[D]")[:, None], end.astype("M8[D]")[:, None]
        days = (np.minimum(end, edges[1:]) - np.maximum(begin, edges[:-1])).astype(int)
        rents[:] += rent[:, None] * np.maximum(days, 0) / 365

    rent, begin = leases.rent.to_numpy(), start
    for review in [review, review + REVIEW_MONTHS, review + 2 * REVIEW_MONTHS]:
        add(begin, np.minimum(review, expiry), rent)
        rent, begin = np.maximum(rent, market(review)), review
    relet = expiry + VOID
    rent = market(relet)
    add(relet + RENT_FREE, relet + REVIEW_MONTHS, rent)
    add(relet + REVIEW_MONTHS, relet + 12 * RELET_YEARS, np.maximum(rent, market(relet + REVIEW_MONTHS)))
    return pd.concat([leases[["lease"]], pd.DataFrame(rents, columns=edges[:-1].astype(str))], axis=1)


def total(numbers: range) -> np.ndarray:
    """The rent of all leases together in each quarter."""
    return project(numbers).drop(columns="lease").to_numpy().sum(axis=0)


def main() -> None:
    parser = argparse.ArgumentParser(description="Projects the rents of a portfolio of leases over 40 quarters.")
    parser.add_argument("--leases", type=int, default=1_000_000)
    parser.add_argument("--rows", type=int, default=10_000, help="leases in a part")
    parser.add_argument("--workers", type=int, help="processes of this machine; without, this one")
    parser.add_argument("--on", help="address of the scheduler of a Dask cluster")
    parser.add_argument("--out", help="folder for the rents; without, only their total is shown")
    parser.add_argument("--format", choices=["csv", "parquet"], default="csv")
    parser.add_argument("--check", type=int, default=0, help="compare this many leases with NumPy")
    options = parser.parse_args()

    where = options.on or options.workers
    parts = scale.split(range(options.leases), options.rows)
    began = time.perf_counter()
    if options.out:
        files = scale.to_files(project, parts, options.out, on=where, format=options.format)
        print(f"{len(files)} files in {options.out}")
    else:
        rents = sum(scale.stream(total, parts, on=where))
        print(f"rent of the first quarter {rents[0]:,.0f}, of the last {rents[-1]:,.0f}")
    seconds = time.perf_counter() - began
    print(f"{options.leases:,} leases in {seconds:.1f} s, {options.leases / seconds:,.0f} a second")

    if options.check:
        numbers = range(min(options.check, options.leases))
        ours, theirs = project(numbers).to_numpy(float), project_in_numpy(numbers).to_numpy(float)
        print(f"largest difference to NumPy over {len(numbers):,} leases: {np.abs(ours - theirs).max():.6f}")


if __name__ == "__main__":
    main()
