"""The page of records: a searchable table of data/records.csv, with a file of each polygon to download.

`{records}` is the directive. The files are written at each build from data/polygons, in VECT, every coordinate with the
digits that give the same double again; a table that is not of these polygons is a warning.
"""

from __future__ import annotations

import csv
import html
from collections.abc import Iterable
from pathlib import Path

from docutils import nodes
from sphinx.application import Sphinx
from sphinx.util import logging
from sphinx.util.docutils import SphinxDirective
from vkmcore.curves.vect import write_vect
from vkmcore.ideal.campaign_store import Shape, Store
from vkmcore.ideal.records import rounded_down, rounded_up

DATA = Path(__file__).parents[2] / "data"
HEAD = (
    "knot",
    "published",
    "proved: at most",
    "below published / %",
    "file",
    "edge 0.15",
    "edge 0.10",
    "edge 0.07",
    "extrapolated",
    "length at most",
    "thickness at least",
    "vertices",
    "type",
)

SEARCH = """
<input type="search" placeholder="name, as 10_83 or 9_" aria-label="Search the records" class="vkm-search">
<script>
document.querySelector(".vkm-search").addEventListener("input", event => {
  for (const row of document.querySelectorAll(".vkm-records tbody tr"))
    row.hidden = !row.dataset.words.includes(event.target.value.toLowerCase());
});
</script>
"""

Row = dict[str, str]


def rows() -> list[Row]:
    """The records, lines of data/records.csv."""
    with (DATA / "records.csv").open(newline="", encoding="utf-8") as text:
        return list(csv.DictReader(text))


def matches(row: Row, shape: Shape) -> bool:
    """Whether a line is of this polygon."""
    stated = row.get(f"edge_{shape.edge:.2f}"), row["vertices"]
    return stated == (repr(shape.ropelength), str(sum(map(len, shape.components))))


def cells(row: Row, file: str) -> Iterable[str]:
    published, bound = float(row["published"]), float(row["ropelength_at_most"])
    yield f"<b>{html.escape(row['name'])}</b>"
    yield row["published"]
    yield rounded_up(bound)
    proved = row["proved_below_published"] == "yes"
    yield rounded_down(100.0 * (1.0 - bound / published), 3) if proved else "not proved"
    yield f'<a href="{file}" download>VECT</a>'
    for column in ("edge_0.15", "edge_0.10", "edge_0.07", "extrapolated"):
        yield f"{float(row[column]):.4f}" if row[column] else ""
    yield rounded_up(float(row["length_at_most"]), 6)
    yield rounded_down(float(row["thickness_at_least"]), 6)
    yield row["vertices"]
    yield html.escape(row["certificate"])


class Records(SphinxDirective):
    """The table, and its files."""

    def run(self) -> list[nodes.Node]:
        store = Store(DATA / "polygons")
        folder = Path(self.env.app.outdir) / "_static" / "records"
        folder.mkdir(parents=True, exist_ok=True)
        lines = []
        for row in rows():
            name = row["name"]
            shape = store.load(name).best
            if shape is None or not matches(row, shape):
                logging.getLogger(__name__).warning(
                    "data/records.csv has another polygon of %s than data/polygons: write it anew", name
                )
                continue
            comment = f"{name}: ropelength at most {row['ropelength_at_most']} with rounded corners; unit: tube radius"
            write_vect(folder / f"{name}.vect", shape.components, comment)
            line = "".join(f"<td>{cell}</td>" for cell in cells(row, f"_static/records/{name}.vect"))
            lines.append(f'<tr data-words="{html.escape(name.lower(), quote=True)}">{line}</tr>')
        head = "".join(f"<th>{text}</th>" for text in HEAD)
        table = f"<table><thead><tr>{head}</tr></thead><tbody>{''.join(lines)}</tbody></table>"
        return [nodes.raw("", f'{SEARCH}<div class="vkm-records">{table}</div>', format="html")]


def setup(app: Sphinx) -> dict[str, bool]:
    app.add_directive("records", Records)
    return {"parallel_read_safe": True}
