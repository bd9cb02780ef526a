"""Work for more than one process: done in parts, on this process, on processes of this machine, or on many machines.

    parts = scale.split(leases, 25_000)
    scale.run(project, parts)                              # here
    scale.run(project, parts, on=8)                        # in eight processes of this machine
    scale.run(project, parts, on="tcp://scheduler:8786")   # on a Dask cluster

The function and its parts travel to the workers, which need this package. One calculation runs at a time in a process,
so a worker should have one thread. A worker that dies is replaced, what it had not delivered is done again, and each
part's result is taken once.

A script that starts processes must do so under `if __name__ == "__main__":`, since each of them imports it.
"""

from __future__ import annotations

import collections
import contextlib
import functools
import os
import pathlib
import uuid
from typing import Any, Callable, Iterable, Iterator

RETRIES = 3  # of a part whose work has failed by an exception or by the death of its worker


def split(table: Any, rows: int) -> Iterator[Any]:
    """The parts of a table, an array, a list or a range, of so many rows each; the last may have fewer."""
    if rows < 1:
        raise ValueError("a part has at least one row")
    sliced = getattr(table, "iloc", table)
    for first in range(0, len(table), rows):
        yield sliced[first:first + rows]


@contextlib.contextmanager
def cluster(on: Any) -> Iterator[Any]:
    """A client of Dask: of so many processes of this machine, of the scheduler at an address, or the client given."""
    if hasattr(on, "submit"):
        yield on
        return
    import distributed

    if isinstance(on, str):
        with distributed.Client(on) as client:
            yield client
        return
    with distributed.LocalCluster(n_workers=on, threads_per_worker=1, processes=True, dashboard_address=None,
                                  protocol="tcp") as local, distributed.Client(local) as client:
        yield client


def stream(work: Callable[[Any], Any], parts: Iterable[Any], *, on: Any = None, ahead: int = 4) -> Iterator[Any]:
    """work(part) for each part, in the order of the parts, as it comes.

    on      None for this process, a number of processes, the address of a scheduler, or a client of Dask
    ahead   the parts that are given out for each worker before the first result of them is taken
    """
    if on is None:
        yield from map(work, parts)
        return
    with cluster(on) as client:
        run = uuid.uuid4().hex
        under_way: collections.deque[Any] = collections.deque()
        for number, part in enumerate(parts):
            # A key of its own for each part: the scheduler does what is lost again under the same key, so that one
            # result arrives for it however often it was begun.
            under_way.append(client.submit(work, part, key=f"{run}-{number}", retries=RETRIES))
            if len(under_way) >= ahead * max(1, len(client.nthreads())):
                yield under_way.popleft().result()
        while under_way:
            yield under_way.popleft().result()


def run(work: Callable[[Any], Any], parts: Iterable[Any], *, on: Any = None) -> list[Any]:
    """The results of work(part) for each part, in the order of the parts; see stream()."""
    return list(stream(work, parts, on=on))


def to_files(work: Callable[[Any], Any], parts: Iterable[Any], folder: str | os.PathLike[str], *, on: Any = None,
             format: str = "csv") -> list[pathlib.Path]:
    """Writes the table that work(part) returns for each part to a file of its own: part-00000.csv and so on.

    The workers write, so machines need a folder that they share. A file is complete when it appears, and a part that is
    done twice, as when a worker has died, replaces its file.

    format   "csv", or "parquet" where pandas has an engine for it
    """
    if format not in ("csv", "parquet"):
        raise ValueError(f"format is {format!r}; it is 'csv' or 'parquet'")
    folder = pathlib.Path(folder).absolute()
    folder.mkdir(parents=True, exist_ok=True)
    if any(folder.glob("part-*")):
        raise FileExistsError(f"{folder} has the parts of another run")
    write = functools.partial(_write, work, folder, format)
    return [pathlib.Path(path) for path in stream(write, enumerate(parts), on=on)]


def _write(work: Callable[[Any], Any], folder: pathlib.Path, format: str, numbered: tuple[int, Any]) -> str:
    number, part = numbered
    table = work(part)
    path = folder / f"part-{number:05}.{format}"
    unfinished = folder / f".{path.name}.{uuid.uuid4().hex}"
    try:
        if format == "csv":
            table.to_csv(unfinished, index=False)
        else:
            table.to_parquet(unfinished, index=False)
        os.replace(unfinished, path)
    finally:
        unfinished.unlink(missing_ok=True)
    return str(path)
