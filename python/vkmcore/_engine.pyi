"""The package's own extension: what its rooms need beyond the fixed interface of `_native`."""

from collections.abc import Callable, Mapping, Sequence
from typing import Any

import numpy
from numpy.typing import ArrayLike, NDArray

from vkmcore import ResolvedTubeMetrics, TailApproxConfig
from vkmcore.results import PolygonalGauss

def vector_bits() -> int: ...
def pair_forms() -> dict[str, str]: ...

# Filaments as of compute_filament_velocity.
def filament_velocity(
    filaments: Sequence[Mapping[str, Any]],
    options: Mapping[str, Any] = ...,
    *,
    threads: int = 1,
    tolerance: float | None = None,
) -> dict[str, Any]: ...
def rk4_step(
    filaments: Sequence[Mapping[str, Any]],
    dt: float,
    options: Mapping[str, Any] = ...,
    *,
    threads: int = 1,
    tolerance: float | None = None,
) -> dict[str, Any]: ...
def estimate_cfl_dt(
    filaments: Sequence[Mapping[str, Any]],
    options: Mapping[str, Any] = ...,
    cfl: float = 0.5,
    *,
    threads: int = 1,
    tolerance: float | None = None,
) -> float: ...
def closed_curve_velocity(
    curve: ArrayLike, points: ArrayLike, circulation: float = 1.0, *, threads: int = 1
) -> NDArray[numpy.float64]: ...
def closed_curve_far_velocity(
    curve: ArrayLike,
    points: ArrayLike,
    circulation: float = 1.0,
    *,
    soft: float = 0.0,
    tolerance: float = 1e-6,
    threads: int = 1,
) -> dict[str, Any]: ...
def point_velocities(
    targets: ArrayLike,
    filament_points: ArrayLike,
    tangent_vectors: ArrayLike,
    circulation: float = 1.0,
    *,
    threads: int = 1,
) -> NDArray[numpy.float64]: ...

# Measures of curves, with the bits of _native's.
def neumann_self_energy(points: ArrayLike, rc: float, *, threads: int = 1) -> float: ...
def vkm_mass(points: ArrayLike, chi_spin: float, *, threads: int = 1) -> tuple[float, float]: ...
def tail_energy(filaments: Sequence[ArrayLike], config: TailApproxConfig, *, threads: int = 1) -> float: ...
def writhe(points: ArrayLike, *, threads: int = 1) -> float: ...
def far_writhe(points: ArrayLike, tolerance: float = 1e-6, *, threads: int = 1) -> tuple[float, float, bool]: ...
def polygonal_gauss(a: ArrayLike, b: ArrayLike | None = None, *, threads: int = 1) -> PolygonalGauss: ...
def tube_analyze(
    points: ArrayLike,
    skip_neighbors: int = 2,
    contact_tol: float = 0.001,
    equilateral_tol: float = 0.001,
    *,
    threads: int = 1,
) -> ResolvedTubeMetrics: ...
def pd_from_curve(
    points: ArrayLike,
    tries: int = 40,
    seed: int = 12345,
    min_angle_deg: float = 1.0,
    depth_tol: float = 1e-6,
    *,
    threads: int = 1,
) -> list[list[int]]: ...
def estimate_crossing_number(
    points: ArrayLike, directions: int = 24, seed: int = 12345, *, threads: int = 1
) -> int: ...

# Ideal shapes. Polygons are one (N, 3) array a component.
def tighten(
    starts: Sequence[Sequence[ArrayLike]],
    *,
    edge: float = 0.15,
    seed: int = 1,
    threads: int = 1,
    start_count: int = 16,
    first_chains: int = 8,
    first_hops: int = 8,
    second_chains: int = 2,
    second_hops: int = 40,
    refined: int = 4,
    finished: int = 2,
    adaptive: bool = True,
    small_hops: bool = False,
    start_programs: int = 150,
    coarse_edge: float = 0.9,
    small_noise: float = 0.1,
    large_noise: float = 0.4,
    watch: Callable[[str, int, float, int, float, float], object] | None = None,
) -> dict[str, Any]: ...
def contract(polygons: Sequence[ArrayLike], edge: float, programs: int = 200) -> dict[str, Any]: ...
def refine(polygons: Sequence[ArrayLike], edge: float) -> dict[str, Any]: ...
def hop(polygons: Sequence[ArrayLike], seed: int, small: bool = False) -> list[NDArray[numpy.float64]]: ...
def measure(polygons: Sequence[ArrayLike]) -> dict[str, float]: ...
def program(polygons: Sequence[ArrayLike], bound: float, radius: float = 1.0) -> dict[str, Any]: ...
def solve_program(
    *,
    sizes: Sequence[int],
    edges: ArrayLike,
    kinks: ArrayLike,
    struts: ArrayLike,
    bound: float,
    rho: float,
    stiffness: float = 0.0,
    tolerance: float = 1e-7,
) -> dict[str, Any]: ...
