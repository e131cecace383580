"""Forms of knots with an imposed symmetry, as finite Fourier series.

An element of a symmetry takes the point at t to the point at t + shift or, where it reverses the curve, at shift - t:

    r(t) = R r(t + shift)    or    r(t) = R r(shift - t),    R orthogonal.

Averaging the coefficients over a group of such elements makes any series symmetric. Random series of a few harmonics
are averaged so; those of a wanted type with the least ropelength are kept, and polished inside the symmetry.
"""

from __future__ import annotations

import math
from collections.abc import Iterable, Iterator
from dataclasses import dataclass

import numpy as np
from numpy.typing import NDArray

from vkmcore.ideal.fourier_form import FourierForm, Series, measure


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
DIHEDRAL = Symmetry(
    "three two-fold axes x, y, z",
    (
        IDENTITY,
        Element(rotation(2.0), math.pi),
        Element(ABOUT_X, 0.0, reverses=True),
        Element(((-1.0, 0.0, 0.0), (0.0, 1.0, 0.0), (0.0, 0.0, -1.0)), math.pi, reverses=True),
    ),
)
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


def nearest_dihedral(c: Series, steps: int = 720) -> Series:
    """The series about its best pair of half turns, a quarter of the curve apart, averaged: `DIHEDRAL`."""

    def score(at: float) -> float:
        return _inversion(c, at)[0] + _inversion(c, at + math.pi / 2.0)[0]

    at = max((math.pi * n / steps for n in range(steps)), key=score)
    first, second = _inversion(c, at)[1], _inversion(c, at + math.pi / 2.0)[1]
    second = second - (second @ first) * first
    second /= np.linalg.norm(second)
    frame = np.stack([first, second, np.cross(first, second)], axis=1)
    return DIHEDRAL.project(_placed(c, at, frame))


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
    if symmetry is DIHEDRAL:
        return FourierForm((nearest_dihedral(c),))
    return FourierForm((nearest_rotary(c, symmetry),))


# --- random symmetric forms -----------------------------------------------------------------------------------------


def random_forms(symmetry: Symmetry, harmonics: int, seed: int, fall: float = 1.0) -> Iterator[FourierForm]:
    """Symmetric random series without end, harmonic k of an amplitude about k^-fall; centred."""
    rng = np.random.default_rng(seed)
    k = np.arange(harmonics + 1.0)
    k[0] = np.inf
    while True:
        used = rng.random(harmonics + 1) < 0.7
        c = (rng.normal(size=(harmonics + 1, 3)) + 1j * rng.normal(size=(harmonics + 1, 3))) * (used / k**fall)[:, None]
        c[:, 2] *= rng.uniform(0.3, 1.0)
        yield FourierForm((symmetry.project(c),))


def mirrored(form: FourierForm) -> FourierForm:
    """The mirror image in the plane z = 0."""
    return FourierForm(tuple(c * np.array([1.0, 1.0, -1.0]) for c in form.series))


def harvest(
    forms: Iterable[FourierForm], targets: Iterable[str], tries: int, most_ropelength: float = 600.0
) -> dict[str, FourierForm]:
    """Of so many forms, the one of least ropelength of each wanted type, in the chirality of the tables.

    The type is taken by the Jones polynomial; certify what is used.
    """
    from vkmcore.reference.tables import find
    from vkmcore.topology.bracket import jones
    from vkmcore.topology.projection import diagram_of_curves

    wanted: dict[object, tuple[str, bool]] = {}
    for name in targets:
        polynomial = find(name).jones
        wanted[polynomial.mirrored()] = name, True
        wanted[polynomial] = name, False
    found: dict[str, tuple[float, FourierForm]] = {}
    for _, form in zip(range(tries), forms):
        try:
            diagram = diagram_of_curves(form.points([max(96, 12 * form.harmonics)]), directions=6, best=1, effort=2)
        except ValueError:
            continue
        if len(diagram) > 24 or len(diagram) < 3:
            continue
        name, mirror = wanted.get(jones(diagram), ("", False))
        if name:
            ropelength = measure(form, per_radius=6).ropelength
            if ropelength < min(most_ropelength, found.get(name, (math.inf, form))[0]):
                found[name] = ropelength, mirrored(form) if mirror else form
    return {name: form for name, (_, form) in found.items()}
