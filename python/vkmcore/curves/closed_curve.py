"""The record of one closed curve, as the reader gives it."""

from __future__ import annotations

import math
from dataclasses import dataclass
from typing import TYPE_CHECKING

import numpy as np

from vkmcore import FourierBlock, evaluate_fourier_block

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]


@dataclass(frozen=True)
class ClosedCurve:
    """A Fourier series, or else the vertices of a closed polygon."""

    name: str  # as the user gave it
    title: str  # what a picture or a table calls it
    kind: str  # "catalogue", "ideal" (a polygon at twelve crossings), "fseries" or "polygon"
    block: FourierBlock | None = None
    offset: tuple[float, float, float] = (0.0, 0.0, 0.0)  # of the series, which has no constant term itself
    vertices: Points | None = None  # (N, 3), the first one not repeated

    def sampled(self, samples: int) -> Points:
        """The polygon itself, or `samples` points (samples, 3) of the series at uniform parameters from 0 on."""
        if self.block is None:
            assert self.vertices is not None
            return self.vertices
        # The product before the division, as the library takes it: the same points to the last bit.
        parameters = [k * (2.0 * math.pi) / samples for k in range(samples)]
        points = np.array(evaluate_fourier_block(self.block, parameters)).reshape(-1, 3)
        return points + self.offset if any(self.offset) else points
