"""The types of dict results against what the functions return."""

import types
import typing

import numpy as np
import pytest
import vkmcore
from make_stubs import RESULTS
from numpy.typing import NDArray
from vkmcore import results

ANGLE = 2.0 * np.pi * np.arange(12) / 12
RING = np.stack([np.cos(ANGLE), np.sin(ANGLE), 0.0 * ANGLE], axis=1)
FILAMENTS = [{"points": RING}]
WELLS = (-1.0, 1.0, 5, 0, False)
SERIES = "1 0 0 1 0 0\n0 0 0 0 0.1 0\n"
CALLS = {
    "analyze_resolved_tube_clearance": lambda: vkmcore.analyze_resolved_tube_clearance([RING]),
    "analyze_smooth_resolved_tube": lambda: vkmcore.analyze_smooth_resolved_tube([RING]),
    "build_and_solve_node_anchored_operator": lambda: vkmcore.TrefoilOperator.build_and_solve_node_anchored_operator(
        *WELLS, [0.0], -1.0, 0.1
    ),
    "build_and_solve_trace_anchored_operator": lambda: vkmcore.TrefoilOperator.build_and_solve_trace_anchored_operator(
        *WELLS, [0.0] * 5, 1.0
    ),
    "compute_continuous_reach": lambda: vkmcore.compute_continuous_reach([RING]),
    "compute_filament_velocity": lambda: vkmcore.compute_filament_velocity(FILAMENTS),
    "compute_intrinsic_frame": lambda: vkmcore.compute_intrinsic_frame(RING),
    "compute_polygonal_gauss": lambda: vkmcore.compute_polygonal_gauss(RING),
    "compute_regularized_mutual_velocity": lambda: vkmcore.compute_regularized_mutual_velocity(FILAMENTS),
    "compute_rigid_motion": lambda: vkmcore.compute_rigid_motion(RING, RING),
    "compute_topology_clearance": lambda: vkmcore.compute_topology_clearance([RING]),
    "guard_topology_step": lambda: vkmcore.guard_topology_step([RING], [RING], 0.1, 0.1),
    "jacobi_eigensolve_symmetric": lambda: vkmcore.TrefoilOperator.jacobi_eigensolve_symmetric(np.eye(2), False),
    "list_bindings": lambda: vkmcore.list_bindings("fourier"),
    "objective_suppressed_breakdown": lambda: vkmcore.MultisectorFitterV2.objective_suppressed_breakdown(
        [0.1, 0.2], [2, 3, 5], [0.0, 0.1, 0.2], ell_trefoil=16.4, truncation_M=5, target_nodes=[0.1]
    ),
    "phase_invariants": lambda: vkmcore.MultisectorFitterV2.phase_invariants([0.1, 0.2, 0.3]),
    "rk4_step": lambda: vkmcore.rk4_step(FILAMENTS, 0.01),
}


def matches(value, kind):
    if typing.is_typeddict(kind):
        hints = typing.get_type_hints(kind)
        return set(value) == set(hints) and all(matches(value[name], hints[name]) for name in hints)
    if typing.get_origin(kind) is list:
        return isinstance(value, list) and all(matches(item, *typing.get_args(kind)) for item in value)
    if typing.get_origin(kind) in (types.UnionType, typing.Union):
        return any(matches(value, one) for one in typing.get_args(kind))
    if typing.get_origin(kind) is typing.Literal:
        return value in typing.get_args(kind)
    if kind == NDArray[np.float64]:
        return isinstance(value, np.ndarray) and value.dtype == np.float64
    return type(value) is kind


@pytest.mark.parametrize("name", RESULTS)
def test_a_result_has_the_keys_and_types_of_its_type(name, tmp_path):
    if name == "compare_fseries_files":
        path = tmp_path / "curve.fseries"
        path.write_text(SERIES)
        value = vkmcore.compare_fseries_files(str(path), str(path), 64)
    else:
        value = CALLS[name]()
    assert matches(value, getattr(results, RESULTS[name])), value
