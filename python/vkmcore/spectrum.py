"""Spectra of operators anchored to target nodes, and the command `vkmcore spectrum`."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import asdict, dataclass
from pathlib import Path
from typing import TYPE_CHECKING, Any

import click
import numpy as np

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Vector = NDArray[np.float64]
    Matrix = NDArray[np.float64]

BOUNDARIES = {"dirichlet": 0, "centre": 1, "reflecting": 2}


@dataclass(frozen=True)
class OperatorSettings:
    """An operator -kinetic d^2/du^2 + V(u) on a grid, with an equal Gaussian well at each target node."""

    u_min: float = -1.0
    u_max: float = 1.0
    points: int = 201
    boundary: str = "dirichlet"
    well_amplitude: float = -400.0
    well_sigma: float = 0.1
    harmonic: float = 0.0
    quartic: float = 0.0
    shift: float = 0.0
    kinetic: float = 1.0
    as_built: bool = False  # solve the operator with its boundary rows, not the reduced one of `reduce_boundaries`
    rotations: int | None = None  # most Jacobi rotations; four times the square of the points if None
    tolerance: float = 1e-10


@dataclass(frozen=True)
class Spectrum:
    """Levels in ascending order, with their vectors as columns."""

    u: Vector
    potential: Vector
    eigenvalues: Vector
    eigenvectors: Vector
    residuals: Vector  # |A x - e x|
    peaks: Vector  # u at which a level's density is greatest
    targets: Vector
    nearest: Vector  # for each target the nearest eigenvalue


def anchored_spectrum(
    nodes: Sequence[float], settings: OperatorSettings, targets: Sequence[float] | None = None
) -> Spectrum:
    """Anchor an operator to `nodes`, solve it, and find the eigenvalues nearest to `targets` (the nodes if None).

    The spectrum is that of the boundary value problem; with `as_built` it is the one that
    `TrefoilOperator.build_and_solve_node_anchored_operator` gives, boundary rows included.

    Raises:
        RuntimeError: fewer than 3 points.
        KeyError: a boundary other than "dirichlet", "centre" and "reflecting".
    """
    from vkmcore import TrefoilOperator as operator

    s = settings
    grid = (s.u_min, s.u_max, s.points)
    mode = BOUNDARIES[s.boundary]
    potential = operator.build_potential_from_nodes(
        *grid, nodes, s.well_amplitude, s.well_sigma, s.harmonic, s.quartic, s.shift
    )
    matrix = operator.assemble_schrodinger_matrix(*grid, mode, True, potential, s.kinetic)
    rotations = 4 * s.points**2 if s.rotations is None else s.rotations
    if s.as_built:
        reduced, lift = matrix, np.eye(s.points)
    else:
        pinned = np.diag(operator.build_second_difference(*grid, mode, True)) == 1.0
        reduced, lift = reduce_boundaries(matrix, pinned)
    solved = operator.jacobi_eigensolve_symmetric(reduced, True, rotations, s.tolerance)
    values, vectors = solved["eigenvalues"], lift @ solved["eigenvectors"]
    vectors /= np.linalg.norm(vectors, axis=0)
    u = operator.build_uniform_grid(*grid)
    aims = np.asarray(nodes if targets is None else targets, dtype=np.float64)
    return Spectrum(
        u=u,
        potential=potential,
        eigenvalues=values,
        eigenvectors=vectors,
        residuals=np.linalg.norm(matrix @ vectors - vectors * values, axis=0),
        peaks=u[np.argmax(np.abs(vectors), axis=0)],
        targets=aims,
        nearest=operator.nearest_eigenvalues_to_targets(values, aims),
    )


def reduce_boundaries(matrix: Matrix, pinned: NDArray[np.bool_]) -> tuple[Matrix, Matrix]:
    """A symmetric matrix with the spectrum of the boundary value problem, and the map of its vectors to the grid.

    The operator's boundary rows make it slightly asymmetric, which the Jacobi solver takes no account of. Points that
    an identity row pins to zero are dropped; reflecting ends, whose rows couple twice as strongly as their columns, are
    balanced by scaling them with the square root of 2.
    """
    scale = np.ones(len(matrix))
    for end, neighbour in ((0, 1), (-1, -2)):
        if not pinned[end] and matrix[neighbour, end] != 0.0:
            scale[end] = np.sqrt(matrix[end, neighbour] / matrix[neighbour, end])
    lift = np.diag(scale)[:, ~pinned]
    reduced = (matrix * scale / scale[:, None])[np.ix_(~pinned, ~pinned)]
    return (reduced + reduced.T) / 2.0, lift


def record(spectrum: Spectrum, settings: OperatorSettings, nodes: Sequence[float], levels: int) -> dict[str, object]:
    """The lowest levels and the targets as plain values, in full precision."""
    columns = (spectrum.eigenvalues, spectrum.residuals, spectrum.peaks)
    lowest = zip(*(column[:levels].tolist() for column in columns), strict=True)
    aims = zip(spectrum.targets.tolist(), spectrum.nearest.tolist(), strict=True)
    return {
        "nodes": [float(node) for node in nodes],
        "levels": [
            {"level": level, "eigenvalue": value, "residual": residual, "peak_u": peak}
            for level, (value, residual, peak) in enumerate(lowest)
        ],
        "targets": [
            {"target": target, "nearest_eigenvalue": value, "difference": value - target} for target, value in aims
        ],
        "settings": asdict(settings),
    }


def plot_spectrum(path: Path, spectrum: Spectrum, levels: int) -> None:
    """Draw the potential with the lowest levels' vectors standing on their eigenvalues, and the targets."""

    from matplotlib.backends.backend_agg import FigureCanvasAgg
    from matplotlib.figure import Figure

    from vkmcore.plots import PALETTE, check_plot_target, write_figure

    kind = check_plot_target(path)
    figure = Figure(figsize=(7.2, 4.8), dpi=150, facecolor="white", layout="constrained")
    FigureCanvasAgg(figure)
    axes: Any = figure.add_subplot()
    draw_levels(axes, spectrum, levels, PALETTE)
    write_figure(figure, path, kind)


