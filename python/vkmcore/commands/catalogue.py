"""The command `vkmcore catalogue` with build, write, summary, records and verify."""

from __future__ import annotations

import fnmatch
import multiprocessing
import os
import threading
from collections.abc import Callable, Iterator, Sequence
from concurrent.futures import Executor
from contextlib import contextmanager
from functools import partial
from pathlib import Path
from typing import TYPE_CHECKING

import click

from vkmcore.commands.arguments import COUNT, Failure, complete_key, file_option, record_options, say_written
from vkmcore.commands.output import plain_table, print_csv, print_data, print_json, print_table, shown
from vkmcore.progress import progress_bar, watched

if TYPE_CHECKING:
    from vkmcore.ideal.campaign import Outcome, Progress, Target
    from vkmcore.ideal.campaign_store import Entry, Store
    from vkmcore.reference.tables import TableEntry


@click.group()
def catalogue() -> None:
    """Make the catalogue of tight shapes again, and verify what is embedded."""


def folder_option(command: Callable[..., None]) -> Callable[..., None]:
    return click.option(
        "--folder",
        type=click.Path(file_okay=False, path_type=Path),
        default=Path("campaign"),
        show_default=True,
        help="Where the results are kept: one file a knot.",
    )(command)


def select_option(default: str) -> Callable[[Callable[..., None]], Callable[..., None]]:
    return click.option(
        "--select",
        multiple=True,
        metavar="PATTERN",
        help=f"Names, as '8_*' or 'L6a?'; may be repeated.  [default: {default}]",
    )


FIRST_SHELF = "all knots to 10 crossings and links to 9"


@catalogue.command()
@select_option(FIRST_SHELF)
@click.option("--seeds", type=COUNT, default=1, show_default=True, help="Most searches a knot, in all runs together.")
@click.option("--jobs", type=COUNT, default=os.cpu_count() or 1, show_default=True, help="Tasks at a time.")
@click.option("--scheduler", metavar="ADDRESS", help="A Dask scheduler that does the tasks (extra 'sweep').")
@click.option("--resume", is_flag=True, help="Go on in a folder that holds results.")
@click.option(
    "--edge", type=click.FloatRange(0.05, 0.15), default=0.07, show_default=True, help="Finest edge, in radii."
)
@click.option("--nice", type=click.IntRange(0, 19), default=0, help="Nice level of the workers.")
@folder_option
def build(
    select: tuple[str, ...],
    seeds: int,
    jobs: int,
    scheduler: str | None,
    resume: bool,
    edge: float,
    nice: int,
    folder: Path,
) -> None:
    """Search tight shapes and Fourier forms of knots and links, from their tables' diagrams.

    Results go to the folder as they come; a campaign that was stopped, by whatever, goes on with --resume. Nothing is
    ever replaced by anything worse.
    """
    from vkmcore.ideal.campaign import run
    from vkmcore.ideal.campaign_store import Store
    from vkmcore.ideal.campaign_work import work

    chosen = selected(select)
    store = Store(folder)
    if store.names() and not resume:
        raise Failure(f"vkmcore: {folder} holds results; --resume goes on with them")
    with store.owned(), workers(jobs, scheduler, nice) as executor:
        trend = trend_of(store, chosen)
        targets = [target_of(entry, trend.get(entry.name)) for entry in chosen]
        progress = run(store, targets, executor, jobs, work, seeds, edge, report)
    click.echo(f"{progress.done} tasks done in {folder}", err=True)


def selected(patterns: Sequence[str]) -> list[TableEntry]:
    """The entries of the tables that match; without patterns the first shelf, knots before links."""
    from vkmcore.reference.tables import knots, large_knots, large_links, links, others

    first_shelf = [*knots(), *links(), *others()]
    if not patterns:
        return first_shelf
    entries = {entry.name: entry for entry in first_shelf}
    missing = ""
    try:
        entries |= {entry.name: entry for entry in (*large_knots(11), *large_links(10), *large_knots(12))}
    except ImportError as error:
        missing = f"; {error}"
    chosen = [e for e in entries.values() if any(fnmatch.fnmatchcase(e.name, p) for p in patterns)]
    if not chosen:
        raise Failure(f"vkmcore: no knot or link of the tables matches {' '.join(patterns)}{missing}")
    return chosen


