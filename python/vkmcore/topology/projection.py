"""Closed polygons seen along a direction, as planar diagrams."""

from __future__ import annotations

import math
from collections.abc import Sequence
from dataclasses import dataclass

import numpy as np
from numpy.typing import ArrayLike, NDArray

from vkmcore.topology.diagram import PlanarDiagram
from vkmcore.topology.simplification import simplified

Points = NDArray[np.float64]


class DegenerateProjection(ValueError):
    """Along this direction strands overlap, pass over a vertex, or three meet in a point."""


@dataclass(frozen=True)
class CrossingTable:
    """Crossings of projected closed polygons; edges are counted through all components."""

    over: NDArray[np.int64]  # (K,) edge
    under: NDArray[np.int64]  # (K,) edge
    over_at: NDArray[np.float64]  # (K,) place on the edge, 0 to 1
    under_at: NDArray[np.float64]
    signs: NDArray[np.int64]  # (K,) +1 or -1


def closed_polygons(curves: ArrayLike | Sequence[ArrayLike]) -> list[Points]:
    """The polygons (N, 3) of one curve or of a list, centred and scaled to extent 1, repeated vertices dropped.

    Raises:
        ValueError: a curve is not of shape (N, 3), is not finite, or has fewer than three vertices that are apart.
    """
    array = curves if isinstance(curves, np.ndarray) else None
    if array is None:
        try:
            array = np.asarray(curves, dtype=np.float64)
        except ValueError:  # components of different lengths
            array = None
    many = [array] if array is not None and array.ndim == 2 else list(curves)  # type: ignore[arg-type]
    polygons = []
    for curve in many:
        points = np.asarray(curve, dtype=np.float64)
        if points.ndim != 2 or points.shape[1] != 3:
            raise ValueError(f"expected three numbers a point, found shape {points.shape}")
        if not np.isfinite(points).all():
            raise ValueError("the points are not finite")
        polygons.append(points)
    if not polygons or any(len(points) < 3 for points in polygons):
        raise ValueError("a closed curve has at least three vertices")
    every = np.concatenate(polygons)
    low, high = every.min(axis=0), every.max(axis=0)
    half = float((high / 2.0 - low / 2.0).max())
    if not half > 0.0:
        raise ValueError("all points of the curve are one")
    scaled = [(points / half - (low / half + high / half) / 2.0) / 2.0 for points in polygons]
    distinct = [p[np.abs(p - np.roll(p, 1, axis=0)).max(axis=1) > 1e-12] for p in scaled]
    if any(len(points) < 3 for points in distinct):
        raise ValueError("a closed curve has at least three vertices that are apart")
    return distinct


def view_directions(count: int) -> Points:
    """Unit vectors (count, 3) spread over a half sphere, none along an axis or a diagonal of lattices."""
    n = np.arange(count) + 0.5
    z = 1.0 - n / count * 0.98
    turn = math.pi * (3.0 - math.sqrt(5.0)) * n + 0.37
    r = np.sqrt(1.0 - z * z)
    return np.stack([r * np.cos(turn), r * np.sin(turn), z], axis=1)


def _frame(direction: Points) -> Points:
    """Rows: two vectors that make a right-handed frame with the direction to the viewer, and that direction."""
    d = direction / np.linalg.norm(direction)
    a = np.cross([0.0, 0.0, 1.0] if abs(d[2]) < 0.9 else [1.0, 0.0, 0.0], d)
    a /= np.linalg.norm(a)
    return np.array([a, np.cross(d, a), d])


