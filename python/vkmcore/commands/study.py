"""The command `vkmcore study`, with a command a quantity."""

from __future__ import annotations

import os
from pathlib import Path
from typing import TYPE_CHECKING, Any

import click

from vkmcore.commands.arguments import (
    Failure,
    check_name,
    complete_name,
    file_option,
    plot_option,
    record_options,
    say_written,
)
from vkmcore.commands.output import plain_table, print_json, print_table
from vkmcore.progress import watched

if TYPE_CHECKING:
    from vkmcore.mass.convergence import MassStudy


@click.group()
def study() -> None:
    """How a result depends on its numerical settings."""


def counts(context: click.Context, parameter: click.Parameter, text: str) -> tuple[int, ...]:
    """Whole numbers: "100,300" lists them, "100..4000" doubles the first up to the last, which is one of them."""
    found: list[int] = []
    try:
        for part in text.split(","):
            first, dots, last = part.partition("..")
            low, high = int(first), int(last if dots else first)
            if not 1 <= low <= high < 2**31:
                raise ValueError
            while low < high:
                found.append(low)
                low *= 2
            found.append(high)
    except ValueError:
        raise click.BadParameter(f"{text!r}: expected numbers from 1 on, as 100,300 or 100..4000") from None
    return tuple(found)


def steps(context: click.Context, parameter: click.Parameter, text: str) -> tuple[float, ...]:
    """Numbers, separated by commas."""
    try:
        return tuple(float(part) for part in text.split(","))
    except ValueError:
        raise click.BadParameter(f"{text!r}: expected numbers, as 1e-2,1e-3") from None


@study.command()
@click.argument("knot", metavar="KNOT", callback=check_name, shell_complete=complete_name)
@click.option("--resolution", callback=counts, default="100..1600", show_default=True, help="Points a filament.")
@click.option("--timestep", callback=steps, default="1e-3,1e-2", show_default=True, help="Time steps of a sweep.")
@click.option("--iterations", callback=counts, default="100", show_default=True, help="Sweeps.")
@click.option(
    "--step-exponent",
    type=float,
    default=0.0,
    show_default=True,
    help="The step at N points is the time step times (fewest points / N) to this power.",
)
@click.option("--tolerance", type=float, default=1e-3, show_default=True, help="Relative change that passes.")
@record_options("A JSON object with the checks of the evidence report", "a way and resolution")
@file_option("--report", help="Write the evidence report here.", metavar="FILE.json")
@plot_option("Draw the ropelengths and their changes against the points")
def mass(
    knot: str,
    resolution: tuple[int, ...],
    timestep: tuple[float, ...],
    iterations: tuple[int, ...],
    step_exponent: float,
    tolerance: float,
    as_json: bool,
    as_csv: bool,
    report: Path | None,
    plot: Path | None,
) -> None:
    """Does the ropelength of KNOT (3_1, trefoil, 3:1:1), and with it its mass, converge with the number of points?

    The catalogued shape and each relaxation get a fitted order or a growth exponent and a verdict: Pass, Fail or
    Indeterminate, by a rule on the last three resolutions (docs/mass.md). To find no limit is a result: exit code 0.
    """
    from vkmcore.mass.convergence import study_mass

    found = study_mass(
        knot,
        resolution,
        timestep,
        iterations=iterations,
        step_exponent=step_exponent,
        tolerance=tolerance,
        progress=watched(),
    )
    if as_json:
        print_json(found.record())
    elif as_csv:
        click.echo(found.csv_text(), nl=False)
    else:
        print_table(study_table(found))
        for way in found.ways:
            click.echo(f"{way.name}: {way.verdict}: {way.reason}")
    if report is not None:
        write_report(report, found)
        say_written(report)
    if plot is not None:
        from vkmcore.pictures.convergence import plot_study

        plot_study(plot, found)
        say_written(plot)


def study_table(found: MassStudy) -> Any:
    """A row a way: the ropelength at each resolution, change, order or growth, verdict."""
    headings = (found.id, *(f"{n} points" for n in found.resolutions), "change", "order", "growth", "verdict")
    table = plain_table(headings, (found.id, "verdict"), title="ropelength, length over the body's radius")
    for way in found.ways:
        order = "-" if way.order is None else f"{way.order:.2f}"
        cells = (f"{way.change:.1e}", order, f"{way.growth:.2f}", way.verdict)
        table.add_row(way.name, *(f"{value:.6g}" for value in way.ropelengths), *cells)
    return table


def write_report(path: Path, found: MassStudy) -> None:
    from vkmcore import EvidenceReportAPI
    from vkmcore.evidence.report import report_meta

    target: Any = os.fsencode(path)  # the bytes of the name, which need not be valid text
    if not EvidenceReportAPI.write_evidence_report(target, report_meta(), found.checks()):
        raise Failure(f"vkmcore: cannot write {path}")
