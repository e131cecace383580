"""Fourier series with a constant row, and the parametric writhe integral."""

import math

import _native
import numpy as np
import pytest


def test_row_zero_is_constant():
    result = _native.evaluate_fourier_series([[1, 0, 0, 1, 0, 0]], [0.0, 0.5, 2.0])
    assert result.positions == [[1, 0, 0]] * 3 and result.tangents == [[0, 0, 0]] * 3
    nothing = _native.evaluate_fourier_series([], [0.0, 1.0])
    assert nothing.positions == nothing.tangents == [[0, 0, 0]] * 2
    assert _native.evaluate_fourier_series([[1, 0, 0, 1, 0, 0]], []).positions == []


def test_series_against_the_formula():
    rows, t = np.random.default_rng(3).normal(size=(4, 6)), np.linspace(-1, 7, 9)
    j = np.arange(4)
    c, d = np.cos(np.outer(t, j)), np.sin(np.outer(t, j))
    a, b = rows[:, ::2], rows[:, 1::2]
    result = _native.evaluate_fourier_series(rows.tolist(), t.tolist())
    assert np.allclose(result.positions, c @ a + d @ b, rtol=1e-13)
    assert np.allclose(result.tangents, -(d * j) @ a + (c * j) @ b, rtol=1e-13)
    with pytest.raises(TypeError):
        _native.evaluate_fourier_series([[1.0, 2.0]], [0.0])


@pytest.mark.parametrize("n", [0, 1, 2, 17, 40])
def test_writhe_has_the_bits_of_the_plain_loop(n):
    rng = np.random.default_rng(n)
    r, T = rng.normal(size=(n, 3)).tolist(), rng.normal(size=(n + 2, 3)).tolist()
    if n > 5:
        r[5] = r[1]
    total = 0.0
    for i in range(n):
        for j in range(n):
            x, y, z = (r[i][k] - r[j][k] for k in range(3))
            d = math.sqrt(x * x + y * y + z * z)
            if i != j and not d < 1e-6:
                (a, b, c), (e, f, g) = T[i], T[j]
                total += ((b * g - c * f) * x + (c * e - a * g) * y + (a * f - b * e) * z) / (d * d * d)
    ds = 2 * math.pi / n if n else 0.0
    assert _native.writhe_gauss_curve(r, T).hex() == (total * (ds * ds) / (4 * math.pi)).hex()


def test_writhe_of_a_trefoil():
    rows = np.zeros((4, 6))
    rows[1, [1, 2]], rows[2, [1, 2]], rows[3, 5] = [1, 1], [2, -2], -1
    result = _native.evaluate_fourier_series(rows.tolist(), (2 * np.pi * np.arange(600) / 600).tolist())
    writhe = _native.writhe_gauss_curve(result.positions, result.tangents)
    exact = _native.compute_polygonal_gauss(np.array(result.positions))["signed_integral"]
    assert writhe == pytest.approx(exact, abs=1e-4) and abs(exact) > 3


def test_short_tangents_raise_and_infinite_points_meet_no_self_pair():
    with pytest.raises(ValueError, match="writhe_gauss_curve"):
        _native.writhe_gauss_curve([[0, 0, 0], [1, 0, 0]], [[1, 0, 0]])
    assert _native.writhe_gauss_curve([[math.inf, 0, 0]], [[1, 0, 0]]) == 0.0
