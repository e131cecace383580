"""Masses of the Master Dictionary of knots and links, as text."""

from __future__ import annotations

from collections.abc import Iterable
from typing import TYPE_CHECKING

from vkmcore.rows import Row

if TYPE_CHECKING:
    from vkmcore import ZooResult

COLUMNS = ("identifier", "bridge_b", "genus_g", "mass_mev")


def rows(results: Iterable[ZooResult]) -> list[Row]:
    """A record an entry."""
    return [{column: getattr(result, column) for column in COLUMNS} for result in results]
