"""The command `vkmcore mass`."""

from __future__ import annotations

import math
from collections.abc import Callable
from pathlib import Path
from typing import TYPE_CHECKING, Any

import click

from vkmcore.commands.arguments import COUNT, Failure, check_ids, complete_key, plot_option, record_options, say_written
from vkmcore.commands.output import console, digits, natural_width, plain_table, print_data, print_table
from vkmcore.progress import progress_bar, watched

if TYPE_CHECKING:
    from rich.table import Table

    from vkmcore import TailApproxConfig
    from vkmcore.mass.assessment import Assessment
    from vkmcore.mass.table import RelaxSettings, Weight


@click.command()
@click.argument("ids", nargs=-1, required=True, metavar="ID...", callback=check_ids, shell_complete=complete_key)
@click.option("--resolution", type=click.IntRange(3, 2**31 - 1), help="Points a filament.  [default: 200]")
@click.option("--iterations", type=click.IntRange(0, 2**31 - 1), help="Sweeps of the relaxation.  [default: 100]")
@click.option("--timestep", type=float, help="Time step of a sweep, dimensionless.  [default: 0.001]")
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
@click.option(
    "--library-defaults",
    is_flag=True,
    help="Take the library's 4000 points, 1000 sweeps, step 0.01, and show the relaxed shape alone, unjudged.",
)
@record_options("A JSON list of records", "a knot")
@plot_option("Draw the catalogued filaments")
def mass(
    ids: tuple[str, ...],
    resolution: int | None,
    iterations: int | None,
    timestep: float | None,
    stretch: float,
    tail: bool,
    library_defaults: bool,
    as_json: bool,
    as_csv: bool,
    plot: Path | None,
    **tail_options: float | None,
) -> None:
    """Weigh the knots of these catalogue IDs or names (3:1:1, 3_1): the catalogued and the relaxed shape, a verdict on
    each.

    Exit code 1 if a relaxation collapses or runs away.
    """
    from vkmcore import TailApproxConfig
    from vkmcore.mass.assessment import DEFAULTS
    from vkmcore.mass.table import RelaxSettings

    config = TailApproxConfig()
    config.enabled = tail
    for name, value in tail_options.items():
        if value is not None:
            setattr(config, name, value)
    base = RelaxSettings() if library_defaults else DEFAULTS
    settings = RelaxSettings(
        base.resolution if resolution is None else resolution,
        base.iterations if iterations is None else iterations,
        base.timestep if timestep is None else timestep,
        stretch,
    )
    show = _weigh_as_the_library if library_defaults else _assess
    show(tuple(map(_id_of, ids)), settings, config, as_json, as_csv, plot)


def _id_of(name: str) -> str:
    """The id of a name of the tables; what they do not know is the library's to judge."""
    from vkmcore.mass.names import ideal_id

    try:
        return ideal_id(name)
    except ValueError:
        return name


def _assess(
    ids: tuple[str, ...], settings: RelaxSettings, config: TailApproxConfig, as_json: bool, as_csv: bool, plot: Any
) -> None:
    from vkmcore import ParticleEvaluator
    from vkmcore.mass.assessment import assess

    for knot_id in ids:  # all ids are looked up before the first is relaxed
        ParticleEvaluator(knot_id, 3)
    assessed = []
    with progress_bar(len(ids), watched()) as tell:
        for done, knot_id in enumerate(ids):
            tell(done, knot_id)
            assessed.append(assess(knot_id, settings, config if config.enabled else None))
    records = [{**a.record(), "settings": settings_record(settings, config)} for a in assessed]
    if not print_data(as_json, as_csv, records):
        print_table(assessment_table(assessed))
        click.echo(
            f"{settings.resolution} points a filament, {settings.iterations} sweeps of step {settings.timestep:g}; "
            "change: from half the points.\n"
            "The relaxation is not known to have a limit under refinement: docs/mass.md."
        )
        for a in assessed:
            click.echo(f"{a.id}: {a.verdict}")
    if plot is not None:
        from vkmcore.pictures.filaments import plot_filaments

        plot_filaments(plot, [(f"{a.id}   {a.catalogued.weight.core_mass_MeV:.5g} MeV", a.filaments) for a in assessed])
        say_written(plot)
    if collapsed := [a.id for a in assessed if a.motion == "collapsed"]:
        raise Failure(f"{', '.join(collapsed)}: the relaxation ran away or collapsed; try a smaller --timestep")


def assessment_table(assessed: list[Assessment]) -> Table:
    """Two rows a knot: the catalogued shape, the relaxed one."""
    headings = ("id", "shape", "ropelength", "mass / MeV", "with tail / MeV", "change", "motion", "edge spread", "knot")
    table = plain_table(headings, ("id", "shape", "motion", "knot"))
    for a in assessed:
        for name, shape in (("catalogued", a.catalogued), ("relaxed", a.relaxed)):
            weight, tail = shape.weight, shape.weight.mass_with_tail_MeV
            cells = [f"{weight.ropelength:.6g}", f"{weight.core_mass_MeV:.6g}", "-" if tail is None else f"{tail:.6g}"]
            cells.append(f"{shape.relative_change:.1e}")
            judged = (a.motion, f"{a.edge_spread:.2g}", a.knot_type) if shape is a.relaxed else ("", "", "")
            table.add_row(a.id if shape is a.catalogued else "", name, *cells, *judged)
    return table


def _weigh_as_the_library(
    ids: tuple[str, ...], settings: RelaxSettings, config: TailApproxConfig, as_json: bool, as_csv: bool, plot: Any
) -> None:
    from vkmcore.mass.table import weigh

    tail = config.enabled

    stages = len(ids) * (4 if tail else 3)
    with progress_bar(stages, watched()) as tell:
        begun = iter(range(stages))
        weighed = weigh(
            ids, settings, config if tail else None, lambda knot_id, stage: tell(next(begun), f"{knot_id}: {stage}")
        )

    weights = [weight for weight, _ in weighed]
    records = [{**weight.record(), "settings": settings_record(settings, config)} for weight in weights]
    if not print_data(as_json, as_csv, records):
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
