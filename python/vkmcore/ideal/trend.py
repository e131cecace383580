"""The trend of ropelength with the volume of the complement, among knots or links of one list, as 12a.

Published ropelengths are loose beyond ten crossings: a shape below the published value may still be far from tight. Of
952 alternating knots of twelve crossings after one search each, ropelength rises by 0.30 tube radii per unit of volume,
and most lie within 1 % of that line; what lies further above it mostly has a shorter shape.
"""

from __future__ import annotations

from collections.abc import Iterable

import numpy as np

from vkmcore.reference.tables import TableEntry

LEAST_NEIGHBOURS = 20  # with fewer there is no trend
ROUNDS = 10
OUTLYING = 2.0  # spreads above the line from which on a shape does not count for it
FREE = 1.0  # spreads above the line that are no reason to search again


def expected(found: Iterable[tuple[TableEntry, float]]) -> dict[str, float]:
    """The ropelength, by name, above which a shape lies above its neighbours: that of a line through the ropelengths of
    its list over volume, and their spread. Shapes far above count little for the line, so that bad ones do not hide
    each other. No value for what is not hyperbolic, nor in lists of fewer than LEAST_NEIGHBOURS.

    Args:
        found: entries of the tables and the ropelengths reached, length over radius.
    """
    lists: dict[tuple[str, int], list[tuple[str, float, float]]] = {}
    for entry, ropelength in found:
        key = entry.name.rstrip("0123456789_"), entry.components
        if entry.volume and key[0]:  # names to ten crossings, as 10_7, have no list, and tight published values
            lists.setdefault(key, []).append((entry.name, entry.volume, ropelength))
    limits: dict[str, float] = {}
    for rows in lists.values():
        if len(rows) < LEAST_NEIGHBOURS:
            continue
        volume, ropelength = np.array([row[1:] for row in rows]).T
        columns = np.stack([np.ones_like(volume), volume], axis=1)
        counts = np.ones(len(rows), bool)
        for _ in range(ROUNDS):
            line = columns @ np.linalg.lstsq(columns[counts], ropelength[counts], rcond=None)[0]
            above = ropelength - line
            spread = 1.4826 * float(np.median(np.abs(above)))  # the standard deviation, were they normal
            counts = above <= OUTLYING * spread
        limits |= dict(zip((row[0] for row in rows), (line + FREE * spread).tolist(), strict=True))
    return limits
