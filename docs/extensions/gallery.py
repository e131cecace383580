"""The catalogue as a gallery: a picture a knot or link, searchable, and the plot of ropelengths against the published.

`{gallery}`, `{ropelengths}` and `{records}` are directives. The pictures are drawn at each build from what the module
holds, and the page loads each when it comes into view.
"""

from __future__ import annotations

import html
from collections.abc import Iterable, Sequence
from pathlib import Path

import numpy as np
from docutils import nodes
from sphinx.application import Sphinx
from sphinx.util.docutils import SphinxDirective
from vkmcore import find_ideal_block_by_id, parse_ideal_halvard_from_string
from vkmcore.ideal.campaign_store import Store
from vkmcore.ideal.campaign_summary import EDGES, Summary, below_published, summaries
from vkmcore.ideal.stored_form import form_of_block
from vkmcore.reference.listing import Listed, listed
from vkmcore.reference.tables import knots, links

SIZE = 120  # pixels
PIECE = 5  # segments a stroke
COLOURS = ("#2a6f97", "#c1572b", "#3d7d3a", "#7a4d9c", "#8a6d1d")

SEARCH = """
<input type="search" placeholder="name, alias, Conway notation" aria-label="Search the catalogue" class="vkm-search">
<script>
document.querySelector(".vkm-search").addEventListener("input", event => {
  const wanted = event.target.value.toLowerCase();
  for (const figure of document.querySelectorAll(".vkm-knot"))
    figure.hidden = !figure.dataset.words.includes(wanted);
});
</script>
"""


def shapes() -> list[Listed]:
    """The ideal shapes, each once."""
    seen: dict[str, Listed] = {}
    for entry in listed():
        if entry.form == "ideal" and entry.source.endswith(("/ideal.txt", "/idealLinks.txt")) and entry.crossings:
            seen.setdefault(entry.key, entry)
    return list(seen.values())


def drawing(key: str) -> str:
    """A shape seen along z as SVG: strokes from the lowest to the highest, each with a white edge."""
    (block,) = parse_ideal_halvard_from_string(find_ideal_block_by_id(key))
    form = form_of_block(block)
    lengths = form.lengths()
    curves = form.evenly_spaced([max(40, int(220 * length / sum(lengths))) for length in lengths])
    every = np.concatenate(curves)[:, :2]
    low, high = every.min(axis=0), every.max(axis=0)
    margin = 8.0
    scale = (SIZE - 2 * margin) / (high - low).max()
    middle = (low + high) / 2
    strokes = []
    for number, curve in enumerate(curves):
        places = (curve[:, :2] - middle) * [scale, -scale] + SIZE / 2
        for begin in range(0, len(curve), PIECE):
            piece = [k % len(curve) for k in range(begin, begin + PIECE + 1)]
            line = " ".join(f"{x:.1f},{y:.1f}" for x, y in places[piece])
            strokes.append((curve[piece, 2].mean(), line, COLOURS[number % len(COLOURS)]))
    body = "".join(
        f'<polyline points="{line}" class="e"/><polyline points="{line}" stroke="{colour}"/>'
        for _, line, colour in sorted(strokes)
    )
    style = "polyline{fill:none;stroke-width:4.5}.e{stroke:#fff;stroke-width:8}"
    return (
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {SIZE} {SIZE}"><style>{style}</style>'
        f'<rect width="100%" height="100%" fill="#fff"/>{body}</svg>'
    )


def figure(entry: Listed, folder: str) -> str:
    words = html.escape(" ".join([entry.key, entry.name, entry.conway, *entry.aliases]).lower(), quote=True)
    ropelength = "" if entry.ropelength is None else f"{entry.ropelength:.3f}"
    difference = "" if entry.difference is None else f" ({100 * entry.difference:+.2f} %)"
    return (
        f'<figure class="vkm-knot" data-words="{words}"><img loading="lazy" width="{SIZE}" height="{SIZE}" '
        f'src="{folder}/{html.escape(file_name(entry.key))}" alt="{html.escape(entry.name)}">'
        f"<figcaption><b>{html.escape(entry.name)}</b><br>{ropelength}{difference}</figcaption></figure>"
    )


