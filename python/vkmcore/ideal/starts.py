"""Start polygons of knots and links: from arc presentations, braids, planar diagrams, and standard families.

A start is made of one closed polygon a component, first vertex not repeated, in coordinates without a unit. Its `gap`
is the least distance of strands: of all pairs of points that are farther apart along the curve than half the
circumference of a tube of that diameter. Scale a start by `2 * radius / gap` to give a tube of that radius room.

All starts have the chirality of the standard tables (KnotInfo: the trefoil 3_1 has the Jones polynomial
t + t^3 - t^4, its crossings and those of the braid 1 1 1 are positive).
"""

from __future__ import annotations

import math
from collections.abc import Callable, Iterator, Sequence
from dataclasses import dataclass, replace
from functools import cache, partial
from typing import TYPE_CHECKING, Any

import numpy as np
from numpy.typing import NDArray

from vkmcore.ideal.arc_walks import Grid, arc_walk

if TYPE_CHECKING:
    from vkmcore.reference.tables import TableEntry

Points = NDArray[np.float64]
WALKS = 40  # among arc presentations, for one search
MOST_STARTS = 64  # of one search from the tables' own notations; a search contracts some 20 of them


@dataclass(frozen=True)
class Start:
    """Closed polygons of one knot or link."""

    components: tuple[Points, ...]  # (N, 3) each
    gap: float  # least distance of strands, in the unit of the components
    source: str  # "grid 2 5", "braid", ...

    def mirrored(self) -> Start:
        """The mirror image in the plane z = 0."""
        return replace(self, components=tuple(points * [1.0, 1.0, -1.0] for points in self.components))


def start_of(components: Sequence[Points], source: str) -> Start:
    """The record of the polygons, their gap measured.

    Raises:
        ValueError: two strands meet.
    """
    gap = least_distance(components)
    if not gap > 1e-9:
        raise ValueError(f"{source}: two strands of the polygon meet")
    return Start(tuple(np.ascontiguousarray(points, dtype=np.float64) for points in components), gap, source)


# --- distance of strands --------------------------------------------------------------------------------------------


def segment_distances(
    p: Points, u: Points, q: Points, v: Points
) -> tuple[NDArray[np.float64], NDArray[np.float64], NDArray[np.float64]]:
    """Distances of the segments p + s u and q + t v (s, t in [0, 1]; shapes (K, 3)), and s and t of the nearest points.

    Closest points of two segments by clamping: Ericson, Real-Time Collision Detection, section 5.1.9.
    """
    r = p - q
    a, e, b = (u * u).sum(-1), (v * v).sum(-1), (u * v).sum(-1)
    c, f = (u * r).sum(-1), (v * r).sum(-1)
    denominator = a * e - b * b
    parallel = denominator <= 1e-12 * a * e
    s = np.where(parallel, 0.0, np.clip((b * f - c * e) / np.where(parallel, 1.0, denominator), 0.0, 1.0))
    t = (b * s + f) / e
    s = np.where(t < 0.0, np.clip(-c / a, 0.0, 1.0), np.where(t > 1.0, np.clip((b - c) / a, 0.0, 1.0), s))
    t = np.clip(t, 0.0, 1.0)
    gap = r + s[:, None] * u - t[:, None] * v
    return np.sqrt((gap * gap).sum(-1)), s, t


def least_distance(components: Sequence[Points]) -> float:
    """Least distance d of pairs of points on the polygons that are at least pi d / 2 apart along their component.

    Parallel segments count by one of their nearest pairs. `inf` where there is no such pair.
    """
    p = np.concatenate(components)
    u = np.concatenate([np.roll(points, -1, axis=0) - points for points in components])
    length = np.sqrt((u * u).sum(-1))
    owner = np.repeat(np.arange(len(components)), [len(points) for points in components])
    total = np.bincount(owner, length)
    along = np.cumsum(length) - length
    i, j = np.triu_indices(len(p), 1)
    least = math.inf
    for k in range(0, len(i), 1 << 18):  # bounds the memory
        first, second = i[k : k + (1 << 18)], j[k : k + (1 << 18)]
        distance, s, t = segment_distances(p[first], u[first], p[second], u[second])
        apart = np.abs(along[second] + t * length[second] - along[first] - s * length[first])
        apart = np.minimum(apart, total[owner[first]] - apart)
        free = (owner[first] != owner[second]) | (apart >= 0.5 * math.pi * distance)
        neighbours = (distance == 0.0) & (apart < 1e-9 * total[owner[first]]) & (owner[first] == owner[second])
        least = min(least, float(np.min(distance[free & ~neighbours], initial=math.inf)))
    return least