def crossings(polygons: Sequence[Points], direction: ArrayLike, tolerance: float = 1e-9) -> CrossingTable:
    """Crossings of polygons of extent about 1, seen from the side that the direction points to.

    Candidates are the pairs of edges whose shadows on the first axis overlap, found by sorting.

    Raises:
        DegenerateProjection: a crossing lies nearer than the tolerance to a vertex or to its other strand.
    """
    frame = _frame(np.asarray(direction, dtype=np.float64))
    start = np.concatenate([points @ frame.T for points in polygons])
    end = np.concatenate([np.roll(points, -1, axis=0) @ frame.T for points in polygons])
    count = len(start)
    sizes = np.array([len(points) for points in polygons])
    first_of = np.repeat(np.cumsum(sizes) - sizes, sizes)
    following = np.arange(count) + 1
    wrap = np.cumsum(sizes) - 1
    following[wrap] = first_of[wrap]

    low, high = np.minimum(start, end), np.maximum(start, end)
    order = np.argsort(low[:, 0], kind="stable")
    reach = np.searchsorted(low[order, 0], high[order, 0], side="right")  # candidates of order[n]: n + 1 to reach - 1
    number = reach - np.arange(count) - 1
    i = np.repeat(np.arange(count), number)
    j = np.arange(len(i)) - np.repeat(np.cumsum(number) - number, number) + i + 1
    i, j = order[i], order[j]
    near = (low[i, 1] <= high[j, 1] + tolerance) & (low[j, 1] <= high[i, 1] + tolerance)
    near &= (following[i] != j) & (following[j] != i)
    i, j = i[near], j[near]

    def side(a: Points, b: Points, c: Points) -> NDArray[np.float64]:
        result: NDArray[np.float64] = (b[:, 0] - a[:, 0]) * (c[:, 1] - a[:, 1])
        result -= (b[:, 1] - a[:, 1]) * (c[:, 0] - a[:, 0])
        return result

    c0, c1 = side(start[i], end[i], start[j]), side(start[i], end[i], end[j])
    d0, d1 = side(start[j], end[j], start[i]), side(start[j], end[j], end[i])
    length_i = np.hypot(*(end[i] - start[i])[:, :2].T)
    length_j = np.hypot(*(end[j] - start[j])[:, :2].T)
    small_i, small_j = tolerance * length_i + 1e-300, tolerance * length_j + 1e-300
    crossed = (c0 * c1 <= 0.0) & (d0 * d1 <= 0.0)
    touching = (np.minimum(np.abs(c0), np.abs(c1)) < small_i) | (np.minimum(np.abs(d0), np.abs(d1)) < small_j)
    # A vertex near the other edge's line is harmless where the edges are clear of each other.
    between = (np.minimum(c0, c1) < small_i) & (np.maximum(c0, c1) > -small_i)
    between &= (np.minimum(d0, d1) < small_j) & (np.maximum(d0, d1) > -small_j)
    if bool((between & touching).any()) or bool((np.hypot(*(end - start)[:, :2].T) < 1e-14).any()):
        raise DegenerateProjection("the projection along this direction is degenerate")
    i, j, c0, c1, d0, d1 = i[crossed], j[crossed], c0[crossed], c1[crossed], d0[crossed], d1[crossed]
    on_i, on_j = d0 / (d0 - d1), c0 / (c0 - c1)
    depth_i = start[i, 2] + on_i * (end[i, 2] - start[i, 2])
    depth_j = start[j, 2] + on_j * (end[j, 2] - start[j, 2])
    if bool((np.abs(depth_i - depth_j) < tolerance).any()):
        raise DegenerateProjection("two strands meet, or nearly so")
    first_over = depth_i > depth_j
    turn = np.where(c1 > c0, 1, -1)  # of the second edge against the first, counterclockwise positive
    return CrossingTable(
        over=np.where(first_over, i, j),
        under=np.where(first_over, j, i),
        over_at=np.where(first_over, on_i, on_j),
        under_at=np.where(first_over, on_j, on_i),
        signs=np.where(first_over, turn, -turn).astype(np.int64),
    )


def project(polygons: Sequence[Points], direction: ArrayLike, tolerance: float = 1e-9) -> PlanarDiagram:
    """The diagram of polygons of extent about 1, seen from the side that the direction points to.

    Raises:
        DegenerateProjection: see `crossings`; or two crossings lie in one point.
    """
    table = crossings(polygons, direction, tolerance)
    count = len(table.signs)
    edge = np.concatenate([table.under, table.over])
    at = np.concatenate([table.under_at, table.over_at])
    order = np.lexsort((at, edge))
    if bool(((np.diff(edge[order]) == 0) & (np.diff(at[order]) < 1e-12)).any()):
        raise DegenerateProjection("three strands meet in a point of the projection")
    sizes = np.array([len(points) for points in polygons])
    component = np.searchsorted(np.cumsum(sizes), edge[order], side="right")
    into, out = np.empty(2 * count, dtype=np.int64), np.empty(2 * count, dtype=np.int64)
    components = []
    arcs = 0
    for number in range(len(polygons)):
        mine = order[component == number]
        names = np.arange(len(mine)) + arcs + 1
        into[mine], out[mine] = names, np.roll(names, -1)
        components.append(tuple(names.tolist()))
        arcs += len(mine)
    code = []
    for n, sign in enumerate(table.signs.tolist()):
        a, b, c, d = int(into[n]), int(into[count + n]), int(out[n]), int(out[count + n])
        code.append((a, d, c, b) if sign > 0 else (a, b, c, d))
    return PlanarDiagram(tuple(code), tuple(table.signs.tolist()), tuple(components))


def diagram_of_curves(
    curves: ArrayLike | Sequence[ArrayLike], directions: int = 24, best: int = 3, effort: int = 12
) -> PlanarDiagram:
    """A diagram of closed polygons with few crossings.

    Args:
        curves: vertices (N, 3) of one closed polygon, or a sequence of such; any unit of length.
        directions: how many projections are counted; of the `best` with the fewest crossings, simplified, the one that
            ends with the fewest is returned.
        effort: of the simplification.

    Raises:
        ValueError: the input is no list of closed polygons, or strands meet, so that no projection is a diagram.
    """
    polygons = closed_polygons(curves)
    found: list[PlanarDiagram] = []
    for direction in view_directions(directions):
        try:
            found.append(project(polygons, direction))
        except DegenerateProjection:
            continue
    if not found:
        raise ValueError("the curve meets itself: no projection of it is a diagram")
    found.sort(key=len)
    results: list[PlanarDiagram] = []
    for diagram in found[: max(best, 1)]:
        results.append(simplified(diagram, effort))
        if len(results[-1]) < 3:
            break
    return min(results, key=len)
