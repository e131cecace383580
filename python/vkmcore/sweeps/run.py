"""A sweep: every knot with every combination of settings, a row each."""

from __future__ import annotations

import itertools
import os
import time
from collections.abc import Callable, Iterable, Mapping, Sequence
from functools import partial
from typing import Any

from vkmcore.progress import progress_bar, watched
from vkmcore.rows import Row, cell, flat
from vkmcore.sweeps import table
from vkmcore.sweeps.table import ERROR, KNOT, SECONDS
from vkmcore.sweeps.workers import Outcome, Task, on_cluster, on_processes

WRITE_PAUSE = 2.0  # s between two writings of the file


def sweep(
    work: Callable[..., Any] | str,
    knots: Iterable[Any] = (),
    grid: Mapping[str, Iterable[Any]] | None = None,
    *,
    jobs: int | None = None,
    scheduler: str | None = None,
    out: str | os.PathLike[str] | None = None,
    retries: int = 1,
    progress: bool | None = None,
) -> Any:
    """Call a function for every knot and every combination of settings, on many processes.

    sweep("mass", ["3:1:1", "4:1:1"], {"resolution": [100, 200, 400]}, jobs=8, out="masses.csv")
    sweep(lambda knot: Knot(knot).ropelength, ["3_1", "4_1", "5_1"])

    Args:
        work: a function of a knot (if there are any) and of the grid's names as keyword arguments, which returns a
            number or a mapping of them; or the name of a command that has --json, as "mass" or "describe".
        knots: given to the function as they are: names, or objects.
        grid: by name the values of a setting.
        jobs: processes at a time; as many as there are processors by default.
        scheduler: address of a Dask scheduler, whose workers then do the work (extra `sweep`).
        out: a CSV file, written as rows come. Rows that it holds already, without an error, are not done again.
        retries: how often a task is tried again whose worker died.
        progress: draw a bar on standard error; by default where that is a terminal.

    Returns:
        A pandas `DataFrame` with the columns knot, the grid's names, what the function gave, seconds, and error: empty,
        or what the call raised, or how its worker died.

    Raises:
        ValueError: no such command, `jobs` below 1, or `out` is of another sweep.
        ImportError: pandas or Dask is not installed; the text names the extra.
        OSError: `out` cannot be read or written, or there is no scheduler.
    """
    try:
        import pandas
    except ImportError as error:
        raise ImportError(f'sweeps need pandas: pip install "vkmcore[sweep]" ({error})') from error
    return pandas.DataFrame(
        rows(work, knots, grid or {}, jobs=jobs, scheduler=scheduler, out=out, retries=retries, progress=progress)
    )


def rows(
    work: Callable[..., Any] | str,
    knots: Iterable[Any],
    grid: Mapping[str, Iterable[Any]],
    *,
    jobs: int | None = None,
    scheduler: str | None = None,
    out: str | os.PathLike[str] | None = None,
    retries: int = 1,
    progress: bool | None = None,
) -> list[Row]:
    """As `sweep`, the rows as dicts in the order of knots and grid."""
    jobs = len(os.sched_getaffinity(0)) if jobs is None else jobs
    if jobs < 1:
        raise ValueError(f"a sweep needs at least one process, not {jobs}")
    if isinstance(work, str):
        from vkmcore.sweeps.command import check, row_of

        check(work)
        work = partial(row_of, work)
    tasks = _tasks(list(knots), {name: list(values) for name, values in grid.items()})
    named = [_identity(task) for task in tasks]
    done = {} if out is None else table.read(out, named[0] if named else ())
    found: list[Row | None] = [None] * len(tasks)
    for number, names in enumerate(named):
        if row := done.get(tuple(map(cell, names.values()))):
            found[number] = {**row, **names}
    missing = [number for number, row in enumerate(found) if row is None]
    todo = [tasks[number] for number in missing]
    if scheduler is None:
        outcomes = on_processes(work, todo, min(jobs, max(len(todo), 1)), retries)
    else:
        outcomes = on_cluster(work, todo, scheduler, retries)
    written = time.monotonic()
    with progress_bar(len(tasks), watched() if progress is None else progress) as tell:
        tell(len(tasks) - len(todo), "sweep")
        try:
            for count, (place, outcome) in enumerate(outcomes, start=1 + len(tasks) - len(todo)):
                number = missing[place]
                found[number] = _row(named[number], outcome)
                tell(count, " ".join(map(str, named[number].values())))
                if out is not None and time.monotonic() - written > WRITE_PAUSE:
                    table.write(out, [row for row in found if row is not None])
                    written = time.monotonic()
        finally:
            if out is not None:
                table.write(out, [row for row in found if row is not None])
    return [row for row in found if row is not None]


def _tasks(knots: Sequence[Any], grid: Mapping[str, Sequence[Any]]) -> list[Task]:
    combinations = [dict(zip(grid, values)) for values in itertools.product(*grid.values())]
    of = [(knot,) for knot in knots] if knots else [()]
    return [Task(knot, settings) for knot in of for settings in combinations]


def _identity(task: Task) -> Row:
    """What names a row: a knot by its name, where it is an object that has one."""
    names: Row = {}
    if task.knots:
        (knot,) = task.knots
        names[KNOT] = knot if isinstance(knot, str) else getattr(knot, "name", "") or str(knot)
    return names | dict(task.settings)


def _row(names: Row, outcome: Outcome) -> Row:
    value = {} if outcome.value is None and outcome.error else flat(outcome.value)
    error = value.pop(ERROR, "") or outcome.error
    return {**names, **{n: v for n, v in value.items() if n not in names}, SECONDS: outcome.seconds, ERROR: error}
