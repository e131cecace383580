"""The command `vkmcore tighten`."""

from __future__ import annotations

import math
from collections.abc import Callable
from pathlib import Path
from typing import Any

import click

from vkmcore import TighteningOptions
from vkmcore.commands.arguments import (
    check_name,
    complete_key,
    file_option,
    plot_option,
    record_options,
    say_written,
    skip_option,
)
from vkmcore.commands.output import digits, plain_table, print_csv, print_json, print_table
from vkmcore.curves.reader import read_curve
from vkmcore.progress import progress_bar, watched
from vkmcore.tube.tightening import (
    GRADIENT_FILE,
    MATRIX_FILE,
    PATIENCE,
    Tightening,
    record,
    start_polygon,
    write_matrices,
    write_polygon,
)

TOLERABLE_OVERLAP = 0.01  # of the diameter; a polygon at the limit of curvature has some

# Field of TighteningOptions: the command's default, if it is not the library's, and the help. Lengths are in radii of
# the start's tube.
TUNING: dict[str, tuple[Any, str]] = {
    "max_step_size": (0.05, "First trial of a step: the largest move of a vertex."),
    "min_step_size": (None, "Smallest trial of a step."),
    "line_search_trials": (None, "Trials a step."),
    "line_search_shrink": (None, "Factor from a trial to the next, used within 0.05..0.95."),
    "target_kkt_residual": (None, "End where the contacts leave this part of the length gradient."),
    "thickness_floor_fraction": (None, "Part of the thickness that a step must keep."),
    "ropelength_increase_tolerance": (None, "Rise of the ropelength that a step may cost, relative."),
    "preserve_initial_thickness": (None, "Hold the first thickness, not the current one."),
    "normalize_direction": (None, "Scale the direction to a largest move of 1."),
    "correction_strategy": (None, "How lost thickness is restored."),
    "newton_correction_damping": (None, "Factor on a correction, used within 0..1."),
    "newton_ridge": (None, "Ridge of the correction's equations."),
    "nnls_max_iterations": (200, "Iterations of the contact fit."),
    "nnls_tolerance": (None, "Tolerance of the contact fit."),
    "use_active_set_solver": (False, "Active set in the contact fit: exact, and slow with hundreds of contacts."),
    "use_sparse_solver": (None, "Sparse rigidity matrix."),
    "use_analytic_kink_gradient": (None, "Analytic columns of kinks."),
}


def tuning_options(command: Callable[..., None]) -> Callable[..., None]:
    """An option for each line of TUNING."""
    library = TighteningOptions()
    for name, (default, text) in reversed(TUNING.items()):
        value = getattr(library, name) if default is None else default
        flag = "--" + name.removeprefix("use_").replace("_", "-")
        kind: Any = type(value)
        if isinstance(value, bool):
            flag = f"{flag}/--no-{flag[2:]}"
        elif isinstance(value, int):
            kind = click.IntRange(0, 2**63 - 1)
        elif isinstance(value, str):
            kind = click.Choice(("newton", "scale", "none"))
        command = click.option(flag, name, type=kind, default=value, show_default=True, help=text)(command)
    return command


