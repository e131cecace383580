"""Velocities of filaments on all cores: the direct sum over all pairs, or a tree of cells for many vertices."""

from __future__ import annotations

from collections.abc import Mapping, Sequence
from dataclasses import dataclass, field
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore import _engine
from vkmcore.cores import thread_count

if TYPE_CHECKING:
    from numpy.typing import ArrayLike, NDArray

    Points = NDArray[np.float64]

FAR_FIELDS = ("direct", "tree")
LEAST_TOLERANCE, MOST_TOLERANCE = 1e-12, 1e-1


@dataclass(frozen=True)
class Velocity:
    """Velocities of filaments, and how they were summed."""

    velocity: list[Points]  # (N, 3) in m/s for each filament, zeros for ghosts
    maximum_speed: float  # m/s
    far_field: str  # "direct", or "tree" where the tree was used
    sampled_error: float  # of the tree at 64 of the points, relative to the maximum speed; 0 if direct


@dataclass
class Summation:
    """How velocities are summed: directly, or by the tree within a tolerance, and on how many threads. It remembers
    what was done."""

    far_field: str = "direct"
    tolerance: float = 1e-6
    threads: int | None = None  # all usable cores
    used: set[str] = field(default_factory=set)  # of "direct" and "tree", so far
    sampled_error: float = 0.0  # the largest one so far

    def __post_init__(self) -> None:
        if self.far_field not in FAR_FIELDS:
            raise ValueError(f"unknown far_field {self.far_field!r}; known are {', '.join(FAR_FIELDS)}")
        if not LEAST_TOLERANCE <= self.tolerance <= MOST_TOLERANCE:
            raise ValueError(f"tolerance must be from {LEAST_TOLERANCE:g} to {MOST_TOLERANCE:g}")
        thread_count(self.threads)

    @property
    def arguments(self) -> dict[str, Any]:
        """Those of the engine."""
        tolerance = self.tolerance if self.far_field == "tree" else None
        return {"threads": thread_count(self.threads), "tolerance": tolerance}

    def velocity(self, filaments: Sequence[Mapping[str, Any]], options: Mapping[str, Any]) -> dict[str, Any]:
        """As `compute_filament_velocity`, with `far_field` and `sampled_error`."""
        return self._noted(_engine.filament_velocity([dict(f) for f in filaments], dict(options), **self.arguments))

    def rk4_step(self, filaments: Sequence[Mapping[str, Any]], dt: float, options: Mapping[str, Any]) -> dict[str, Any]:
        """As `rk4_step`, with `far_field` and `sampled_error`."""
        return self._noted(_engine.rk4_step([dict(f) for f in filaments], dt, dict(options), **self.arguments))

    def estimate_cfl_dt(self, filaments: Sequence[Mapping[str, Any]], options: Mapping[str, Any], cfl: float) -> float:
        """As `estimate_cfl_dt`."""
        return _engine.estimate_cfl_dt([dict(f) for f in filaments], dict(options), cfl, **self.arguments)

    def _noted(self, found: dict[str, Any]) -> dict[str, Any]:
        self.used.add(found["far_field"])
        self.sampled_error = max(self.sampled_error, found["sampled_error"])
        return found


def velocity(
    filaments: Sequence[Mapping[str, Any]],
    options: Mapping[str, Any] | None = None,
    *,
    far_field: str = "direct",
    tolerance: float = 1e-6,
    threads: int | None = None,
) -> Velocity:
    """Velocity of closed vortex filaments: `compute_filament_velocity` on all cores, directly or by a tree.

    The direct sum has the bits of `compute_filament_velocity`, for any number of threads. The tree joins far cells of
    edges and of vertices by Taylor expansions of the softened kernel, whose order follows from the tolerance; its time
    grows like n log n, and it has the same bits for any number of threads. In each call it is held against the direct
    sum at 64 of the vertices, asked for more where it misses 0.3 of the tolerance there, and at last replaced by the
    direct sum, as it is where points are not finite. Expansions: Duan and Krasny, J. Comput. Chem. 22 (2001) 184;
    trees: Dehnen, J. Comput. Phys. 179 (2002) 27.

    Args:
        filaments: dicts as of `compute_filament_velocity`: points (N, 3) in m, circulation in m^2/s, source, ghost.
        options: as of `compute_filament_velocity`: lia_only, a_sim, core_delta, lia_constant, core_radius.
        far_field: "direct", or "tree". It pays from some thousand vertices on.
        tolerance: of the tree: the error of any velocity, relative to the largest one. 1e-12 to 0.1.
        threads: all usable cores by default.

    Raises:
        ValueError: no such far field, a tolerance or number of threads out of range, or points of another shape.
    """
    found = Summation(far_field, tolerance, threads).velocity(filaments, options or {})
    return Velocity(found["velocity"], found["maximum_speed"], found["far_field"], found["sampled_error"])


def curve_velocity(
    curve: ArrayLike,
    points: ArrayLike,
    circulation: float = 1.0,
    *,
    far_field: str = "direct",
    tolerance: float = 1e-6,
    soft: float = 0.0,
    threads: int | None = None,
) -> Points:
    """Velocities (M, 3) in m/s that a closed vortex polyline induces at points, on all cores.

    The direct sum has the bits of `biot_savart_velocity_grid`. The tree's is circulation / (4 pi) times the sum of
    `dl x R / (|R|^2 + soft^2)^(3/2)`, R from the midpoints of the segments, without that function's 1e-12 m^3 beside
    the cube of the distance.

    Args:
        curve: (N, 3) in m, closed by its last segment.
        points: (M, 3) in m.
        circulation: m^2/s.
        far_field, tolerance, threads: as of `velocity`.
        soft: m, for the tree only.

    Raises:
        ValueError: as of `velocity`, a softening for the direct sum, or, with the tree, points that are not finite.
    """
    summation = Summation(far_field, tolerance, threads)
    arguments = summation.arguments
    if arguments["tolerance"] is not None:
        return np.asarray(
            _engine.closed_curve_far_velocity(curve, points, circulation, soft=soft, **arguments)["velocity"]
        )
    if soft != 0.0:
        raise ValueError("soft is for the tree")
    return _engine.closed_curve_velocity(curve, points, circulation, threads=arguments["threads"])
