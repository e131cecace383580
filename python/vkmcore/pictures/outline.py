"""A small drawing of closed curves as SVG, made without any library: what cards in notebooks show."""

from __future__ import annotations

from collections.abc import Sequence
from typing import TYPE_CHECKING

import numpy as np

from vkmcore.curves.resampling import evenly_spaced

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

COLOURS = ("#3b6fb6", "#c8553d", "#4f9d69", "#8d6a9f", "#c9a227", "#4b9da9")
SIZE = 180  # of the drawing, in pixels
RUNS = 96  # strokes a component, drawn from the farthest to the nearest


def outline(polygons: Sequence[Points]) -> str:
    """The curves seen along their axis of least extent, nearer strands over farther ones."""
    if not polygons:
        return ""
    polygons = [evenly_spaced(points, 4 * RUNS) for points in polygons]
    every = np.concatenate(polygons)
    centre = every.mean(axis=0)
    axes = np.linalg.svd(every - centre, full_matrices=False)[2]
    axes[2] *= np.sign(np.linalg.det(axes))  # a turn, not a mirror image
    seen = [(points - centre) @ axes.T for points in polygons]
    reach = max(float(np.abs(points[:, :2]).max()) for points in seen) * 1.12 or 1.0
    strokes: list[tuple[float, str]] = []
    for number, points in enumerate(seen):
        flat = np.column_stack([points[:, 0], -points[:, 1]]) / reach * 100.0
        for start in range(0, len(points), 4):
            at = np.arange(start, start + 6) % len(points)  # one point more than to the next run: no gaps
            path = " ".join(f"{x:.1f},{y:.1f}" for x, y in flat[at])
            edge = f'<polyline points="{path}" stroke="#fff" stroke-width="13"/>'
            body = f'<polyline points="{path}" stroke="{COLOURS[number % len(COLOURS)]}" stroke-width="8"/>'
            strokes.append((float(points[at, 2].mean()), edge + body))
    body = "".join(text for _, text in sorted(strokes, key=lambda stroke: stroke[0]))
    return (
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{SIZE}" height="{SIZE}" viewBox="-100 -100 200 200" '
        f'fill="none" stroke-linejoin="round">{body}</svg>'
    )
