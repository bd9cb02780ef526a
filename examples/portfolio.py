#!/usr/bin/env python3
"""The rents of a portfolio, quarter by quarter: a million leases, on one process or on as many as there are.

    python3 examples/portfolio.py --leases 20000                              # in this process
    python3 examples/portfolio.py --workers 4 --out rents                     # in four, a million leases
    python3 examples/portfolio.py --on tcp://scheduler:8786 --out /shared/rents   # on a Dask cluster

The leases are made up, the same ones for the same seed, in parts of so many: a part is all that a process holds at a
time. --check compares some of them with a calculation in NumPy.
"""
import argparse
import time

import numpy as np
import pandas as pd

import quexel
from quexel import scale

FIRST_QUARTER = np.datetime64("2026-01")

# The function that projects a rent. What follows knows it under this name only; arguments() says what it takes.
PROJECTION = quexel.Ramp


def arguments(leases: pd.DataFrame) -> dict[str, object]:
    """What the projection takes of a table of leases beside the quarters."""
    return {"Start": leases.start, "Finish": leases.expiry, "StartRate": leases.rent, "FinishRate": leases.market_rent,
            "DayCount": 3.0}  # actual days of a year of 365


def make_leases(numbers: range, seed: int = 1) -> pd.DataFrame:
    """Leases of these numbers: offices and shops of 5 to 25 years that began since 2010."""
    random = np.random.default_rng([seed, numbers.start])
    count = len(numbers)
    start = np.datetime64("2010-01-01") + random.integers(0, 365 * 20, count)
    years = random.choice([5, 10, 15, 20, 25], count)
    rent = np.round(random.lognormal(10.5, 0.8, count), -2) + 5000.0
    return pd.DataFrame({"lease": np.arange(numbers.start, numbers.stop), "start": start,
                         "expiry": start + (365.25 * years).astype(int), "rent": rent,
                         "market_rent": np.round(rent * random.uniform(0.9, 1.6, count), -2)})


def project(numbers: range, quarters: int = 40) -> pd.DataFrame:
    """The rent of each lease in each quarter."""
    leases = make_leases(numbers)
    edges = (FIRST_QUARTER + 3 * np.arange(quarters + 1)).astype("M8[D]")
    rents = PROJECTION(edges, None, **arguments(leases))  # a time base: each quarter ends where the next begins
    return pd.concat([leases[["lease"]], rents.set_axis(edges.astype(str), axis=1).iloc[:, :quarters]], axis=1)


def project_in_numpy(numbers: range, quarters: int = 40) -> pd.DataFrame:
    """The same rents without the library: the area under a straight line, for all leases and quarters at once."""
    leases = make_leases(numbers)
    edges = (FIRST_QUARTER + 3 * np.arange(quarters + 1)).astype("M8[D]").astype(float)
    start = leases.start.to_numpy().astype("M8[D]").astype(float)[:, None]
    expiry = leases.expiry.to_numpy().astype("M8[D]").astype(float)[:, None]
    rent, market_rent = leases.rent.to_numpy()[:, None], leases.market_rent.to_numpy()[:, None]
    begin, end = np.maximum(edges[:-1], start), np.minimum(edges[1:], expiry)
    middle = rent + (market_rent - rent) * ((begin + end) / 2 - start) / (expiry - start)
    rents = np.where(end > begin, middle * (end - begin) / 365, 0.0)
    columns = edges[:-1].astype("M8[D]").astype(str)
    return pd.concat([leases[["lease"]], pd.DataFrame(rents, columns=columns)], axis=1)


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
    parser.add_argument("--check", type=int, default=0, help="compare so many leases with NumPy")
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
