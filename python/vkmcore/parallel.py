"""Measures of curves on all cores: functions of `_native` with `threads`, and with the same bits for any number.

They release the interpreter lock, and end on Ctrl-C. Their arguments, results and errors are those of their twins in
`_native`; `threads` is all usable cores by default, and must be at least 1 (ValueError).
"""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass
from typing import TYPE_CHECKING

from vkmcore import _engine
from vkmcore.cores import thread_count

if TYPE_CHECKING:
    from numpy.typing import ArrayLike

    from vkmcore import ResolvedTubeMetrics, TailApproxConfig
    from vkmcore.results import PolygonalGauss


def analyze_tube(
    points: ArrayLike,
    skip_neighbors: int = 2,
    contact_tol: float = 0.001,
    equilateral_tol: float = 0.001,
    *,
    threads: int | None = None,
) -> ResolvedTubeMetrics:
    """Thickness, ropelength and contacts of a closed polygon: `ResolvedTubeGeometry.analyze`."""
    return _engine.tube_analyze(points, skip_neighbors, contact_tol, equilateral_tol, threads=thread_count(threads))


def pd_from_curve(
    points: ArrayLike,
    tries: int = 40,
    seed: int = 12345,
    min_angle_deg: float = 1.0,
    depth_tol: float = 1e-6,
    *,
    threads: int | None = None,
) -> list[list[int]]:
    """Planar-diagram code of a closed polygon: `pd_from_curve`."""
    return _engine.pd_from_curve(points, tries, seed, min_angle_deg, depth_tol, threads=thread_count(threads))


def estimate_crossing_number(
    points: ArrayLike, directions: int = 24, seed: int = 12345, *, threads: int | None = None
) -> int:
    """Least number of crossings over projections: `estimate_crossing_number`."""
    return _engine.estimate_crossing_number(points, directions, seed, threads=thread_count(threads))


def polygonal_gauss(a: ArrayLike, b: ArrayLike | None = None, *, threads: int | None = None) -> PolygonalGauss:
    """Exact Gauss integral of one closed polygon, or of two: `compute_polygonal_gauss`."""
    return _engine.polygonal_gauss(a, b, threads=thread_count(threads))


def writhe(points: ArrayLike, *, threads: int | None = None) -> float:
    """Gauss sum of an open list of vertices: `compute_writhe`."""
    return _engine.writhe(points, threads=thread_count(threads))


@dataclass(frozen=True)
class FarWrithe:
    """A writhe by the tree."""

    writhe: float
    error_bound: float
    far_field: str  # "tree", or "direct" where that was quicker or the tree missed its tolerance


def far_writhe(points: ArrayLike, tolerance: float = 1e-6, *, threads: int | None = None) -> FarWrithe:
    """The sum of `compute_writhe` in n log n time, with a bound of its error.

    The writhe is the circulation that a curve of unit strength induces along itself: the sum of its edges times the
    velocities at their starts, which `vkmcore.velocity`'s tree gives. The bound is the length times the tolerance times
    the largest velocity; errors of the edges mostly cancel and stay far below it. Pairs nearer than 1e-6 count here.

    Args:
        points: (N, 3), an open list; repeat the first vertex to close a curve.
        tolerance: of the velocities, relative to the largest one. 1e-12 to 0.1.

    Raises:
        ValueError: a tolerance or number of threads out of range, another shape, or points that are not finite.
    """
    found, bound, tree = _engine.far_writhe(points, tolerance, threads=thread_count(threads))
    return FarWrithe(found, bound, "tree" if tree else "direct")


def neumann_self_energy(points: ArrayLike, rc: float, *, threads: int | None = None) -> float:
    """Neumann's double sum of a closed polygon, in m: `calculate_neumann_self_energy`."""
    return _engine.neumann_self_energy(points, rc, threads=thread_count(threads))


def vkm_mass(points: ArrayLike, chi_spin: float, *, threads: int | None = None) -> tuple[float, float]:
    """Masses of core and fluid, in kg: `compute_vkm_mass`."""
    return _engine.vkm_mass(points, chi_spin, threads=thread_count(threads))


def tail_energy(filaments: Sequence[ArrayLike], config: TailApproxConfig, *, threads: int | None = None) -> float:
    """Energy of the flow outside the core, in J: `ParticleEvaluator.compute_tail_energy_surrogate_J`."""
    return _engine.tail_energy(filaments, config, threads=thread_count(threads))
