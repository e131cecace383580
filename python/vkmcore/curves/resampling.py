"""Points at equal steps of arc length."""

from __future__ import annotations

from collections.abc import Sequence
from typing import TYPE_CHECKING

import numpy as np

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]


def evenly_spaced(points: Sequence[Sequence[float]] | Points, count: int) -> Points:
    """`count` vertices at equal arc lengths of a closed polygon, from its first one on."""
    closed = np.vstack([points, points[:1]])
    arc = arc_lengths(closed)
    at = np.arange(count) * arc[-1] / count
    return np.column_stack([np.interp(at, arc, closed[:, axis]) for axis in range(3)])


def arc_lengths(points: Points) -> Points:
    """Length of an open polygon (N, 3) from its first vertex to each."""
    return np.concatenate([[0.0], np.cumsum(np.linalg.norm(np.diff(points, axis=0), axis=1))])
