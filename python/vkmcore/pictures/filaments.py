"""Pictures of relaxed knots in three dimensions. Needs matplotlib.

A filament is a shaded tube where a few hundred rings follow it, and a thin line through all its points where they do
not: a finely sampled knot may crumple when it relaxes, and a picture must not join points that are no neighbours.
"""

from __future__ import annotations

import math
from collections.abc import Sequence
from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.errors import PlotError
from vkmcore.pictures.figure import PALETTE, check_plot_target, style_axes, write_figure
from vkmcore.pictures.tubes import shade, thinned, tube_faces

if TYPE_CHECKING:
    from numpy.typing import ArrayLike, NDArray

    Points = NDArray[np.float64]

FEMTOMETRE = 1e-15
TUBE_RADIUS = 0.055  # of the body's radius: wide enough to show over and under, not a physical size
SMOOTH = 0.98  # least part of the length that the rings must keep


def plot_filaments(path: Path, knots: Sequence[tuple[str, Sequence[ArrayLike]]]) -> None:
    """Draw the knots side by side into one file.

    Args:
        path: the file; its suffix gives the format, PNG if it has none.
        knots: for each knot its title and its closed filaments, each an (N, 3) list of points in metres.

    Raises:
        PlotError: matplotlib is missing, the points are not finite, or the file cannot be written.
    """
    kind = check_plot_target(path)
    from matplotlib.backends.backend_agg import FigureCanvasAgg
    from matplotlib.figure import Figure

    columns = max(1, math.ceil(math.sqrt(len(knots))))
    rows = max(1, math.ceil(len(knots) / columns))
    figure = Figure(figsize=(5.2 * columns, 5.4 * rows), dpi=150, facecolor="white")
    figure.subplots_adjust(left=0.02, right=0.96, bottom=0.04, top=0.93, wspace=0.06, hspace=0.12)
    FigureCanvasAgg(figure)
    for place, (title, filaments) in enumerate(knots, start=1):
        axes: Any = figure.add_subplot(rows, columns, place, projection="3d", computed_zorder=False)
        _draw_knot(axes, title, [np.asarray(filament, dtype=np.float64).reshape(-1, 3) for filament in filaments])
    write_figure(figure, path, kind)


def _draw_knot(axes: Any, title: str, filaments: list[Points]) -> None:
    from matplotlib.colors import to_rgb
    from mpl_toolkits.mplot3d.art3d import Line3DCollection, Poly3DCollection

    drawn = [(number, points) for number, points in enumerate(filaments) if len(points) >= 3]
    if not all(np.isfinite(points).all() for _, points in drawn):
        raise PlotError(f"{title}: the points are not finite, there is nothing to draw")
    axes.set_title(title, fontsize=12, color="#30343b")
    if not drawn:
        return
    everything = np.concatenate([points for _, points in drawn])
    centre = everything.mean(axis=0)
    radius = float(np.linalg.norm(everything - centre, axis=1).max()) or 1.0

    # One collection for all tubes: faces are then sorted by depth against each other, which shows over and under.
    faces, colours = [], []
    scale = radius / FEMTOMETRE
    for number, points in drawn:
        base = np.array(to_rgb(PALETTE[number % len(PALETTE)]))
        body = (points - centre) / radius
        rings = thinned(body)
        if _length(rings) < SMOOTH * _length(body):
            edges = np.stack([body, np.roll(body, -1, axis=0)], axis=1) * scale
            axes.add_collection3d(Line3DCollection(edges, colors=[(*base, 0.6)], linewidths=0.35))
            continue
        quads, normals = tube_faces(rings, TUBE_RADIUS)
        faces.append(quads)
        colours.append(shade(base, normals))
    if faces:
        tubes = Poly3DCollection(np.concatenate(faces) * scale, facecolors=np.concatenate(colours), linewidths=0.15)
        tubes.set_edgecolor(np.concatenate(colours))
        axes.add_collection3d(tubes)

    reach = 1.08 * scale
    style_axes(axes, "fm")
    axes.set(xlim=(-reach, reach), ylim=(-reach, reach), zlim=(-reach, reach))
    axes.set_box_aspect((1, 1, 1), zoom=0.92)
    axes.view_init(elev=52, azim=-60)


def _length(points: Points) -> float:
    return float(np.linalg.norm(np.roll(points, -1, axis=0) - points, axis=1).sum())
