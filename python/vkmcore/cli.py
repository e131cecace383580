"""The command line of the package.

Results go to standard output, everything else to standard error. Failures end with a line on standard error and exit
code 1 (2 for wrong usage, 130 after Ctrl-C). Libraries that only one command needs are imported where it needs them.
"""

from __future__ import annotations

import importlib
import json
import math
import os
import sys
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path
from typing import IO, TYPE_CHECKING, Any

import click

from vkmcore.errors import PlotError

if TYPE_CHECKING:
    from collections.abc import Callable

    from rich.console import Console
    from rich.table import Table

    from vkmcore.mass_table import Weight


class Failure(click.ClickException):
    """A failure whose text stands for itself on standard error."""

    def show(self, file: IO[Any] | None = None) -> None:
        click.echo(self.message, err=True, file=file)


# Commands in modules of their own, imported when one of them is called or the help lists them.
ELSEWHERE = {
    "pd": "vkmcore.planar_diagram",
    "simulate": "vkmcore.simulation_command",
    "spectrum": "vkmcore.spectrum",
    "tighten": "vkmcore.tighten_command",
    "zoo": "vkmcore.zoo",
}


class Program(click.Group):
    """A group whose commands fail with a text and an exit code, never with a traceback."""

    def list_commands(self, ctx: click.Context) -> list[str]:
        return sorted([*super().list_commands(ctx), *ELSEWHERE])

    def get_command(self, ctx: click.Context, cmd_name: str) -> click.Command | None:
        if cmd_name in ELSEWHERE:
            command: click.Command = getattr(importlib.import_module(ELSEWHERE[cmd_name]), cmd_name)
            return command
        return super().get_command(ctx, cmd_name)

    def invoke(self, ctx: click.Context) -> Any:
        try:
            result = super().invoke(ctx)
            if sys.stdout is not None:
                sys.stdout.flush()
            return result
        except (click.ClickException, click.exceptions.Exit, click.Abort, BrokenPipeError):
            raise  # click's own; a reader that has gone away ends the program quietly
        except KeyboardInterrupt:
            click.echo("Interrupted.", err=True)
            ctx.exit(130)
        except MemoryError:
            raise Failure("vkmcore: not enough memory for this size") from None
        except PlotError as error:
            raise Failure(f"vkmcore: {error}") from error
        except (RuntimeError, ValueError, OSError) as error:
            raise Failure(str(error)) from error


def show_version(context: click.Context, parameter: click.Parameter, wanted: bool) -> None:
    if wanted:
        import vkmcore

        click.echo(f"vkmcore {vkmcore.__version__}")
        context.exit()


@click.group(cls=Program, context_settings={"help_option_names": ["-h", "--help"]})
@click.option(
    "--version", is_flag=True, is_eager=True, expose_value=False, callback=show_version, help="Show the version."
)
def cli() -> None:
    """Masses of knotted vortex filaments, from the catalogue inside the library."""


def main() -> None:
    """Entry of the console script."""
    cli()


def check_ids(context: click.Context, parameter: click.Parameter, ids: tuple[str, ...]) -> tuple[str, ...]:
    """Refuse what is no text; every other id is the library's to judge."""
    for knot_id in ids:
        check_name(context, parameter, knot_id)
    return ids


def check_name(context: click.Context, parameter: click.Parameter, name: str) -> str:
    """Refuse what is no text."""
    try:
        name.encode()
    except UnicodeEncodeError:
        raise click.BadParameter(f"{name!a} is not valid text") from None
    return name


