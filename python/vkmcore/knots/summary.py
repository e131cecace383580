"""How a shape shows itself: a line in a shell, a card with a drawing in a notebook."""

from __future__ import annotations

from html import escape
from typing import TYPE_CHECKING

import numpy as np

if TYPE_CHECKING:
    from numpy.typing import NDArray

    from vkmcore.knots.shape import Shape

    Points = NDArray[np.float64]

COLOURS = ("#3b6fb6", "#c8553d", "#4f9d69", "#8d6a9f", "#c9a227", "#4b9da9")
SIZE = 180  # of the drawing, in pixels
RUNS = 96  # strokes a component, drawn from the farthest to the nearest


def line(shape: Shape) -> str:
    """Class, name, what defines the curve, source."""
    strands = shape._strands
    kinds = {"series" if strand.series is not None else "polygon" for strand in strands}
    counts = "+".join(
        str(len(strand.numbers) - 1 if strand.series is not None else len(strand.numbers)) for strand in strands
    )
    unit = "harmonics" if kinds == {"series"} else "vertices" if kinds == {"polygon"} else "harmonics or vertices"
    parts = [repr(shape.name)] if shape.name else []
    if type(shape).__name__ == "Link":
        parts.append(f"{len(strands)} components")
    return f"{type(shape).__name__}({', '.join([*parts, f'{counts} {unit}', shape.source])})"


def html(shape: Shape) -> str:
    """Drawing, type, crossing number, writhe, ropelength, source."""
    try:
        found = shape.identify()
        kind, crossings = str(found), str(found.crossings)
    except ValueError as error:
        kind, crossings = str(error), "-"
    rows = {
        "type": kind,
        "crossings of the diagram": crossings,
        "writhe": f"{shape.writhe:.4f}",
        "ropelength": f"{shape.ropelength:.4f} (length over tube radius)",
        "length": f"{shape.length:.6g}",
        "source": shape.source,
    }
    cells = "".join(
        f'<tr><th style="text-align:left">{escape(title)}</th><td style="text-align:left">{escape(value)}</td></tr>'
        for title, value in rows.items()
    )
    title = escape(shape.name or type(shape).__name__)
    return (
        '<div style="display:flex;align-items:center;gap:1.5em">'
        f"{drawing(shape)}<table><caption>{title}</caption>{cells}</table></div>"
    )


def drawing(shape: Shape) -> str:
    """An SVG of the curves seen along their axis of least extent, nearer strands over farther ones."""
    polygons = shape._polygons(4 * RUNS)
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
            outline = f'<polyline points="{path}" stroke="#fff" stroke-width="13"/>'
            body = f'<polyline points="{path}" stroke="{COLOURS[number % len(COLOURS)]}" stroke-width="8"/>'
            strokes.append((float(points[at, 2].mean()), outline + body))
    body = "".join(text for _, text in sorted(strokes, key=lambda stroke: stroke[0]))
    return (
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{SIZE}" height="{SIZE}" viewBox="-100 -100 200 200" '
        f'fill="none" stroke-linejoin="round">{body}</svg>'
    )
