"""Writes the package's tables of knots to ten crossings and links to nine from KnotInfo and LinkInfo.

    python tools/make_reference_tables.py

Needs the package `database_knotinfo` (extra `catalogue`). Writes knots.csv, links.csv and others.csv in
python/vkmcore/reference.
"""

import csv
from pathlib import Path

from vkmcore.reference.knotinfo import COLUMNS, knot_rows, link_rows

FOLDER = Path(__file__).resolve().parents[1] / "python" / "vkmcore" / "reference"


def write(path: Path, rows: list[dict[str, str]]) -> None:
    with path.open("w", newline="") as file:
        writer = csv.DictWriter(file, COLUMNS, lineterminator="\n")
        writer.writeheader()
        writer.writerows(rows)
    print(f"{path.name}: {len(rows)} rows, {path.stat().st_size} bytes")


# The alternating knot of 15 crossings that Hoste, Thistlethwaite and Weeks number 331 (The first 1,701,936 knots, Math.
# Intelligencer 20:4 (1998) 33): Dowker-Thistlethwaite code 4 8 10 16 2 18 20 24 6 12 26 28 14 30 22 in the table of
# knots of SnapPy (`snappy_15_knots`). The code has no chirality; of the two mirror images this is the diagram of
# writhe -1.
K15A331 = (
    "3 1 4 30 1 8 2 9 7 2 8 3 9 5 10 4 5 16 6 17 15 6 16 7 17 11 18 10 11 19 12 18 19 13 20 12 13 24 14 25 23 14 24 15 "
    "25 21 26 20 21 28 22 29 27 22 28 23 29 27 30 26"
)


def row_of_diagram(name: str, aliases: str, pd: str) -> dict[str, str]:
    """The row of a knot of which no table gives more than a diagram; its Jones polynomial is that of the diagram."""
    from vkmcore.topology.bracket import jones
    from vkmcore.topology.diagram import diagram_of_code

    arcs = list(map(int, pd.split()))
    diagram = diagram_of_code([arcs[k : k + 4] for k in range(0, len(arcs), 4)])
    polynomial = jones(diagram)
    row = dict.fromkeys(COLUMNS, "") | {"name": name, "aliases": aliases, "components": "1", "pd": pd}
    row |= {"crossings": str(len(diagram)), "dt": " ".join(map(str, diagram.dt_code()[0])), "geometry": "hyperbolic"}
    powers = {int(2 * power): coefficient for power, coefficient in polynomial.terms().items()}
    numbers = [powers.get(power, 0) for power in range(min(powers), max(powers) + 1)]
    return row | {"jones": " ".join(map(str, [min(powers), *numbers]))}


if __name__ == "__main__":
    write(FOLDER / "knots.csv", knot_rows(range(3, 11)))
    write(FOLDER / "links.csv", link_rows(range(2, 10)))
    large = [row for row in knot_rows([12]) if row["name"] == "12a_1202"]
    write(FOLDER / "others.csv", [*large, row_of_diagram("15331", "K15a331;15a_331;15a331", K15A331)])
