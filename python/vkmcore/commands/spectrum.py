"""The command `vkmcore spectrum`."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import click
import numpy as np

from vkmcore.commands.arguments import plot_option, record_options, say_written
from vkmcore.commands.output import plain_table, print_csv, print_json, print_table
from vkmcore.spectral.anchored_spectrum import BOUNDARIES, OperatorSettings, anchored_spectrum, record


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
@record_options("A JSON object", "a level")
@plot_option("Draw potential and levels")
def spectrum(
    nodes: tuple[float, ...],
    targets: tuple[float, ...],
    levels: int,
    as_json: bool,
    as_csv: bool,
    plot: Path | None,
    **options: Any,
) -> None:
    """Solve an operator with a well at each NODE (default -0.5 0 0.5) and list its lowest levels."""
    nodes = nodes or (-0.5, 0.0, 0.5)
    settings = OperatorSettings(**options)
    solved = anchored_spectrum(nodes, settings, targets or None)
    if (solved.residuals[:levels] > 1e-6 * np.abs(solved.eigenvalues).max(initial=0.0)).any():
        advice = "boundary rows make the matrix asymmetric" if settings.as_built else "more --rotations may help"
        click.echo(f"some levels have large residuals; {advice}", err=True)
    result: Any = record(solved, settings, nodes, levels)
    if as_json:
        print_json(result)
    elif as_csv:
        print_csv(result["levels"])
    else:
        table = plain_table(("level", "eigenvalue", "peak u", "residual"), title="Levels")
        for row in result["levels"]:
            table.add_row(
                str(row["level"]), f"{row['eigenvalue']:.10g}", f"{row['peak_u']:.6g}", f"{row['residual']:.1e}"
            )
        print_table(table)
        table = plain_table(("target", "nearest eigenvalue", "difference"), title="Targets")
        for row in result["targets"]:
            table.add_row(f"{row['target']:.10g}", f"{row['nearest_eigenvalue']:.10g}", f"{row['difference']:.3e}")
        print_table(table)
    if plot is not None:
        from vkmcore.pictures.spectrum import plot_spectrum

        plot_spectrum(plot, solved, levels)
        say_written(plot)
