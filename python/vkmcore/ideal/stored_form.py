"""Fourier forms as the texts of the catalogue: standard position, AB / HT / TL blocks, .fseries files, and back.
Polygons of the catalogue stand in the same position.

Standard position: centred; the principal axis of least extent along z, the middle one along y, the greatest along x,
by a rotation, so that chirality stays; x points to the point of the curve that is farthest along its axis, where the
first component starts, and z so that this component's third moment along it is not negative. A knot runs towards
greater y at its start. Components of a link keep their directions, and each starts at its own greatest x.
"""

from __future__ import annotations

import math
from collections.abc import Sequence
from typing import TYPE_CHECKING

import numpy as np

from vkmcore.ideal.fourier_form import FourierForm, measure

if TYPE_CHECKING:
    from numpy.typing import NDArray

    from vkmcore import FourierBlock, IdealABBlock

DECIMALS = 9


def standardised(form: FourierForm) -> FourierForm:
    """The form in standard position, in its own unit."""
    lengths = np.array(form.lengths())
    weights = lengths / lengths.sum()
    centre = sum(w * c[0].real for w, c in zip(weights, form.series, strict=True))
    series = [np.vstack([c[:1].real - centre, c[1:]]) for c in form.series]
    moments = np.zeros((3, 3))
    for w, c in zip(weights, series, strict=True):
        moments += w * (np.outer(c[0].real, c[0].real) + (c[1:].T @ c[1:].conj()).real / 2.0)
    axes = _standard_axes(moments, FourierForm(tuple(series)).points([16 * len(c) for c in series]))
    series = [c @ axes for c in series]
    turned = [_shifted(c, _farthest(c)) for c in series]
    if len(turned) == 1 and (1j * np.arange(len(turned[0])) @ turned[0])[1].real < 0.0:
        turned = [turned[0].conj()]
    return FourierForm(tuple(turned))


def standard_polygon(points: NDArray[np.float64]) -> NDArray[np.float64]:
    """A knot's polygon (N, 3) of nearly equal edges in standard position, in its own unit."""
    points = points - points.mean(axis=0)
    points = points @ _standard_axes(points.T @ points, [points])
    points = np.roll(points, -int(np.argmax(points[:, 0])), axis=0)
    forwards = points[1, 1] >= points[-1, 1]
    return points if forwards else np.roll(points[::-1], 1, axis=0)


def _standard_axes(moments: NDArray[np.float64], components: Sequence[NDArray[np.float64]]) -> NDArray[np.float64]:
    """The axes x, y, z of standard position as columns, for centred points of the components."""
    axes: NDArray[np.float64] = np.linalg.eigh(moments)[1][:, ::-1]  # greatest first
    x = np.concatenate(components) @ axes[:, 0]
    x_sign = 1.0 if x.max() >= -x.min() else -1.0
    z_sign = 1.0 if ((components[0] @ axes[:, 2]) ** 3).sum() >= 0.0 else -1.0
    axes = axes * [x_sign, 1.0, z_sign]
    axes[:, 1] *= np.sign(np.linalg.det(axes))
    return axes


def _farthest(c: NDArray[np.complex128]) -> float:
    """Parameter of the greatest x, by Newton steps from the best of samples."""
    k = np.arange(len(c))
    count = 32 * len(c)
    t = float(np.argmax(FourierForm((c,)).points([count])[0][:, 0])) * math.tau / count
    for _ in range(3):
        wave = c[:, 0] * np.exp(1j * k * t)
        slope, bend = float((1j * k * wave).sum().real), float((-k * k * wave).sum().real)
        if not bend < 0.0 or abs(slope / bend) > math.tau / count:
            break
        t -= slope / bend
    return t


def _shifted(c: NDArray[np.complex128], start: float) -> NDArray[np.complex128]:
    shifted: NDArray[np.complex128] = c * np.exp(1j * start * np.arange(len(c)))[:, None]
    return shifted


def printed(form: FourierForm) -> FourierForm:
    """The form with its coefficients rounded as the texts hold them."""
    return FourierForm(tuple(np.round(c.real, DECIMALS) + 1j * np.round(c.imag, DECIMALS) for c in form.series))


def at_unit_diameter(form: FourierForm) -> FourierForm:
    """Scaled to tube diameter 1 and rounded as the texts hold it."""
    return printed(form.scaled(0.5 / measure(form).thickness))


def block_text(tag: str, name: str, conway: str, form: FourierForm) -> str:
    """An AB, HT or TL block of a form at unit diameter. L and D are those of the coefficients as printed: the length of
    the curve, and the diameter of its tube as `measure` finds it."""
    form = printed(form)
    measures = measure(form)
    head = f'<{tag} Id="{name}" Conway="{conway}" L="{measures.length:.6f}" D="{2.0 * measures.thickness:.6f}"'
    lines = []
    for number, c in enumerate(form.series, start=1):
        alone = len(form.series) == 1
        indent = "  " if alone else "    "
        rows = [
            f'{indent}<Coeff I="{k:3d}" A="{_triple(row.real)}" B="{_triple(-row.imag)}" />'
            for k, row in enumerate(c)
            if k > 0 or row.any()
        ]
        lines += rows if alone else [f'  <Component I="{number}">', *rows, "  </Component>"]
    head += ">" if len(form.series) == 1 else f' n="{len(form.series)}">'
    return "\n".join([head, *lines, f"</{tag}>\n"])


def _triple(values: NDArray[np.float64]) -> str:
    return ", ".join(f"{value + 0.0:12.{DECIMALS}f}" for value in values)


def fseries_text(header: Sequence[str], form: FourierForm) -> str:
    """A .fseries text of a knot's form; readers keep the last line of the header."""
    (c,) = printed(form).series
    lines = [f"% {line}" for line in header]
    for row in c[1:]:
        values = (part for z in row for part in (z.real, -z.imag))
        lines.append(" ".join(f"{value + 0.0:13.{DECIMALS}f}" for value in values))
    return "\n".join(lines) + "\n"


def form_of_series(block: FourierBlock) -> FourierForm:
    """The form of one Fourier block, its first row harmonic 1."""
    return FourierForm((_coefficients(block, np.zeros(3)),))


def form_of_block(block: IdealABBlock) -> FourierForm:
    """The form of an ideal block, all components."""
    return FourierForm(
        tuple(_coefficients(part.fourier, np.array(part.A0) + np.array(part.B0)) for part in block.components)
    )


def _coefficients(block: FourierBlock, offset: NDArray[np.float64]) -> NDArray[np.complex128]:
    a = np.array([block.a_x, block.a_y, block.a_z]).T.reshape(-1, 3)
    b = np.array([block.b_x, block.b_y, block.b_z]).T.reshape(-1, 3)
    coefficients: NDArray[np.complex128] = np.vstack([offset[None, :], a - 1j * b])
    return coefficients