@cli.command()
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
@click.option("--radial-samples", type=click.IntRange(1, 2**31 - 1), help="Tail: shells around the filament.")
@click.option("--azimuth-samples", type=click.IntRange(1, 2**31 - 1), help="Tail: samples around each shell.")
@click.option("--r-min-factor", type=float, help="Tail: inner radius in core radii.")
@click.option("--r-max-factor", type=float, help="Tail: outer radius in core radii.")
@click.option("--exclusion-ds-factor", type=float, help="Tail: excluded arc in mean segment lengths.")
@click.option("--json", "as_json", is_flag=True, help="A JSON list of records, in full precision.")
@click.option(
    "--plot", type=click.Path(path_type=Path), metavar="FILE", help="Draw the relaxed filaments (PNG, PDF, SVG)."
)
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
    from vkmcore.mass_table import RelaxSettings, weigh

    if plot is not None:
        check_plot(plot)
    config = TailApproxConfig()
    config.enabled = tail
    for name, value in tail_options.items():
        if value is not None:
            setattr(config, name, value)
    settings = RelaxSettings(resolution, iterations, timestep, stretch)

    stages = len(ids) * (4 if tail else 3)
    with progress_line(stages, visible=sys.stderr is not None and sys.stderr.isatty()) as tell:
        weighed = weigh(ids, settings, config if tail else None, tell)

    weights = [weight for weight, _ in weighed]
    if as_json:
        print_json([{**weight.record(), "settings": settings_record(settings, config)} for weight in weights])
    else:
        print_table(mass_table(weights, console().width))
    for weight in weights:
        if not math.isfinite(weight.length_m):
            click.echo(f"{weight.id}: the relaxation ran away; try a smaller --timestep", err=True)
    if plot is not None:
        draw(plot, weighed)


@cli.command()
@click.option("--json", "as_json", is_flag=True, help="A JSON object with the lists 'fourier' and 'ideal'.")
def knots(as_json: bool) -> None:
    """List what the catalogue holds."""
    from vkmcore.knot_list import fourier_entries, ideal_entries

    fourier, ideal = fourier_entries(), ideal_entries()
    if as_json:
        print_json({"fourier": fourier, "ideal": ideal})
        return
    table = plain_table("Ideal knots and links")
    for heading in ("id", "Conway", "L", "D", "n", "components", "harmonics", "tag", "source"):
        table.add_column(heading, justify="left" if heading in ("id", "Conway", "tag", "source") else "right")
    for entry in ideal:
        table.add_row(
            entry["id"],
            entry["conway"],
            f"{entry['L']:.6f}" if entry["L"] else "-",
            f"{entry['D']:.6f}" if entry["D"] else "-",
            str(entry["n"]),
            str(entry["components"]),
            str(entry["harmonics"]),
            entry["tag"],
            entry["source"],
        )
    print_table(table)
    table = plain_table("Fourier series")
    for heading in ("id", "blocks", "harmonics", "header"):
        table.add_column(heading, justify="left" if heading in ("id", "header") else "right")
    for series in fourier:
        table.add_row(series["id"], str(series["blocks"]), str(series["harmonics"]), series["header"])
    print_table(table)


@cli.command()
@click.argument("out", type=click.Path(path_type=Path), metavar="OUT.json")
def report(out: Path) -> None:
    """Check this installation and write the evidence report to OUT.json.

    Exit code 1 if a check fails.
    """
    from vkmcore import EvidenceReportAPI
    from vkmcore.evidence import report_meta, self_checks

    checks = self_checks()
    path: Any = os.fsencode(out)  # the bytes of the name, which need not be valid text
    if not EvidenceReportAPI.write_evidence_report(path, report_meta(), checks):
        raise Failure(f"vkmcore: cannot write {out}")
    table = plain_table()
    for heading in ("check", "kind", "residual", "tolerance", ""):
        table.add_column(heading, justify="right" if heading in ("residual", "tolerance") else "left")
    for check in checks:
        passed = "passed" if check.passed else "FAILED"
        table.add_row(check.name, check.kind.name, f"{check.residual:.3e}", f"{check.tolerance:.3e}", passed)
    print_table(table)
    if failed := sum(not check.passed for check in checks):
        raise Failure(f"vkmcore: {failed} of {len(checks)} checks failed; see {out}")


@cli.group()
def provenance() -> None:
    """Chains of custody: where a geometry comes from, tool by tool."""


STAGES = ("KnotPlot", "Ridgerunner", "Smoothing", "VKMcore", "EddyLab")
EXISTING_FILE = click.Path(exists=True, dir_okay=False, path_type=Path)


