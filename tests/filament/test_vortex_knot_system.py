"""The simple filament simulator: start curves, Euler steps, and what a failed or abandoned call leaves behind."""

import math

import _native
import numpy as np
import pytest
from interruption import ended_by_a_signal
from wide_kernels import kernels  # noqa: F401

TWO_PI = 6.283185307179586


def tangents_of(positions):
    n = len(positions)
    return [
        [0.5 * (a - b) for a, b in zip(positions[(i + 1) % n], positions[(i - 1 + n) % n], strict=True)]
        for i in range(n)
    ]


def plain_step(positions, tangents, circulation, dt):
    velocity = [_native.biot_savart_velocity(p, positions, tangents, circulation) for p in positions]
    return [[p + dt * u for p, u in zip(q, v, strict=True)] for q, v in zip(positions, velocity, strict=True)]


def bits(vectors):
    return [[c.hex() for c in v] for v in vectors]


CURVES = {
    "initialize_trefoil_knot": lambda t: (
        math.cos(2 * t) * (math.cos(3 * t) + 2),
        math.sin(2 * t) * (math.cos(3 * t) + 2),
        math.sin(3 * t),
    ),
    "initialize_figure8_knot": lambda t: (
        math.cos(3 * t) * (math.cos(2 * t) + 2),
        math.sin(3 * t) * (math.cos(2 * t) + 2),
        math.sin(4 * t),
    ),
}


@pytest.mark.parametrize("name", CURVES)
def test_start_curves(name):
    system = _native.VortexKnotSystem()
    assert system.get_positions() == system.get_tangents() == []
    initialize = getattr(system, name)
    assert initialize() is None
    positions = system.get_positions()
    assert len({tuple(p) for p in positions}) == 400 and positions[0] == [3, 0, 0]
    np.testing.assert_allclose(positions, [CURVES[name](i * TWO_PI / 400) for i in range(400)], atol=1e-15)
    assert system.get_tangents() == tangents_of(positions)
    initialize(resolution=7)
    assert len(system.get_positions()) == 7
    with pytest.raises(MemoryError):
        initialize(2**31 - 1)
    assert len(system.get_positions()) == len(system.get_tangents()) == 7
    for nothing in (0, -1):
        initialize(nothing)
        assert system.get_positions() == system.get_tangents() == []


def test_named_knot():
    system = _native.VortexKnotSystem(circulation=2.0)
    system.initialize_knot_from_name("3_1", 200)
    positions = system.get_positions()
    s = [i * TWO_PI / 199 for i in range(200)]
    curve = np.array(_native.evaluate_fourier_block(_native.load_embedded_knot_block("3_1"), s))
    np.testing.assert_allclose(positions, curve - curve.mean(axis=0), atol=1e-13)
    np.testing.assert_allclose(positions[-1], positions[0], atol=1e-12)  # the seam's two points coincide
    assert system.get_tangents() == tangents_of(positions)
    system.initialize_knot_from_name(knot_id="3_1")
    assert len(system.get_positions()) == 1000


def test_named_knot_that_is_not_there():
    system = _native.VortexKnotSystem()
    system.initialize_trefoil_knot(10)
    before = system.get_positions(), system.get_tangents()
    with pytest.raises(RuntimeError, match=r"^Could not find \.fseries file for knot: no_such_knot$"):
        system.initialize_knot_from_name("no_such_knot")
    with pytest.raises(MemoryError):
        system.initialize_knot_from_name("3_1", 2**31 - 1)
    assert (system.get_positions(), system.get_tangents()) == before


def test_named_knot_of_a_file(tmp_path, monkeypatch):
    monkeypatch.setenv("VKM_KNOT_DATA_DIR", str(tmp_path))
    (tmp_path / "knot.9_99.fseries").write_text("0 0 0 0 0 0\n2 0 0 2 0 0\n")
    (tmp_path / "knot.9_98.fseries").write_text("% a header, and no row\n")
    system = _native.VortexKnotSystem()
    system.initialize_knot_from_name("9_99", 5)
    centred = [[1.6, 0, 0], [-2.4, 0, 0]] * 2 + [[1.6, 0, 0]]  # (2 cos 2s, 2 sin 2s, 0) without its mean
    np.testing.assert_allclose(system.get_positions(), centred, atol=1e-14)
    before = system.get_positions()
    with pytest.raises(RuntimeError, match=r"^Failed to load knot 9_98 from .*knot\.9_98\.fseries$"):
        system.initialize_knot_from_name("9_98")
    assert system.get_positions() == before


