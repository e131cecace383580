"""The Fourier form of fewest harmonics whose ropelength lies within a stated excess of a polygon's.

More harmonics fit a tight curve better, though not at every step: a curve of least ropelength has jumps in its
curvature, which too few harmonics smear and too many follow into the corners of the polygon.
"""

from __future__ import annotations

import math
from collections.abc import Callable, Sequence
from typing import TYPE_CHECKING

import numpy as np

from vkmcore.ideal.form_polish import fit, polish
from vkmcore.ideal.fourier_form import FourierForm, measure

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

GROWTH = 1.25  # from a number of harmonics that is too small to the next
POLISHED = 0.6  # of a plain fit's harmonics, about, are enough after a polish
LEAST_HARMONICS = 3
A_RADIUS = 0.5  # harmonics for each tube radius of length that are too few for most excesses


def least_form(
    components: Sequence[Points], ropelength: float, excess: float = 1e-3, *, polished: bool = False
) -> FourierForm:
    """The form of fewest harmonics of closed polygons of nearly equal edges.

    Args:
        components: (N, 3) each; any unit of length, and the form is in the same.
        ropelength: of the polygons, length over radius.
        excess: that the form's ropelength, measured at 20 points a tube radius, may have over it: 0.001 is 0.1 %.
        polished: descend in the coefficients at each number of harmonics, which takes seconds each and about two
            thirds of the harmonics of a plain fit. The form then has a tube radius of 1. Polishing is for curves that
            are nearly tight: it watches the strands that already touch.

    Raises:
        ValueError: the excess is not positive, or no number of harmonics that the polygons' vertices determine comes
            within it.
    """
    if not excess > 0.0:
        raise ValueError(f"the excess of a Fourier form is positive, not {excess!r}")
    most = max(len(points) for points in components) // 2 - 1
    limit = ropelength * (1.0 + excess)
    lengths = [float(np.linalg.norm(np.roll(p, -1, axis=0) - p, axis=1).sum()) for p in components]
    guess = max(LEAST_HARMONICS, round(A_RADIUS * ropelength * max(lengths) / sum(lengths)))
    plain, form = _fewest(lambda k: fit(components, k), limit, LEAST_HARMONICS - 1, min(guess, most), most)
    if plain is None:
        raise ValueError(
            f"no Fourier form within {100.0 * excess:g} % of the ropelength: {most} harmonics are all that "
            "the vertices determine; a polygon of shorter edges determines more"
        )
    if polished and plain > LEAST_HARMONICS:
        first = max(LEAST_HARMONICS, round(POLISHED * plain))
        low = round(0.75 * first)
        fewer, better = _fewest(lambda k: polish(fit(components, k)), limit, low, first, plain - 1)
        form = form if fewer is None else better
    return form


def _fewest(
    make: Callable[[int], FourierForm], limit: float, low: int, high: int, most: int
) -> tuple[int | None, FourierForm]:
    """The least number of harmonics above `low`, to about 6 %, whose form has at most this ropelength, and the form;
    None and the form of `most` where that has more. `high` is tried first."""
    while measure(form := make(high)).ropelength > limit:
        if high >= most:
            return None, form
        low, high = high, min(most, max(high + 1, math.ceil(high * GROWTH)))
    while high - low > max(1, high // 16):
        middle = (low + high) // 2
        tried = make(middle)
        if measure(tried).ropelength <= limit:
            high, form = middle, tried
        else:
            low = middle
    return high, form
