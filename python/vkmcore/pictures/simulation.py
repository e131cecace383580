"""Pictures of a simulation: tubes in three dimensions. Needs matplotlib."""

from __future__ import annotations

from collections.abc import Sequence
from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.pictures.figure import PALETTE, check_plot_target, style_axes, write_figure
from vkmcore.pictures.tubes import shade, thinned, tube_faces

if TYPE_CHECKING:
    from numpy.typing import NDArray

    from vkmcore.dynamics.trajectory import Frame

    Points = NDArray[np.float64]

GHOST = "#a9adb5"  # colour of filaments that neither move nor induce
TUBE = 0.018  # radius of a tube in diagonals of the box: wide enough to show over and under, not a physical size


def plot_run(path: Path, frames: Sequence[Frame], ghosts: Sequence[bool], title: str) -> None:
    """Draw the first positions as lines and the last as tubes.

    Raises:
        PlotError: matplotlib is missing or the file cannot be written.
    """
    kind = check_plot_target(path)
    figure, axes = stage(frames, title)
    diagonal = box_diagonal(axes)
    for number, points in enumerate(frames[0].points):
        if len(points):
            ring = np.vstack([points, points[:1]])
            axes.plot(*ring.T, color=PALETTE[number % len(PALETTE)], linewidth=0.8, alpha=0.55)
    _draw_tubes(axes, frames[-1].points, ghosts, TUBE * diagonal)
    write_figure(figure, path, kind)


def stage(frames: Sequence[Frame], title: str, inches: float = 6.0, dpi: int = 150) -> tuple[Any, Any]:
    """A figure whose axes hold all frames, one unit of length the same on all three."""
    from matplotlib.backends.backend_agg import FigureCanvasAgg
    from matplotlib.figure import Figure
    from matplotlib.ticker import MaxNLocator

    everything = np.concatenate([points for frame in frames for points in frame.points])
    low, high = everything.min(axis=0), everything.max(axis=0)
    centre, half = (low + high) / 2.0, (high - low) / 2.0
    half = np.maximum(1.1 * half, 0.3 * half.max() or 1.0)

    figure = Figure(figsize=(inches, inches), dpi=dpi, facecolor="white")
    FigureCanvasAgg(figure)
    axes: Any = figure.add_axes((0.0, 0.0, 1.0, 0.95), projection="3d", computed_zorder=False)
    figure.text(0.5, 0.95, title, ha="center", fontsize=11, color="#30343b")
    style_axes(axes, "m")
    for axis, extent in zip((axes.xaxis, axes.yaxis, axes.zaxis), half, strict=True):
        axis.set_major_locator(MaxNLocator(5 if extent > 0.6 * half.max() else 2))
    axes.set(xlim=(-half[0], half[0]) + centre[0], ylim=(-half[1], half[1]) + centre[1])
    axes.set_zlim((-half[2], half[2]) + centre[2])
    axes.set_box_aspect(half, zoom=0.8)
    axes.view_init(elev=22, azim=-60)
    return figure, axes


def box_diagonal(axes: Any) -> float:
    return float(np.linalg.norm([np.ptp(axes.get_xlim()), np.ptp(axes.get_ylim()), np.ptp(axes.get_zlim())]))


def _draw_tubes(axes: Any, filaments: Sequence[Points], ghosts: Sequence[bool], radius: float) -> None:
    """One collection for all tubes, so that their faces are sorted by depth against each other."""
    from matplotlib.colors import to_rgb
    from mpl_toolkits.mplot3d.art3d import Poly3DCollection

    faces, colours = [], []
    for number, (points, ghost) in enumerate(zip(filaments, ghosts, strict=True)):
        if len(points) < 3:
            continue
        quads, normals = tube_faces(thinned(points), 0.5 * radius if ghost else radius)
        faces.append(quads)
        colours.append(shade(np.array(to_rgb(GHOST if ghost else PALETTE[number % len(PALETTE)])), normals))
    if not faces:
        return
    tubes = Poly3DCollection(np.concatenate(faces), facecolors=np.concatenate(colours), linewidths=0.15)
    tubes.set_edgecolor(np.concatenate(colours))
    axes.add_collection3d(tubes)
