"""The picture of a planar diagram: strands that break where another passes over them. Needs matplotlib."""

from __future__ import annotations

import math
from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.curves.planar_diagram import Diagram, DiagramSettings
from vkmcore.errors import PlotError
from vkmcore.pictures.figure import PALETTE, check_plot_target, write_figure

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

# In sizes of the diagram:
GAP = 0.012  # half a gap, where strands cross at a right angle
ASIDE = 0.02  # from a strand to its label
LABELLED = 0.035  # least length of an arc that has one


def richest_projection(diagram: Diagram, settings: DiagramSettings) -> Points:
    """The points (N, 3) in the frame of the projection that gave the code: two planar coordinates and the depth."""
    import vkmcore

    def found_within(tries: int) -> bool:
        try:
            options = (tries, settings.seed, settings.min_angle_deg, settings.depth_tol)
            return len(vkmcore.pd_from_curve(diagram.points, *options)) == len(diagram.code)
        except RuntimeError:
            return False

    low, high = 1, settings.tries  # the least number of tries that finds as many crossings
    while low < high:
        middle = (low + high) // 2
        low, high = (low, middle) if found_within(middle) else (middle + 1, high)

    # The library's stream of directions: mt19937 with its standard seeding, 53-bit uniforms from two words, low word
    # first, and the polar method, whose second deviate of the second pair each try throws away.
    bits = np.random.MT19937()
    seeded: Any = np.random.RandomState(settings.seed % 2**32).get_state(legacy=False)
    bits.state = seeded

    def uniform() -> float:
        word, high_word = (float(word) for word in bits.random_raw(2))
        return (word + high_word * 2.0**32) / 2.0**64

    def pair() -> list[float]:
        while True:
            x, y = 2.0 * uniform() - 1.0, 2.0 * uniform() - 1.0
            s = x * x + y * y
            if 0.0 < s < 1.0 and x != 0.0 and y != 0.0:
                factor = math.sqrt(-2.0 * math.log(s) / s)
                return [x * factor, y * factor]

    for _ in range(low):
        d = np.array((pair() + pair())[:3])
    d /= np.linalg.norm(d)
    a = np.cross(d, [1.0, 0.0, 0.0] if abs(d[0]) < 0.9 else [0.0, 1.0, 0.0])
    a /= np.linalg.norm(a)
    projected: Points = diagram.points @ np.array([a, np.cross(d, a), d]).T
    return projected


def passages(projected: Points, settings: DiagramSettings) -> tuple[Points, Points, Points]:
    """Where strands pass over and where under: sorted positions in units of segments, from 0 to N.

    The third array has the sines of the angles at the under passages.
    """
    n = len(projected)
    e = projected - np.roll(projected, -1, axis=0)
    lengths = np.linalg.norm(e[:, :2], axis=1) + 1e-18
    over, under, sines = [], [], []
    for i in range(n - 2):
        j = np.arange(i + 2, n - (i == 0))
        g = projected[i] - projected[j]
        denom = e[j, 1] * e[i, 0] - e[j, 0] * e[i, 1]
        with np.errstate(divide="ignore", invalid="ignore", over="ignore"):
            t = (e[j, 1] * g[:, 0] - e[j, 0] * g[:, 1]) / denom
            u = (g[:, 0] * e[i, 1] - g[:, 1] * e[i, 0]) / denom
            above = g[:, 2] - t * e[i, 2] + u * e[j, 2]
            cosine = np.abs(e[i, :2] @ e[j, :2].T) / (lengths[i] * lengths[j])
            angle = np.degrees(np.arccos(np.minimum(cosine, 1.0)))
            ends = 1e-12
            inside = (t > ends) & (t < 1.0 - ends) & (u > ends) & (u < 1.0 - ends) & (np.abs(denom) >= 1e-12)
            taken = inside & (np.abs(above) >= settings.depth_tol) & (angle >= settings.min_angle_deg)
        for k in np.flatnonzero(taken):
            first, second = i + t[k], j[k] + u[k]
            over.append(first if above[k] > 0.0 else second)
            under.append(second if above[k] > 0.0 else first)
            sines.append(math.sin(math.radians(angle[k])))
    order = np.argsort(under, kind="stable")
    return np.sort(over), np.array(under)[order], np.array(sines)[order]


