"""The catalogue as a gallery: a picture a knot or link, searchable, and the plot of ropelengths against the published.

`{gallery}`, `{ropelengths}` and `{crossings}` are directives; `{gallery} large` shows the second shelf. The
pictures are drawn at each build from what the module holds, and the page loads each when it comes into view.
"""

from __future__ import annotations

import html
from collections.abc import Iterable, Sequence
from pathlib import Path

import numpy as np
from docutils import nodes
from sphinx.application import Sphinx
from sphinx.util.docutils import SphinxDirective
from vkmcore import calculate_length
from vkmcore.curves import read_curves
from vkmcore.curves.resampling import evenly_spaced
from vkmcore.ideal.campaign_store import Store
from vkmcore.ideal.campaign_summary import Summary, summaries
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


def shapes(large: bool = False) -> list[Listed]:
    """The ideal shapes, each once: knots to ten crossings and links to nine, or all that are larger."""
    texts = ("/ideal.txt", "/idealLinks.txt")
    seen: dict[str, Listed] = {}
    for entry in listed():
        if entry.source == "knot table" or not entry.form.startswith("ideal") or not entry.crossings:
            continue
        if entry.crossings > 9 + (entry.components == 1) if large else entry.source.endswith(texts):
            seen.setdefault(entry.key, entry)
    return list(seen.values())


def drawing(key: str) -> str:
    """A shape seen along z as SVG: strokes from the lowest to the highest, each with a white edge."""
    strands = [curve.sampled(400) for curve in read_curves(key)]
    lengths = [calculate_length(points) for points in strands]
    counts = [max(40, int(220 * length / sum(lengths))) for length in lengths]
    curves = [evenly_spaced(points, count) for points, count in zip(strands, counts)]
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
    """All ideal shapes of a shelf."""

    optional_arguments = 1

    def run(self) -> list[nodes.Node]:
        entries = shapes(large=self.arguments == ["large"])
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


class Crossings(SphinxDirective):
    """The plot of ropelengths against crossing numbers, ours and published."""

    def run(self) -> list[nodes.Node]:
        picture = Path(self.env.app.outdir) / "_static" / "crossings.svg"
        picture.parent.mkdir(parents=True, exist_ok=True)
        plot_crossings([*shapes(), *shapes(large=True)], picture)
        text = '<img src="_static/crossings.svg" alt="Ropelengths by crossing number, of the catalogue and published">'
        return [nodes.raw("", text, format="html")]


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


def plot_crossings(entries: list[Listed], path: Path) -> None:
    """Knots, and beside them the published values; links of one colour."""
    import matplotlib

    matplotlib.use("agg")
    from matplotlib import pyplot

    drawing, axes = pyplot.subplots(figsize=(7.0, 4.0), layout="constrained")
    groups: list[tuple[str, float, list[tuple[int, float | None]]]] = [
        ("knots, published", -0.14, [(e.crossings, e.published) for e in entries if e.components == 1]),
        ("knots, here", 0.0, [(e.crossings, e.ropelength) for e in entries if e.components == 1]),
        ("links, here", 0.14, [(e.crossings, e.ropelength) for e in entries if e.components > 1]),
    ]
    for label, beside, values in groups:
        known = [(crossings + beside, value) for crossings, value in values if value is not None]
        axes.plot(*zip(*known), "_", markersize=7, alpha=0.5, label=f"{label} ({len(known)})")
    axes.set_xlabel("crossings")
    axes.set_ylabel("ropelength (length over tube radius)")
    for handle in axes.legend().get_lines():
        handle.set(alpha=1.0, markersize=14.0, markeredgewidth=3.0)
    drawing.savefig(path)
    pyplot.close(drawing)


def setup(app: Sphinx) -> dict[str, bool]:
    app.add_directive("gallery", Gallery)
    app.add_directive("ropelengths", Ropelengths)
    app.add_directive("crossings", Crossings)
    return {"parallel_read_safe": True}
