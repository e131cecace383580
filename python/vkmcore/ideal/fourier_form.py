"""Closed curves, of one component or many, as finite Fourier series of good ropelength.

A component is r(t) = Re sum_k c_k exp(i k t), 0 <= t < 2 pi, with complex c_k in space: A_k = Re c_k goes with cos(k t)
and B_k = -Im c_k with sin(k t). The parameter runs nearly with arc length.

Lengths are in any unit; ropelength is length over tube radius. The thickness of a series is that of the polygon of its
points at equal steps of arc length, `PER_RADIUS` of them to a tube radius: the least of the vertices' radii of
curvature and half the least distance of edges that are more than half a turn of the tube apart along the curve.
"""

from __future__ import annotations

import math
from collections.abc import Sequence
from dataclasses import dataclass

import numpy as np
from numpy.typing import NDArray

Points = NDArray[np.float64]
Series = NDArray[np.complex128]

PER_RADIUS = 20  # samples to a tube radius


@dataclass(frozen=True)
class FourierForm:
    """Series of a curve, one array c of shape (K + 1, 3) a component; row 0 is the component's centre."""

    series: tuple[Series, ...]

    @property
    def harmonics(self) -> int:
        """Of the longest series."""
        return max(len(c) for c in self.series) - 1

    def points(self, counts: Sequence[int]) -> list[Points]:
        """Points at equal steps of the parameter, `counts` of them on the components."""
        return [evaluated(c, n) for c, n in zip(self.series, counts, strict=True)]

    def lengths(self) -> list[float]:
        """Lengths of the components, to rounding for series of well-resolved speed."""
        return [
            float(np.linalg.norm(evaluated(derivative(c), 16 * len(c)), axis=1).mean()) * math.tau for c in self.series
        ]

    def scaled(self, factor: float) -> FourierForm:
        return FourierForm(tuple(c * factor for c in self.series))

    def evenly_spaced(self, counts: Sequence[int]) -> list[Points]:
        """Points at equal steps of arc length: cubic pieces between 32 samples or more a wave of the last harmonic."""
        points = []
        for c, count in zip(self.series, counts, strict=True):
            fine = max(8 * count, 32 * len(c))
            step = math.tau / fine
            fixed, velocity = evaluated(c, fine), evaluated(derivative(c), fine) * step
            speed = np.linalg.norm(velocity, axis=1)
            arc = np.concatenate([[0.0], np.cumsum((speed + np.roll(speed, -1)) / 2.0)])
            at = np.interp(np.arange(count) * (arc[-1] / count), arc, np.arange(fine + 1.0))
            i = np.minimum(at.astype(np.int64), fine - 1)
            j, u = (i + 1) % fine, (at - i)[:, None]
            hermite = (1.0 + 2.0 * u) * (1.0 - u) ** 2 * fixed[i] + u * u * (3.0 - 2.0 * u) * fixed[j]
            points.append(hermite + u * (1.0 - u) * ((1.0 - u) * velocity[i] - u * velocity[j]))
        return points


@dataclass(frozen=True)
class Measures:
    """Of a polygon or of a densely sampled series: total length, and the tube radius with its two bounds."""

    length: float
    least_radius: float
    half_least_distance: float

    @property
    def thickness(self) -> float:
        """Tube radius."""
        return min(self.least_radius, self.half_least_distance)

    @property
    def ropelength(self) -> float:
        """Length over tube radius."""
        return self.length / self.thickness


def measure(form: FourierForm, per_radius: float = PER_RADIUS) -> Measures:
    """Measures on points at equal steps of arc length, `per_radius` of them to a tube radius."""
    lengths = form.lengths()
    radius = math.inf
    step: float = sum(lengths) / 400.0
    for _ in range(2):  # the first polygon finds the radius that the second is spaced by
        measures = measure_polygons(form.evenly_spaced([max(24, math.ceil(n / step)) for n in lengths]))
        radius = measures.thickness
        step = radius / per_radius
    measures = measure_polygons(form.evenly_spaced([max(24, math.ceil(n / step)) for n in lengths]), radius)
    return Measures(sum(lengths), measures.least_radius, measures.half_least_distance)


