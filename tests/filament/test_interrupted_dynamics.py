"""A signal ends a long computation at once, with the handler's exception."""

import math

import _native
import numpy as np
import pytest
from interruption import ended_by_a_signal

RNG = np.random.default_rng(0)
CLOUD = RNG.normal(size=(100000, 3))


@pytest.mark.parametrize(
    "call",
    [
        lambda: _native.compute_filament_velocity([{"points": CLOUD}, {"points": CLOUD[::-1]}]),
        lambda: _native.rk4_step([{"points": CLOUD}], 0.1),
        lambda: _native.compute_topology_clearance([CLOUD, 5 * CLOUD]),
        lambda: _native.guard_topology_step([CLOUD], [CLOUD], math.inf, 0.0),
        lambda: _native.compute_continuous_reach([CLOUD[k : k + 100] for k in range(0, 20000, 100)]),
        lambda: _native.analyze_smooth_resolved_tube([CLOUD], 1e-300, 1e-300),
    ],
)
def test_a_signal_ends_the_call(call):
    with ended_by_a_signal():
        call()