@provenance.command("new")
@click.argument("chain", type=click.Path(dir_okay=False, path_type=Path), metavar="CHAIN.json")
@click.option("--stage", type=click.Choice(STAGES), required=True, help="Stage of the pipeline.")
@click.option("--tool", "tool_name", required=True, help="Name of the tool.")
@click.option("--tool-version", required=True, help="Its version.")
@click.option("--input", "input_file", type=EXISTING_FILE, required=True, help="File that the tool read.")
@click.option("--output", "output_file", type=EXISTING_FILE, required=True, help="File that it wrote.")
@click.option("--parameters", "parameter_file", type=EXISTING_FILE, required=True, help="File with its parameters.")
@click.option("--coordinates", "coordinate_convention", required=True, help="Convention of the coordinates, any text.")
@click.option("--scale", "scale_convention", required=True, help="Convention of the scale, any text.")
@click.option("--certification", type=click.Choice(("Unknown", "Candidate", "Certified")), default="Unknown")
@click.option("--time", "timestamp_utc", help="UTC, as 2024-01-01T00:00:00Z; now by default.")
def provenance_new(chain: Path, stage: str, certification: str, **fields: Any) -> None:
    """Add a record of files on disk to the chain in CHAIN.json, or start one.

    A record that breaks the chain is refused.
    """
    from vkmcore import PipelineCertificationStatus, PipelineStage
    from vkmcore.provenance import first_break, first_fault, new_record, read_chain, write_chain

    records = read_chain(chain) if chain.exists() else []
    record = new_record(
        records[-1] if records else None,
        PipelineStage.__members__[stage],
        certification=PipelineCertificationStatus.__members__[certification],
        **fields,
    )
    records.append(record)
    if fault := first_break(records):
        raise Failure(f"vkmcore: {fault}; {chain} is left as it was")
    write_chain(chain, records)
    click.echo(f"{chain}: record {len(records)}, {'certified' if first_fault(records) is None else 'not yet complete'}")


@provenance.command("verify")
@click.argument("chain", type=EXISTING_FILE, metavar="CHAIN.json")
@click.option(
    "--output", "output_file", type=EXISTING_FILE, help="Also hold this file against the last record's output."
)
def provenance_verify(chain: Path, output_file: Path | None) -> None:
    """Print the verdict on the chain in CHAIN.json, and the first rule that it fails.

    Exit code 1 unless it is certified.
    """
    from vkmcore import PipelineProvenanceAPI
    from vkmcore.provenance import file_sha256, first_fault, read_chain

    records = read_chain(chain)
    verdict = PipelineProvenanceAPI.evaluate_chain(records)
    fault = first_fault(records)
    click.echo(f"{PipelineProvenanceAPI.certification_name(verdict)}{'' if fault is None else f': {fault}'}")
    if output_file is not None and (not records or file_sha256(output_file) != records[-1].output_sha256.lower()):
        raise Failure(f"vkmcore: {output_file} is not the output of the last record")
    if fault is not None:
        raise click.exceptions.Exit(1)


