"""A campaign: tight shapes and Fourier forms for a list of knots and links, task by task, best things first.

Every knot first gets one search at the coarse edge and a Fourier form, so that all of them exist early; then those
above the published value get a second seed, and those far above it further ones; then finer edges; then seeds for the
rest that is above. What is missing is found from the files alone: a campaign that was stopped goes on where it stood.
"""

from __future__ import annotations

import os
import time
import traceback
from collections.abc import Callable, Sequence
from concurrent.futures import FIRST_COMPLETED, Executor, Future, wait
from dataclasses import dataclass, field
from typing import Any

from vkmcore.ideal.campaign_store import Entry, Shape, Store, StoredForm

COARSE = 0.15  # edges in tube radii
FINE = (0.10, 0.07)
CLOSE_ENOUGH = 6e-4  # excess at the coarse edge that is mere discretisation
FAR = 3e-3  # excess that further seeds are to mend before anything is refined
FIRST_SEEDS = 2  # of what is not close, before anything is refined: the first one is quick, and often not the best
LEAST_SEEDS = 3  # of what has no published value
LAGGING = 1e-3  # excess of a Fourier form over the best polygon from which on it is made again at once
HARMONICS_A_RADIUS = 3.0
MOST_HARMONICS = 256
MOST_CROSSINGS_OF_FORMS = 11  # knots of twelve crossings are kept as polygons
MOST_CROSSINGS_KEPT_FINE = 10  # beyond, only ropelengths at finer edges: the polygons would fill four times the space


@dataclass(frozen=True)
class Target:
    """A knot or link of the campaign and the best value known of it."""

    name: str
    rank: tuple[int, ...]  # order among first searches
    published: float | None = None
    form: bool = True  # whether a Fourier form is wanted beside the polygon
    trend: float | None = None  # ropelength above which it lies above its neighbours, where published values are loose
    fine: bool = True  # whether finer polygons are kept, or their ropelengths only


@dataclass(frozen=True)
class Task:
    kind: str  # search, refine, form
    name: str
    seed: int
    edge: float
    shape: Shape | None = None  # what refine and form begin with
    keep: bool = True  # the polygon, or its ropelength only


@dataclass
class Outcome:
    task: Task
    shape: Shape | None = None
    form: StoredForm | None = None
    certificate: str = ""
    error: str = ""
    cpu: float = 0.0
    on_the_way: dict[float, float] = field(default_factory=dict)  # ropelengths by edge, of a refinement in stages


@dataclass
class Progress:
    """Of one run: what it has done and what is left."""

    done: int = 0
    left: int = 0
    started: float = field(default_factory=time.monotonic)

    @property
    def rate(self) -> float:
        """Tasks a second."""
        return self.done / max(1e-9, time.monotonic() - self.started)

    @property
    def remaining_s(self) -> float:
        return self.left / self.rate if self.done else float("inf")


def excess(target: Target, ropelength: float) -> float | None:
    """How far above the published value, as a part of it."""
    return None if target.published is None else ropelength / target.published - 1.0


def above_known(target: Target, ropelength: float) -> float:
    """How far above the published value or the trend, the larger part; 0 where there is neither."""
    known = [value for value in (target.published, target.trend) if value is not None]
    return ropelength / min(known) - 1.0 if known else 0.0


def missing(target: Target, entry: Entry, seeds: int, finest: float) -> list[tuple[tuple[Any, ...], Task]]:
    """The next tasks of a knot with their priorities, least first: at most one of each kind, since they build on each
    other."""
    tasks: list[tuple[tuple[Any, ...], Task]] = []
    tried = entry.seeds()
    coarse = entry.shapes.get(COARSE)
    shape = entry.best
    if not tried:
        return [((0, *target.rank, 1), Task("search", target.name, 1, COARSE))]
    if shape is not None:
        failed = {(a["task"], a["edge"], a["source"]) for a in entry.attempts if a.get("error") and "source" in a}
        assert coarse is not None
        edges = [edge for edge in FINE if edge >= finest]
        done = {(a["edge"], a["source"]) for a in entry.attempts if a["task"] == "refine" and "source" in a}
        # Polygons that are kept are the next stage's begin; else one task goes through all edges.
        stages = zip((COARSE, *edges), edges) if target.fine else zip((COARSE,), edges[-1:])
        for before, edge in stages:
            begin = entry.shapes.get(before)
            if begin is None:
                break
            if (edge, begin.ropelength) not in done:
                refine = Task("refine", target.name, begin.seed, edge, begin, keep=target.fine)
                tasks.append(((2, *target.rank, -1), refine))
                break
        if target.form and (entry.form is None or entry.form.source_ropelength != shape.ropelength):
            form = Task("form", target.name, shape.seed, shape.edge, shape)
            if ("form", shape.edge, shape.ropelength) not in failed:
                late = entry.form is not None and entry.form.ropelength < shape.ropelength * (1.0 + LAGGING)
                stage = 2 if late else 0
                tasks.append(((stage, *target.rank, 0), form))
    if len(tried) < seeds:
        above = above_known(target, coarse.ropelength) if coarse is not None else 1.0
        if target.published is None and len(tried) < LEAST_SEEDS:
            above = max(above, 2.0 * CLOSE_ENOUGH)
        if above > CLOSE_ENOUGH:
            priority = (1 if above > FAR or len(tried) < FIRST_SEEDS else 3, len(tried), -above)
            tasks.append((priority, Task("search", target.name, max(tried) + 1, COARSE)))
    return tasks