def trend_of(store: Store, chosen: Sequence[TableEntry]) -> dict[str, float]:
    """By name, the ropelengths above which shapes of a list of the tables are searched again."""
    from vkmcore.ideal.trend import expected

    best = ((entry, store.load(entry.name).best) for entry in chosen)
    return expected((entry, shape.ropelength) for entry, shape in best if shape is not None)


def target_of(entry: TableEntry, trend: float | None = None) -> Target:
    from vkmcore.ideal.campaign import MOST_CROSSINGS_KEPT_FINE, MOST_CROSSINGS_OF_FORMS, Target

    return Target(
        entry.name,
        rank=(entry.crossings + (entry.components > 1), entry.components),
        published=entry.ropelength,
        form=entry.crossings <= MOST_CROSSINGS_OF_FORMS,
        trend=trend,
        fine=entry.crossings <= MOST_CROSSINGS_KEPT_FINE,
    )


@contextmanager
def workers(jobs: int, scheduler: str | None, nice: int) -> Iterator[Executor]:
    """Processes of this machine, or those of a cluster."""
    if scheduler is not None:
        from vkmcore.sweeps.workers import distributed

        try:
            client_of = distributed().Client
        except ImportError as error:
            raise Failure(f"vkmcore: {error}") from None
        with client_of(scheduler) as client:
            yield client.get_executor()
        return
    from concurrent.futures import ProcessPoolExecutor

    with ProcessPoolExecutor(jobs, multiprocessing.get_context("spawn"), begin_worker, (nice,)) as pool:
        yield pool


def begin_worker(nice: int) -> None:
    """Set a worker's priority, and have it end with the program: one that is killed cannot end its workers."""
    os.nice(nice)
    threading.Thread(target=end_with_parent, daemon=True).start()


def end_with_parent() -> None:
    parent = multiprocessing.parent_process()
    if parent is not None:
        parent.join()
        os._exit(1)


def report(target: Target, entry: Entry, outcome: Outcome, progress: Progress) -> None:
    from vkmcore.ideal.campaign import excess

    task = outcome.task
    if outcome.error:
        result = outcome.error
    else:
        got = outcome.form.ropelength if outcome.form else outcome.shape.ropelength if outcome.shape else float("nan")
        above = excess(target, got)
        result = f"{got:.4f}" + ("" if above is None else f" {100 * above:+.3f} %")
    edge = "series" if task.kind == "form" else f"edge {task.edge:g}"
    left = f"{progress.left} left, {60 * progress.rate:.1f} a minute, {progress.remaining_s / 60:.0f} min"
    click.echo(f"{target.name:8} {edge:9} seed {task.seed}  {result}  ({outcome.cpu:.1f} s)  {left}", err=True)


@catalogue.command()
@folder_option
@click.option(
    "--out",
    type=click.Path(file_okay=False, path_type=Path),
    default=Path("resources"),
    show_default=True,
    help="The folder of the texts.",
)
@click.option(
    "--companions/--no-companions", default=True, help="Also the short, the chosen and the outside tool's texts."
)
@click.option(
    "--table",
    type=click.Path(file_okay=False, path_type=Path),
    help="The folder of the knot table's texts: write those of --key.",
)
@click.option(
    "--polygon-table",
    type=click.Path(dir_okay=False, path_type=Path),
    default=Path("python/vkmcore/reference/polygons.csv"),
    show_default=True,
    help="The file of the polygons' ropelengths.",
)
@click.option("--key", "keys", multiple=True, metavar="PATTERN", help="Keys for --table, as '8_*'.  [default: missing]")
def write(
    folder: Path, out: Path, companions: bool, table: Path | None, polygon_table: Path, keys: tuple[str, ...]
) -> None:
    """Write the catalogue's texts from a campaign's results."""
    from vkmcore.ideal.campaign_store import Store
    from vkmcore.ideal.catalogue_texts import (
        POLYGON_FOLDER,
        TEXTS,
        few_harmonics,
        write_blocks,
        write_companions,
        write_polygons,
        write_table,
    )
    from vkmcore.ideal.knot_table_forms import KEYS

    if not folder.is_dir():
        raise Failure(f"vkmcore: {folder}: there is no such folder")
    store = Store(folder)
    reached = {*store.names()}
    entries = [entry for entry in selected(["*"]) if entry.name in reached]
    for text in TEXTS:
        path = out / "ideal" / text.file
        click.echo(f"{path}: {write_blocks(store, entries, text, path)} blocks replaced")
    replaced = write_polygons(store, entries, out / POLYGON_FOLDER, polygon_table)
    click.echo(f"{out / POLYGON_FOLDER}: {replaced} polygons replaced")
    if companions:
        for name in write_companions(out, few_harmonics):
            click.echo(f"written: {name}")
    if table is not None:
        chosen = [
            key
            for key in KEYS
            if any(fnmatch.fnmatchcase(key, pattern) for pattern in keys)
            or (not keys and not (table / f"knot.{key}.fseries").exists())
        ]
        for key, result in write_table(store, out, table, chosen):
            click.echo(f"{key}: {result}")


