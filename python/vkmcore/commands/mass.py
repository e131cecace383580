"""The command `vkmcore mass`."""

from __future__ import annotations

import math
from collections.abc import Callable
from pathlib import Path
from typing import TYPE_CHECKING, Any

import click

from vkmcore.commands.arguments import COUNT, check_ids, json_option, plot_option, say_written
from vkmcore.commands.output import console, digits, natural_width, plain_table, print_json, print_table
from vkmcore.progress import progress_bar, watched

if TYPE_CHECKING:
    from rich.table import Table

    from vkmcore.mass.table import Weight


@click.command()
@click.argument("ids", nargs=-1, required=True, metavar="ID...", callback=check_ids)
@click.option(
    "--resolution", type=click.IntRange(3, 2**31 - 1), default=4000, show_default=True, help="Points a filament."
)
@click.option(
    "--iterations", type=click.IntRange(0, 2**31 - 1), default=1000, show_default=True, help="Sweeps of the relaxation."
)
@click.option("--timestep", type=float, default=0.01, show_default=True, help="Time step of a sweep, dimensionless.")
@click.option(
    "--stretch",
    type=float,
    default=1.0,
    show_default=True,
    help="Stretch lambda; divides the dimensionless ropelength twice.",
)
@click.option("--tail/--no-tail", default=True, show_default=True, help="Weigh the flow outside the core too.")
@click.option("--radial-samples", type=COUNT, help="Tail: shells around the filament.")
@click.option("--azimuth-samples", type=COUNT, help="Tail: samples around each shell.")
@click.option("--r-min-factor", type=float, help="Tail: inner radius in core radii.")
@click.option("--r-max-factor", type=float, help="Tail: outer radius in core radii.")
@click.option("--exclusion-ds-factor", type=float, help="Tail: excluded arc in mean segment lengths.")
@json_option("A JSON list of records, in full precision.")
@plot_option("Draw the relaxed filaments")
def mass(
    ids: tuple[str, ...],
    resolution: int,
    iterations: int,
    timestep: float,
    stretch: float,
    tail: bool,
    as_json: bool,
    plot: Path | None,
    **tail_options: float | None,
) -> None:
    """Relax the knots with these catalogue IDs (as 3:1:1) and weigh them."""
    from vkmcore import TailApproxConfig
    from vkmcore.mass.table import RelaxSettings, weigh

    config = TailApproxConfig()
    config.enabled = tail
    for name, value in tail_options.items():
        if value is not None:
            setattr(config, name, value)
    settings = RelaxSettings(resolution, iterations, timestep, stretch)

    stages = len(ids) * (4 if tail else 3)
    with progress_bar(stages, watched()) as tell:
        begun = iter(range(stages))
        weighed = weigh(
            ids, settings, config if tail else None, lambda knot_id, stage: tell(next(begun), f"{knot_id}: {stage}")
        )

    weights = [weight for weight, _ in weighed]
    if as_json:
        print_json([{**weight.record(), "settings": settings_record(settings, config)} for weight in weights])
    else:
        print_table(mass_table(weights, console().width))
    for weight in weights:
        if not math.isfinite(weight.length_m):
            click.echo(f"{weight.id}: the relaxation ran away; try a smaller --timestep", err=True)
    if plot is not None:
        from vkmcore.pictures.filaments import plot_filaments

        plot_filaments(plot, [(f"{w.id}   {w.core_mass_MeV:.6g} MeV", filaments) for w, filaments in weighed])
        say_written(plot)


# Row of the table: its title, and how a weight fills it.
ROWS: tuple[tuple[str, Callable[[Weight], str]], ...] = (
    ("filaments", lambda weight: str(weight.filaments)),
    ("points", lambda weight: str(weight.points)),
    ("ropelength, dimensionless", lambda weight: digits(weight.ropelength)),
    ("length / m", lambda weight: digits(weight.length_m)),
    ("core energy / J", lambda weight: digits(weight.core_energy_J)),
    ("tail energy / J", lambda weight: digits(weight.tail_energy_J)),
    ("mass / MeV", lambda weight: digits(weight.core_mass_MeV)),
    ("mass with tail / MeV", lambda weight: digits(weight.mass_with_tail_MeV)),
    ("helicity / (m/s^2)", lambda weight: digits(weight.helicity_m_per_s2)),
    ("core time dilation", lambda weight: digits(weight.core_time_dilation)),
)


def mass_table(weights: list[Weight], width: int) -> Table:
    """A column a knot where that fits into `width`, else a row a knot."""
    columns = [[row(weight) for _, row in ROWS] for weight in weights]
    upright = plain_table()
    upright.add_column("id")
    for weight in weights:
        upright.add_column(weight.id, justify="right")
    for place, (title, _) in enumerate(ROWS):
        upright.add_row(title, *(column[place] for column in columns))
    if len(weights) == 1 or natural_width(upright) <= width:
        return upright
    titles = [title.replace(", ", "\n").replace(" / ", "\n/ ") for title, _ in ROWS]
    table = plain_table(("id", *titles), ("id",))
    for weight, column in zip(weights, columns, strict=True):
        table.add_row(weight.id, *column)
    return table


def settings_record(settings: Any, config: Any) -> dict[str, object]:
    """What the measures depend on, for the record."""
    names = ("radial_samples", "azimuth_samples", "r_min_factor", "r_max_factor", "exclusion_ds_factor")
    tail = {name: getattr(config, name) for name in names} if config.enabled else None
    return {**vars(settings), "tail": tail}
