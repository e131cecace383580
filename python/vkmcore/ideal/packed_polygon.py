"""Polygons of nearly equal edges in few bytes: whole numbers of a unit, the first point and edge and then second
differences, which are small.

Rounding to 1e-7 tube radii moves the ropelength by less than 4e-6 of it at edges of 0.07 radii, to 1e-6 diameters by
less than 5e-7 at edges of 0.15 radii (the shapes of the catalogue, measured; kinks are what feels it).
"""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy as np

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

DECIMALS = 7  # of what a campaign keeps, in tube radii
MOST_UNITS = 5e8  # four times as much, the greatest second difference, fits in four bytes
TEXT_DECIMALS = 6  # of what the catalogue's texts hold, in tube diameters


def pack(points: Points, decimals: int = DECIMALS) -> NDArray[np.int32]:
    """Rows (N, 3): the first point, the first edge, and the changes from edge to edge, in units of so
    many decimals.

    Raises:
        ValueError: a coordinate is not finite or beyond 5e8 units.
    """
    units = 10.0**decimals
    if not np.all(np.abs(points) * units <= MOST_UNITS):
        raise ValueError(f"the points of a packed polygon lie within {MOST_UNITS / units:g} of the origin")
    edges = np.diff(np.rint(points * units).astype(np.int64), axis=0, prepend=np.zeros((1, 3), np.int64))
    edges[2:] = np.diff(edges[1:], axis=0)
    return edges.astype(np.int32)


def unpack(packed: NDArray[Any], decimals: int = DECIMALS) -> Points:
    """Points (N, 3), the doubles nearest to numbers of so many decimals. What is not packed, floating-point numbers, is
    taken as it is."""
    if packed.dtype.kind == "f":
        return packed
    edges = packed.astype(np.int64)
    edges[1:] = np.cumsum(edges[1:], axis=0)
    points: Points = np.cumsum(edges, axis=0).astype(np.float64) / 10.0**decimals
    return points


def to_bytes(points: Points) -> bytes:
    """A file that the build unpacks to a text: six numbers of four bytes, then second differences of two, little
    endian.

    Raises:
        ValueError: a point beyond 10, or edges so long or so sharply turned that a second difference does not fit.
    """
    packed = pack(points, TEXT_DECIMALS)
    if not (np.all(np.abs(points) < 10.0) and np.all(np.abs(packed[2:]) < 2**15)):
        raise ValueError("the polygon is too large or too coarse for its file")
    return packed[:2].astype("<i4").tobytes() + packed[2:].astype("<i2").tobytes()


def from_bytes(data: bytes) -> Points:
    """The points (N, 3) of such a file."""
    head, rest = np.frombuffer(data[:24], "<i4"), np.frombuffer(data[24:], "<i2")
    return unpack(np.concatenate([head, rest]).reshape(-1, 3).astype(np.int32), TEXT_DECIMALS)
