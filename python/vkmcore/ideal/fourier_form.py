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

from vkmcore import _engine

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
    step: float = sum(lengths) / 400.0
    for _ in range(2):  # the first polygon finds the radius that the second is spaced by
        measures = measure_polygons(form.evenly_spaced([max(24, math.ceil(n / step)) for n in lengths]))
        step = measures.thickness / per_radius
    measures = measure_polygons(form.evenly_spaced([max(24, math.ceil(n / step)) for n in lengths]))
    return Measures(sum(lengths), measures.least_radius, measures.half_least_distance)


def measure_polygons(components: Sequence[Points]) -> Measures:
    """Measures of closed polygons, of at least six vertices each. The radius at a vertex is MinRad, half the shorter of
    its edges over the tangent of half the turn (E. J. Rawdon, in Ideal Knots, World Scientific, 1998); pairs of edges
    within half a turn of the tube found are left out."""
    found = _engine.measure(list(components))
    return Measures(found["length"], found["min_radius"], found["strut_distance"] / 2.0)


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
