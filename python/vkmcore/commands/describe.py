"""The command `vkmcore describe`."""

from __future__ import annotations

import click

from vkmcore.commands.arguments import check_name, complete_key, record_options, skip_option
from vkmcore.commands.output import plain_table, print_data, print_table, shown
from vkmcore.progress import progress_bar, watched

SECTIONS = {"curve": "Curve", "tube": "Tube", "contacts": "Contacts and their stress"}
FIT_STEPS = 20  # about
VERTICES = click.IntRange(64, 2**31 - 1)


@click.command()
@click.argument("name", metavar="FILE|KEY", callback=check_name, shell_complete=complete_key)
@click.option("--samples", type=VERTICES, default=512, show_default=True, help="Vertices of a series.")
@skip_option("those within pi radii of curvature")
@click.option(
    "--contact-tol", type=click.FloatRange(0.0), default=1e-3, show_default=True, help="Tolerance of active contacts."
)
@click.option(
    "--contact-vertices",
    type=VERTICES,
    default=512,
    show_default=True,
    help="Most vertices for the contacts' stress; a finer polygon is resampled. 2048 take minutes.",
)
@record_options("A JSON object", "with all measures")
def describe(
    name: str, samples: int, skip: int | None, contact_tol: float, contact_vertices: int, as_json: bool, as_csv: bool
) -> None:
    """Describe a closed curve: descriptors, thickness as a tube, contact stress.

    FILE holds a Fourier series or vertices in any format of docs/command_line.md, - is standard input; KEY is of the
    catalogue, as 3_1 or 3:1:1.
    """
    from vkmcore.curves.reader import read_curve
    from vkmcore.tube.description import describe as describe_curve

    settings = {"samples": samples, "skip": skip, "contact_tol": contact_tol, "contact_vertices": contact_vertices}
    source = read_curve(name)
    with progress_bar(FIT_STEPS, watched()) as tell:
        sections = describe_curve(
            source, samples, skip, contact_tol, contact_vertices, lambda step: tell(step, "fit of the contacts")
        )
    if sections["contacts"]["vertices"] != sections["curve"]["vertices"]:
        click.echo(f"contacts: fitted on a polygon of {contact_vertices} vertices; see --contact-vertices", err=True)
    record = {"name": name, **sections, "settings": settings}
    if print_data(as_json, as_csv, record):
        return
    table = plain_table((name, ""), (name,))
    for place, (section, measures) in enumerate(sections.items()):
        if place:
            table.add_section()
        table.add_row(SECTIONS[section], "", style="bold")
        for title, value in measures.items():
            table.add_row(f"  {title.replace('_', ' ')}", shown(value))
    print_table(table)
