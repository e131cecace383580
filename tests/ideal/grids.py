"""Start polygons from grids (arc presentations), for the tests of the engine."""

import numpy as np

# Rows joined by each column.
UNKNOT = [(0, 1), (0, 1)]
TREFOIL = [(0, 2), (1, 3), (2, 4), (0, 3), (1, 4)]
FIGURE_EIGHT = [(0, 2), (1, 3), (2, 5), (0, 4), (3, 5), (1, 4)]
HOPF = [(0, 2), (1, 3), (0, 2), (1, 3)]


def grid_polygons(columns, dx=0, dy=0):
    """Columns at height 1, rows at height 0, corners cut; moved round the torus by (dx, dy)."""
    n = len(columns)
    moved = {(x + dx) % n: [(y + dy) % n for y in rows] for x, rows in enumerate(columns)}
    polygons, seen = [], set()
    for first in range(n):
        if first in seen:
            continue
        points, x, y = [], first, moved[first][0]
        while True:
            seen.add(x)
            other = sum(moved[x]) - y
            s = np.sign(other - y)
            points += [(x, y + 0.3 * s, 1.0), (x, other - 0.3 * s, 1.0)]
            (to,) = (k for k, rows in moved.items() if k != x and other in rows)
            t = np.sign(to - x)
            points += [(x + 0.3 * t, other, 0.0), (to - 0.3 * t, other, 0.0)]
            x, y = to, other
            if x == first:
                break
        polygons.append(np.array(points, dtype=float))
    return polygons


def translations(columns):
    n = len(columns)
    return [grid_polygons(columns, dx, dy) for dx in range(n) for dy in range(n)]
