"""The picture of a tightening: its start and its end as tubes, and the ropelength by step. Needs matplotlib."""

from __future__ import annotations

from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore import ResolvedTubeMetrics
from vkmcore.pictures.figure import PALETTE, check_plot_target, write_figure
from vkmcore.pictures.tubes import shade, tube_faces
from vkmcore.tube.tightening import Tightening

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

RINGS = 240  # about so many along a tube, so that its corners are round
SIDES = 28  # of a ring


def plot_tightening(path: Path, name: str, reached: Tightening) -> None:
    """Draw both polygons as tubes of their own thickness, to one scale of it, above the ropelength by step.

    Raises:
        PlotError: matplotlib is missing, or the file cannot be written.
    """
    kind = check_plot_target(path)
    from matplotlib.backends.backend_agg import FigureCanvasAgg
    from matplotlib.figure import Figure

    first, last = reached.start_tube, reached.tube()
    assert first is not None
    figure = Figure(figsize=(9.0, 7.6), dpi=150, facecolor="white")
    FigureCanvasAgg(figure)
    grid = figure.add_gridspec(
        2, 2, height_ratios=(1.8, 1.0), left=0.09, right=0.97, top=0.94, bottom=0.08, wspace=0.02, hspace=0.12
    )
    knots = (
        (f"{name}: ropelength {first.ropelength_rad:.4f}", reached.start / reached.start_unit),
        (f"after {len(reached.steps)} steps: {last.ropelength_rad:.4f}", reached.scaled / last.thickness_rad),
    )
    for place, (title, points) in enumerate(knots):
        axes: Any = figure.add_subplot(grid[0, place], projection="3d")
        axes.set_title(title, fontsize=11, color="#30343b", parse_math=False)
        _draw_tube(axes, points, PALETTE[place])
    _draw_history(figure.add_subplot(grid[1, :]), reached, first)
    write_figure(figure, path, kind)


def _draw_tube(axes: Any, points: Points, colour: str) -> None:
    """A tube of radius 1 around a closed polygon, seen onto its widest plane."""
    from matplotlib.colors import to_rgb
    from mpl_toolkits.mplot3d.art3d import Poly3DCollection

    centred = points - points.mean(axis=0)
    _, _, frame = np.linalg.svd(centred, full_matrices=False)
    frame[2] = np.cross(frame[0], frame[1])  # a rotation, for a mirrored knot is another one
    body = centred @ frame.T
    quads, normals = tube_faces(subdivided(body, max(1, round(RINGS / len(body)))), 1.0, SIDES)
    colours = shade(np.array(to_rgb(colour)), normals)
    axes.add_collection3d(Poly3DCollection(quads, facecolors=colours, edgecolors=colours, linewidths=0.15))
    reach = float(np.abs(body).max()) + 1.0
    axes.set(xlim=(-reach, reach), ylim=(-reach, reach), zlim=(-reach, reach))
    axes.set_box_aspect((1, 1, 1), zoom=1.55)
    axes.view_init(elev=70, azim=-90)
    axes.set_axis_off()


def subdivided(points: Points, parts: int) -> Points:
    """The same closed polygon with each edge in equal parts."""
    ahead = np.roll(points, -1, axis=0)
    at = (np.arange(parts) / parts)[:, None]
    return (points[:, None] * (1.0 - at) + ahead[:, None] * at).reshape(-1, 3)


def _draw_history(axes: Any, reached: Tightening, first: ResolvedTubeMetrics) -> None:
    """Ropelength after each step, and where a run ended."""
    values = [first.ropelength_rad, *(step.ropelength_after for step in reached.steps)]
    marker = "o" if len(values) == 1 else None
    axes.plot(range(len(values)), values, color=PALETTE[1], linewidth=1.4, marker=marker)
    for end in np.cumsum(reached.runs)[:-1]:
        axes.axvline(end, color="#b0b4bc", linewidth=0.8, linestyle=":")
    axes.set(xlabel="step", ylabel="ropelength (length / radius)", xlim=(0, max(len(values) - 1, 1)))
    axes.grid(color="#e3e5ea", linewidth=0.6)
    axes.tick_params(labelsize=8)
    for side in ("top", "right"):
        axes.spines[side].set_visible(False)