def strands(projected: Points, over: Points, under: Points, sines: Points) -> list[Points]:
    """The pieces (K, 2) of the curve between its under passages, cut back so that the over strand stands free."""
    n = len(projected)
    plane = np.vstack([projected[:, :2], projected[:1, :2]])
    arc = np.concatenate([[0.0], np.cumsum(np.linalg.norm(np.diff(plane, axis=0), axis=1))])
    length = arc[-1]
    cuts = np.interp(under, np.arange(n + 1), arc)
    every = np.sort(np.interp(np.concatenate([over, under]), np.arange(n + 1), arc))
    around = np.concatenate([[every[-1] - length], every, [every[0] + length]])
    place = np.searchsorted(every, cuts) + 1
    room = np.minimum(around[place] - around[place - 1], around[place + 1] - around[place])
    gaps = np.minimum(GAP * np.ptp(plane, axis=0).max() / np.maximum(sines, 0.35), 0.4 * room)

    arc2, plane2 = np.concatenate([arc[:-1], arc + length]), np.vstack([plane[:-1], plane])
    pieces = []
    for k in range(len(cuts)):
        last = k + 1 == len(cuts)
        start, end = cuts[k] + gaps[k], cuts[0] + length - gaps[0] if last else cuts[k + 1] - gaps[k + 1]
        inner = arc2[(arc2 > start) & (arc2 < end)]
        along = np.concatenate([[start], inner, [end]])
        pieces.append(np.stack([np.interp(along, arc2, plane2[:, axis]) for axis in (0, 1)], axis=1))
    return pieces


def arc_labels(projected: Points, every: Points) -> dict[int, tuple[float, float]]:
    """Places beside the arcs for their labels, as in the code; short and crowded arcs have none.

    `every` are the positions of all passages, sorted.
    """
    n = len(projected)
    plane = np.vstack([projected[:, :2], projected[:2, :2]])
    steps = np.linalg.norm(np.diff(plane, axis=0), axis=1)
    arc = np.concatenate([[0.0], np.cumsum(steps)])
    size = np.ptp(plane, axis=0).max()
    ends = np.append(every[1:], every[0] + n)
    starts_at, ends_at = (np.interp(positions % n, np.arange(n + 2), arc) for positions in (every, ends))
    lengths = (ends_at - starts_at) % arc[n]
    labels: dict[int, tuple[float, float]] = {}
    for label, (start, length) in enumerate(zip(starts_at, lengths, strict=True), start=1):
        if length < LABELLED * size:
            continue
        middle = (start + length / 2.0) % arc[n]
        segment = min(int(np.searchsorted(arc, middle, side="right")) - 1, n - 1)
        along = (plane[segment + 1] - plane[segment]) / (steps[segment] or 1.0)
        aside = ASIDE * size * np.array([-along[1], along[0]])
        for spot in (plane[segment] + along * (middle - arc[segment]) + side * aside for side in (1.0, -1.0)):
            if all(math.dist(spot, other) > 1.5 * ASIDE * size for other in labels.values()):
                labels[label] = (float(spot[0]), float(spot[1]))
                break
    return labels


def plot_diagram(path: Path, diagram: Diagram, settings: DiagramSettings) -> None:
    """Draw the diagram of the code, its longer arcs numbered as in the code.

    Raises:
        PlotError: matplotlib is missing, the points are not finite, or the file cannot be written.
    """
    kind = check_plot_target(path)
    from matplotlib.backends.backend_agg import FigureCanvasAgg
    from matplotlib.figure import Figure

    if not np.isfinite(diagram.points).all():
        raise PlotError(f"{diagram.name}: the points are not finite, there is nothing to draw")
    projected = richest_projection(diagram, settings)
    over, under, sines = passages(projected, settings)
    figure = Figure(figsize=(6.0, 6.3), dpi=150, facecolor="white")
    FigureCanvasAgg(figure)
    axes: Any = figure.add_axes((0.03, 0.03, 0.94, 0.89))
    for piece in strands(projected, over, under, sines):
        axes.plot(piece[:, 0], piece[:, 1], color=PALETTE[0], linewidth=1.8, solid_capstyle="round")
    for label, (x, y) in arc_labels(projected, np.sort(np.concatenate([over, under]))).items():
        axes.text(x, y, str(label), fontsize=7, color=PALETTE[1], ha="center", va="center")
    axes.set_title(f"{diagram.name}   {len(diagram.code)} crossings", fontsize=12, color="#30343b")
    axes.set_aspect("equal")
    axes.margins(0.05)
    axes.axis("off")
    write_figure(figure, path, kind)