def measure_polygons(components: Sequence[Points], radius: float | None = None) -> Measures:
    """Measures of closed polygons with nearly equal edges in each; `radius` is an estimate of the tube's, if known."""
    length, least = 0.0, math.inf
    for points in components:
        edges = np.roll(points, -1, axis=0) - points
        sizes = np.linalg.norm(edges, axis=1)
        before, sizes_before = np.roll(edges, 1, axis=0), np.roll(sizes, 1)
        angle = np.arctan2(np.linalg.norm(np.cross(before, edges), axis=1), (before * edges).sum(axis=1))
        with np.errstate(divide="ignore"):
            least = min(least, float((np.minimum(sizes, sizes_before) / (2.0 * np.tan(angle / 2.0))).min()))
        length += float(sizes.sum())
    radius = least if radius is None else min(radius, least)
    nearest = _nearest_edges(components, radius)
    if nearest < 2.0 * radius:  # a thinner tube turns more quickly: nearer edges count
        nearest = _nearest_edges(components, nearest / 2.0)
    return Measures(length, least, nearest / 2.0)


def _nearest_edges(components: Sequence[Points], radius: float) -> float:
    """Least distance of two edges, pairs within half a turn of a tube of this radius left out."""
    nearest = math.inf
    for first, p in enumerate(components):
        for second in range(first, len(components)):
            q = components[second]
            step = np.linalg.norm(p[1] - p[0])
            skip = math.ceil(math.pi * radius / step) if first == second else -1
            for i, j in _near_pairs(p, q, 2.2 * radius, skip):
                nearest = min(nearest, float(_edge_distances(p, q, i, j).min()))
    return nearest


def _near_pairs(p: Points, q: Points, reach: float, skip: int) -> list[tuple[NDArray[np.int64], NDArray[np.int64]]]:
    """Pairs of edges that may be nearer than `reach`, in blocks; of one curve only those more than `skip` apart."""
    middle_p, middle_q = ((x + np.roll(x, -1, axis=0)) / 2.0 for x in (p, q))
    reach += float(np.linalg.norm(p[1] - p[0]) + np.linalg.norm(q[1] - q[0])) / 2.0
    pairs = []
    for begin in range(0, len(p), 256):
        block = middle_p[begin : begin + 256]
        squares = (block**2).sum(axis=1)[:, None] + (middle_q**2).sum(axis=1) - 2.0 * block @ middle_q.T
        i, j = np.nonzero(squares < reach * reach)
        i += begin
        if skip >= 0:
            gap = np.abs(i - j)
            keep = (i < j) & (np.minimum(gap, len(p) - gap) > skip)
            i, j = i[keep], j[keep]
        if len(i):
            pairs.append((i, j))
    return pairs


def _edge_distances(p: Points, q: Points, i: NDArray[np.int64], j: NDArray[np.int64]) -> Points:
    """Distances of the edges i of p from the edges j of q."""
    d1, d2 = p[(i + 1) % len(p)] - p[i], q[(j + 1) % len(q)] - q[j]
    gap = p[i] - q[j]
    s, t = nearest_parts(d1, d2, gap)
    distances: Points = np.linalg.norm(gap + d1 * s[:, None] - d2 * t[:, None], axis=1)
    return distances


def nearest_parts(d1: Points, d2: Points, gap: Points) -> tuple[Points, Points]:
    """Where segments d1 and d2 are nearest, as parts of them; `gap` leads from the second's start to the first's."""
    a, e, b = (d1 * d1).sum(axis=1), (d2 * d2).sum(axis=1), (d1 * d2).sum(axis=1)
    c, f = (d1 * gap).sum(axis=1), (d2 * gap).sum(axis=1)
    det = a * e - b * b
    s = np.where(det > 1e-12 * a * e, np.clip((b * f - c * e) / np.where(det > 0.0, det, 1.0), 0.0, 1.0), 0.0)
    t_free = (b * s + f) / e
    t = np.clip(t_free, 0.0, 1.0)
    s = np.where(t == t_free, s, np.clip((t * b - c) / a, 0.0, 1.0))
    return s, t


# --- transforms ---------------------------------------------------------------------------------------------------


def evaluated(c: Series, count: int) -> Points:
    """Re sum_k c_k exp(i k t) at `count` equal steps of t; harmonics above half of them would fold."""
    assert count > 2 * (len(c) - 1)
    spectrum = c * (count / 2.0)
    spectrum[0] *= 2.0
    points: Points = np.fft.irfft(spectrum, count, axis=0)
    return points


def derivative(c: Series) -> Series:
    result: Series = c * (1j * np.arange(len(c)))[:, None]
    return result
