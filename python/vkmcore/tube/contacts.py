"""Where a tube touches itself and how hard it presses there.

A tight knot is in balance: the pull of its length is held by struts, shortest chords between touching strands, and by
kinks, vertices bent to the tube's radius. The struts' multipliers are forces in units of the tension along the curve;
spread over the edges at their feet they are the pressure a unit of length (Cantarella, Fu, Kusner, Sullivan, Wrinkle,
Geometry and Topology 10 (2006)).
"""

from __future__ import annotations

from collections.abc import Callable, Sequence
from dataclasses import dataclass
from itertools import pairwise
from typing import TYPE_CHECKING

import numpy as np

from vkmcore import _engine
from vkmcore.tube.contact_forces import Columns, fitted

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]


@dataclass(frozen=True)
class Contacts:
    """The contacts of closed polygons of N vertices together."""

    struts: Points  # (K, 2, 3), both feet of each
    strut_forces: Points  # (K,) over the tension along the curve
    kinks: Points  # (M, 3), vertices
    kink_forces: Points  # (M,)
    pressures: tuple[Points, ...]  # of each polygon (N,): force a unit of length over the tension, a curvature; spread
    residual: float  # part of the pull of the length that the contacts do not hold; 0 for a tight knot


def contacts(
    polygons: Points | Sequence[Points], tolerance: float = 1e-2, tell: Callable[[int], None] = lambda step: None
) -> Contacts:
    """Struts, kinks and pressure of a knot or link in any unit of length.

    Args:
        polygons: closed polygons (N, 3), one or a sequence of them. The time of the fit grows as the cube of the number
            of all vertices: a second at 250.
        tolerance: how far from the thickness, relatively, a contact may be.
        tell: called with the number of each of the fit's steps, some twenty.

    Raises:
        ValueError: fewer than six vertices, a tolerance that is not positive, or polygons without thickness.
    """
    if not tolerance > 0.0:
        raise ValueError("the tolerance of contacts must be positive")
    curves = [polygons] if isinstance(polygons, np.ndarray) else list(polygons)
    width = max(float(np.ptp(points, axis=0).max()) for points in curves) or 1.0
    unit = width * _engine.measure([points / width for points in curves])["thickness"]
    if not unit > 0.0:
        raise ValueError("the polygon has no thickness: it meets itself")
    scaled = [points / unit for points in curves]
    ring = _Ring(scaled)
    struts = _engine.program(scaled, (4.0 / 3.0) * tolerance)["struts"]
    struts = struts[struts[:, 7] <= 2.0 * tolerance]  # of the distance, whose limit is 2
    edges, parts, normals = struts[:, :2].astype(np.int64), struts[:, 2:4], struts[:, 4:7]
    radii, gradients = ring.corners()
    kinked = np.flatnonzero(radii <= 1.0 + tolerance)

    found = fitted(_columns(ring, edges, parts, normals, kinked, gradients[kinked]), ring.pull().ravel(), tell)
    strut_forces, kink_forces = found.forces[: len(struts)], found.forces[len(struts) :]
    load = np.zeros(len(ring.ahead))
    half = 0.5 * strut_forces[:, None]  # the column is the gradient of half the distance
    np.add.at(load, edges, half * (1.0 - parts))
    np.add.at(load, ring.ahead[edges], half * parts)
    ends = np.cumsum([len(points) for points in curves])
    every = np.concatenate(curves)
    return Contacts(
        struts=every[edges] * (1.0 - parts[..., None]) + every[ring.ahead[edges]] * parts[..., None],
        strut_forces=strut_forces,
        kinks=every[kinked],
        kink_forces=kink_forces,
        pressures=tuple(_spread(own, points, unit) for own, points in zip(np.split(load, ends[:-1]), curves)),
        residual=found.residual,
    )


class _Ring:
    """The vertices of all polygons one after the other, each with its neighbours along its own."""

    def __init__(self, polygons: Sequence[Points]) -> None:
        self.points = np.concatenate(polygons)
        begins = np.cumsum([0, *(len(points) for points in polygons)])
        own = [np.arange(begin, end) for begin, end in pairwise(begins)]
        self.ahead = np.concatenate([np.roll(places, -1) for places in own])
        self.back = np.concatenate([np.roll(places, 1) for places in own])
        edges = self.points[self.ahead] - self.points
        self.sizes = np.linalg.norm(edges, axis=1)
        self.along = edges / self.sizes[:, None]

    def pull(self) -> Points:
        """Gradient (N, 3) of the length."""
        pull: Points = self.along[self.back] - self.along
        return pull

    def corners(self) -> tuple[Points, Points]:
        """MinRad (N,) of the corners, the shorter edge over 2 tan(turn / 2); and gradients (N, 3, 3) by the vertex
        before, the corner and the vertex behind, of the radius with the mean of both edges: of edges that are equal
        but for rounding neither is the shorter one."""
        before, behind = self.along[self.back], self.along
        a, b = self.sizes[self.back], self.sizes
        mean = (a + b) / 2.0
        normal = np.cross(before, behind)
        sine = np.linalg.norm(normal, axis=1)
        turn = np.arctan2(sine, (before * behind).sum(axis=1))
        with np.errstate(divide="ignore", invalid="ignore"):  # a straight corner has no limit
            normal = normal / sine[:, None]
            per_length = 1.0 / (2.0 * np.tan(turn / 2.0))
            by_turn = -mean / (4.0 * np.sin(turn / 2.0) ** 2)
            by_length = (per_length / 2.0)[:, None]
            by_before = (by_turn / a)[:, None] * np.cross(normal, before) - by_length * before
            by_behind = (by_turn / b)[:, None] * np.cross(normal, behind) + by_length * behind
        return np.minimum(a, b) * per_length, np.stack([by_before, -by_before - by_behind, by_behind], axis=1)


def _columns(
    ring: _Ring,
    edges: NDArray[np.int64],
    parts: Points,
    normals: Points,
    kinked: NDArray[np.int64],
    gradients: Points,
) -> Columns:
    """Gradients of half the struts' distances, then those of the kinks' radii."""
    at = np.stack([edges[:, 0], ring.ahead[edges[:, 0]], edges[:, 1], ring.ahead[edges[:, 1]]], axis=1)
    s, t = parts.T
    shares = 0.5 * np.stack([1.0 - s, s, t - 1.0, -t], axis=1)
    corners = np.stack([ring.back[kinked], kinked, ring.ahead[kinked], kinked], axis=1)
    vertices = np.concatenate([at, corners])
    blocks = np.concatenate([shares[:, :, None] * normals[:, None, :], np.pad(gradients, ((0, 0), (0, 1), (0, 0)))])
    rows = 3 * vertices[:, :, None] + np.arange(3)
    return Columns(rows.reshape(len(rows), -1), blocks.reshape(len(rows), -1))


def _spread(load: Points, points: Points, width: float) -> Points:
    """Forces at vertices as a force a unit of length, by a Gaussian of standard deviation width / 2 along the curve:
    the feet of struts stand at single vertices."""
    edges = np.linalg.norm(np.roll(points, -1, axis=0) - points, axis=1)
    length = float(edges.sum())
    arc = np.cumsum(edges) - edges
    apart = np.abs(arc[:, None] - arc[None, :])
    apart = np.minimum(apart, length - apart)
    weight = np.exp(-2.0 * (apart / width) ** 2)
    share = 0.5 * (edges + np.roll(edges, 1))  # length that belongs to a vertex
    spread: Points = weight @ (load / (share @ weight))
    return spread
