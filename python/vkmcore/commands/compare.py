"""The command `vkmcore compare`."""

from __future__ import annotations

from typing import Any

import click

from vkmcore.commands.arguments import COUNT, check_name, json_option
from vkmcore.commands.output import digits, plain_table, print_json, print_table


@click.command()
@click.argument("a", metavar="A", callback=check_name)
@click.argument("b", metavar="B", callback=check_name)
@click.option("--samples", type=COUNT, default=2048, show_default=True, help="Samples of a series.")
@click.option("--skip", type=COUNT, default=3, show_default=True, help="Neighbours that are no contacts.")
@json_option("A JSON object, in full precision.")
def compare(a: str, b: str, samples: int, skip: int, as_json: bool) -> None:
    """Compare two Fourier curves, each a .fseries file or a key of the catalogue."""
    from vkmcore.curves.comparison import compare as compare_curves

    measures: dict[str, Any] = dict(compare_curves(a, b, samples, skip))
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