@catalogue.command()
@folder_option
@select_option(FIRST_SHELF)
@click.option("--below", is_flag=True, help="Only what is shorter than the published value, the shortest first.")
@record_options("A JSON list with a record a knot", "a knot")
def summary(folder: Path, select: tuple[str, ...], below: bool, as_json: bool, as_csv: bool) -> None:
    """Ropelengths that a campaign has reached, by edge and extrapolated to no edge, against the published values."""
    from vkmcore.ideal.campaign_store import Store
    from vkmcore.ideal.campaign_summary import EDGES, below_published, groups, summaries

    if not folder.is_dir():
        raise Failure(f"vkmcore: {folder}: there is no such folder")
    rows = summaries(Store(folder), selected(select))
    if below:
        rows = below_published(rows)
    if as_json:
        print_json([vars(row) for row in rows])
        return
    if as_csv:
        names = [f"edge_{edge:g}" for edge in EDGES]
        print_csv({**vars(row), **dict(zip(names, row.polygons))} for row in rows)
        return
    head = ("name", "published", *(f"edge {edge:g}" for edge in EDGES), "limit", "curve", "harmonics", "seeds")
    lines = [
        (
            row.name,
            *("" if x is None else f"{x:.4f}" for x in (row.published, *row.polygons, row.limit, row.curve)),
            str(row.harmonics or ""),
            str(row.seeds),
        )
        for row in rows
    ]
    table = plain_table(head, ("name",))
    for line in lines:
        table.add_row(*line)
    print_table(table)
    for curves, what in ((False, "polygons"), (True, "curves")):
        table = plain_table(("crossings", what, "median / %", "90 % within / %", "worst / %", "at or below"), ())
        for group in groups(rows, curves):
            shares = (group.median, group.ninetieth, group.worst)
            table.add_row(
                str(group.crossings), str(group.count), *(f"{100 * x:+.3f}" for x in shares), str(group.at_or_below)
            )
        click.echo()
        print_table(table)


def require_table(name: str) -> None:
    """End the command where the table that knows a name is not installed."""
    from vkmcore.reference.tables import UnknownName, find

    try:
        find(name)
    except UnknownName:
        return
    except ImportError as error:
        raise Failure(f"vkmcore: {name}: {error}") from None


