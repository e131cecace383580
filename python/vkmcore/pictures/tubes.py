"""Curves as shaded tubes: their faces, and the light on them."""

from __future__ import annotations

from typing import TYPE_CHECKING

import numpy as np

from vkmcore.curves.tube_surface import tube_rings, unit

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

RINGS = 360  # most rings drawn along a filament
SIDES = 14  # of a ring


def thinned(points: Points, most: int = RINGS) -> Points:
    """At most that many of the points, evenly by number."""
    if len(points) <= most:
        return points
    kept: Points = points[np.linspace(0, len(points), most, endpoint=False).astype(int)]
    return kept


def tube_faces(points: Points, radius: float, sides: int = SIDES) -> tuple[Points, Points]:
    """Quads (F, 4, 3) of a tube around a closed curve, and their outward normals (F, 3)."""
    rings, outward = tube_rings(points, radius, sides)

    def corners(grid: Points) -> Points:
        ahead = np.roll(grid, -1, axis=0)
        return np.stack([grid, ahead, np.roll(ahead, -1, axis=1), np.roll(grid, -1, axis=1)], axis=2).reshape(-1, 4, 3)

    return corners(rings), unit(corners(outward).mean(axis=1))


def shade(base: Points, normals: Points) -> Points:
    """Colours (F, 3) of faces under one lamp, with a soft highlight."""
    lamp = unit(np.array([0.35, -0.45, 0.82]))
    facing = np.clip(normals @ lamp, 0.0, 1.0)
    lit = base * (0.42 + 0.58 * facing)[:, None]
    return np.clip(lit + 0.35 * (facing**12)[:, None], 0.0, 1.0)
