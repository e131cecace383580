"""Planar-diagram codes of closed curves."""

from __future__ import annotations

from dataclasses import dataclass
from typing import TYPE_CHECKING

if TYPE_CHECKING:
    import numpy as np
    from numpy.typing import NDArray

    Points = NDArray[np.float64]


@dataclass(frozen=True)
class DiagramSettings:
    """How a curve is sampled, projected and read."""

    samples: int = 1000  # of a Fourier series
    tries: int = 40  # projections for the code
    seed: int = 12345
    min_angle_deg: float = 1.0
    depth_tol: float = 1e-6  # in the units of the points
    directions: int = 24  # projections for the estimate of the crossing number


@dataclass(frozen=True)
class Diagram:
    """A curve with its planar-diagram code."""

    name: str
    points: Points  # (N, 3), closed, the first point not repeated
    code: list[list[int]]  # rows (under in, over in, under out, over out)
    crossing_estimate: int


def planar_diagram(name: str, points: Points, settings: DiagramSettings | None = None) -> Diagram:
    """The code of the richest projection, and the estimate of the crossing number.

    Raises:
        ValueError: the points are fewer than four or not of shape (N, 3).
        RuntimeError: no projection shows a crossing.
    """
    from vkmcore.parallel import estimate_crossing_number, pd_from_curve

    s = settings or DiagramSettings()
    code = pd_from_curve(points, s.tries, s.seed, s.min_angle_deg, s.depth_tol)
    estimate = estimate_crossing_number(points, s.directions, s.seed)
    return Diagram(name, points, code, estimate)
