"""What the workers of a campaign do: a search, a finer level, or a Fourier form of one knot or link, certified."""

from __future__ import annotations

import math
from typing import Any

import numpy as np

from vkmcore import _engine
from vkmcore.ideal.campaign import FINE, HARMONICS_A_RADIUS, MOST_HARMONICS, Outcome, Task
from vkmcore.ideal.campaign_store import Shape, StoredForm
from vkmcore.ideal.families import EFFORT, family_of
from vkmcore.ideal.form_polish import fit, polish
from vkmcore.ideal.fourier_form import measure
from vkmcore.ideal.starts import searched_starts
from vkmcore.reference.tables import TableEntry, find
from vkmcore.topology.certificate import certify

QUICK = {
    "start_count": 8,
    "first_chains": 3,
    "first_hops": 4,
    "second_chains": 1,
    "second_hops": 10,
    "refined": 2,
    "finished": 1,
}
LEAST_HARMONICS = 64
VERTICES_A_RADIUS = 6.0  # of the polygon whose type is taken of a form


def work(task: Task) -> Outcome:
    """Do a task.

    Raises:
        CertificateError: the result is of another type than the knot.
        ValueError: there is no start, or nothing came of it.
    """
    entry = find(task.name)
    if task.kind == "form":
        return _form(task, entry)
    stages = _refine(task) if task.kind == "refine" else {task.edge: _search(task, entry)}
    found = stages.pop(task.edge)
    points = [np.asarray(part) for part in found["points"]]
    middle = np.concatenate(points).mean(axis=0)  # hops drift, and polygons are packed around the origin
    points = [part - middle for part in points]
    certificate = certify(points, entry.name)
    shape = Shape(tuple(points), float(found["ropelength"]), task.edge, task.seed)
    on_the_way = {edge: float(stage["ropelength"]) for edge, stage in stages.items()}
    return Outcome(task, shape=shape, certificate=str(certificate), on_the_way=on_the_way)


def _refine(task: Task) -> dict[float, dict[str, Any]]:
    """Through the edges between: that is quicker than at once, and ends shorter."""
    assert task.shape is not None
    points, stages = list(task.shape.components), {}
    for edge in (*(edge for edge in FINE if task.shape.edge > edge > task.edge), task.edge):
        stages[edge] = _engine.refine(points, edge)
        points = stages[edge]["points"]
    return stages


def _search(task: Task, entry: TableEntry) -> dict[str, Any]:
    """The engine's search from what the table has of the knot, or from starts of its family: every later one where no
    other start is worth its time, else every fourth. The first seed is a quick one, so that every knot exists soon."""
    seed = 1000 * task.seed + sum(map(ord, entry.name))
    family = family_of(entry)
    if family is not None and task.seed > 1 and (family.alone or task.seed % 4 == 0):
        starts = [list(start.components) for start in family.starts(seed)]
        return _engine.tighten(starts, edge=task.edge, seed=seed, start_count=family.count, **EFFORT)
    starts = [list(start.components) for start in searched_starts(entry, task.seed)]
    effort: dict[str, Any] = QUICK if task.seed == 1 else {}
    return _engine.tighten(starts, edge=task.edge, seed=seed, **effort)


def _form(task: Task, entry: TableEntry) -> Outcome:
    assert task.shape is not None
    components = task.shape.components
    longest = max(float(np.linalg.norm(np.roll(p, -1, axis=0) - p, axis=1).sum()) for p in components)
    harmonics = min(MOST_HARMONICS, max(LEAST_HARMONICS, math.ceil(HARMONICS_A_RADIUS * longest)))
    form = polish(fit(components, harmonics))
    counts = [max(24, math.ceil(VERTICES_A_RADIUS * length)) for length in form.lengths()]
    certificate = certify(form.evenly_spaced(counts), entry.name)
    stored = StoredForm(form, measure(form).ropelength, task.shape.ropelength, task.shape.edge)
    return Outcome(task, form=stored, certificate=str(certificate))
