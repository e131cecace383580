"""The command `vkmcore view`."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import click

from vkmcore.commands.arguments import Failure, check_name, complete_name, file_option, say_written


@click.command()
@click.argument("source", metavar="KEY|FILE", callback=check_name, shell_complete=complete_name)
@file_option("--html", help="A page that turns in any browser, without network.")
@file_option("--out", help="A picture (PNG, PDF, SVG).")
@click.option(
    "--colour",
    type=click.Choice(["curvature", "velocity", "pressure", "component"]),
    help="What colours show.  [default: curvature of a knot, component of a link]",
)
@click.option("--struts", is_flag=True, help="Contacts of a knot as lines inside of the tube.")
@click.option("--kinks", is_flag=True, help="Mark where a knot is bent to the tube's radius.")
@click.option("--samples", type=click.IntRange(16, 4096), default=360, show_default=True, help="Rings of a tube.")
@click.option("--unit", default="", help="Of length, at the axes.")
def view(source: str, html: Path | None, out: Path | None, **options: Any) -> None:
    """Show a knot or link as a tube of its true thickness.

    KEY is a key of the catalogue or a name of the tables, as 3_1, trefoil or L6a4; FILE holds curves in any format of
    docs/command_line.md. Without --html and --out a page goes to a temporary file and opens in the browser.

    \b
    Examples:
      vkmcore view trefoil --html trefoil.html
      vkmcore view 3:1:1 --colour pressure --struts --out contacts.png
      vkmcore view L6a4 --out borromean.png
    """
    from vkmcore.knots import Link

    shown = html
    if html is None and out is None:
        import tempfile

        shown = Path(tempfile.mkdtemp(prefix="vkmcore-")) / "view.html"
    shape = Link(source)
    target = shape if len(shape) > 1 else shape[0]
    options["title"] = shape.name or source
    if out is not None:
        from vkmcore.pictures.figure import check_plot_target, write_figure

        kind = check_plot_target(out)
        write_figure(target.plot(**options), out, kind)
    if shown is not None:
        figure = target.plot("plotly", **options)
        page = figure.to_html(include_plotlyjs=True)
        page = page.replace("<body>", '<body style="margin: 0; overflow: hidden">', 1)
        shown.write_text(page, encoding="utf-8")
    say_written(*(path for path in (out, shown) if path is not None))
    if html is None and out is None and shown is not None:
        import webbrowser

        if not webbrowser.open(shown.absolute().as_uri()):
            raise Failure("vkmcore: no browser to open it with")