# --- arc presentations ----------------------------------------------------------------------------------------------


def grid_polygon(grid: Grid, shift: tuple[int, int] = (0, 0)) -> Start:
    """The start from an arc presentation: rows at height 1, columns at height 0, corners cut.

    Args:
        grid: the two rows that each column's ends lie in, column after column, counted from 1: a square of n columns
            and n rows in which every row is named twice. (KnotInfo's `grid_notation` lists the corners, LinkInfo's
            `arc_notation` is this list.)
        shift: columns and rows by which the grid is moved around its torus; each is another polygon of the same type.

    Rows over columns: columns over rows give the mirror image of the tables' knots.

    Raises:
        ValueError: the list is no arc presentation.
    """
    n = len(grid)
    columns = [tuple(ends) for ends in grid]
    rows = sorted(row for ends in columns for row in ends)
    if n < 2 or any(len(ends) != 2 for ends in columns) or rows != sorted([*range(1, n + 1)] * 2):
        raise ValueError("an arc presentation names two rows a column, and every row from 1 to n twice")
    if any(low == high for low, high in columns):
        raise ValueError("both ends of a column of the arc presentation lie in one row")
    dx, dy = shift
    ends_of = {(column + dx) % n: [(row - 1 + dy) % n for row in ends] for column, ends in enumerate(columns)}
    columns_of: dict[int, list[int]] = {row: [] for row in range(n)}
    for column, pair in ends_of.items():
        for row in pair:
            columns_of[row].append(column)

    cut = 0.25
    components = []
    waiting = sorted(ends_of)
    while waiting:
        first = column = waiting[0]
        row = ends_of[column][0]
        points: list[tuple[float, float, float]] = []
        while True:  # one column up or down, then one row
            waiting.remove(column)
            across = sum(ends_of[column]) - row
            step = math.copysign(cut, across - row)
            points += [(column, row + step, 0.0), (column, across - step, 0.0)]
            row = across
            onward = sum(columns_of[row]) - column
            step = math.copysign(cut, onward - column)
            points += [(column + step, row, 1.0), (onward - step, row, 1.0)]
            column = onward
            if column == first:
                break
        components.append(np.array(points, dtype=np.float64) - [(n - 1) / 2.0, (n - 1) / 2.0, 0.5])
    return start_of(components, f"grid {dx} {dy}")


def grid_polygons(grid: Grid) -> Iterator[Start]:
    """The starts of all n x n torus translations of an arc presentation of n columns."""
    for dx in range(len(grid)):
        for dy in range(len(grid)):
            yield grid_polygon(grid, (dx, dy))


# --- braids ---------------------------------------------------------------------------------------------------------


def braid_polygon(word: Sequence[int], strands: int | None = None, points_a_step: int = 8) -> Start:
    """The closure of a braid word, its strands stacked along the axis of a cylinder.

    Args:
        word: k for the generator that crosses strands k and k + 1 (counted from 1) positively, -k for its inverse.
        strands: their number; by default the least that the word needs.
        points_a_step: vertices a strand and step; letters that commute share a step.

    Raises:
        ValueError: a letter is 0 or needs more strands, or there is no strand.
    """
    count = max((abs(letter) for letter in word), default=0) + 1 if strands is None else strands
    if count < 1 or any(letter == 0 or abs(letter) >= count for letter in word):
        raise ValueError(f"the letters of a braid of {count} strands are 1 to {count - 1} and their negatives")
    steps: list[dict[int, int]] = []  # position of the crossing -> sign
    busy = [0] * (count + 1)  # the step from which on a strand's place is free
    for letter in word:
        place = abs(letter) - 1
        at = max(busy[place], busy[place + 1])
        if at == len(steps):
            steps.append({})
        steps[at][place] = 1 if letter > 0 else -1
        busy[place] = busy[place + 1] = at + 1
    steps = steps or [{}]
    slots = max(len(steps), 4)
    radius = max(2.0 * slots / (2.0 * math.pi), 1.2)
    along = np.arange(points_a_step) / points_a_step

    paths, place_after = [], list(range(count))
    for strand in range(count):
        place, pieces = strand, []
        for number in range(slots):
            step = steps[number] if number < len(steps) else {}
            angle = 2.0 * math.pi * (number + along) / slots
            rise, bump = np.zeros_like(along), np.zeros_like(along)
            start = place
            if place in step:  # this strand climbs; in a positive crossing it is the inner one
                rise, bump = (1.0 - np.cos(math.pi * along)) / 2.0, -0.5 * step[place] * np.sin(math.pi * along)
                place += 1
            elif place - 1 in step:
                rise, bump = (np.cos(math.pi * along) - 1.0) / 2.0, 0.5 * step[place - 1] * np.sin(math.pi * along)
                place -= 1
            r = radius + bump
            pieces.append(np.stack([r * np.cos(angle), r * np.sin(angle), start + rise], axis=1))
        paths.append(np.concatenate(pieces))
        place_after[strand] = place

    components, waiting = [], set(range(count))
    while waiting:
        strand, chain = min(waiting), []
        while strand in waiting:
            waiting.remove(strand)
            chain.append(paths[strand])
            strand = place_after[strand]
        components.append(np.concatenate(chain) - [0.0, 0.0, (count - 1) / 2.0])
    return start_of(components, "braid")


