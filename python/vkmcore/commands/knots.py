"""The command `vkmcore knots`."""

from __future__ import annotations

import click

from vkmcore.commands.arguments import json_option
from vkmcore.commands.output import plain_table, print_json, print_table


@click.command()
@json_option("A JSON object with the lists 'fourier' and 'ideal'.")
def knots(as_json: bool) -> None:
    """List what the catalogue holds."""
    from vkmcore.curves.catalogue import fourier_entries, ideal_entries

    fourier, ideal = fourier_entries(), ideal_entries()
    if as_json:
        print_json({"fourier": fourier, "ideal": ideal})
        return
    headings = ("id", "Conway", "L", "D", "n", "components", "harmonics", "tag", "source")
    table = plain_table(headings, ("id", "Conway", "tag", "source"), "Ideal knots and links")
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
    table = plain_table(("id", "blocks", "harmonics", "header"), ("id", "header"), "Fourier series")
    for series in fourier:
        table.add_row(series["id"], str(series["blocks"]), str(series["harmonics"]), series["header"])
    print_table(table)
