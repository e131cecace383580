"""The command `vkmcore sweep`."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import click

from vkmcore.commands.arguments import COUNT, Failure, complete_name, file_option, record_options, say_written
from vkmcore.commands.output import plain_table, print_json, print_table, shown


@click.command(context_settings={"ignore_unknown_options": True})
@click.argument("command", metavar="COMMAND")
@click.argument(
    "words",
    nargs=-1,
    required=True,
    type=click.UNPROCESSED,
    metavar="KNOT... [--OPTION V,V...]...",
    shell_complete=complete_name,
)
@click.option("-j", "--jobs", type=COUNT, help="Processes at a time.  [default: one a processor]")
@file_option("-o", "--out", help="Rows go here as they come.", metavar="FILE.csv")
@click.option("--scheduler", metavar="ADDRESS", help="A Dask scheduler whose workers do it (extra 'sweep').")
@click.option("--retries", type=click.IntRange(0, 100), default=1, show_default=True, help="For workers that die.")
@record_options("A JSON list with a record a row", "a row")
def sweep(
    command: str,
    words: tuple[str, ...],
    jobs: int | None,
    out: Path | None,
    scheduler: str | None,
    retries: int,
    as_csv: bool,
    as_json: bool,
) -> None:
    """Run a command for many knots and settings at once, a row each.

    COMMAND is one with --json, as mass, describe or tighten; its options take several values, separated by commas. A
    sweep that was ended goes on with the same words: rows in FILE.csv are not done again, those with an error are.

    \b
    Examples:
      vkmcore sweep mass 3_1 4_1 --resolution 100,200,400 -j 8 -o masses.csv
      vkmcore sweep describe 3_1 5_1 7_1 --samples 256,512 --csv

    Exit code 1 if a row has an error.
    """
    from vkmcore.sweeps import table
    from vkmcore.sweeps.command import command_of
    from vkmcore.sweeps.run import rows

    try:
        target = command_of(command)
    except ValueError as error:
        raise click.UsageError(str(error)) from None
    knots, grid = parsed(target, words)
    try:
        found = rows(command, knots, grid, jobs=jobs, scheduler=scheduler, out=out, retries=retries)
    except ImportError as error:
        raise Failure(f"vkmcore: {error}") from None
    if as_json:
        print_json(found)
    elif as_csv:
        click.echo(table.text_of(found), nl=False)
    elif out is None:
        columns = list(dict.fromkeys(name for row in found for name in row))
        headings = plain_table([name.replace("_", " ") for name in columns], ("knot", "error"))
        for row in found:
            headings.add_row(*("" if row.get(name) is None else shown(row[name]) for name in columns))
        print_table(headings)
    say_written(out)
    if failed := sum(bool(row[table.ERROR]) for row in found):
        raise Failure(f"vkmcore: {failed} of {len(found)} rows have an error")


def parsed(target: click.Command, words: tuple[str, ...]) -> tuple[list[str], dict[str, list[Any]]]:
    """Knots and grid. UsageError for an option that the command does not have, or a value that it does not take."""
    from vkmcore.sweeps.command import options

    by_flag = {flag: option for option in options(target).values() for flag in option.opts + option.secondary_opts}
    context = click.Context(target)
    knots: list[str] = []
    grid: dict[str, list[Any]] = {}
    left = iter(words)
    for word in left:
        if not word.startswith("-") or word == "-":
            knots.append(word)
            continue
        flag, _, text = word.partition("=")
        option = by_flag.get(flag)
        if option is None or option.name in (None, "as_json", "as_csv", "help"):
            raise click.UsageError(f"{target.name} has no option {flag}; it has {', '.join(sorted(by_flag))}")
        assert option.name is not None
        if option.is_flag:
            grid[option.name] = [flag in option.opts]
            continue
        text = text or next(left, "")
        if not text:
            raise click.UsageError(f"{flag} needs values, separated by commas")
        try:
            grid[option.name] = [option.type.convert(part, option, context) for part in text.split(",")]
        except click.BadParameter as error:
            raise click.UsageError(f"{flag}: {error.message}") from None
    if not knots:
        raise click.UsageError("no knot to sweep over")
    return knots, grid
