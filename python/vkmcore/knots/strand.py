"""One closed component: a Fourier series, or the vertices of a polygon; any unit of length."""

from __future__ import annotations

import math
from dataclasses import dataclass
from typing import TYPE_CHECKING

import numpy as np

from vkmcore.curves.resampling import evenly_spaced
from vkmcore.ideal.fourier_form import FourierForm, derivative, evaluated

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]
    Series = NDArray[np.complex128]

SAMPLES = 512  # of a series, where no number is asked for


@dataclass(frozen=True, eq=False)
class Strand:
    """Either the coefficients of a series as `FourierForm` has them, or vertices (N, 3), the first not repeated."""

    series: Series | None = None
    vertices: Points | None = None

    def __post_init__(self) -> None:
        for array in (self.series, self.vertices):
            if array is not None:
                array.flags.writeable = False

    @property
    def numbers(self) -> Points | Series:
        """What defines the strand."""
        array = self.vertices if self.series is None else self.series
        assert array is not None
        return array

    def points(self, count: int | None) -> Points:
        """`count` points at equal steps of arc length from the start on; None: the vertices as they stand."""
        if self.series is not None:
            return FourierForm((self.series,)).evenly_spaced([SAMPLES if count is None else count])[0]
        assert self.vertices is not None
        return self.vertices.copy() if count is None else evenly_spaced(self.vertices, count)

    def length(self) -> float:
        if self.series is not None:
            return FourierForm((self.series,)).lengths()[0]
        return float(np.linalg.norm(_edges(self.points(None)), axis=1).sum())

    def curvature(self, count: int | None) -> Points:
        """At `points(count)`: |r' x r''| / |r'|^3 of a series; of a polygon 2 tan(turning angle / 2) over the mean of
        the two edges (Bobenko and Schief's discrete curvature)."""
        if self.series is None:
            points = self.points(count)
            ahead, back = _edges(points), np.roll(_edges(points), 1, axis=0)
            angle = np.arctan2(np.linalg.norm(np.cross(back, ahead), axis=1), (back * ahead).sum(axis=1))
            mean = (np.linalg.norm(ahead, axis=1) + np.linalg.norm(back, axis=1)) / 2.0
            turned: Points = 2.0 * np.tan(angle / 2.0) / mean
            return turned
        count = SAMPLES if count is None else count
        fine = max(32 * count, 32 * len(self.series))
        first = evaluated(derivative(self.series), fine)
        second = evaluated(derivative(derivative(self.series)), fine)
        speed = np.linalg.norm(first, axis=1)
        unit = first / speed[:, None]  # no cubes of speeds: they leave the range of doubles at small units
        curvature = np.linalg.norm(np.cross(unit, second / speed[:, None]), axis=1) / speed
        arc = np.concatenate([[0.0], np.cumsum((speed + np.roll(speed, -1)) / 2.0)])
        at = np.arange(count) * (arc[-1] / count)
        found: Points = np.interp(at, arc, np.append(curvature, curvature[:1]))
        return found

    def scaled(self, factor: float) -> Strand:
        return self._with(lambda array: array * factor)

    def mirrored(self) -> Strand:
        return self._with(lambda array: array * np.array([1.0, 1.0, -1.0]))

    def moved(self, step: Points) -> Strand:
        if self.series is not None:
            return Strand(series=np.vstack([self.series[:1] + step, self.series[1:]]))
        return self._with(lambda array: array + step)

    def reversed(self) -> Strand:
        """The same curve from the same start, run through the other way."""
        if self.series is not None:
            return Strand(series=self.series.conj())
        return self._with(lambda array: np.roll(array[::-1], 1, axis=0))

    def _with(self, change: object) -> Strand:
        assert callable(change)
        changed = np.ascontiguousarray(change(self.numbers))
        return Strand(series=changed) if self.series is not None else Strand(vertices=changed)

    def __eq__(self, other: object) -> bool:
        return (
            isinstance(other, Strand)
            and (self.series is None) == (other.series is None)
            and np.array_equal(self.numbers, other.numbers)
        )

    def __hash__(self) -> int:
        return hash((self.series is None, (self.numbers + 0.0).tobytes()))


def extent(strands: tuple[Strand, ...]) -> float:
    """The greatest extent of the strands along an axis: a length to scale by."""
    every = np.concatenate([strand.points(None) for strand in strands])
    width = float((every.max(axis=0) - every.min(axis=0)).max())
    return width if width > 0.0 and math.isfinite(width) else 1.0


def _edges(points: Points) -> Points:
    edges: Points = np.roll(points, -1, axis=0) - points
    return edges
