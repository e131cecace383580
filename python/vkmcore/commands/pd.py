"""The command `vkmcore pd`."""

from __future__ import annotations

from pathlib import Path
from typing import TYPE_CHECKING, Any

import click

from vkmcore.commands.arguments import COUNT, Failure, complete_key, plot_option, record_options, say_written
from vkmcore.commands.output import plain_table, print_csv, print_json, print_table

if TYPE_CHECKING:
    from vkmcore.curves.planar_diagram import Diagram


@click.command()
@click.argument("source", metavar="KEY|FILE", shell_complete=complete_key)
@click.option(
    "--samples", type=click.IntRange(4, 2**31 - 1), default=1000, show_default=True, help="Points of a Fourier series."
)
@click.option("--tries", type=COUNT, default=40, show_default=True, help="Projections for the code.")
@click.option(
    "--seed", type=click.IntRange(-(2**31), 2**31 - 1), default=12345, show_default=True, help="Of directions."
)
@click.option("--min-angle-deg", type=float, default=1.0, show_default=True, help="Flatter crossings are left out.")
@click.option("--depth-tol", type=float, default=1e-6, show_default=True, help="Closer strands are left out.")
@click.option(
    "--directions",
    type=COUNT,
    default=24,
    show_default=True,
    help="Projections for the estimate of the crossing number.",
)
@click.option(
    "--volume",
    is_flag=True,
    help="Hyperbolic volume too, by the module vkm_hypvol_no_deps if you supply it, else by SnapPy (extra snappy).",
)
@record_options("A JSON object", "a crossing")
@plot_option("Draw the diagram")
def pd(source: str, volume: bool, as_json: bool, as_csv: bool, plot: Path | None, **options: Any) -> None:
    """Planar-diagram code and crossing estimate of one closed curve.

    KEY is of the catalogue, as 3_1 or 3:1:1; FILE holds a Fourier series or vertices in any format of
    docs/command_line.md, - is standard input. A row of the code has the arcs under in, over in, under out, over out of
    a crossing.
    """
    from vkmcore.curves.planar_diagram import DiagramSettings, planar_diagram
    from vkmcore.curves.reader import read_curve

    settings = DiagramSettings(**options)
    curve = read_curve(source)
    diagram = planar_diagram(curve.title, curve.sampled(settings.samples), settings)
    facts: dict[str, Any] = {
        "name": diagram.name,
        "points": len(diagram.points),
        "crossings": len(diagram.code),
        "crossing_estimate": diagram.crossing_estimate,
        "pd": diagram.code,
    }
    if volume:
        facts["hyperbolic_volume"] = hyperbolic_volume(diagram)
    if as_json:
        print_json({**facts, "settings": vars(settings)})
    elif as_csv:
        arcs = ("under_in", "over_in", "under_out", "over_out")
        print_csv({"crossing": number, **dict(zip(arcs, row))} for number, row in enumerate(diagram.code, start=1))
    else:
        for name in ("name", "points", "crossings", "crossing_estimate", "hyperbolic_volume"):
            if name in facts:
                click.echo(f"{name.replace('_', ' '):18} {facts[name]}")
        table = plain_table(("crossing", "under in", "over in", "under out", "over out"))
        for number, row in enumerate(diagram.code, start=1):
            table.add_row(str(number), *map(str, row))
        print_table(table)
    if plot is not None:
        from vkmcore.pictures.diagram import plot_diagram

        plot_diagram(plot, diagram, settings)
        say_written(plot)


def hyperbolic_volume(diagram: Diagram) -> float:
    """By the user's own module where there is one, else by SnapPy."""
    from vkmcore import hyperbolic_volume_from_pd
    from vkmcore.topology import complements, diagram_of_curves

    try:
        return hyperbolic_volume_from_pd(diagram.code)
    except ImportError as error:
        if complements.available():
            return complements.volume(diagram_of_curves(diagram.points))
        raise Failure(f'vkmcore: no hyperbolic volume: {error}: pip install "vkmcore[snappy]"') from error
