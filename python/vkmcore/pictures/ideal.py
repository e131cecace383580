"""The picture of a tight shape: its tube, what holds it, and the map of its struts. Needs matplotlib."""

from __future__ import annotations

from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.curves.resampling import evenly_spaced
from vkmcore.curves.tube_surface import tube_rings, unit
from vkmcore.pictures.figure import PALETTE, check_plot_target, write_figure
from vkmcore.pictures.tubes import shade, tube_faces

if TYPE_CHECKING:
    from numpy.typing import NDArray

    from vkmcore.ideal.shape import IdealShape

    Points = NDArray[np.float64]

RINGS = 700  # about so many along all tubes
SIDES = 36  # of a ring
CORE = 0.16  # radius of the curve's own tube beside its struts, in tube radii
CONTACT, KINK = "#c8553d", "#c9a227"
GLASS = 0.3  # opacity of a tube, so that contacts behind it show
MARK = 0.3  # a face is a contact's where its point is so near to the contact, in tube radii


def plot_ideal(path: Path, shape: IdealShape, title: str = "") -> None:
    """Draw the tube with its contacts, the curve with its struts and kinks, and the strut map.

    Raises:
        PlotError: matplotlib is missing, or the file cannot be written.
    """
    kind = check_plot_target(path)
    from matplotlib.backends.backend_agg import FigureCanvasAgg

    figure = ideal_figure(shape, title)
    FigureCanvasAgg(figure)
    write_figure(figure, path, kind)


def ideal_figure(shape: IdealShape, title: str = "") -> Any:
    """The picture as a matplotlib Figure: see `plot_ideal`."""
    from matplotlib.figure import Figure

    figure = Figure(figsize=(14.4, 5.2), dpi=130, facecolor="white")
    grid = figure.add_gridspec(
        1, 3, width_ratios=(1.0, 1.0, 0.92), left=0.0, right=0.975, top=0.87, bottom=0.115, wspace=0.02
    )
    words = f"{title or shape.name}: " if title or shape.name else ""
    words += f"ropelength {shape.ropelength:.4f} by radius, {shape.ropelength_diameter:.4f} by diameter"
    if shape.excess is not None:
        words += f", {100.0 * shape.excess:+.3f} % to the best published {shape.published:.4f}"
    figure.suptitle(words, fontsize=12, color="#30343b", parse_math=False)
    bodies = _in_view(shape)
    ends = strut_ends(shape, bodies)
    _draw_tubes(figure.add_subplot(grid[0], projection="3d", computed_zorder=False), shape, bodies, ends)
    _draw_contacts(figure.add_subplot(grid[1], projection="3d"), shape, bodies, ends)
    _draw_map(figure.add_subplot(grid[2]), shape)
    return figure


def strut_ends(shape: IdealShape, points: list[Points]) -> tuple[Points, Points]:
    """Both ends (S, 3) of the struts on the polygons."""
    every = np.concatenate(points)
    ahead = np.concatenate([np.roll(p, -1, axis=0) for p in points])
    i, j = shape.struts[:, 0].astype(int), shape.struts[:, 2].astype(int)
    s, t = shape.struts[:, 1:2], shape.struts[:, 3:4]
    return (1.0 - s) * every[i] + s * ahead[i], (1.0 - t) * every[j] + t * ahead[j]


def _in_view(shape: IdealShape) -> list[Points]:
    """The polygons centred and turned so that the viewer looks onto their widest plane, along z."""
    every = np.concatenate(shape.points)
    centre = every.mean(axis=0)
    _, _, frame = np.linalg.svd(every - centre, full_matrices=False)
    frame[2] = np.cross(frame[0], frame[1])  # a rotation, for a mirrored knot is another one
    return [(points - centre) @ frame.T for points in shape.points]


def _draw_tubes(axes: Any, shape: IdealShape, bodies: list[Points], ends: tuple[Points, Points]) -> None:
    """The tubes at their true radius, the contacts' places on them coloured by their forces."""
    from matplotlib.colors import to_rgb
    from mpl_toolkits.mplot3d.art3d import Poly3DCollection

    axes.set_title("tube: contacts red, kinks yellow", fontsize=10, color="#30343b", pad=0)
    middles = (ends[0] + ends[1]) / 2.0
    every = np.concatenate(bodies)
    kinks = every[shape.kinks[:, 0].astype(int)]
    faces, colours = [], []
    for number, body in enumerate(bodies):
        fine = evenly_spaced(body, max(24, round(RINGS * len(body) / len(every))))
        quads, normals = tube_faces(fine, shape.thickness, SIDES)
        base = np.tile(to_rgb(PALETTE[number % len(PALETTE)]), (len(quads), 1)) * 0.55 + 0.45
        middle = quads.mean(axis=1)
        rings = np.repeat(np.arange(len(fine)), SIDES)
        if len(kinks):
            near = _least(fine, kinks) < 0.6 * float(np.linalg.norm(fine[1] - fine[0]) + shape.edge)
            base[near[rings]] = to_rgb(KINK)
        if len(middles):
            base[_least(middle, middles) < MARK] = to_rgb(CONTACT)
        marked = base[:, 2] < 0.3
        faces.append(quads)
        colours.append(np.column_stack([shade(base, normals), np.where(marked, 1.0, GLASS)]))
    tubes = Poly3DCollection(np.concatenate(faces), facecolors=np.concatenate(colours), linewidths=0.0)
    axes.add_collection3d(tubes)
    _frame_axes(axes, every, shape.thickness)