@cli.command()
@click.argument("name", metavar="FILE|KEY", callback=check_name)
@click.option(
    "--samples",
    type=click.IntRange(64, 2**31 - 1),
    default=512,
    show_default=True,
    help="Vertices of a series.",
)
@click.option(
    "--skip",
    type=click.IntRange(1, 2**31 - 1),
    help="Neighbours that are no contacts.  [default: those within pi radii of curvature]",
)
@click.option(
    "--contact-tol", type=click.FloatRange(0.0), default=1e-3, show_default=True, help="Tolerance of active contacts."
)
@click.option(
    "--contact-vertices",
    type=click.IntRange(64, 2**31 - 1),
    default=512,
    show_default=True,
    help="Most vertices for the contacts' stress; a finer polygon is resampled. 2048 take minutes.",
)
@click.option("--json", "as_json", is_flag=True, help="A JSON object, in full precision.")
def describe(
    name: str, samples: int, skip: int | None, contact_tol: float, contact_vertices: int, as_json: bool
) -> None:
    """Describe a closed curve: descriptors, thickness as a tube, contact stress.

    FILE is a .fseries text or has a vertex x y z a line; KEY is of the catalogue, as 3_1 or 3:1:1.
    """
    from vkmcore.curve_description import describe as describe_curve
    from vkmcore.curve_source import find_curve

    sections = describe_curve(find_curve(name), samples, skip, contact_tol, contact_vertices)
    if sections["contacts"]["vertices"] != sections["curve"]["vertices"]:
        click.echo(f"contacts: fitted on a polygon of {contact_vertices} vertices; see --contact-vertices", err=True)
    if as_json:
        settings = {
            "samples": samples,
            "skip": skip,
            "contact_tol": contact_tol,
            "contact_vertices": contact_vertices,
        }
        print_json({"name": name, **sections, "settings": settings})
        return
    table = plain_table()
    table.add_column(name)
    table.add_column("", justify="right")
    for place, measures in enumerate(sections.values()):
        if place:
            table.add_section()
        for title, value in measures.items():
            table.add_row(title.replace("_", " "), shown(value))
    print_table(table)


@cli.command()
@click.argument("a", metavar="A", callback=check_name)
@click.argument("b", metavar="B", callback=check_name)
@click.option(
    "--samples", type=click.IntRange(1, 2**31 - 1), default=2048, show_default=True, help="Samples of a series."
)
@click.option(
    "--skip", type=click.IntRange(1, 2**31 - 1), default=3, show_default=True, help="Neighbours that are no contacts."
)
@click.option("--json", "as_json", is_flag=True, help="A JSON object, in full precision.")
def compare(a: str, b: str, samples: int, skip: int, as_json: bool) -> None:
    """Compare two Fourier curves, each a .fseries file or a key of the catalogue."""
    from vkmcore.curve_comparison import compare as compare_curves

    measures = compare_curves(a, b, samples, skip)
    if as_json:
        print_json({"a": a, "b": b, **measures, "settings": {"samples": samples, "skip": skip}})
        return
    table = plain_table()
    table.add_column("")
    for heading in (a, b, "difference"):
        table.add_column(heading, justify="right")
    for title in ("L", "kappa_max", "kappa_mean", "bend_energy", "reach_proxy"):
        table.add_row(
            title.replace("_", " "), *(digits(measures[key]) for key in (f"{title}_a", f"{title}_b", f"d{title}"))
        )
    table.add_row("rms point delta", "", "", digits(measures["rms_point_delta"]))
    print_table(table)


@cli.command()
@click.option("--json", "as_json", is_flag=True, help="A JSON object.")
def info(as_json: bool) -> None:
    """Version, interpreter, compiler and vector width in use."""
    import platform

    from vkmcore.build import build_info

    build = build_info()
    facts: dict[str, object] = {
        "version": build.version,
        "python": platform.python_version(),
        "numpy": installed("numpy"),
        "matplotlib": installed("matplotlib"),
        "compiler": build.compiler,
        "vector_bits": build.vector_bits,
        "machine": platform.machine(),
        "extension": build.path,
    }
    if as_json:
        print_json(facts)
        return
    width = max(map(len, facts))
    for name, value in facts.items():
        click.echo(f"{name.replace('_', ' '):{width}}  {'not installed' if value is None else value}")


def installed(package: str) -> str | None:
    """Version of an installed package, without importing it."""
    from importlib.metadata import PackageNotFoundError, version

    try:
        return version(package)
    except PackageNotFoundError:
        return None


# --- mass: the parts of the command -------------------------------------------------------------------------------