@catalogue.command()
@folder_option
@select_option("all of the folder")
@click.option("--jobs", type=COUNT, default=os.cpu_count() or 1, show_default=True, help="Polygons at a time.")
@file_option("--out", help="Also write the records to a file, as --csv prints them.")
@record_options("A JSON list with a record a knot", "a knot")
def records(folder: Path, select: tuple[str, ...], jobs: int, out: Path | None, as_json: bool, as_csv: bool) -> None:
    """Shapes of a campaign that are shorter than the published value, each with a proved upper bound.

    The bound is that of the polygon with its corners rounded by circular arcs, computed with intervals. Where only the
    polygon is below the published value the record is not proved, and says so.
    """
    from vkmcore.files import write_text
    from vkmcore.ideal.campaign_store import Store
    from vkmcore.ideal.campaign_summary import EDGES
    from vkmcore.ideal.records import Record, candidates, record, rounded_up
    from vkmcore.rows import csv_text

    if not folder.is_dir():
        raise Failure(f"vkmcore: {folder}: there is no such folder")
    reached = {*Store(folder).names()}
    chosen = candidates(folder, [entry for entry in selected(select or ["*"]) if entry.name in reached])
    found: list[Record] = []
    if chosen:
        with progress_bar(len(chosen), watched()) as tell, workers(min(jobs, len(chosen)), None, 0) as executor:
            for result in executor.map(partial(record, folder), chosen):
                found.append(result)
                tell(len(found), result.summary.name)
    found = sorted(
        (result for result in found if result.below), key=lambda result: result.bound.ropelength / result.published
    )
    rows = [result.row() for result in found]
    if out is not None:
        write_text(out, csv_text(rows))
        say_written(out)
    if not print_data(as_json, as_csv, rows):
        head = ("name", "published", *(f"edge {edge:g}" for edge in EDGES), "limit", "proved bound", "below published")
        table = plain_table(head, ("name",))
        for result in found:
            row = result.summary
            table.add_row(
                row.name,
                *("" if x is None else f"{x:.4f}" for x in (row.published, *row.polygons, row.limit)),
                rounded_up(result.bound.ropelength),
                shown(result.proved),
            )
        print_table(table)
    proved = sum(result.proved for result in found)
    click.echo(f"{len(found)} below the published value, {proved} of them proved", err=True)


@catalogue.command()
@click.argument("keys", nargs=-1, metavar="[KEY...]", shell_complete=complete_key)
@click.option("--jobs", type=COUNT, default=os.cpu_count() or 1, show_default=True, help="Shapes at a time.")
@record_options("A JSON list with a record a shape", "a shape")
def verify(keys: tuple[str, ...], jobs: int, as_json: bool, as_csv: bool) -> None:
    """Measure and certify what is embedded: all of it, or the shapes of these keys, ids, names or texts.

    KEY is as 4_1d, 3:1:1, L5a1, knot_3.1 or idealLinks.txt; patterns with * are allowed. The exit code is 1 if any
    shape is not what the catalogue says.
    """
    from vkmcore.ideal.catalogue_verification import Item, Verdict, items
    from vkmcore.ideal.catalogue_verification import verify as verify_item
    from vkmcore.reference.listing import table_name

    def matches(item: Item, key: str) -> bool:
        texts = (item.key, table_name(item.key), item.source, item.source.rsplit("/", 1)[-1])
        return any(fnmatch.fnmatchcase(text, key) for text in texts)

    everything = items()
    for key in keys:
        if not any(matches(item, key) for item in everything):
            raise Failure(f"vkmcore: nothing in the catalogue matches {key!r}")
    chosen = [item for item in everything if not keys or any(matches(item, key) for key in keys)]
    for item in chosen:
        require_table(table_name(item.key))
    verdicts: list[Verdict] = []
    with progress_bar(len(chosen), watched()) as tell, workers(min(jobs, len(chosen)), None, 0) as executor:
        for verdict in executor.map(verify_item, chosen):
            verdicts.append(verdict)
            tell(len(verdicts), verdict.key)
    if as_json:
        print_json([vars(verdict) for verdict in verdicts])
    elif as_csv:
        print_csv(vars(verdict) | {"problems": "; ".join(verdict.problems)} for verdict in verdicts)
    else:
        table = plain_table(
            ("key", "source", "type", "harmonics", "ropelength", "published", "excess / %", "certificate"),
            ("key", "source", "type", "certificate"),
        )
        for verdict in verdicts:
            table.add_row(
                verdict.key,
                verdict.source.rsplit("/", 1)[-1],
                verdict.expected,
                str(verdict.harmonics or "-"),
                f"{verdict.ropelength:.4f}",
                "-" if verdict.published is None else f"{verdict.published:.4f}",
                "-" if verdict.excess is None else f"{100 * verdict.excess:+.3f}",
                "; ".join(verdict.problems) or verdict.certificate.partition(": ")[2],
            )
        print_table(table)
    failed = sum(bool(verdict.problems) for verdict in verdicts)
    if failed:
        raise Failure(f"vkmcore: {failed} of {len(verdicts)} shapes failed")
    click.echo(f"{len(verdicts)} shapes verified", err=True)