def record(entry: Entry, outcome: Outcome) -> bool:
    """Note an outcome in its entry; whether the entry's best became better."""
    task = outcome.task
    attempt: dict[str, Any] = {"task": task.kind, "seed": task.seed, "edge": task.edge, "cpu": round(outcome.cpu, 2)}
    if task.shape is not None:
        attempt["source"] = task.shape.ropelength
    better = False
    for edge, ropelength in outcome.on_the_way.items():
        entry.attempts.append({**attempt, "edge": edge, "cpu": 0.0, "ropelength": ropelength})
    if outcome.error:
        attempt["error"] = outcome.error
    if outcome.shape is not None:
        attempt["ropelength"] = outcome.shape.ropelength
        better = task.keep and entry.offer(outcome.shape)
        if better and entry.best is outcome.shape:
            entry.certificate = outcome.certificate
    if outcome.form is not None:
        attempt["ropelength"] = outcome.form.ropelength
        better = entry.offer_form(outcome.form)
        if not better and entry.form is not None:  # the better form stays, and counts as made from the new polygon
            entry.form = StoredForm(
                entry.form.form, entry.form.ropelength, outcome.form.source_ropelength, outcome.form.source_edge
            )
    entry.attempts.append(attempt)
    return better


def run(
    store: Store,
    targets: Sequence[Target],
    executor: Executor,
    jobs: int,
    work: Callable[[Task], Outcome],
    seeds: int = 1,
    finest: float = FINE[-1],
    watch: Callable[[Target, Entry, Outcome, Progress], None] = lambda *_: None,
) -> Progress:
    """Do all that is missing, `jobs` tasks at a time, and store each outcome as it comes.

    Args:
        work: does one task in another process; what it raises ends the task, not the campaign.
        watch: is told each outcome after it was stored.
    """
    by_name = {target.name: target for target in targets}
    entries = {target.name: store.load(target.name) for target in targets}
    waiting = {name: missing(by_name[name], entry, seeds, finest) for name, entry in entries.items()}
    running: dict[Future[Outcome], str] = {}
    progress = Progress()
    try:
        while True:
            busy = set(running.values())
            ready = [
                (priority, task) for name, tasks in waiting.items() if name not in busy for priority, task in tasks
            ]
            ready.sort(key=lambda item: item[0])
            for _, task in ready:
                if len(running) >= jobs:
                    break
                if task.name in busy:
                    continue
                busy.add(task.name)
                running[executor.submit(attempt, work, task)] = task.name
            if not running:
                return progress
            for future in wait(running, return_when=FIRST_COMPLETED).done:
                name = running.pop(future)
                outcome = future.result()
                entry = entries[name]
                record(entry, outcome)
                store.save(entry)
                waiting[name] = missing(by_name[name], entry, seeds, finest)
                progress.done += 1
                progress.left = sum(map(len, waiting.values()))
                watch(by_name[name], entry, outcome, progress)
    finally:
        for future in running:
            future.cancel()


def attempt(work: Callable[[Task], Outcome], task: Task) -> Outcome:
    """One task in a worker; an error is an outcome."""
    start = time.process_time()
    try:
        outcome = work(task)
    except Exception as error:
        last = traceback.extract_tb(error.__traceback__)[-1]
        where = f" ({os.path.basename(last.filename)}:{last.lineno})"
        outcome = Outcome(task, error=f"{type(error).__name__}: {error}{where}")
    outcome.cpu = time.process_time() - start
    return outcome
