"""The command `vkmcore zoo`."""

from __future__ import annotations

import click

from vkmcore.commands.output import digits, plain_table, print_table


@click.command()
@click.option("--csv", "as_csv", is_flag=True, help="Comma-separated values, in full precision.")
def zoo(as_csv: bool) -> None:
    """Masses of the Master Dictionary, in the order of the names' bytes."""
    from vkmcore import ZooEvaluator
    from vkmcore.mass.zoo import csv_text

    results = ZooEvaluator.evaluate_all_golden_nls()
    if as_csv:
        click.echo(csv_text(results), nl=False)
        return
    table = plain_table(("identifier", "bridge", "genus", "mass / MeV"), ("identifier",))
    for result in results:
        table.add_row(result.identifier, f"{result.bridge_b:g}", str(result.genus_g), digits(result.mass_mev))
    print_table(table)
