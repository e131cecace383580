"""Non-negative fits and the tightener against plain loops, which analyse over all pairs at every turn."""

from __future__ import annotations

import math
from collections.abc import Callable

import _native
import numpy as np
from harness import Case, best_time, plain
from vkmcore.tube.tightening import watched_tighten


def trefoil(n: int) -> np.ndarray:
    """A (2, 3) torus knot of radii 2 and 1."""
    u = 2.0 * np.pi * np.arange(n) / n
    r = 2.0 + np.cos(3.0 * u)
    return np.stack([r * np.cos(2.0 * u), r * np.sin(2.0 * u), np.sin(3.0 * u)], axis=1)


def contacts(columns: int, vertices: int) -> np.ndarray:
    """Columns that touch four vertices each, as those of struts do."""
    rng = np.random.default_rng(1)
    a = np.zeros((3 * vertices, columns))
    for k in range(columns):
        i, j = rng.integers(0, vertices, 2)
        for v in (i, (i + 1) % vertices, j, (j + 1) % vertices):
            a[3 * v : 3 * v + 3, k] = rng.normal(size=3)
    return a


def sparse_matrix(a: np.ndarray) -> _native.SparseRigidityMatrix:
    matrix = _native.SparseRigidityMatrix()
    columns = []
    for values in a.T:
        column = _native.SparseRigidityColumn()
        entries = []
        for row in np.flatnonzero(values):
            entry = _native.SparseEntry()
            entry.row, entry.value = int(row), float(values[row])
            entries.append(entry)
        column.entries = entries
        columns.append(column)
    matrix.row_count, matrix.column_count = a.shape
    matrix.columns = columns
    return matrix


def dense_matrix(a: np.ndarray) -> _native.RigidityMatrix:
    return _native.ContactStressMap.sparse_to_dense(sparse_matrix(a))


def fits() -> list[Case]:
    maps = _native.ContactStressMap
    columns, vertices, sweeps = 300, 200, 500
    a = contacts(columns, vertices)
    b = a @ np.random.default_rng(2).uniform(-0.5, 1.0, columns)
    by_column = np.ascontiguousarray(a.T)
    sparse, dense, target = sparse_matrix(a), dense_matrix(a), list(b)
    size = f"{columns} columns, {3 * vertices} rows"
    fit = maps.solve_nonnegative_least_squares_sparse_active_set(sparse, target)
    passes = maps.solve_nonnegative_least_squares_sparse(sparse, target, sweeps)
    slow = plain("plain_nnls_active_set")
    slow_descent = plain("plain_nnls_coordinate_descent")
    assert math.isclose(slow(by_column, b, 3 * vertices, columns), sum(fit.multipliers), rel_tol=1e-12)
    note = f"{fit.iterations} iterations, {fit.active_set_size} active"
    note_descent = f"{passes.iterations} sweeps, residual {passes.residual_norm / fit.residual_norm - 1.0:.1e} above"
    return [
        Case(
            "nnls active set, sparse",
            size,
            ours=lambda: maps.solve_nonnegative_least_squares_sparse_active_set(sparse, target),
            plain=lambda: slow(by_column, b, 3 * vertices, columns),
            note=note,
        ),
        Case(
            "nnls active set, dense",
            size,
            ours=lambda: maps.solve_nonnegative_least_squares_active_set(dense, target),
            plain=lambda: slow(by_column, b, 3 * vertices, columns),
            note=note,
        ),
        Case(
            "nnls coordinate descent, sparse",
            size,
            ours=lambda: maps.solve_nonnegative_least_squares_sparse(sparse, target, sweeps),
            plain=lambda: slow_descent(by_column, b, 3 * vertices, columns, sweeps),
            note=note_descent,
        ),
        Case(
            "nnls coordinate descent, dense",
            size,
            ours=lambda: maps.solve_nonnegative_least_squares(dense, target, sweeps),
            plain=lambda: slow_descent(by_column, b, 3 * vertices, columns, sweeps),
            note=note_descent,
        ),
    ]


def split(points: np.ndarray, options: _native.TighteningOptions) -> str:
    """Where the time of a run goes: its directions and the analyses of its trials, each made again, and the rest, which
    is corrections."""
    geometry, tightener = _native.ResolvedTubeGeometry, _native.ResolvedTubeTightener
    polygons, trials = [points.tolist()], []

    def watch(step: _native.TighteningStepRecord, after: list[list[float]]) -> None:
        polygons.append(after)
        halvings = math.log(step.alpha / options.max_step_size) / math.log(options.line_search_shrink)
        trials.append(1 + round(halvings))

    def spent(call: Callable[[], object]) -> float:
        return best_time(call, budget=0.005, least=2)

    watched_tighten(points, options, watch)
    tubes = [geometry.analyze(p, options.skip_neighbors, options.contact_tol) for p in polygons]
    whole = best_time(lambda: tightener.tighten(points, options), least=2, most=20)
    directions = analyses = 0.0
    for polygon, tube, count in zip(polygons, tubes, trials, strict=False):
        # Less the way of the vertices and of the result through the border, which a run goes once.
        directions += spent(lambda p=polygon, t=tube: tightener.projected_gradient_flat(p, t, options))
        directions -= spent(lambda p=polygon: geometry.length_gradient_flat(p))
        analyses += count * spent(lambda p=polygon: geometry.analyze(p, options.skip_neighbors, options.contact_tol))
        analyses -= count * spent(lambda p=polygon: geometry.length(p))
    rest = max(whole - directions - analyses, 0.0)
    parts = (("directions", directions), ("analyses of trials", analyses), ("corrections", rest))
    shares = ", ".join(f"{name} {100.0 * seconds / (directions + analyses + rest):.0f} %" for name, seconds in parts)
    return f"{1e3 * whole / len(trials):.2f} ms a step: {shares}"


def run(n: int, skip: int, steps: int) -> Case:
    points = trefoil(n)
    options = _native.TighteningOptions()
    options.skip_neighbors, options.max_steps = skip, steps
    slow = plain("plain_tighten")

    def ours() -> object:
        return _native.ResolvedTubeTightener.tighten(points, options)

    def slowly() -> object:
        return slow(points, n, skip, options.contact_tol, options.max_step_size, steps)

    result = ours()
    assert math.isclose(slowly(), result.metrics.ropelength_rad, rel_tol=1e-3)
    most = max(step.rigidity_columns for step in result.steps)
    return Case(
        f"tighten, skip {skip}",
        f"{n} vertices, {len(result.steps)} steps",
        ours=ours,
        plain=slowly,
        target_plain=10.0 if skip == 2 else None,
        note=f"ropelength to {result.metrics.ropelength_rad:.3f}, up to {most} columns; {split(points, options)}",
    )


def cases() -> list[Case]:
    return fits() + [run(200, 2, 100), run(200, 20, 100)]
