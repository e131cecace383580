"""The command `vkmcore particle`."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import click

from vkmcore.commands.arguments import check_name, complete_name, record_options
from vkmcore.commands.output import plain_table, print_csv, print_json, print_table

if TYPE_CHECKING:
    from vkmcore.mass.routes import Routes

WIDTH = 100  # of the notes


def given_inputs(context: click.Context, parameter: click.Parameter, texts: tuple[str, ...]) -> dict[str, float]:
    """NAME=VALUE pairs; the library says which names there are."""
    given = {}
    for text in texts:
        name, sign, value = text.partition("=")
        try:
            given[name.strip()] = float(value)
        except ValueError:
            sign = ""
        if not sign:
            raise click.BadParameter(f"{text!r}: expected NAME=VALUE, as alpha_C=1")
    return given


@click.command()
@click.argument("knot", metavar="KNOT", callback=check_name, shell_complete=complete_name)
@click.option(
    "--give",
    "given",
    multiple=True,
    metavar="NAME=VALUE",
    callback=given_inputs,
    help="An input that no knot has, as a weight of a Xi model: alpha_C=1. May be repeated.",
)
@record_options("A JSON object", "a route")
def particle(knot: str, given: dict[str, Any], as_json: bool, as_csv: bool) -> None:
    """All routes of the library from KNOT (3_1, trefoil, 3:1:1) to a mass, what each takes and what each assumes.

    Nothing is fitted: a route that needs a number which the knot does not give has no mass until --give gives it.
    """
    from vkmcore.mass.particles import PARTICLES
    from vkmcore.mass.routes import mass_routes

    found = mass_routes(knot, **given)
    if as_csv:
        print_csv({"id": found.id, "name": found.name, **route.record()} for route in found.routes)
        return
    if as_json:
        print_json({**found.record(), "particles": [particle._asdict() for particle in PARTICLES]})
        return
    print_routes(found)
    table = plain_table(
        ("particle", "symbol", "category", "mass", "charge / e", "spin / hbar"),
        ("particle", "symbol", "category"),
        title="measured masses, as the library's table has them; no route reads them",
    )
    for row in PARTICLES:
        table.add_row(row.name, row.symbol, row.category, row.mass, row.charge, f"{row.spin:g}")
    print_table(table)


def print_routes(found: Routes) -> None:
    """A row a route, and below what each takes and assumes."""
    import textwrap

    headings = ("", "route", "mass / MeV", "mass / kg", "kind of claim", "needs")
    table = plain_table(headings, ("route", "kind of claim", "needs"), title=f"{found.name} ({found.id})")
    for number, route in enumerate(found.routes, start=1):
        masses = ("-", "-") if route.mass_kg is None else (f"{route.mass_MeV:.6g}", f"{route.mass_kg:.6g}")
        table.add_row(str(number), route.name, *masses, route.claim.name, route.needs)
    print_table(table)
    for number, route in enumerate(found.routes, start=1):
        note = f"{route.formula}. Takes {route.inputs}. Assumes {route.assumes}."
        click.echo(textwrap.fill(f"{number:3}  {note}", WIDTH, subsequent_indent="     "))
    click.echo(
        f"\nInvariants from {found.samples} samples, {found.skipped_neighbours} to either side skipped as neighbours.\n"
        f"Evaluator: {found.assessment.verdict}.\n"
        "No route supports a claim about nature.\n"
    )
