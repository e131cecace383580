"""What the motion of closed vortex filaments keeps: impulse, angular impulse, and energy.

Over the density of the fluid, with circulations Gamma and velocities v of the vertices:

- impulse 1/2 sum Gamma oint x cross dx, in m^4/s;
- angular impulse -1/2 sum Gamma oint |x|^2 dx, in m^5/s (P. G. Saffman, Vortex Dynamics, Cambridge 1992, section 3.2);
- energy sum Gamma oint v . (x cross dx) - 1/(4 pi) sum Gamma^2 L, in m^5/s^2.

The last follows from the Hamiltonian H of the thin-filament motion, Gamma x' cross v = -dH/dx at a fixed core radius a:
enlarging all curves by a factor tells sum Gamma oint v . (x cross dx) = H - dH/d(log a), and H depends on a by
-Gamma^2 L / (4 pi) log a alone. A ring of radius R with the speed Gamma / (4 pi R) (log(8 R / a) + c) has the energy
1/2 Gamma^2 R (log(8 R / a) + c - 1). Impulses are exact for polygons, the energy has an error like h^2 in the edges.
Where different filaments are softened as well (`a_sim`), their mutual energy depends on that length too, and the energy
here lacks its part: of the order (a_sim / r)^2 of the mutual energy at distances r.
"""

from __future__ import annotations

import math
from collections.abc import Mapping, Sequence
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore import calculate_length

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Points = NDArray[np.float64]


@dataclass(frozen=True)
class Invariants:
    """Of a run, a row a frame, over the density of the fluid. Filaments that are no sources do not count."""

    times: Points  # (F,) s
    impulse: Points  # (F, 3) m^4/s
    angular_impulse: Points  # (F, 3) m^5/s, about the origin
    energy: Points  # (F,) m^5/s^2
    length: Points  # (F,) m, of all sources: no invariant, but what stretches


def impulse(points: Points, circulation: float) -> Points:
    """Gamma / 2 times the closed integral of x cross dx (3,), exact for the polygon."""
    total: Points = 0.5 * circulation * np.cross(points, np.roll(points, -1, axis=0)).sum(axis=0)
    return total


def angular_impulse(points: Points, circulation: float) -> Points:
    """-Gamma / 2 times the closed integral of |x|^2 dx (3,), exact for the polygon."""
    ahead = np.roll(points, -1, axis=0)
    square = (points * points + points * ahead + ahead * ahead).sum(axis=1) / 3.0
    total: Points = -0.5 * circulation * (square[:, None] * (ahead - points)).sum(axis=0)
    return total


def energy(points: Points, velocity: Points, circulation: float) -> float:
    """The part of one filament in the energy, from the velocities of its vertices."""
    way = 0.5 * (np.roll(points, -1, axis=0) - np.roll(points, 1, axis=0))
    virial = circulation * float((velocity * np.cross(points, way)).sum())
    return virial - circulation**2 * calculate_length(points) / (4.0 * math.pi)


def invariants(
    times: Points,
    frames: Sequence[Sequence[Points]],
    velocities: Sequence[Sequence[Points]],
    filaments: Sequence[Mapping[str, Any]],
) -> Invariants:
    """Of frames: positions and velocities (N, 3) of each filament."""
    sources = [
        (number, float(filament.get("circulation", 1.0)))
        for number, filament in enumerate(filaments)
        if filament.get("source", True) and not filament.get("ghost", False)
    ]

    rows = [
        (
            sum((impulse(points[k], circulation) for k, circulation in sources), np.zeros(3)),
            sum((angular_impulse(points[k], circulation) for k, circulation in sources), np.zeros(3)),
            sum((energy(points[k], velocity[k], circulation) for k, circulation in sources), 0.0),
            sum((calculate_length(points[k]) for k, _ in sources), 0.0),
        )
        for points, velocity in zip(frames, velocities, strict=True)
    ]
    return Invariants(times, *(np.array(column) for column in zip(*rows)))
