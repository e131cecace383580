"""What the workers of a campaign do: a search, a finer level, or a Fourier form of one knot or link, certified."""

from __future__ import annotations

import math
from typing import Any

import numpy as np

from vkmcore import _engine
from vkmcore.ideal.campaign import HARMONICS_A_RADIUS, MOST_HARMONICS, Outcome, Task
from vkmcore.ideal.campaign_store import Shape, StoredForm
from vkmcore.ideal.form_polish import fit, polish
from vkmcore.ideal.fourier_form import measure
from vkmcore.ideal.starts import Start, diagram_polygon, grid_polygons, torus_polygon
from vkmcore.reference.tables import TableEntry, find
from vkmcore.topology.certificate import certify

# Torus knots T(2, q) whose tight shape has lobes that no other start leads to, and the lobes' number.
LOBES = {"7_1": 3, "9_1": 4}
LOBED_STARTS = 40
QUICK = {"start_count": 8, "first_chains": 3, "first_hops": 4, "second_chains": 1, "second_hops": 10}
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
    if task.kind == "refine":
        assert task.shape is not None
        found = _engine.refine(list(task.shape.components), task.edge)
    else:
        found = _search(task, entry)
    points = tuple(np.asarray(part) for part in found["points"])
    certificate = certify(list(points), entry.name)
    shape = Shape(points, float(found["ropelength"]), task.edge, task.seed)
    return Outcome(task, shape=shape, certificate=str(certificate))


def _search(task: Task, entry: TableEntry) -> dict[str, Any]:
    """The engine's search from the knot's starts, or from lobed ones. The first seed is a quick one, so that every knot
    exists soon."""
    seed = 1000 * task.seed + sum(map(ord, entry.name))
    if entry.name in LOBES and task.seed > 1:
        return _lobed_search(lobed_starts(entry, seed), task.edge)
    from_grid = grid_polygons(entry.grid) if entry.grid else [diagram_polygon(entry.pd)]
    starts = [list(start.components) for start in from_grid]
    effort: dict[str, Any] = QUICK if task.seed == 1 else {}
    return _engine.tighten(starts, edge=task.edge, seed=seed, **effort)


def _lobed_search(starts: list[Start], edge: float) -> dict[str, Any]:
    """The best of the starts at an edge of 0.5, without hops, which lead back to wider basins, brought to the edge."""
    best: dict[str, Any] | None = None
    for start in starts:
        try:
            found = _engine.contract(list(start.components), 0.5)
        except ValueError:  # its strands touch
            continue
        if best is None or found["ropelength"] < best["ropelength"]:
            best = found
    if best is None:
        raise ValueError("no start could be contracted")
    for level in (0.4, 0.25, edge):
        best = _engine.refine(best["points"], level)
    return best


def lobed_starts(entry: TableEntry, seed: int) -> list[Start]:
    """Torus curves of random proportions whose ring is lobed, in the chirality of the table."""
    rng = np.random.default_rng(seed)
    q = entry.crossings
    starts: list[Start] = []
    while len(starts) < LOBED_STARTS:
        vertical = rng.uniform(0.0, 0.3) if rng.random() < 0.3 else 0.0
        try:
            start = torus_polygon(
                2,
                q,
                rng.uniform(2.0, 4.0),
                rng.uniform(1.05, 1.5),
                LOBES[entry.name],
                rng.uniform(0.1, 1.2),
                rng.uniform(0.0, math.tau),
                vertical,
            )
        except ValueError:  # these lobes make strands meet
            continue
        starts.append(start)
    return starts


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
