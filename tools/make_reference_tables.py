"""Writes the package's tables of knots to ten crossings and links to nine from KnotInfo and LinkInfo.

    python tools/make_reference_tables.py

Needs the package `database_knotinfo` (extra `catalogue`). Writes python/vkmcore/reference/knots.csv and links.csv.
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


if __name__ == "__main__":
    write(FOLDER / "knots.csv", knot_rows(range(3, 11)))
    write(FOLDER / "links.csv", link_rows(range(2, 10)))