def _draw_contacts(axes: Any, shape: IdealShape, bodies: list[Points], ends: tuple[Points, Points]) -> None:
    """The curves with their struts as segments, darker where they push harder, and their kinks as points."""
    from matplotlib.colors import to_rgb
    from mpl_toolkits.mplot3d.art3d import Line3DCollection, Poly3DCollection

    axes.set_title(f"{len(shape.struts)} struts and {len(shape.kinks)} kinks", fontsize=10, color="#30343b", pad=0)
    every = np.concatenate(bodies)
    faces, colours = [], []
    for number, body in enumerate(bodies):
        fine = evenly_spaced(body, max(24, round(RINGS * len(body) / len(every))))
        rings, outward = tube_rings(fine, CORE, 8)
        ahead = np.roll(rings, -1, axis=0)
        quads = np.stack([rings, ahead, np.roll(ahead, -1, axis=1), np.roll(rings, -1, axis=1)], axis=2)
        faces.append(quads.reshape(-1, 4, 3))
        colours.append(shade(np.array(to_rgb(PALETTE[number % len(PALETTE)])), unit(outward.reshape(-1, 3))))
    tubes = Poly3DCollection(np.concatenate(faces), facecolors=np.concatenate(colours), linewidths=0.1)
    tubes.set_edgecolor(np.concatenate(colours))
    axes.add_collection3d(tubes)
    if len(shape.struts):
        strength = shape.struts[:, 5] / shape.struts[:, 5].max()
        shades = np.column_stack([np.tile(to_rgb(CONTACT), (len(strength), 1)), 0.2 + 0.8 * strength])
        axes.add_collection3d(Line3DCollection(np.stack(ends, axis=1), colors=shades, linewidths=0.8))
    if len(shape.kinks):
        at = every[shape.kinks[:, 0].astype(int)]
        axes.scatter(*at.T, color=KINK, edgecolors="#30343b", linewidths=0.4, s=22, depthshade=False, zorder=10)
    _frame_axes(axes, every, shape.thickness)


def _draw_map(axes: Any, shape: IdealShape) -> None:
    """Each strut at the arc lengths of its two ends, all components one after the other; kinks on the diagonal."""
    edges = np.concatenate([np.linalg.norm(np.roll(p, -1, axis=0) - p, axis=1) for p in shape.points])
    arc = np.concatenate([[0.0], np.cumsum(edges)])
    total = float(arc[-1])
    if len(shape.struts):
        i, j = shape.struts[:, 0].astype(int), shape.struts[:, 2].astype(int)
        first, second = arc[i] + shape.struts[:, 1] * edges[i], arc[j] + shape.struts[:, 3] * edges[j]
        size = 3.0 + 22.0 * shape.struts[:, 5] / shape.struts[:, 5].max()
        x, y = np.concatenate([first, second]), np.concatenate([second, first])
        axes.scatter(x, y, s=np.tile(size, 2), color=CONTACT, linewidths=0, alpha=0.75, label="struts")
    if len(shape.kinks):
        at = arc[shape.kinks[:, 0].astype(int)]
        axes.scatter(at, at, s=22, color=KINK, edgecolors="#30343b", linewidths=0.4, label="kinks", zorder=3)
    axes.plot([0.0, total], [0.0, total], color="#b0b4bc", linewidth=0.8, zorder=1)
    for end in np.cumsum([len(p) for p in shape.points])[:-1]:
        axes.axvline(arc[end], color="#b0b4bc", linewidth=0.8)
        axes.axhline(arc[end], color="#b0b4bc", linewidth=0.8)
    axes.set(xlim=(0.0, total), ylim=(0.0, total), xlabel="arc length / tube radius", ylabel="arc length / tube radius")
    axes.set_aspect("equal")
    axes.set_title("strut map", fontsize=10, color="#30343b")
    axes.tick_params(labelsize=8)
    axes.grid(color="#e3e5ea", linewidth=0.6)
    axes.set_axisbelow(True)
    if axes.get_legend_handles_labels()[0]:
        axes.legend(loc="upper left", fontsize=8, framealpha=0.9)


def _least(points: Points, others: Points) -> Points:
    """Distance of each point from the nearest of others."""
    least = np.full(len(points), np.inf)
    for begin in range(0, len(points), 1 << 12):
        block = points[begin : begin + (1 << 12)]
        squares = (block**2).sum(axis=1)[:, None] + (others**2).sum(axis=1) - 2.0 * block @ others.T
        least[begin : begin + len(block)] = np.sqrt(np.maximum(squares.min(axis=1), 0.0))
    return least


def _frame_axes(axes: Any, points: Points, radius: float) -> None:
    reach = float(np.abs(points).max()) + radius
    axes.set(xlim=(-reach, reach), ylim=(-reach, reach), zlim=(-reach, reach))
    axes.set_box_aspect((1, 1, 1), zoom=1.4)
    axes.view_init(elev=68, azim=-90)
    axes.set_axis_off()
