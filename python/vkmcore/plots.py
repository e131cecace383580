"""Pictures of relaxed knots in three dimensions. Needs matplotlib.

A filament is a shaded tube where a few hundred rings follow it, and a thin line through all its points where they do
not: a finely sampled knot may crumple when it relaxes, and a picture must not join points that are no neighbours.
"""

from __future__ import annotations

import io
import math
from collections.abc import Sequence
from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.errors import PlotError

if TYPE_CHECKING:
    from matplotlib.figure import Figure
    from numpy.typing import ArrayLike, NDArray

    Points = NDArray[np.float64]

FEMTOMETRE = 1e-15
TUBE_RADIUS = 0.055  # of the body's radius: wide enough to show over and under, not a physical size
RINGS = 360  # most rings drawn along a filament
SIDES = 14  # of a ring
SMOOTH = 0.98  # least part of the length that the rings must keep
PALETTE = ("#3b6fb6", "#c8553d", "#4f9d69", "#8d6a9f", "#c9a227", "#4b9da9")


def check_plot_target(path: Path) -> str:
    """Find out before the work whether a picture can go to `path`; returns its format, as "png"."""
    try:
        from matplotlib.backends.backend_agg import FigureCanvasAgg
    except ImportError as error:
        raise PlotError(f"plots need matplotlib: pip install vkmcore[plot] ({error})") from error
    kind = path.suffix[1:].lower() or "png"
    known = FigureCanvasAgg.get_supported_filetypes()
    if kind not in known:
        raise PlotError(f"cannot draw a .{kind} file; known are {', '.join(sorted(known))}")
    if path.is_dir():
        raise PlotError(f"{path}: is a directory")
    if not path.absolute().parent.is_dir():
        raise PlotError(f"{path}: the directory does not exist")
    return kind


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


def write_figure(figure: Figure, path: Path, kind: str) -> None:
    """Draw the figure as a picture of that kind, then write it at once: one that cannot be drawn leaves no file.

    Raises:
        PlotError: the file cannot be written.
    """
    picture = io.BytesIO()
    figure.savefig(picture, format=kind)
    try:
        path.write_bytes(picture.getvalue())
    except OSError as error:
        raise PlotError(f"{path}: {error.strerror}") from error


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
    for axis, name in zip((axes.xaxis, axes.yaxis, axes.zaxis), "xyz", strict=True):
        axis.set_pane_color((0.97, 0.97, 0.98, 1.0))
        axis.line.set_color("#b0b4bc")
        axis._axinfo["grid"].update(color="#e3e5ea", linewidth=0.6)
        axis.set_tick_params(labelsize=7, colors="#6b7079")
        axis.set_label_text(f"{name} / fm", fontsize=8, color="#6b7079")
    axes.set(xlim=(-reach, reach), ylim=(-reach, reach), zlim=(-reach, reach))
    axes.set_box_aspect((1, 1, 1), zoom=0.92)
    axes.view_init(elev=52, azim=-60)


def thinned(points: Points, most: int = RINGS) -> Points:
    """At most that many of the points, evenly by number."""
    if len(points) <= most:
        return points
    kept: Points = points[np.linspace(0, len(points), most, endpoint=False).astype(int)]
    return kept


def _length(points: Points) -> float:
    return float(np.linalg.norm(np.roll(points, -1, axis=0) - points, axis=1).sum())


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
