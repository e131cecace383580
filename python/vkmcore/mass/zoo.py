"""Masses of the Master Dictionary of knots and links, as text."""

from __future__ import annotations

import csv
import io
from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from vkmcore import ZooResult

COLUMNS = ("identifier", "bridge_b", "genus_g", "mass_mev")


def csv_text(results: list[ZooResult]) -> str:
    """A heading and a line an entry, numbers in full precision, lines ending with a line feed."""
    text = io.StringIO()
    writer = csv.writer(text, lineterminator="\n")
    writer.writerow(COLUMNS)
    writer.writerows([getattr(result, column) for column in COLUMNS] for result in results)
    return text.getvalue()
