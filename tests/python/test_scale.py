"""Work in parts on one process, on several, and on several of which one dies; the example of a portfolio."""
import functools
import importlib.util
import os
import pathlib
import signal
import subprocess
import sys

import numpy as np
import pandas as pd
import pytest

import quexel
from quexel import scale

distributed = pytest.importorskip("distributed")

ROOT = pathlib.Path(__file__).parents[2]
EXAMPLE = ROOT / "examples/portfolio.py"


@pytest.fixture(scope="module")
def client():
    with scale.cluster(2) as client:
        yield client


def month_ends(days):
    """The month ends of some days; must run on a worker alone, so that all it needs travels with it."""
    import quexel

    return quexel.MonthEnd(days)


def die_once(work, marks, part):
    """Kills its own process the first time that it is given each of some parts, and else does the work."""
    import os
    import pathlib
    import signal

    mark = pathlib.Path(marks) / str(part[0])
    if part[0] in (4, 8) and not mark.exists():
        mark.touch()
        os.kill(os.getpid(), signal.SIGKILL)
    return work(part)


def as_table(part):
    import pandas as pd

    return pd.DataFrame({"number": list(part)})


def test_parts_cover_a_table_once():
    table = pd.DataFrame({"a": range(10)})
    parts = list(scale.split(table, 4))
    assert [len(part) for part in parts] == [4, 4, 2] and pd.concat(parts).equals(table)
    assert list(scale.split(range(5), 2)) == [range(0, 2), range(2, 4), range(4, 5)]
    assert [list(part) for part in scale.split(np.arange(3), 5)] == [[0, 1, 2]] and list(scale.split([], 5)) == []
    with pytest.raises(ValueError):
        list(scale.split(table, 0))


def test_the_same_call_runs_on_one_process_and_on_several(client):
    parts = list(scale.split(np.datetime64("2024-01-01") + np.arange(100), 9))
    here = np.concatenate(scale.run(month_ends, parts))
    there = np.concatenate(scale.run(month_ends, parts, on=client))
    by_address = np.concatenate(scale.run(month_ends, parts, on=client.scheduler.address))
    assert (here == there).all() and (here == by_address).all() and here[-1] == np.datetime64("2024-04-30")
    with pytest.raises(quexel.Error) as caught:  # an error arrives as what it is
        scale.run(functools.partial(quexel.DateYMD, 2024, 13), [[1]], on=client)
    assert caught.value.variable == "Mnth" and caught.value.index == 0


def test_a_worker_that_dies_is_replaced_and_nothing_is_lost_or_done_twice(client, tmp_path):
    workers = set(client.run(os.getpid).values())
    marks = tmp_path / "marks"
    marks.mkdir()
    parts = list(scale.split(range(40), 2))
    results = scale.run(functools.partial(die_once, list, marks), parts, on=client)
    assert results == [list(part) for part in parts]
    assert {mark.name for mark in marks.iterdir()} == {"4", "8"}  # they did die
    client.wait_for_workers(2, timeout=60)
    assert set(client.run(os.getpid).values()) != workers

    for mark in marks.iterdir():
        mark.unlink()
    files = scale.to_files(functools.partial(die_once, as_table, marks), parts, tmp_path / "out", on=client)
    assert len(list(marks.iterdir())) == 2
    assert sorted(files) == sorted((tmp_path / "out").glob("*")) and len(files) == len(parts)
    assert list(pd.concat(map(pd.read_csv, files)).number) == list(range(40))


def test_a_worker_killed_from_outside_is_replaced(client):
    client.wait_for_workers(2, timeout=60)
    results = scale.stream(month_ends, scale.split(np.datetime64("2024-01-01") + np.arange(3000), 10), on=client)
    first = next(results)
    os.kill(sorted(client.run(os.getpid).values())[0], signal.SIGKILL)
    everything = np.concatenate([first, *results])
    assert len(everything) == 3000 and (everything == month_ends(np.datetime64("2024-01-01") + np.arange(3000))).all()


def test_files_of_another_run_are_not_mixed_with_new_ones(tmp_path):
    files = scale.to_files(as_table, [[1], [2, 3]], tmp_path)
    assert [file.name for file in files] == ["part-00000.csv", "part-00001.csv"]
    with pytest.raises(FileExistsError):
        scale.to_files(as_table, [[1]], tmp_path)
    with pytest.raises(ValueError, match="parquet"):
        scale.to_files(as_table, [[1]], tmp_path / "new", format="xls")


def load_example():
    spec = importlib.util.spec_from_file_location("portfolio", EXAMPLE)
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


def test_rents_of_the_portfolio_equal_those_of_numpy():
    portfolio = load_example()
    ours, theirs = portfolio.project(range(500)), portfolio.project_in_numpy(range(500))
    assert ours.shape == (500, 41) and (ours.columns == theirs.columns).all()
    assert np.allclose(ours.to_numpy(float), theirs.to_numpy(float), rtol=1e-9, atol=1e-6)
    assert (ours.to_numpy(float)[:, 1:] > 0).any(axis=0).all()


def test_the_example_writes_the_portfolio_in_parts(tmp_path):
    done = subprocess.run([sys.executable, EXAMPLE, "--leases", "1200", "--rows", "500", "--workers", "2", "--out",
                           tmp_path / "rents", "--check", "100"], capture_output=True, text=True, timeout=300)
    assert done.returncode == 0, done.stderr
    assert "3 files" in done.stdout and "1,200 leases" in done.stdout
    table = pd.concat(map(pd.read_csv, sorted((tmp_path / "rents").glob("part-*.csv"))))
    assert list(table.lease) == list(range(1200))
    expected = pd.concat([load_example().project_in_numpy(part) for part in scale.split(range(1200), 500)])
    assert np.allclose(table.to_numpy(), expected.to_numpy(float), rtol=1e-9, atol=1e-6)
