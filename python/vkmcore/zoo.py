"""Masses of the Master Dictionary of knots and links, and the command `vkmcore zoo`."""

from __future__ import annotations

import csv
import io
from typing import TYPE_CHECKING

import click

if TYPE_CHECKING:
    from vkmcore import ZooResult

COLUMNS = ("identifier", "bridge_b", "genus_g", "mass_mev")


def csv_text(results: list[ZooResult]) -> str:
    """A heading and a line an entry, numbers in full precision, lines ending with a line feed."""
    text = io.StringIO()
    writer = csv.writer(text, lineterminator="\n")
    writer.writerow(COLUMNS)
    writer.writerows([getattr(result, column) for column in COLUMNS] for result in results)
    return text.getvalue()


@click.command()
@click.option("--csv", "as_csv", is_flag=True, help="Comma-separated values, in full precision.")
def zoo(as_csv: bool) -> None:
    """Masses of the Master Dictionary, in the order of the names' bytes."""
    from vkmcore import ZooEvaluator
    from vkmcore.cli import digits, plain_table, print_table

    results = ZooEvaluator.evaluate_all_golden_nls()
    if as_csv:
        click.echo(csv_text(results), nl=False)
        return
    table = plain_table()
    for heading in ("identifier", "bridge", "genus", "mass / MeV"):
        table.add_column(heading, justify="left" if heading == "identifier" else "right")
    for result in results:
        table.add_row(result.identifier, f"{result.bridge_b:g}", str(result.genus_g), digits(result.mass_mev))
    print_table(table)