def file_name(key: str) -> str:
    return key.replace(":", "-") + ".svg"


class Gallery(SphinxDirective):
    """All ideal shapes."""

    def run(self) -> list[nodes.Node]:
        entries = shapes()
        folder = Path(self.env.app.outdir) / "_static" / "knots"
        folder.mkdir(parents=True, exist_ok=True)
        for entry in entries:
            (folder / file_name(entry.key)).write_text(drawing(entry.key), encoding="utf-8")
        figures = "".join(figure(entry, "_static/knots") for entry in entries)
        return [nodes.raw("", f'{SEARCH}<div class="vkm-gallery">{figures}</div>', format="html")]


class Ropelengths(SphinxDirective):
    """The table of ropelengths against the best published values with each shape's certificate, and its plot."""

    def run(self) -> list[nodes.Node]:
        entries = [entry for entry in shapes() if entry.ropelength is not None]
        picture = Path(self.env.app.outdir) / "_static" / "ropelengths.svg"
        picture.parent.mkdir(parents=True, exist_ok=True)
        plot([entry for entry in entries if entry.difference is not None], picture)
        certificates = {row.name: row.certificate for row in campaign()}
        rows = [
            (
                e.name,
                number(e.ropelength),
                number(e.published),
                "" if e.difference is None else f"{100 * e.difference:+.3f}",
                e.harmonics,
                certificates.get(e.name, ""),
            )
            for e in entries
        ]
        head = ("name", "ropelength", "published", "difference / %", "harmonics", "certificate of the polygon")
        text = (
            '<img src="_static/ropelengths.svg" alt="Excess of the stored curves over the published ropelengths">'
            f"<details><summary>All values</summary>{table(head, rows)}</details>"
        )
        return [nodes.raw("", text, format="html")]


class Records(SphinxDirective):
    """The polygons that are shorter than the published value, by edge and extrapolated to no edge."""

    def run(self) -> list[nodes.Node]:
        rows = [
            (
                row.name,
                number(row.published),
                *map(number, row.polygons),
                number(row.limit),
                f"{100 * (row.polygon / row.published - 1.0):+.3f}",
            )
            for row in below_published(campaign())
            if row.published and row.polygon
        ]
        edges = (f"edge {edge:.2f}" for edge in EDGES)
        head = ("knot", "published", *edges, "extrapolated", "least polygon / %")
        return [nodes.raw("", table(head, rows), format="html")]


def campaign() -> list[Summary]:
    """What the project's own folder of polygons holds."""
    folder = Path(__file__).parents[2] / "data" / "polygons"
    return summaries(Store(folder), [*knots(), *links()])


def number(value: float | None) -> str:
    return "" if value is None else f"{value:.4f}"


def table(head: Sequence[str], rows: Iterable[Sequence[object]]) -> str:
    """An HTML table of texts."""

    def line(cells: Sequence[object], tag: str) -> str:
        return "<tr>" + "".join(f"<{tag}>{html.escape(str(cell))}</{tag}>" for cell in cells) + "</tr>"

    return f"<table>{line(head, 'th')}{''.join(line(row, 'td') for row in rows)}</table>"


def plot(entries: list[Listed], path: Path) -> None:
    import matplotlib

    matplotlib.use("agg")
    from matplotlib import pyplot

    drawing, axes = pyplot.subplots(figsize=(7.0, 3.2), layout="constrained")
    axes.axhline(0.0, color="0.6", linewidth=0.8)
    axes.plot(
        [e.ropelength or np.nan for e in entries], [100 * (e.difference or 0.0) for e in entries], ".", markersize=4
    )
    axes.set_xlabel("ropelength (length over tube radius)")
    axes.set_ylabel("above the published value / %")
    drawing.savefig(path)
    pyplot.close(drawing)


def setup(app: Sphinx) -> dict[str, bool]:
    app.add_directive("gallery", Gallery)
    app.add_directive("ropelengths", Ropelengths)
    app.add_directive("records", Records)
    return {"parallel_read_safe": True}
