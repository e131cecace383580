"""A signal ends a long computation at once, with the handler's exception."""

import _native
import numpy as np
import pytest
from interruption import ended_by_a_signal

MANY = np.random.default_rng(0).normal(size=(400000, 3))
CIRCLE = _native.parse_fseries_from_string("1 0 0 1 0 0\n")[0]


@pytest.mark.parametrize(
    "call",
    [
        lambda: _native.length_exact(CIRCLE, 2**60),
        lambda: _native.bending_energy_exact(CIRCLE, 2**60),
        lambda: _native.compute_writhe(MANY),
        lambda: _native.compute_linking_number(MANY, MANY),
        lambda: _native.writhe_gauss_curve(MANY, MANY),
        lambda: _native.detect_reconnection_candidates(MANY, 0.0),
        lambda: _native.compute_polygonal_gauss(MANY),
        lambda: _native.compute_polygonal_gauss(MANY, MANY, False),
        lambda: _native.estimate_crossing_number(MANY, 10),
        lambda: _native.pd_from_curve(MANY, 10),
        lambda: _native.calculate_neumann_self_energy(MANY, 1.0),
        lambda: _native.calculate_writhe(MANY, 1.0),
        lambda: _native.calculate_core_repulsion(MANY, 1e-3),
        lambda: _native.calculate_bs_cutoff_energy(MANY, MANY, MANY[:, 0], 1.0),
        lambda: _native.compute_vkm_mass(MANY, 2.0),
        lambda: _native.min_self_distance_sampled(np.vstack([sphere(200000), -sphere(200000)]), 199999),
    ],
)
def test_a_signal_ends_the_call(call):
    with ended_by_a_signal(0.3):
        call()


def sphere(n):
    points = MANY[:n]
    return points / np.linalg.norm(points, axis=1)[:, None]
