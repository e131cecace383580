"""Who does the tasks of a sweep: processes of this machine, or a Dask cluster.

A worker that dies, by a signal or for want of memory, takes its own task with it and no other: the task is given to
another worker, and after so many deaths its outcome says so.
"""

from __future__ import annotations

import importlib
import multiprocessing
import signal
import sys
import time
import warnings
from collections import deque
from collections.abc import Callable, Iterator, Mapping, Sequence
from contextlib import suppress
from dataclasses import dataclass
from multiprocessing.connection import Connection, wait
from typing import Any

Work = Callable[..., Any]


@dataclass(frozen=True)
class Task:
    """One call of the work: of a knot, if there are any, and of keyword arguments."""

    knots: tuple[Any, ...]  # one or none
    settings: Mapping[str, Any]


@dataclass(frozen=True)
class Outcome:
    """What came of a task: a value, or an error in words."""

    value: Any = None
    error: str = ""
    seconds: float = 0.0


def attempt(work: Work, task: Task) -> Outcome:
    """The task done here; what it raises is its outcome."""
    start = time.perf_counter()
    try:
        value, error = work(*task.knots, **task.settings), ""
    except Exception as raised:
        value, error = None, f"{type(raised).__name__}: {raised}"
    return Outcome(value, error, time.perf_counter() - start)


def on_processes(work: Work, tasks: Sequence[Task], jobs: int, retries: int) -> Iterator[tuple[int, Outcome]]:
    """The outcomes of the tasks as they come, each with its number.

    Workers are forked: `work` may be any function, also one that was typed into a notebook.
    """
    pool = _Pool(work)
    waiting = deque(range(len(tasks)))
    deaths = [0] * len(tasks)
    try:
        while waiting or pool.busy:
            while waiting and len(pool.busy) < jobs:
                number = waiting.popleft()
                pool.give(number, tasks[number])
            for number, outcome, code in pool.finished():
                if outcome is None:
                    deaths[number] += 1
                    if deaths[number] <= retries:
                        waiting.append(number)
                        continue
                    outcome = Outcome(error=f"the worker died {deaths[number]} times, exit code {code}")
                yield number, outcome
    finally:
        pool.end()


class _Pool:
    """Forked workers, each behind a pipe of its own."""

    def __init__(self, work: Work) -> None:
        self.work = work
        self.idle: list[tuple[Connection, Any]] = []
        self.busy: dict[Connection, tuple[int, Any]] = {}

    def give(self, number: int, task: Task) -> None:
        pipe, process = self.idle.pop() if self.idle else self._new()
        with suppress(BrokenPipeError):  # it died idle; its end is told as that of the task
            pipe.send(task)
        self.busy[pipe] = number, process

    def _new(self) -> tuple[Connection, Any]:
        here, there = multiprocessing.Pipe()
        others = [*self.busy, *(pipe for pipe, _ in self.idle), here]
        process = multiprocessing.get_context("fork").Process(
            target=_serve, args=(self.work, there, others), daemon=True
        )
        with warnings.catch_warnings():  # of forks beside threads; those of a notebook hold no lock of ours
            warnings.simplefilter("ignore", DeprecationWarning)
            process.start()
        there.close()
        return here, process

    def finished(self) -> Iterator[tuple[int, Outcome | None, int | None]]:
        """Wait for the next tasks to end: number and outcome, or None and the exit code of a worker that died."""
        for pipe in wait(list(self.busy)):
            assert isinstance(pipe, Connection)
            number, process = self.busy.pop(pipe)
            try:
                outcome = pipe.recv()
            except (EOFError, OSError):
                process.join()
                pipe.close()
                yield number, None, process.exitcode
            else:
                self.idle.append((pipe, process))
                yield number, outcome, None

    def end(self) -> None:
        for _, process in self.busy.values():
            process.terminate()
        for pipe, process in [*self.idle, *((pipe, process) for pipe, (_, process) in self.busy.items())]:
            pipe.close()
            process.join()


def _serve(work: Work, pipe: Connection, others: Sequence[Connection]) -> None:
    """A worker's life: it ends when its pipe does."""
    signal.signal(signal.SIGINT, signal.SIG_IGN)  # Ctrl-C is for the one who waits
    for other in others:
        other.close()
    with suppress(EOFError, OSError):
        while True:
            outcome = attempt(work, pipe.recv())
            try:
                pipe.send(outcome)
            except (TypeError, AttributeError, ValueError) as error:
                pipe.send(Outcome(error=f"the result cannot be sent: {error}", seconds=outcome.seconds))
            except Exception as error:  # pickle raises errors of its own
                pipe.send(Outcome(error=f"the result cannot be sent: {error!r}", seconds=outcome.seconds))


def on_cluster(work: Work, tasks: Sequence[Task], scheduler: str, retries: int) -> Iterator[tuple[int, Outcome]]:
    """As `on_processes`, by the workers of the Dask scheduler at this address. They need this package too.

    Raises:
        ImportError: Dask's scheduler is not installed; the text names the extra.
        OSError: there is no scheduler.
    """
    dask = distributed()
    Client, as_completed, KilledWorker = dask.Client, dask.as_completed, dask.scheduler.KilledWorker
    with Client(scheduler) as client:
        numbers = {client.submit(attempt, work, task, pure=False): n for n, task in enumerate(tasks)}
        deaths = [0] * len(tasks)
        ended = as_completed(list(numbers))
        for future in ended:
            number = numbers.pop(future)
            try:
                outcome = future.result()
            except KilledWorker as error:
                deaths[number] += 1
                if deaths[number] <= retries:
                    again = client.submit(attempt, work, tasks[number], pure=False)
                    numbers[again] = number
                    ended.add(again)
                    continue
                outcome = Outcome(error=f"the worker died: {error}")
            except Exception as error:  # the work could not be sent or unpacked there
                outcome = Outcome(error=f"{type(error).__name__}: {error}")
            yield number, outcome


def distributed() -> Any:
    """Dask's `distributed`, loaded where SnapPy is installed too: it takes SnapPy for a compression of the same name,
    and fails to load.

    Raises:
        ImportError: it is not installed; the text names the extra.
    """
    held = sys.modules.get("snappy")
    loaded = "distributed" in sys.modules
    if not loaded:
        sys.modules["snappy"] = None  # type: ignore[assignment]  # an import of it is an ImportError now
    try:
        return importlib.import_module("distributed")
    except ImportError as error:
        raise ImportError(f'a scheduler needs Dask: pip install "vkmcore[sweep]" ({error})') from error
    finally:
        if not loaded:
            del sys.modules["snappy"]
            if held is not None:
                sys.modules["snappy"] = held