def draw_levels(axes: Any, spectrum: Spectrum, levels: int, palette: Sequence[str]) -> None:
    """Fill matplotlib axes with the potential, the levels and the targets."""
    values = spectrum.eigenvalues[:levels]
    axes.plot(spectrum.u, spectrum.potential, color="#6b7079", linewidth=1.2, label="potential V(u)")
    reach = float(np.ptp(values)) if len(values) > 1 else 0.0
    height = 0.6 * (reach / max(len(values) - 1, 1) or 1.0)
    for level, value in enumerate(values):
        vector = spectrum.eigenvectors[:, level]
        scale = height / (np.abs(vector).max() or 1.0)
        colour = palette[level % len(palette)]
        axes.axhline(value, color=colour, linewidth=0.5, alpha=0.5)
        axes.plot(spectrum.u, value + scale * vector, color=colour, linewidth=1.1)
    for number, target in enumerate(spectrum.targets):
        axes.axhline(target, color="#202124", linewidth=0.8, linestyle=":", label="" if number else "targets")
    axes.set(xlabel="u", ylabel="eigenvalue, potential", xlim=(spectrum.u[0], spectrum.u[-1]))
    axes.legend(loc="upper right", fontsize=8, frameon=False)


@click.command(context_settings={"ignore_unknown_options": True})  # so that a node may be negative
@click.argument("nodes", nargs=-1, type=float, metavar="[NODE]...")
@click.option(
    "--target", "targets", type=float, multiple=True, help="Compare with these; repeatable. Default: the nodes."
)
@click.option("--u-min", type=float, default=-1.0, show_default=True, help="Left end of the grid.")
@click.option("--u-max", type=float, default=1.0, show_default=True, help="Right end of the grid.")
@click.option("--points", type=click.IntRange(3, 2**31 - 1), default=201, show_default=True, help="Points of the grid.")
@click.option(
    "--boundary",
    type=click.Choice(list(BOUNDARIES)),
    default="dirichlet",
    show_default=True,
    help="Rows at both ends; 'centre' is dirichlet with a node at u = 0.",
)
@click.option("--well-amplitude", type=float, default=-400.0, show_default=True, help="Of each well; negative is down.")
@click.option("--well-sigma", type=float, default=0.1, show_default=True, help="Width of each well.")
@click.option("--harmonic", type=float, default=0.0, show_default=True, help="Coefficient of u^2 in the potential.")
@click.option("--quartic", type=float, default=0.0, show_default=True, help="Coefficient of u^4 in the potential.")
@click.option("--shift", type=float, default=0.0, show_default=True, help="Constant in the potential.")
@click.option("--kinetic", type=float, default=1.0, show_default=True, help="Factor of -d^2/du^2.")
@click.option(
    "--as-built",
    is_flag=True,
    help="Solve the matrix with its boundary rows, as build_and_solve_node_anchored_operator does.",
)
@click.option("--rotations", type=click.IntRange(0), help="Most Jacobi rotations. Default: 4 times the points squared.")
@click.option("--tolerance", type=float, default=1e-10, show_default=True, help="Off-diagonal magnitude to stop below.")
@click.option("--levels", type=click.IntRange(1), default=10, show_default=True, help="Lowest levels to show.")
@click.option("--json", "as_json", is_flag=True, help="A JSON object, in full precision.")
@click.option(
    "--plot", type=click.Path(path_type=Path), metavar="FILE", help="Draw potential and levels (PNG, PDF, SVG)."
)
def spectrum(
    nodes: tuple[float, ...],
    targets: tuple[float, ...],
    levels: int,
    as_json: bool,
    plot: Path | None,
    **options: Any,
) -> None:
    """Solve an operator with a well at each NODE (default -0.5 0 0.5) and list its lowest levels."""
    from vkmcore.cli import check_plot, plain_table, print_json, print_table

    if plot is not None:
        check_plot(plot)
    nodes = nodes or (-0.5, 0.0, 0.5)
    settings = OperatorSettings(**options)
    solved = anchored_spectrum(nodes, settings, targets or None)
    if (solved.residuals[:levels] > 1e-6 * np.abs(solved.eigenvalues).max(initial=0.0)).any():
        advice = "boundary rows make the matrix asymmetric" if settings.as_built else "more --rotations may help"
        click.echo(f"some levels have large residuals; {advice}", err=True)
    result: Any = record(solved, settings, nodes, levels)
    if as_json:
        print_json(result)
    else:
        table = plain_table("Levels")
        for heading in ("level", "eigenvalue", "peak u", "residual"):
            table.add_column(heading, justify="right")
        for row in result["levels"]:
            table.add_row(
                str(row["level"]), f"{row['eigenvalue']:.10g}", f"{row['peak_u']:.6g}", f"{row['residual']:.1e}"
            )
        print_table(table)
        table = plain_table("Targets")
        for heading in ("target", "nearest eigenvalue", "difference"):
            table.add_column(heading, justify="right")
        for row in result["targets"]:
            table.add_row(f"{row['target']:.10g}", f"{row['nearest_eigenvalue']:.10g}", f"{row['difference']:.3e}")
        print_table(table)
    if plot is not None:
        plot_spectrum(plot, solved, levels)
        click.echo(f"wrote {plot}", err=True)
