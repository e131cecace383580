"""The dicts that functions of the library return, as types: for annotations, and for checkers that know their keys.

    from vkmcore.results import PolygonalGauss

Shapes, units and meanings stand in the functions' docstrings. Arrays are of float64.
"""

from __future__ import annotations

from typing import Literal, TypedDict

import numpy as np
from numpy.typing import NDArray

Array = NDArray[np.float64]
Limiter = Literal["CURVATURE", "SELF_DCSD", "INTER_COMPONENT", "TIE", "ERROR"]


class PolygonalGauss(TypedDict):
    """Of compute_polygonal_gauss."""

    signed_integral: float
    absolute_integral: float
    linking_integer_audit: int


class Clearance(TypedDict):
    """Of compute_topology_clearance and analyze_resolved_tube_clearance."""

    clearance: float
    self_min: float
    inter_min: float


class _ReachSearch(TypedDict):
    curvature_radius: float
    self_dcsd: float
    self_radius: float
    inter_component_radius: float
    reach: float
    limiter: Limiter
    curvature_intervals_examined: int
    dcsd_seed_count: int
    dcsd_refined_count: int
    dcsd_rejected_count: int
    search_resolution: float
    refinement_tolerance: float
    search_converged: bool


class ContinuousReach(_ReachSearch):
    """Of compute_continuous_reach."""

    inter_component_distance: float
    orth_residual: float
    component_count: int


class SmoothTube(_ReachSearch):
    """Of analyze_smooth_resolved_tube."""

    spline_length: float
    spline_length_error: float
    ropelength_rad: float
    ropelength_diam: float
    orthogonality_residual: float
    converged: bool
    length_interval_count: int
    length_converged: bool


class FilamentVelocity(TypedDict):
    """Of compute_filament_velocity and compute_regularized_mutual_velocity."""

    velocity: list[Array]
    maximum_speed: float


class MovedFilament(TypedDict):
    """A filament after rk4_step."""

    id: str
    carrier: str
    points: Array
    circulation: float
    ghost: bool


class FilamentStep(TypedDict):
    """Of rk4_step."""

    filaments: list[MovedFilament]
    maximum_stage_speed: float


class TopologyGuard(TypedDict):
    """Of guard_topology_step."""

    contact: bool
    warn_only: bool
    safe_dt_fraction: float
    clearance_before: float
    clearance_after: float
    message: str


class IntrinsicFrame(TypedDict):
    """Of compute_intrinsic_frame."""

    centroid: list[float]
    axis_x: list[float]
    axis_y: list[float]
    axis_z: list[float]
    eigenvalues: list[float]


class RigidMotion(TypedDict):
    """Of compute_rigid_motion."""

    centroid: list[float]
    translation: list[float]
    omega: list[float]
    translation_field: Array
    rotation_field: Array
    deformation_field: Array
    reconstruction_relative_error: float
    deformation_relative_norm: float


class SpectralSolve(TypedDict):
    """Of TrefoilOperator.jacobi_eigensolve_symmetric and the functions that build an operator and solve it."""

    eigenvalues: Array
    eigenvectors: Array | None
    n: int


class SuppressedObjective(TypedDict):
    """Of objective_suppressed_breakdown."""

    total: float
    mismatch: float
    extra_penalty: float
    reg_penalty: float


class PhaseInvariants(TypedDict):
    """Of phase_invariants."""

    delta23: float
    delta35: float
    theta_sum_mod: float


class CurveComparison(TypedDict):
    """Of compare_fseries_files: measures of both files, and the differences b - a."""

    L_a: float
    L_b: float
    dL: float
    kappa_max_a: float
    kappa_max_b: float
    dkappa_max: float
    kappa_mean_a: float
    kappa_mean_b: float
    dkappa_mean: float
    bend_energy_a: float
    bend_energy_b: float
    dbend_energy: float
    reach_proxy_a: float
    reach_proxy_b: float
    dreach_proxy: float
    rms_point_delta: float


class BindingCounts(TypedDict):
    """Of list_bindings: how many names of each kind."""

    functions: int
    classes: int
    attributes: int


class Bindings(TypedDict):
    """Of list_bindings."""

    functions: list[str]
    classes: list[str]
    attributes: list[str]
    counts: BindingCounts
