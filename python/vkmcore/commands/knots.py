"""The command `vkmcore knots`."""

from __future__ import annotations

from typing import TYPE_CHECKING

import click

from vkmcore.commands.arguments import Failure, complete_name, record_options
from vkmcore.commands.output import plain_table, print_csv, print_json, print_table

if TYPE_CHECKING:
    from vkmcore.reference.listing import Listed


@click.command()
@click.argument("names", nargs=-1, metavar="[NAME...]", shell_complete=complete_name)
@click.option("--crossings", type=click.IntRange(0), help="Only those of this crossing number.")
@click.option("--links", is_flag=True, help="Only links of two or more components.")
@record_options("A JSON list with a record a shape", "a shape")
def knots(names: tuple[str, ...], crossings: int | None, links: bool, as_json: bool, as_csv: bool) -> None:
    """List what the catalogue holds, and the files of knots on disk.

    NAME is any name of a knot or link: 3_1, trefoil, 3:1:1, "[3]", L5a1. Ropelength is length over tube radius.
    """
    from vkmcore.reference.listing import listed

    entries = [
        entry
        for entry in listed()
        if (crossings is None or entry.crossings == crossings) and (not links or entry.components > 1)
    ]
    if names:
        entries = [entry for name in names for entry in named(entries, name)]
    if as_json:
        print_json([vars(entry) for entry in entries])
    elif as_csv:
        print_csv(vars(entry) | {"aliases": ";".join(entry.aliases)} for entry in entries)
    else:
        show(entries)


def named(entries: list[Listed], name: str) -> list[Listed]:
    """The entries of a key, or of all shapes of the type that a name of the tables stands for."""
    from vkmcore.reference.tables import UnknownName, find

    exact = [entry for entry in entries if entry.key == name]
    if exact:
        return exact
    try:
        wanted = find(name).name
    except UnknownName as error:
        raise Failure(f"vkmcore: {error}") from None
    return [entry for entry in entries if entry.name == wanted]


def show(entries: list[Listed]) -> None:
    figures = ("ropelength", "published", "difference / %", "harmonics", "source")
    headings = ("key", "name", "aliases", "crossings", "chirality", "symmetry", *figures)
    table = plain_table(headings, ("key", "name", "aliases", "chirality", "symmetry", "source"))
    for entry in entries:
        table.add_row(
            entry.key,
            entry.name,
            ", ".join(alias for alias in entry.aliases if alias != entry.key),
            str(entry.crossings),
            entry.chirality,
            entry.symmetry,
            "-" if entry.ropelength is None else f"{entry.ropelength:.4f}",
            "-" if entry.published is None else f"{entry.published:.4f}",
            "-" if entry.difference is None else f"{100 * entry.difference:+.3f}",
            str(entry.harmonics or "-"),
            entry.source,
        )
    print_table(table)