@click.command()
@click.argument("name", metavar="FILE|KEY", callback=check_name, shell_complete=complete_key)
@click.option(
    "--vertices",
    type=click.IntRange(3, 2**31 - 1),
    help="Vertices, at equal arc lengths; the time of a step grows faster than their square.  "
    "[default: 120 of a series; a polygon as it stands]",
)
@click.option(
    "--steps", type=click.IntRange(0, 2**31 - 1), default=200, show_default=True, help="Most steps with each tolerance."
)
@click.option(
    "--contact-tol",
    "contact_tols",
    type=float,
    multiple=True,
    default=(0.003, 0.001, 0.0001),
    show_default=True,
    help="Tolerance of active contacts; repeat it to use several, one after the other.",
)
@skip_option("those within pi tube radii along the curve")
@click.option(
    "--least-gain",
    type=float,
    default=1e-6,
    show_default=True,
    help=f"End a run when {PATIENCE} steps gain less than this part of the ropelength; 0 goes on.",
)
@file_option("--output", help="Write the polygon, a vertex x y z a line.")
@click.option(
    "--matrix-market",
    "matrices",
    type=click.Path(file_okay=False, path_type=Path),
    metavar="DIR",
    help=f"Write the polygon's rigidity matrix and length gradient: {MATRIX_FILE}, {GRADIENT_FILE}.",
)
@plot_option("Draw start, end and the ropelength by step")
@click.option("--rows", type=click.IntRange(1), default=20, show_default=True, help="Steps in the table, about.")
@record_options("A JSON object with every step and vertex", "a step")
@tuning_options
def tighten(
    name: str,
    vertices: int | None,
    steps: int,
    contact_tols: tuple[float, ...],
    skip: int | None,
    least_gain: float,
    output: Path | None,
    matrices: Path | None,
    plot: Path | None,
    rows: int,
    as_json: bool,
    as_csv: bool,
    **tuning: Any,
) -> None:
    """Tighten a closed curve: shorten it at a held tube radius.

    The work goes in runs, each a call of the library's tightener: one with each tolerance, and a new one where the
    curve has become so short that more neighbours make half a turn of the tube.

    FILE holds a Fourier series or vertices in any format of docs/command_line.md, - is standard input; KEY is of the
    catalogue, as 3_1 or 3:1:1.

    Step sizes and tolerances are in tube radii of the polygon that a run starts from; what is written is in the unit of
    the curve. Ctrl-C ends the work and writes what has been reached.
    """
    options = TighteningOptions()
    options.max_steps = steps
    for field, value in tuning.items():
        setattr(options, field, value)
    source = read_curve(name)
    reached = Tightening(start_polygon(source, vertices))
    if matrices is not None:
        matrices.mkdir(exist_ok=True)
    interrupted = False
    with progress_bar(steps * len(contact_tols), watched()) as tell:
        try:
            reached.tighten(
                contact_tols, options, skip, least_gain, lambda: tell(len(reached.steps), last_step(reached))
            )
        except KeyboardInterrupt:
            interrupted = True
    if not reached.runs:
        raise KeyboardInterrupt

    if output is not None:
        write_polygon(output, name, reached)
    if matrices is not None:
        write_matrices(matrices, reached)
    if as_json:
        settings = {"contact_tols": contact_tols, "max_steps": steps, "skip": skip, "least_gain": least_gain, **tuning}
        print_json({"name": name, "kind": source.kind, **record(reached), "settings": settings})
    elif as_csv:
        steps_of_all = zip(numbered(reached), record(reached)["steps"], strict=True)
        print_csv({"run": run, **step} for (run, _), step in steps_of_all)
    else:
        print_steps(name, reached, rows)
        print_outcome(name, reached)
    if (overlap := reached.overlap()) > TOLERABLE_OVERLAP:
        text = f"strands overlap by {100.0 * overlap:.1f} % of the tube among the skipped neighbours; see --skip"
        click.echo(text, err=True)
    if plot is not None:
        from vkmcore.pictures.tightening import plot_tightening

        plot_tightening(plot, name, reached)
    say_written(output, matrices, plot)
    if interrupted:
        raise KeyboardInterrupt


def last_step(reached: Tightening) -> str:
    step = reached.steps[-1]
    return f"ropelength {step.ropelength_after:.4f}, residual {step.kkt_residual_before:.1e}"


def numbered(reached: Tightening) -> list[tuple[int, int]]:
    """Run and number in it of each step, from 1 on."""
    return [(run, step) for run, count in enumerate(reached.runs, 1) for step in range(1, count + 1)]


def print_steps(name: str, reached: Tightening, rows: int) -> None:
    """A table of evenly chosen steps, the last one of each run among them."""
    if not reached.steps:
        return
    headings = ("run", "step", "ropelength", "length", "thickness", "residual", "move", "struts", "kinks", "")
    table = plain_table(headings, title=f"{name}: steps")
    every = math.ceil(len(reached.steps) / rows)
    for (run, number), step in zip(numbered(reached), reached.steps, strict=True):
        if number % every and number not in (1, reached.runs[run - 1]):
            continue
        table.add_row(
            str(run),
            str(number),
            f"{step.ropelength_after:.6f}",
            f"{step.length_after:.6f}",
            f"{step.thickness_after:.9f}",
            f"{step.kkt_residual_before:.2e}",
            f"{step.alpha:.1e}",
            str(step.strut_count),
            str(step.kink_count),
            ("corrected" if step.thickness_corrected else "") if step.accepted else "rejected",
        )
    print_table(table)


def print_outcome(name: str, reached: Tightening) -> None:
    first, last = reached.start_tube, reached.tube()
    assert first is not None
    table = plain_table((name, ""), (name,))
    table.add_row("vertices", str(len(reached.scaled)))
    table.add_row("ropelength before", digits(first.ropelength_rad))
    table.add_row("ropelength after", digits(last.ropelength_rad))
    table.add_row("thickness after", digits(last.thickness_rad * reached.unit))
    table.add_row("skipped neighbours", str(reached.skip))
    table.add_row("steps", str(len(reached.steps)))
    table.add_row("ended by", reached.reason.replace("_", " "))
    print_table(table)
