"""Curves as shaded tubes: their faces, and the light on them."""

from __future__ import annotations

import math
from typing import TYPE_CHECKING

import numpy as np

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
    tangents = _unit(np.roll(points, -1, axis=0) - np.roll(points, 1, axis=0))
    # Carry a normal along the curve without twisting it, then spread the angle by which it misses itself.
    normals = np.empty_like(points)
    normal = np.cross(tangents[0], np.eye(3)[np.argmin(np.abs(tangents[0]))])
    for index in range(len(points) + 1):
        tangent = tangents[index % len(points)]
        normal = _unit(normal - tangent * (normal @ tangent))
        if index < len(points):
            normals[index] = normal
    miss = math.atan2(float(np.cross(normals[0], normal) @ tangents[0]), float(normals[0] @ normal))
    turn = -miss * np.arange(len(points)) / len(points)
    angles = turn[:, None] + np.linspace(0.0, 2.0 * np.pi, sides, endpoint=False)
    across = np.cross(tangents, normals)
    outward = np.cos(angles)[..., None] * normals[:, None] + np.sin(angles)[..., None] * across[:, None]
    rings = points[:, None] + radius * outward

    def corners(grid: Points) -> Points:
        ahead = np.roll(grid, -1, axis=0)
        return np.stack([grid, ahead, np.roll(ahead, -1, axis=1), np.roll(grid, -1, axis=1)], axis=2).reshape(-1, 4, 3)

    return corners(rings), _unit(corners(outward).mean(axis=1))


def shade(base: Points, normals: Points) -> Points:
    """Colours (F, 3) of faces under one lamp, with a soft highlight."""
    lamp = _unit(np.array([0.35, -0.45, 0.82]))
    facing = np.clip(normals @ lamp, 0.0, 1.0)
    lit = base * (0.42 + 0.58 * facing)[:, None]
    return np.clip(lit + 0.35 * (facing**12)[:, None], 0.0, 1.0)


def _unit(vectors: Points) -> Points:
    lengths = np.linalg.norm(vectors, axis=-1, keepdims=True)
    unit: Points = vectors / np.where(lengths > 0.0, lengths, 1.0)
    return unit
