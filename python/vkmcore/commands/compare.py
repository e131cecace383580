"""The command `vkmcore compare`."""

from __future__ import annotations

from typing import Any

import click

from vkmcore.commands.arguments import COUNT, check_name, complete_key, record_options, skip_option
from vkmcore.commands.output import digits, plain_table, print_data, print_table


@click.command()
@click.argument("a", metavar="A", callback=check_name, shell_complete=complete_key)
@click.argument("b", metavar="B", callback=check_name, shell_complete=complete_key)
@click.option("--samples", type=COUNT, default=2048, show_default=True, help="Samples of a series.")
@skip_option("those within pi radii of curvature")
@record_options("A JSON object", "with all measures")
def compare(a: str, b: str, samples: int, skip: int | None, as_json: bool, as_csv: bool) -> None:
    """Compare two Fourier curves, each a .fseries file or a key of the catalogue."""
    from vkmcore.curves.comparison import compare as compare_curves

    found, skipped = compare_curves(a, b, samples, skip)
    measures: dict[str, Any] = dict(found)
    record = {"a": a, "b": b, **measures, "settings": {"samples": samples, "skip": skipped}}
    if print_data(as_json, as_csv, record):
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
    table.add_row("skipped neighbours", "", "", str(skipped))
    print_table(table)
