"""Frames, curvature, torsion and mean helicity of discretised filaments."""

import math

import _native
import numpy as np
import pytest


def norm(a):
    return math.sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2])


def test_frames_and_curvature_of_the_plain_loop():
    X = np.random.default_rng(8).normal(size=(8, 3))
    T, N, B = _native.compute_frenet_frames(X.tolist())
    curvature, torsion = _native.compute_curvature_torsion(T, N)
    for i in range(1, 7):
        d1 = X[i + 1] - X[i - 1]
        d2 = (X[i + 1] - X[i]) - (X[i] - X[i - 1])
        t, n = d1 / norm(d1), d2 / norm(d2)
        assert T[i] == t.tolist() and N[i] == n.tolist() and B[i] == np.cross(t, n).tolist()
        assert curvature[i] == 0.5 * norm(np.subtract(T[i + 1], T[i - 1]))
        b, d = B[i], np.subtract(N[i + 1], N[i - 1])
        assert torsion[i] == 0.5 * (b[0] * d[0] + b[1] * d[1] + b[2] * d[2])
    for values in (T, N, B, curvature, torsion):
        assert len(values) == 8 and values[0] == values[1] and values[-1] == values[-2]


def test_frames_of_a_helix():
    n, radius, pitch = 4000, 2.0, 0.5
    s = np.linspace(0, 6 * np.pi, n)
    X = np.stack([radius * np.cos(s), radius * np.sin(s), pitch * s], axis=1)
    T, N, B = (np.array(v) for v in _native.compute_frenet_frames(X.tolist()))
    np.testing.assert_allclose(N[1:-1], np.stack([-np.cos(s), -np.sin(s), 0 * s], 1)[1:-1], atol=1e-4)
    assert (np.cross(T, N) == B).all()
    curvature, torsion = _native.compute_curvature_torsion(T.tolist(), N.tolist())
    speed = math.hypot(radius, pitch)
    step = s[1]  # the measures are per index
    np.testing.assert_allclose(curvature[2:-2], radius / speed * step, rtol=1e-4)
    # The derivative of N is -curvature T + torsion B, so its product with B is the torsion.
    np.testing.assert_allclose(torsion[2:-2], pitch / speed * step, rtol=1e-4)


def test_three_points_share_one_frame():
    T, N, B = _native.compute_frenet_frames([[0, 0, 0], [1, 0, 0], [1, 1, 0]])
    for values in (T, N, B):
        assert values[0] == values[1] == values[2]
    assert B[0] == pytest.approx([0, 0, 1])


def test_a_straight_stretch_has_no_normal():
    T, N, B = _native.compute_frenet_frames([[0, 0, 0], [1, 0, 0], [2, 0, 0]])
    assert T[1] == [1, 0, 0] and np.isnan(N).all() and np.isnan(B).all()


@pytest.mark.parametrize("n", [0, 1, 2])
def test_too_few_points_give_zeros(n):
    points = [[1.0, 2.0, 3.0]] * n
    assert _native.compute_frenet_frames(points) == ([[0, 0, 0]] * n,) * 3
    assert _native.compute_curvature_torsion(points, points) == ([0] * n,) * 2


def test_helicity_is_a_mean_in_single_precision():
    rng = np.random.default_rng(6)
    v, w = rng.normal(size=(2, 999, 3)).tolist()
    total = np.float32(0)
    for a, b in zip(v, w, strict=True):
        total = np.float32(total + np.float32(a[0] * b[0] + a[1] * b[1] + a[2] * b[2]))
    assert _native.compute_helicity(v, w) == float(np.float32(total / np.float32(999)))
    assert _native.compute_helicity([[0.1, 0, 0]], [[0.1, 0, 0]]) == float(np.float32(0.1 * 0.1)) != 0.1 * 0.1
    assert math.isnan(_native.compute_helicity([], [[1, 2, 3]]))


def test_lists_of_different_length():
    with pytest.raises(ValueError):
        _native.compute_curvature_torsion([[1, 0, 0]] * 4, [[1, 0, 0]] * 3)
    with pytest.raises(ValueError):
        _native.compute_helicity([[1, 0, 0]], [])


def test_positional_arguments():
    for call in (
        lambda: _native.compute_frenet_frames(X=[]),
        lambda: _native.compute_curvature_torsion(T=[], N=[]),
        lambda: _native.evolve_vortex_knot(positions=[], tangents=[], dt=0.0, gamma=0.0),
        lambda: _native.rk4_integrate(positions=[], tangents=[], dt=0.0, gamma=0.0),
    ):
        with pytest.raises(TypeError):
            call()
