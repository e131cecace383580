"""A planar diagram drawn in space: lattice polygons that project to it.

The diagram's plane graph is drawn as a visibility representation (Tamassia and Tollis, Discrete Comput. Geom. 1 (1986)
321): every crossing is a horizontal bar, every arc a vertical segment between two bars. At a bar the over strand runs
above it and the under strand below it.
"""

from __future__ import annotations

from collections.abc import Callable

import numpy as np
from numpy.typing import NDArray

from vkmcore.topology.diagram import DiagramError, PlanarDiagram, faces, pieces

Points = NDArray[np.float64]


def _layers(count: int, steps: list[tuple[int, int]]) -> list[int]:
    """Longest paths from the sources of an acyclic graph; unreached nodes are at 0."""
    level = [0] * count
    onward: list[list[int]] = [[] for _ in range(count)]
    waiting = [0] * count
    for a, b in steps:
        onward[a].append(b)
        waiting[b] += 1
    ready = [node for node in range(count) if not waiting[node]]
    done = 0
    while ready:
        node = ready.pop()
        done += 1
        for other in onward[node]:
            level[other] = max(level[other], level[node] + 1)
            waiting[other] -= 1
            if not waiting[other]:
                ready.append(other)
    if done != count:
        raise DiagramError("the diagram has a nugatory crossing: simplify it first")
    return level


def _heights(darts: list[int], members: list[int], outer: int) -> Callable[[int], float]:
    """Potentials of the crossings of one piece: the outer arc's ends at 0 and 1, all others at weighted means.

    In a graph without cut vertices only the two ends are extreme, so that going up orders the crossings.
    """
    index = {crossing: n for n, crossing in enumerate(members)}
    source, sink = index[outer // 4], index[darts[outer] // 4]
    weights = np.random.default_rng(5).uniform(0.8, 1.25, len(darts))  # no two neighbours at one height
    matrix = np.zeros((len(members), len(members)))
    for crossing, n in index.items():
        for dart in range(4 * crossing, 4 * crossing + 4):
            weight = weights[min(dart, darts[dart])]
            matrix[n, n] += weight
            matrix[n, index[darts[dart] // 4]] -= weight
    right = np.zeros(len(members))
    for node, value in ((source, 0.0), (sink, 1.0)):
        matrix[node] = 0.0
        matrix[node, node] = 1.0
        right[node] = value
    potential = np.linalg.solve(matrix, right)
    return lambda crossing: float(potential[index[crossing]])


def _piece_places(
    darts: list[int], face: list[int], members: list[int], outer: int
) -> tuple[dict[int, int], dict[int, int]]:
    """Height of every crossing and column of every dart's arc, in one piece, the outer arc at the left edge."""
    height = _heights(darts, members, outer)
    index = {crossing: n for n, crossing in enumerate(members)}
    upward = [
        dart
        for crossing in members
        for dart in range(4 * crossing, 4 * crossing + 4)
        if height(crossing) < height(darts[dart] // 4) or (dart == outer)
    ]
    bars = _layers(len(members), [(index[dart // 4], index[darts[dart] // 4]) for dart in upward])
    # The face left of the outer arc is parted in two, one at each end of the order from left to right.
    numbers = sorted({face[dart] for crossing in members for dart in range(4 * crossing, 4 * crossing + 4)})
    node = {number: n for n, number in enumerate(numbers)}
    left_end = len(numbers)
    between = []
    for dart in upward:
        left = left_end if dart == outer else node[face[dart]]
        between.append((left, node[face[darts[dart]]]))
    columns = _layers(len(numbers) + 1, between)
    column = {}
    for dart, (left, _) in zip(upward, between):
        column[dart] = column[darts[dart]] = columns[left]
    return {crossing: bars[index[crossing]] for crossing in members}, column


def lattice_polygons(diagram: PlanarDiagram) -> list[Points]:
    """One closed polygon (N, 3) a component whose projection along z is the diagram, seen from positive z.

    Strands keep a distance of about 1. Components without crossings are squares beside the others; pieces that are not
    connected stand side by side.

    Raises:
        DiagramError: the diagram has a nugatory crossing, or a kink.
    """
    darts = diagram.darts()
    face = faces(darts)
    piece = pieces(darts)
    bar: dict[int, int] = {}
    column: dict[int, float] = {}
    side = 0.0
    for number in sorted(set(piece)):
        members = [crossing for crossing, other in enumerate(piece) if other == number]
        of_piece = range(4 * members[0], 4 * members[0] + 4)
        every = [dart for crossing in members for dart in range(4 * crossing, 4 * crossing + 4)]
        if any(darts[dart] // 4 == dart // 4 for dart in every):
            raise DiagramError("the diagram has a nugatory crossing: simplify it first")
        best = None
        for outer in (
            [dart for dart in every if dart < darts[dart]] if len(members) < 40 else of_piece
        ):  # the outer arc that makes the smallest drawing
            bars, columns = _piece_places(darts, face, members, outer)
            length = sum(abs(bars[dart // 4] - bars[darts[dart] // 4]) for dart in every) / 2
            for crossing in members:
                at = [columns[dart] for dart in range(4 * crossing, 4 * crossing + 4)]
                length += abs(at[0] - at[2]) + abs(at[1] - at[3])
            if best is None or length < best[0]:
                best = length, bars, columns
        assert best is not None
        _, bars, columns = best
        bar.update(bars)
        column.update({dart: at + side for dart, at in columns.items()})
        side += max(columns.values()) + 3.0

    rise, lift, cut = 1.5, 0.6, 0.5  # distance of bars; height of a strand above or below its bar; corners
    first_dart = {arc: 4 * n + s for n, row in enumerate(diagram.code) for s, arc in enumerate(row)}
    leads = {darts[dart] if _comes_in(diagram, dart) else dart for dart in first_dart.values()}
    by_arc = {diagram.code[dart // 4][dart % 4]: dart for dart in leads}
    polygons = []
    for arcs in diagram.components:
        if not arcs:
            square = np.array([[0.0, 0.0, 0.0], [2.0, 0.0, 0.0], [2.0, 2.0, 0.0], [0.0, 2.0, 0.0]])
            polygons.append(square + [side, 0.0, 0.0])
            side += 4.0
            continue
        points = []
        for arc in arcs:
            begin, end = by_arc[arc], darts[by_arc[arc]]
            onward = end ^ 2
            x, low, high = column[begin], rise * bar[begin // 4], rise * bar[end // 4]
            up = 1.0 if high > low else -1.0
            points += [(x, low + cut * up, 0.0), (x, high - cut * up, 0.0)]
            level = lift if end % 2 else -lift
            over_x = column[onward]
            if over_x == x:
                points.append((x, high, level))
            else:
                step = cut * (1.0 if over_x > x else -1.0)
                points += [(x + step, high, level), (over_x - step, high, level)]
        polygon = np.array(points)
        polygons.append(polygon[(polygon != np.roll(polygon, 1, axis=0)).any(axis=1)])
    centre = np.concatenate(polygons)
    middle = (centre.min(axis=0) + centre.max(axis=0)) / 2.0
    return [points - middle for points in polygons]


def _comes_in(diagram: PlanarDiagram, dart: int) -> bool:
    """Whether the strand comes into the crossing by this dart."""
    slot = dart % 4
    return slot == 0 or slot == (3 if diagram.signs[dart // 4] > 0 else 1)
