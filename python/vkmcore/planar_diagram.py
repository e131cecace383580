"""Planar diagrams of catalogue knots and files, and the command `vkmcore pd`."""

from __future__ import annotations

import math
from dataclasses import dataclass
from pathlib import Path
from typing import TYPE_CHECKING, Any

import click
import numpy as np

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]


@dataclass(frozen=True)
class DiagramSettings:
    """How a curve is sampled, projected and read."""

    samples: int = 1000  # of a Fourier series
    tries: int = 40  # projections for the code
    seed: int = 12345
    min_angle_deg: float = 1.0
    depth_tol: float = 1e-6  # in the units of the points
    directions: int = 24  # projections for the estimate of the crossing number


@dataclass(frozen=True)
class Diagram:
    """A curve with its planar-diagram code."""

    name: str
    points: Points  # (N, 3), closed, the first point not repeated
    code: list[list[int]]  # rows (under in, over in, under out, over out)
    crossing_estimate: int


def closed_curve(source: str, samples: int) -> tuple[str, Points]:
    """A closed curve by catalogue key ("3:1:1", "3_1") or file: `.fseries`, `.npy`, or text with three numbers a line.

    Raises:
        RuntimeError: there is no such key or file, or it holds no single closed curve.
        ValueError: the file's numbers are no list of points.
    """
    import vkmcore

    parameters = 2.0 * np.pi * np.arange(samples) / samples
    path = Path(source)
    if path.is_file():
        if path.suffix == ".fseries":
            blocks = vkmcore.parse_fseries_multi(source)
            if not blocks:
                raise RuntimeError(f"{source}: no Fourier block in the file")
            block = blocks[vkmcore.index_of_largest_block(blocks)]
            return block.header or path.stem, np.array(vkmcore.evaluate_fourier_block(block, parameters.tolist()))
        points = np.load(path) if path.suffix == ".npy" else np.loadtxt(path, ndmin=2)
        points = np.asarray(points, dtype=np.float64)
        if points.ndim != 2 or points.shape[1] != 3:
            raise ValueError(f"{source}: expected three numbers a point, found shape {points.shape}")
        if len(points) > 1 and (points[0] == points[-1]).all():
            points = points[:-1]
        return path.stem, points
    if source in vkmcore.get_embedded_knot_files():
        block = vkmcore.load_embedded_knot_block(source)
        return source, np.array(vkmcore.evaluate_fourier_block(block, parameters.tolist()))
    text = vkmcore.find_ideal_block_by_id(source)
    if not text:
        raise RuntimeError(f"{source}: neither a catalogue key nor a file")
    ideal = vkmcore.parse_ideal_halvard_from_string(text)[0]
    if len(ideal.components) != 1:
        raise RuntimeError(f"{source}: has {len(ideal.components)} components, a code is of one closed curve")
    return source, vkmcore.evaluate_ideal_component(ideal.components[0], parameters)


def planar_diagram(name: str, points: Points, settings: DiagramSettings | None = None) -> Diagram:
    """The code of the richest projection, and the estimate of the crossing number.

    Raises:
        ValueError: the points are fewer than four or not of shape (N, 3).
        RuntimeError: no projection shows a crossing.
    """
    import vkmcore

    s = settings or DiagramSettings()
    code = vkmcore.pd_from_curve(points, s.tries, s.seed, s.min_angle_deg, s.depth_tol)
    estimate = vkmcore.estimate_crossing_number(points.tolist(), s.directions, s.seed)
    return Diagram(name, points, code, estimate)


# --- the picture ----------------------------------------------------------------------------------------------------

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
    bits: Any = np.random.MT19937()
    bits._legacy_seeding(settings.seed % 2**32)

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
    from vkmcore.errors import PlotError
    from vkmcore.plots import PALETTE, check_plot_target, write_figure

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


# --- the command ----------------------------------------------------------------------------------------------------


@click.command()
@click.argument("source", metavar="KEY|FILE")
@click.option(
    "--samples", type=click.IntRange(4, 2**31 - 1), default=1000, show_default=True, help="Points of a Fourier series."
)
@click.option(
    "--tries", type=click.IntRange(1, 2**31 - 1), default=40, show_default=True, help="Projections for the code."
)
@click.option(
    "--seed", type=click.IntRange(-(2**31), 2**31 - 1), default=12345, show_default=True, help="Of directions."
)
@click.option("--min-angle-deg", type=float, default=1.0, show_default=True, help="Flatter crossings are left out.")
@click.option("--depth-tol", type=float, default=1e-6, show_default=True, help="Closer strands are left out.")
@click.option(
    "--directions",
    type=click.IntRange(1, 2**31 - 1),
    default=24,
    show_default=True,
    help="Projections for the estimate of the crossing number.",
)
@click.option("--volume", is_flag=True, help="Hyperbolic volume too, by the module vkm_hypvol_no_deps that you supply.")
@click.option("--json", "as_json", is_flag=True, help="A JSON object.")
@click.option("--plot", type=click.Path(path_type=Path), metavar="FILE", help="Draw the diagram (PNG, PDF, SVG).")
def pd(source: str, volume: bool, as_json: bool, plot: Path | None, **options: Any) -> None:
    """Planar-diagram code and crossing estimate of one closed curve.

    KEY is a key of the catalogue, as 3:1:1 or 3_1; FILE an .fseries file, or points as .npy or as text with three
    numbers a line. A row of the code has the arcs under in, over in, under out, over out of a crossing.
    """
    from vkmcore.cli import Failure, check_plot, plain_table, print_json, print_table

    if plot is not None:
        check_plot(plot)
    settings = DiagramSettings(**options)
    diagram = planar_diagram(*closed_curve(source, settings.samples), settings)
    facts: dict[str, Any] = {
        "name": diagram.name,
        "points": len(diagram.points),
        "crossings": len(diagram.code),
        "crossing_estimate": diagram.crossing_estimate,
        "pd": diagram.code,
    }
    if volume:
        from vkmcore import hyperbolic_volume_from_pd

        try:
            facts["hyperbolic_volume"] = hyperbolic_volume_from_pd(diagram.code)
        except ImportError as error:
            raise Failure(f"vkmcore: no hyperbolic volume: {error} (examples/hyperbolic_volume_adapter)") from error
    if as_json:
        print_json({**facts, "settings": vars(settings)})
    else:
        for name in ("name", "points", "crossings", "crossing_estimate", "hyperbolic_volume"):
            if name in facts:
                click.echo(f"{name.replace('_', ' '):18} {facts[name]}")
        table = plain_table()
        for heading in ("crossing", "under in", "over in", "under out", "over out"):
            table.add_column(heading, justify="right")
        for number, row in enumerate(diagram.code, start=1):
            table.add_row(str(number), *map(str, row))
        print_table(table)
    if plot is not None:
        plot_diagram(plot, diagram, settings)
        click.echo(f"wrote {plot}", err=True)
