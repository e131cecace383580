"""Forms of knots with an imposed symmetry, as finite Fourier series.

An element of a symmetry takes the point at t to the point at t + shift or, where it reverses the curve, at shift - t:

    r(t) = R r(t + shift)    or    r(t) = R r(shift - t),    R orthogonal.

Averaging the coefficients over a group of such elements makes any series symmetric.
"""

from __future__ import annotations

import math
from collections.abc import Callable
from dataclasses import dataclass

import numpy as np
from numpy.typing import NDArray

from vkmcore import _engine
from vkmcore.ideal.form_polish import fit
from vkmcore.ideal.fourier_form import FourierForm, Series, measure

MOST_HARMONICS = 200


@dataclass(frozen=True)
class Element:
    """One symmetry of a curve: see the module."""

    matrix: tuple[tuple[float, float, float], ...]
    shift: float
    reverses: bool = False

    def on(self, c: Series) -> Series:
        turned: Series = c * np.exp(1j * self.shift * np.arange(len(c)))[:, None]
        if self.reverses:
            turned = turned.conj()
        result: Series = turned @ np.array(self.matrix).T
        return result


def rotation(quarters: float, improper: bool = False) -> tuple[tuple[float, float, float], ...]:
    """About z by so many right angles; improper: followed by the reflection in the plane z = 0."""
    c, s = math.cos(quarters * math.pi / 2.0), math.sin(quarters * math.pi / 2.0)
    return ((c, -s, 0.0), (s, c, 0.0), (0.0, 0.0, -1.0 if improper else 1.0))


ABOUT_X = ((1.0, 0.0, 0.0), (0.0, -1.0, 0.0), (0.0, 0.0, -1.0))


@dataclass(frozen=True)
class Symmetry:
    """A group of symmetries with its name in a header line."""

    words: str
    elements: tuple[Element, ...]

    def project(self, c: Series) -> Series:
        """The series averaged over the group: the nearest symmetric one."""
        mean: Series = np.mean([element.on(c) for element in self.elements], axis=0)
        return mean


def rotary(order: int, turn: int = 1) -> Symmetry:
    """Rotary reflection of even order: 1 / order of the curve on, a turn of `turn` / order and a reflection."""
    steps = [
        Element(rotation(-4.0 * turn * n / order, improper=n % 2 == 1), math.tau * n / order) for n in range(order)
    ]
    return Symmetry(f"rotary reflection of order {order} about z", tuple(steps))


IDENTITY = Element(rotation(0.0), 0.0)
INVERSION = Symmetry("a two-fold axis x that meets the knot twice", (IDENTITY, Element(ABOUT_X, 0.0, reverses=True)))


# --- the symmetric form nearest to a given one -----------------------------------------------------------------------


def _inversion(c: Series, at: float) -> tuple[float, NDArray[np.float64]]:
    """How well a half turn carries r(at + t) to r(at - t), as the mean of their product, and its axis: the half turn
    2 u u^T - 1 that maximises the trace with the matrix of the means."""
    k = np.arange(len(c))
    means = (np.exp(2j * k * at)[:, None, None] * c[:, :, None] * c[:, None, :]).sum(axis=0).real / 2.0
    values, axes = np.linalg.eigh(means)
    return float(2.0 * values[-1] - values.sum()), axes[:, -1]


def nearest_inverted(c: Series, steps: int = 720) -> Series:
    """The series about its best half turn, averaged: `INVERSION`."""
    at = max((math.pi * n / steps for n in range(steps)), key=lambda at: _inversion(c, at)[0])
    axis = _inversion(c, at)[1]
    frame = np.linalg.svd(axis[:, None])[0]
    frame[:, 0] = axis
    frame[:, 2] *= np.linalg.det(frame)
    return INVERSION.project(_placed(c, at, frame))


def nearest_rotary(c: Series, symmetry: Symmetry) -> Series:
    """The series, run through in the better direction, about its best rotary reflection, averaged."""
    shift = symmetry.elements[1].shift
    best: tuple[float, Series] | None = None
    for curve in (c, c.conj()):
        k = np.arange(len(curve))
        means = ((np.exp(1j * k * shift)[:, None] * curve).T @ curve.conj()).real / 2.0
        left, _, right = np.linalg.svd(means)
        matrix = left @ np.diag([1.0, 1.0, -np.linalg.det(left @ right)]) @ right  # improper
        values, vectors = np.linalg.eig(matrix)
        axis = vectors[:, np.argmin(np.abs(values + 1.0))].real
        frame = np.linalg.svd((axis / np.linalg.norm(axis))[:, None])[0][:, [1, 2, 0]]
        frame[:, 0] *= np.linalg.det(frame)
        averaged = symmetry.project(_placed(curve, 0.0, frame))
        kept = float((np.abs(averaged) ** 2).sum())
        if best is None or kept > best[0]:
            best = kept, averaged
    assert best is not None
    return best[1]


def _placed(c: Series, start: float, frame: NDArray[np.float64]) -> Series:
    """The series from another start, in the coordinates of a frame's columns."""
    placed: Series = (c * np.exp(1j * start * np.arange(len(c)))[:, None]) @ frame
    return placed


def nearest_symmetric(form: FourierForm, symmetry: Symmetry) -> FourierForm:
    """The symmetric form nearest to a knot's form, of which the type may differ."""
    (c,) = form.series
    if symmetry is INVERSION:
        return FourierForm((nearest_inverted(c),))
    return FourierForm((nearest_rotary(c, symmetry),))


def mirrored(form: FourierForm) -> FourierForm:
    """The mirror image in the plane z = 0."""
    return FourierForm(tuple(c * np.array([1.0, 1.0, -1.0]) for c in form.series))


# --- tight inside the symmetry --------------------------------------------------------------------------------------

LEVELS = ((0.75, 12, 60), (0.4, 12, 10), (0.25, 12, 6), (0.15, 20, 4))  # edge, programs at a time, times at most
SETTLED = 2e-3  # relative shortening in a round under which a level ends


def tightened(form: FourierForm, symmetry: Symmetry, keeps_type: Callable[[FourierForm], bool]) -> FourierForm:
    """A short form with the symmetry: rounds of programs on the polygon, and the average over the group after each.

    Nothing breaks the symmetry of an exactly symmetric polygon but rounding, so that the programs lead to a state that
    is tight among the symmetric ones, often a saddle of all. A round that changes the type ends its level.
    """
    best, least = form, measure(form, per_radius=8).ropelength
    for edge, programs, rounds in LEVELS:
        last = math.inf
        for _ in range(rounds):
            polygon = best.scaled(1.02 / measure(best, per_radius=8).thickness)
            polygons = polygon.evenly_spaced([max(24, math.ceil(n / edge)) for n in polygon.lengths()])
            try:
                (points,) = _engine.contract(polygons, edge, programs)["points"]
            except ValueError:  # strands touch after the average
                break
            trial = nearest_symmetric(fit([points], min(MOST_HARMONICS, len(points) // 3)), symmetry)
            if not keeps_type(trial):
                break
            ropelength = measure(trial).ropelength
            if ropelength < least or edge == LEVELS[0][0]:
                best, least = trial, ropelength
            if ropelength > last * (1.0 - SETTLED):
                break
            last = ropelength
    return best
