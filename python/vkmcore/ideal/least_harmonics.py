"""The Fourier form of fewest harmonics whose ropelength lies within a stated excess of a polygon's.

More harmonics fit a tight curve better, though not at every step: a curve of least ropelength has jumps in its
curvature, which too few harmonics smear and too many follow into the corners of the polygon.
"""

from __future__ import annotations

import math
from collections.abc import Sequence
from typing import TYPE_CHECKING

from vkmcore.ideal.form_polish import fit, polish
from vkmcore.ideal.fourier_form import FourierForm, measure

if TYPE_CHECKING:
    import numpy as np
    from numpy.typing import NDArray

    Points = NDArray[np.float64]

GROWTH = 1.25  # from a number of harmonics that is too small to the next
LEAST_HARMONICS = 3


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
    made: dict[int, FourierForm] = {}

    def fits(harmonics: int) -> bool:
        form = fit(components, harmonics)
        if polished and not measure(form).ropelength <= limit:
            form = polish(form)
        made[harmonics] = form
        return measure(form).ropelength <= limit

    low, high = LEAST_HARMONICS - 1, min(LEAST_HARMONICS, most)
    while not fits(high):
        if high == most:
            raise ValueError(
                f"no Fourier form within {100.0 * excess:g} % of the ropelength: {most} harmonics are all that "
                "the vertices determine; a polygon of shorter edges determines more"
            )
        low, high = high, min(most, max(high + 1, math.ceil(high * GROWTH)))
    while high - low > max(1, high // 24):
        middle = (low + high) // 2
        low, high = (low, middle) if fits(middle) else (middle, high)
    return made[high]
