"""The command `vkmcore zoo`."""

from __future__ import annotations

import click

from vkmcore.commands.arguments import record_options
from vkmcore.commands.output import digits, plain_table, print_data, print_table


@click.command()
@record_options("A JSON list with a record an entry", "an entry")
def zoo(as_json: bool, as_csv: bool) -> None:
    """Masses of the Master Dictionary, in the order of the names' bytes."""
    from vkmcore import ZooEvaluator
    from vkmcore.mass.zoo import rows

    results = ZooEvaluator.evaluate_all_golden_nls()
    if print_data(as_json, as_csv, rows(results)):
        return
    table = plain_table(("identifier", "bridge", "genus", "mass / MeV"), ("identifier",))
    for result in results:
        table.add_row(result.identifier, f"{result.bridge_b:g}", str(result.genus_g), digits(result.mass_mev))
    print_table(table)