# --- families -------------------------------------------------------------------------------------------------------


def torus_polygon(
    p: int,
    q: int,
    major: float = 3.0,
    minor: float = 1.2,
    lobes: Sequence[int] = (),
    amplitude: float = 0.0,
    phase: float = 0.0,
    vertical: float = 0.0,
    vertices: int | None = None,
) -> Start:
    """The torus knot or link T(p, q), p times around the axis and q times around the core circle, with lobes.

    x and y are multiplied by 1 + 0.3 amplitude cos(w(theta + phase)), z by 1 + 0.3 vertical cos(w(theta + phase)),
    theta the angle around the axis. w grows by 2 pi over each lobe, evenly; `lobes` gives their shares of the circle,
    in crossings for instance: the tight T(2, 9) has lobes of 2, 2, 2 and 3 crossings, not found from a round start.
    With a phase of 0 a lobe begins, at its top, where the strands lie one outside the other. Positive p q give positive
    crossings, as in the tables.

    Raises:
        ValueError: p or q is 0, the radii do not make a torus, or the lobes make strands meet.
    """
    if p == 0 or q == 0 or not 0.0 < minor < major:
        raise ValueError("a torus start asks for p and q other than 0, and 0 < minor < major")
    count = math.gcd(p, q)
    n = vertices or max(24, 12 * (abs(p) + abs(q)) // count)
    begins = math.tau * np.concatenate([[0.0], np.cumsum(lobes)]) / max(1, sum(lobes))
    grows = math.tau * np.arange(len(lobes) + 1)
    components = []
    for number in range(count):
        s = 2.0 * math.pi * np.arange(n) / n
        theta, turn = p // count * s, q // count * s + 2.0 * math.pi * number / abs(p)
        wave = 0.3 * np.cos(np.interp((theta + phase) % math.tau, begins, grows)) if len(lobes) > 0 else np.zeros(n)
        r = (major + minor * np.cos(turn)) * (1.0 + amplitude * wave)
        z = -minor * np.sin(turn) * (1.0 + vertical * wave)
        components.append(np.stack([r * np.cos(theta), r * np.sin(theta), z], axis=1))
    return start_of(components, f"torus {p} {q}, {len(lobes)} lobes" if lobes else f"torus {p} {q}")


def twist_polygon(
    half_twists: int,
    radius: float | None = None,
    pitch: float = 2.0,
    lobes: int = 0,
    amplitude: float = 0.0,
    phase: float = 0.0,
    vertices_a_turn: int = 24,
) -> Start:
    """The twist knot of `half_twists` half twists and a clasp: 3_1, 4_1, 5_2, 6_1, 7_2, 8_1 for 1, 2, 3, 4, 5, 6.

    A double helix of strands at distance 1 runs around a ring and ends in two hooks that hold each other.

    Args:
        half_twists: at least 1; a negative number gives the mirror image.
        radius: of the ring; by default the half twists take `pitch` each.
        lobes, amplitude, phase: the ring's radius is multiplied by 1 + 0.3 amplitude cos(lobes theta + phase), theta
            the angle from the clasp.

    Raises:
        ValueError: there is no half twist, or strands meet.
    """
    if half_twists == 0:
        raise ValueError("a twist knot has at least one half twist")
    n = abs(half_twists)
    reach, flare = 0.8, 1.2  # of a hook beyond the middle of the clasp; where its arms spread so that it holds another
    ring = radius or max((n * pitch + 2.0 * (reach + flare) + 2.0) / (2.0 * math.pi), 1.8)
    half_gap = (reach + flare) / ring  # the helix covers the angles half_gap to 2 pi - half_gap
    m = max(16, vertices_a_turn * (n + 1) // 2)
    s = np.linspace(0.0, 1.0, m)
    theta = half_gap + (2.0 * math.pi - 2.0 * half_gap) * s
    turn = (n + 0.5) * math.pi * s

    def place(angle: NDArray[Any], outward: NDArray[Any], up: NDArray[Any]) -> Points:
        wave = 1.0 + (0.3 * amplitude * np.cos(lobes * angle + phase) if lobes else 0.0)
        r = ring * wave + outward
        return np.stack([r * np.cos(angle), r * np.sin(angle), up], axis=1)

    half = 0.5
    one = place(theta, half * np.cos(turn), half * np.sin(turn))
    other = place(theta, -half * np.cos(turn), -half * np.sin(turn))

    # Around a hook: its arms spread from the helix's distance to twice that, then half a circle, and back.
    bend = np.linspace(-0.5, 0.5, 13) * math.pi
    spread = np.linspace(0.0, 1.0, 8)[1:-1]
    arm = half + half * (1.0 - np.cos(math.pi * spread)) / 2.0
    before = -(reach + flare) + spread * (2.0 * reach + flare - 2.0 * half)
    ahead = np.concatenate([before, reach - 2.0 * half + 2.0 * half * np.cos(bend), before[::-1]])
    across = np.concatenate([-arm, 2.0 * half * np.sin(bend), arm[::-1]])
    # The first hook lies in the plane of the ring, at the beginning of the helix; it points to smaller angles.
    last = (n + 0.5) * math.pi
    flat = place(-ahead / ring, -across, np.zeros_like(across))  # from `one` (outside) to `other`
    upright = place(2.0 * math.pi + ahead / ring, -across * math.cos(last), -across * math.sin(last))
    # From `other`'s beginning on: other forwards, its hook to the end of `one`, one backwards, the flat hook back.
    points = np.concatenate([other, upright[::-1], one[::-1], flat])
    if half_twists < 0:
        points = points * [1.0, 1.0, -1.0]
    return start_of([points], f"twist {half_twists}")


# --- planar diagrams ------------------------------------------------------------------------------------------------


def diagram_polygon(code: Sequence[Sequence[int]]) -> Start:
    """The start from a planar-diagram code in the standard convention, simplified first, drawn on a lattice.

    Raises:
        DiagramError: the code is no planar diagram.
    """
    from vkmcore.topology.diagram import diagram_of_code
    from vkmcore.topology.drawing import lattice_polygons
    from vkmcore.topology.simplification import simplified

    return start_of(lattice_polygons(simplified(diagram_of_code(code))), "planar diagram")


# --- tables ---------------------------------------------------------------------------------------------------------


def table_starts(entry: TableEntry, seed: int) -> list[Start]:
    """Starts of a knot or link of the tables: translations of its arc presentation, half as many of its closed braid,
    and a sixth of its diagram, which is long; where that makes more than MOST_STARTS, so many of them drawn at random.
    A search displaces each at random, so that equal ones lead to several shapes.

    The tight shape of 9_29, 7 % shorter than all that its arc presentations were seen to lead to, comes from others.
    """
    sides = range(len(entry.grid))
    makers: list[Callable[[], Start]] = [partial(grid_polygon, entry.grid, (dx, dy)) for dx in sides for dy in sides]
    if entry.braid:
        makers += [cache(partial(braid_polygon, entry.braid))] * max(1, len(makers) // 2)
    makers += [cache(partial(diagram_polygon, entry.pd))] * max(1, len(makers) // 6)
    if len(makers) > MOST_STARTS:
        chosen = np.random.default_rng(seed).choice(len(makers), MOST_STARTS, replace=False)
        makers = [makers[k] for k in sorted(chosen)]
    return [make() for make in makers]


def searched_starts(entry: TableEntry, seed: int) -> list[Start]:
    """Starts of one search for a knot or link of the tables: `table_starts` for seed 1; for all others, where the table
    has an arc presentation, the ends of walks from it: for two of three seeds of presentations one to five columns
    larger."""
    if seed == 1 or not entry.grid:
        return table_starts(entry, seed)
    rng = np.random.default_rng(seed)
    larger = ((3, 4, 5), (1, 2), (0,))[seed % 3]
    return [grid_polygon(arc_walk(entry.grid, rng, int(rng.choice(larger)))) for _ in range(WALKS)]