# Row of the table: its title, and how a weight fills it.
MASS_ROWS: tuple[tuple[str, Callable[[Weight], str]], ...] = (
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


def digits(value: float | None) -> str:
    """Ten significant digits, the last ones kept where they are zero."""
    if value is None:
        return "-"
    return f"{value:#.10g}" if 1e-3 <= abs(value) < 1e7 or value == 0.0 else f"{value:.9e}"


def mass_table(weights: list[Weight], width: int) -> Table:
    """A column a knot where that fits into `width`, else a row a knot."""
    columns = [[row(weight) for _, row in MASS_ROWS] for weight in weights]
    upright = plain_table()
    upright.add_column("id")
    for weight in weights:
        upright.add_column(weight.id, justify="right")
    for place, (title, _) in enumerate(MASS_ROWS):
        upright.add_row(title, *(column[place] for column in columns))
    if len(weights) == 1 or natural_width(upright) <= width:
        return upright
    table = plain_table()
    table.add_column("id")
    for title, _ in MASS_ROWS:
        table.add_column(title.replace(", ", "\n").replace(" / ", "\n/ "), justify="right")
    for weight, column in zip(weights, columns, strict=True):
        table.add_row(weight.id, *column)
    return table


def settings_record(settings: Any, config: Any) -> dict[str, object]:
    """What the measures depend on, for the record."""
    names = ("radial_samples", "azimuth_samples", "r_min_factor", "r_max_factor", "exclusion_ds_factor")
    tail = {name: getattr(config, name) for name in names} if config.enabled else None
    return {**vars(settings), "tail": tail}


def check_plot(path: Path) -> None:
    """Fail before the long work rather than after it."""
    from vkmcore.plots import check_plot_target

    check_plot_target(path)


def draw(path: Path, weighed: list[tuple[Weight, list[list[list[float]]]]]) -> None:
    from vkmcore.plots import plot_filaments

    plot_filaments(path, [(f"{w.id}   {w.core_mass_MeV:.6g} MeV", filaments) for w, filaments in weighed])
    click.echo(f"wrote {path}", err=True)


@contextmanager
def progress_line(total: int, visible: bool) -> Iterator[Callable[[str, str], None]]:
    """A line on standard error that names the stage at work, or nothing where nobody looks.

    It is drawn at each change of stage: the interpreter has no moment to turn a spinner while the library computes.
    """
    if not visible:
        yield lambda knot_id, stage: None
        return
    from rich.console import Console
    from rich.progress import BarColumn, MofNCompleteColumn, Progress, TextColumn

    columns = (TextColumn("{task.description}", markup=False), BarColumn(bar_width=24), MofNCompleteColumn())
    with Progress(*columns, console=Console(stderr=True), transient=True, auto_refresh=False) as progress:
        task = progress.add_task("", total=total)
        done = -1

        def tell(knot_id: str, stage: str) -> None:
            nonlocal done
            done += 1
            progress.update(task, description=f"{knot_id}: {stage}", completed=done, refresh=True)

        yield tell


def shown(value: object) -> str:
    """A measure as a table shows it."""
    if isinstance(value, bool):
        return "yes" if value else "no"
    return digits(value) if isinstance(value, float) else str(value)


# --- output -------------------------------------------------------------------------------------------------------


def print_json(value: object) -> None:
    """JSON on standard output, numbers in full precision; what is not a finite number is null."""
    click.echo(json.dumps(finite(value), indent=2, ensure_ascii=False, allow_nan=False))


def finite(value: object) -> object:
    if isinstance(value, float) and not math.isfinite(value):
        return None
    if isinstance(value, dict):
        return {name: finite(item) for name, item in value.items()}
    if isinstance(value, list | tuple):
        return [finite(item) for item in value]
    return value


def plain_table(title: str | None = None) -> Table:
    from rich import box
    from rich.table import Table

    return Table(title=title, box=box.SIMPLE_HEAD, title_justify="left", title_style="bold", header_style="bold")


def console(width: int | None = None) -> Console:
    """A console that shows texts as they are: an id such as "3:100:1" holds the name of an emoji."""
    from rich.console import Console

    return Console(width=width, markup=False, emoji=False, highlight=False)


def natural_width(table: Table) -> int:
    return console(width=10**6).measure(table).maximum


def print_table(table: Table) -> None:
    """Print it at its natural width: a digit that is cut off is worse than a line that wraps."""
    console(width=natural_width(table)).print(table)
