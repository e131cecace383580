"""Interval arithmetic on NumPy arrays: what a proved bound needs of it, and no more.

An interval [lo, hi] holds a real number that is not known exactly. IEEE 754 rounds +, -, *, / and the square root to
the nearest double, so that the exact result lies between the two neighbours of the rounded one: every operation here
moves its ends out to these neighbours. NumPy's sums and products of whole arrays (`sum`, `dot`, `einsum`) round in
orders of their own and are not used.

Ends must be finite and their products must not overflow.
"""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass
from itertools import accumulate
from math import inf, nextafter
from typing import TYPE_CHECKING, Any

import numpy as np

if TYPE_CHECKING:
    from numpy.typing import ArrayLike, NDArray

    Array = NDArray[np.float64]


def down(rounded: ArrayLike) -> Array:
    """Not above the exact result of the operation that gave this."""
    below: Array = np.nextafter(np.asarray(rounded, dtype=np.float64), -inf)
    return below


def up(rounded: ArrayLike) -> Array:
    """Not below the exact result of the operation that gave this."""
    above: Array = np.nextafter(np.asarray(rounded, dtype=np.float64), inf)
    return above


@dataclass(frozen=True)
class Interval:
    """Arrays of one shape, lo <= hi: an interval an element."""

    lo: Array
    hi: Array

    def __add__(self, other: Interval | ArrayLike) -> Interval:
        b = interval(other)
        return Interval(down(self.lo + b.lo), up(self.hi + b.hi))

    def __sub__(self, other: Interval | ArrayLike) -> Interval:
        b = interval(other)
        return Interval(down(self.lo - b.hi), up(self.hi - b.lo))

    def __mul__(self, other: Interval | ArrayLike) -> Interval:
        b = interval(other)
        products = (self.lo * b.lo, self.lo * b.hi, self.hi * b.lo, self.hi * b.hi)
        return Interval(down(_least(products)), up(_greatest(products)))

    def __truediv__(self, other: Interval | ArrayLike) -> Interval:
        """The divisor must be positive.

        Raises:
            ZeroDivisionError: it may be zero or less.
        """
        b = interval(other)
        if not np.all(b.lo > 0.0):
            raise ZeroDivisionError("an interval is divided by one that is not positive")
        quotients = (self.lo / b.lo, self.lo / b.hi, self.hi / b.lo, self.hi / b.hi)
        return Interval(down(_least(quotients)), up(_greatest(quotients)))

    def __getitem__(self, index: Any) -> Interval:
        return Interval(self.lo[index], self.hi[index])

    @property
    def middle(self) -> Array:
        """A double of the interval, about its middle."""
        return self.lo + (self.hi - self.lo) / 2.0


def interval(value: Interval | ArrayLike) -> Interval:
    """Exact numbers as intervals; an interval as it is."""
    if isinstance(value, Interval):
        return value
    exact = np.asarray(value, dtype=np.float64)
    return Interval(exact, exact)


def sqrt(a: Interval) -> Interval:
    """Of numbers known not to be negative, so that only rounding can have put an end below zero."""
    return Interval(np.maximum(down(np.sqrt(np.maximum(a.lo, 0.0))), 0.0), up(np.sqrt(np.maximum(a.hi, 0.0))))


def dot(a: Interval, b: Interval) -> Interval:
    """Of vectors (..., 3)."""
    products = a * b
    return products[..., 0] + products[..., 1] + products[..., 2]


def norm(a: Interval) -> Interval:
    """Of vectors (..., 3)."""
    return sqrt(dot(a, a))


def minimum(a: Interval, b: Interval | ArrayLike) -> Interval:
    b = interval(b)
    return Interval(np.minimum(a.lo, b.lo), np.minimum(a.hi, b.hi))


def maximum(a: Interval, b: Interval | ArrayLike) -> Interval:
    b = interval(b)
    return Interval(np.maximum(a.lo, b.lo), np.maximum(a.hi, b.hi))


def running_sums(a: Interval) -> Interval:
    """Sums of the first 0, 1, ..., N of N numbers."""
    lows = accumulate(a.lo.tolist(), lambda total, x: nextafter(total + x, -inf), initial=0.0)
    highs = accumulate(a.hi.tolist(), lambda total, x: nextafter(total + x, inf), initial=0.0)
    return Interval(np.array(list(lows)), np.array(list(highs)))


def joined(parts: Sequence[Interval]) -> Interval:
    """One array of several."""
    return Interval(np.concatenate([part.lo for part in parts]), np.concatenate([part.hi for part in parts]))


def _least(values: tuple[Array, Array, Array, Array]) -> Array:
    a, b, c, d = values
    least: Array = np.minimum(np.minimum(a, b), np.minimum(c, d))
    return least


def _greatest(values: tuple[Array, Array, Array, Array]) -> Array:
    a, b, c, d = values
    greatest: Array = np.maximum(np.maximum(a, b), np.maximum(c, d))
    return greatest
