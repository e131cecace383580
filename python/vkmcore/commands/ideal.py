"""The command `vkmcore ideal`."""

from __future__ import annotations

from pathlib import Path
from typing import TYPE_CHECKING, Any

import click

from vkmcore.commands.arguments import (
    COUNT,
    POSITIVE,
    Failure,
    check_name,
    complete_name,
    file_option,
    plot_option,
    record_options,
    say_written,
)
from vkmcore.commands.output import digits, plain_table, print_data, print_table
from vkmcore.progress import progress_bar, watched

if TYPE_CHECKING:
    from vkmcore.ideal.fourier_form import FourierForm
    from vkmcore.ideal.inputs import Problem
    from vkmcore.ideal.shape import IdealShape, SearchStep

PHASES = {"start": "starts", "hop": "hops", "level": "levels"}


@click.command()
@click.argument("name", metavar="NAME|FILE|CODE", callback=check_name, shell_complete=complete_name)
@click.option("--edge", type=POSITIVE, default=0.15, show_default=True, help="Edge length of the finest level.")
@click.option("--seeds", type=COUNT, default=1, show_default=True, help="Searches; the best of them is taken.")
@click.option("--seed", "first", type=click.IntRange(0, 2**62), default=1, show_default=True, help="The first seed.")
@click.option(
    "--until-published", is_flag=True, help="Search no more once the best published ropelength is reached at this edge."
)
@click.option("--expect", metavar="TYPE", default="", callback=check_name, help="Fail if the curve is of another type.")
@click.option("--threads", type=COUNT, help="Threads; they change no digit.  [default: all processors]")
@file_option(
    "--out", help="Write the polygon: .vect, .csv, .txt, .json, .npy, .vtp, .obj, .stl; .npz keeps everything."
)
@file_option("--fourier", help="Write a Fourier form as an ideal block.")
@click.option(
    "--excess",
    type=POSITIVE,
    default=0.1,
    show_default=True,
    help="What the Fourier form may lie above the polygon, in %.",
)
@plot_option("Draw the tube with struts and kinks, and the strut map")
@record_options("A JSON object with points, contacts and history", "with the measures")
def ideal(
    name: str,
    edge: float,
    seeds: int,
    first: int,
    until_published: bool,
    expect: str,
    threads: int | None,
    out: Path | None,
    fourier: Path | None,
    excess: float,
    plot: Path | None,
    as_json: bool,
    as_csv: bool,
) -> None:
    """Search the tight shape of a knot or link: least length at a tube radius of 1.

    NAME is of the tables, as 8_18, trefoil, L6a4 or K12a100; FILE holds points or a Fourier series in any format of
    docs/command_line.md, - is standard input; CODE is a planar diagram "[[1,5,2,4],[3,1,4,6],[5,3,6,2]]", an arc
    presentation of rows by column "[[1,3],[2,4],[3,5],[1,4],[2,5]]", or a braid "[1,-2,1,-2]".

    Lengths are in tube radii; ropelength is length over radius. The excess over the smooth shape goes with the square
    of the edge: 0.05 % at 0.15, 0.01 % at 0.07. The type of the result is compared with that of the start. Ctrl-C ends
    the search and writes the best so far.
    """
    from vkmcore.ideal.inputs import problem_of
    from vkmcore.ideal.search import idealize, published

    if out is not None:
        check_format(out)
    try:
        problem = problem_of(name)
        with progress_bar(steps_of(problem, seeds), watched()) as tell:
            teller = Teller(tell, published(problem))
            shape = idealize(
                problem,
                expected=expect or None,
                edge=edge,
                seeds=range(first, first + seeds),
                enough="published" if until_published else None,
                threads=threads,
                progress=teller,
            )
    except ImportError as error:
        raise Failure(f"vkmcore: {error}") from None

    if out is not None:
        shape.save(out)
    form = None
    if fourier is not None:
        form = shape.fourier(excess=excess / 100.0)
        fourier.write_text(form_text(shape, form), encoding="utf-8")
    record = shape.record() | ({} if form is None else {"harmonics": form.harmonics})
    if not print_data(as_json, as_csv, record):
        print_shape(shape, form)
    if plot is not None:
        from vkmcore.pictures.ideal import plot_ideal

        plot_ideal(plot, shape)
    say_written(out, fourier, plot)
    if shape.interrupted:
        click.echo(f"stopped: the best so far, at edges of {shape.edge:g}", err=True)
        raise KeyboardInterrupt


class Teller:
    """What the bar says: where the search is, the best so far, and what is to be reached."""

    def __init__(self, tell: Any, goal: float | None) -> None:
        self.tell, self.goal, self.done, self.best = tell, goal, 0, float("inf")

    def __call__(self, step: SearchStep, best: float) -> None:
        self.done += 1
        words = f"seed {step.seed}, {step.starts} {PHASES.get(step.phase, step.phase)} at {step.edge:g}: {best:.4f}"
        self.tell(self.done, words if self.goal is None else f"{words}, best published {self.goal:.4f}")


def steps_of(problem: Problem, seeds: int) -> int:
    """About how many steps a search tells of."""
    from vkmcore.ideal.search import batches_of

    return seeds * sum(int(batch.effort.get("start_count", 16)) + 18 for batch in batches_of(problem, {}))


def check_format(path: Path) -> None:
    """Fail before the long work where no writer knows the suffix."""
    from vkmcore.curves.writer import FORMATS

    if path.suffix.lower() not in FORMATS:
        raise Failure(f"vkmcore: {path}: no format of this name; known are {', '.join(FORMATS)}")


def form_text(shape: IdealShape, form: FourierForm) -> str:
    """The block of a Fourier form in standard position, at unit diameter."""
    from vkmcore.ideal.stored_form import at_unit_diameter, block_text, standardised

    tag = "AB" if len(form.series) == 1 else "TL"
    return block_text(tag, shape.name, "", at_unit_diameter(standardised(form)))


def print_shape(shape: IdealShape, form: FourierForm | None) -> None:
    table = plain_table((shape.name, ""), (shape.name,))
    rows: list[tuple[str, str]] = [
        ("ropelength (length / radius)", digits(shape.ropelength)),
        ("ropelength (length / diameter)", digits(shape.ropelength_diameter)),
    ]
    if shape.published is not None and shape.excess is not None:
        rows.append(("best published (radius)", digits(shape.published)))
        rows.append(("above it", f"{100.0 * shape.excess:+.4f} %"))
    rows += [
        ("thickness", digits(shape.thickness)),
        ("vertices", " + ".join(str(len(points)) for points in shape.points)),
        ("edge", digits(shape.edge)),
        ("struts", str(len(shape.struts))),
        ("kinks", str(len(shape.kinks))),
        ("residual of the forces", f"{shape.kkt_residual:.2e}"),
        ("seed", str(shape.seed)),
    ]
    if form is not None:
        rows.append(("harmonics of the Fourier form", str(form.harmonics)))
    for row in rows:
        table.add_row(*row)
    print_table(table)
    if shape.certificate:
        click.echo(f"Type: {shape.certificate}")