@pytest.mark.usefixtures("kernels")
@pytest.mark.parametrize("n", [1, 2, 3, 8, 9, 17, 31, 32, 33, 64, 75, 131])
def test_steps_have_the_bits_of_the_plain_sum(n):
    """Around the sizes of whole blocks, with points that coincide."""
    rng = np.random.default_rng(n)
    X = rng.normal(size=(n, 3))
    X[-1] = X[0]
    X[n // 2] = X[0] + [5e-7, 0, 0]
    positions, tangents = X.tolist(), rng.normal(size=(n, 3)).tolist()
    evolution = _native.TimeEvolution(positions, tangents, -0.7)
    evolution.evolve(0.01, 3)
    for _ in range(3):
        positions = plain_step(positions, tangents, -0.7, 0.01)
        tangents = tangents_of(positions)
    assert bits(evolution.get_positions()) == bits(positions)
    assert bits(evolution.get_tangents()) == bits(tangents)


@pytest.mark.usefixtures("kernels")
@pytest.mark.parametrize("spoil", ["nan point", "infinite point", "nan tangent", "huge points", "circulation"])
def test_steps_of_numbers_beyond_the_usual(spoil):
    rng = np.random.default_rng(9)
    X, T = rng.normal(size=(2, 70, 3))
    X[50] = X[20]
    circulation = 1.0
    if spoil == "nan point":
        X[20, 1] = math.nan
    elif spoil == "infinite point":
        X[20, 0] = math.inf
    elif spoil == "nan tangent":
        T[20, 2] = math.nan  # of a source that point 50 skips
    elif spoil == "huge points":
        X[20] = X[50] = 1e200
    else:
        circulation = math.inf
    positions, tangents = X.tolist(), T.tolist()
    evolution = _native.TimeEvolution(positions, tangents, circulation)
    evolution.evolve(0.1, 1)
    np.testing.assert_array_equal(evolution.get_positions(), plain_step(positions, tangents, circulation, 0.1))


def test_a_vortex_ring_moves_along_its_axis():
    n = 200
    s = 2 * np.pi * np.arange(n) / n
    ring = np.stack([np.cos(s), np.sin(s), 0 * s], axis=1)
    tangents = tangents_of(ring.tolist())
    evolution = _native.TimeEvolution(initial_positions=ring.tolist(), initial_tangents=tangents, gamma=2.0)
    evolution.evolve(dt=1e-3, steps=10)
    moved = np.array(evolution.get_positions()) - ring
    # Sum over the sources k of |t| (1 - cos s_k) / |R|^3 = |t| / (4 |sin(s_k / 2)|).
    speed = 2.0 / (4 * math.pi) * math.sin(2 * math.pi / n) * (1 / (4 * np.sin(s[1:] / 2))).sum()
    np.testing.assert_allclose(moved[:, 2], 0.01 * speed, rtol=1e-9)
    np.testing.assert_allclose(moved[:, :2], 0, atol=1e-12)


def test_tangents_stay_as_given_until_the_first_step():
    X, T = np.random.default_rng(0).normal(size=(2, 6, 3)).tolist()
    evolution = _native.TimeEvolution(X, T)
    evolution.evolve(0.1, 0)
    assert (evolution.get_positions(), evolution.get_tangents()) == (X, T)
    evolution.evolve(0.0, 1)
    assert (evolution.get_positions(), evolution.get_tangents()) == (X, tangents_of(X))


def test_counts_of_steps():
    system = _native.VortexKnotSystem()
    system.evolve(0.1, 5)
    assert system.get_positions() == []
    with pytest.raises(TypeError):
        system.evolve(0.1, -1)
    with pytest.raises(TypeError):
        _native.TimeEvolution([], []).evolve(0.1, 2**31)


def test_too_few_tangents():
    X = np.random.default_rng(0).normal(size=(6, 3)).tolist()
    evolution = _native.TimeEvolution(X, X[:3])
    with pytest.raises(ValueError):
        evolution.evolve(0.1, 1)
    assert (evolution.get_positions(), evolution.get_tangents()) == (X, X[:3])


@pytest.mark.parametrize("n", [0, 30])
def test_a_negative_count_runs_until_a_signal_and_leaves_the_state(n):
    X = np.random.default_rng(0).normal(size=(n, 3)).tolist()
    evolution = _native.TimeEvolution(X, X)
    with ended_by_a_signal():
        evolution.evolve(1e-3, -1)
    assert evolution.get_positions() == evolution.get_tangents() == X


def test_a_signal_ends_a_single_long_step():
    system = _native.VortexKnotSystem()
    system.initialize_trefoil_knot(60000)
    before = system.get_positions()
    with ended_by_a_signal():
        system.evolve(0.1, 1)
    assert system.get_positions() == before


@pytest.mark.parametrize(
    "call",
    [
        lambda X: _native.biot_savart_velocity_grid(X, X),
        lambda X: _native.biot_savart_wire_grid(*X.T, X),
        lambda X: _native.dipole_ring_field_grid(*X.T, X, X),
        lambda X: _native.biot_savart_vector_potential_grid(X, X),
    ],
)
def test_a_signal_ends_a_grid(call):
    X = np.random.default_rng(0).normal(size=(100000, 3))
    with ended_by_a_signal():
        call(X)


def test_steps_along_the_tangents():
    X, T = np.random.default_rng(1).normal(size=(2, 5, 3)).tolist()
    expected = [[p + (0.3 * 1.7) * t for p, t in zip(a, b, strict=True)] for a, b in zip(X, T, strict=True)]
    assert _native.evolve_vortex_knot(X, T, 0.3, 1.7) == expected
    assert _native.rk4_integrate(X, T, 0.3, 1.7) == expected
    for step in (_native.evolve_vortex_knot, _native.rk4_integrate):
        with pytest.raises(ValueError):
            step(X, T[:4], 0.3, 1.7)


def test_euler_step_of_positions_leaves_the_list():
    X, V = np.random.default_rng(1).normal(size=(2, 5, 3)).tolist()
    positions = [list(p) for p in X]
    assert _native.evolve_positions_euler(positions=positions, velocity=V, dt=2.0) is None
    assert positions == X
    with pytest.raises(ValueError):
        _native.evolve_positions_euler(X, V[:4], 1.0)
