"""Pair kernels share their outputs among threads: every number of threads gives the same bits."""

import _native
import numpy as np
import pytest

rng = np.random.default_rng(7)
s = 2 * np.pi * np.arange(700) / 700
trefoil = np.stack([np.sin(s) + 2 * np.sin(2 * s), np.cos(s) - 2 * np.cos(2 * s), -np.sin(3 * s)], axis=1)
grid = rng.uniform(-3, 3, size=(1501, 3))
x, y, z = (np.ascontiguousarray(axis) for axis in grid.T)
filaments = [{"points": trefoil + shift, "source": source} for shift, source in ((0, True), (0.3, False), (5, True))]


def evolved():
    system = _native.VortexKnotSystem(0.7)
    system.initialize_trefoil_knot(700)
    system.evolve(1e-3, 3)
    return system.get_positions()


CALLS = {
    "closed curve": lambda: _native.biot_savart_velocity_grid(trefoil, grid, 0.7),
    "wire": lambda: _native.biot_savart_wire_grid(x, y, z, trefoil, 0.7),
    "vector potential": lambda: _native.biot_savart_vector_potential_grid(trefoil, grid, 0.7),
    "dipoles": lambda: _native.dipole_ring_field_grid(x, y, z, trefoil, trefoil[::-1]),
    "evolution": evolved,
    "regularised": lambda: _native.compute_filament_velocity(filaments, {"a_sim": 0.05})["velocity"],
}


@pytest.mark.parametrize("name", CALLS)
def test_same_bits_on_any_number_of_threads(name, monkeypatch):
    results = []
    for threads in ("1", "2", "7"):
        monkeypatch.setenv("VKM_NUM_THREADS", threads)
        results.append(np.asarray(CALLS[name]()).tobytes())
    assert results[0] == results[1] == results[2]
    assert np.any(np.frombuffer(results[0]))


@pytest.mark.parametrize("wish", ["", "0", "-4", "many"])
def test_unreadable_wish_leaves_the_default(wish, monkeypatch):
    from vkmcore.build import build_info

    monkeypatch.delenv("VKM_NUM_THREADS", raising=False)
    default = build_info().threads
    assert default >= 1
    monkeypatch.setenv("VKM_NUM_THREADS", wish)
    assert build_info().threads == default
