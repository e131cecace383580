"""`{mass-study}`: ropelengths against resolution of the knots that are its content, studied at each build.

A table and, of the first knot, the picture: the digits are those of the catalogue that the site is built with.
"""

from __future__ import annotations

import html
from pathlib import Path

from docutils import nodes
from sphinx.application import Sphinx
from sphinx.util.docutils import SphinxDirective
from vkmcore import study_mass
from vkmcore.mass.convergence import MassStudy
from vkmcore.pictures.convergence import plot_study

RESOLUTIONS = (100, 200, 400, 800)
STEPS = (1e-3, 1e-2)


def rows(study: MassStudy) -> str:
    """A line of the table a way."""
    lines = []
    for way in study.ways:
        order = "" if way.limit is None else f"{way.order:.2f}"
        fit = (f"{way.change:.1e}", order, f"{way.growth:.2f}", way.verdict)
        cells = (study.id, way.name, *(f"{value:.4f}" for value in way.ropelengths), *fit)
        lines.append("<tr>" + "".join(f"<td>{html.escape(cell)}</td>" for cell in cells) + "</tr>")
    return "".join(lines)


class Study(SphinxDirective):
    """The table and the picture."""

    has_content = True

    def run(self) -> list[nodes.Node]:
        studies = [study_mass(knot, RESOLUTIONS, STEPS) for knot in " ".join(self.content).split()]
        picture = Path(self.env.app.outdir) / "_static" / "mass_study.svg"
        picture.parent.mkdir(parents=True, exist_ok=True)
        plot_study(picture, studies[0])
        headings = ("knot", "way", *map(str, RESOLUTIONS), "last change", "order", "growth", "verdict")
        head = "<tr>" + "".join(f"<th>{heading}</th>" for heading in headings) + "</tr>"
        text = (
            f"<table>{head}{''.join(map(rows, studies))}</table>"
            f'<img src="_static/mass_study.svg" alt="Ropelength of {html.escape(studies[0].id)} against resolution">'
        )
        return [nodes.raw("", text, format="html")]


def setup(app: Sphinx) -> dict[str, bool]:
    app.add_directive("mass-study", Study)
    return {"parallel_read_safe": True}
