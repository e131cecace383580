"""Evenly spaced points on closed polygons and circles."""

import math

import _native
import numpy as np
import pytest


def resampled(points, n):
    """Piecewise linear, at equal steps of the closed length."""
    closed = np.vstack([points, points[:1]])
    length = np.concatenate([[0], np.cumsum(np.linalg.norm(np.diff(closed, axis=0), axis=1))])
    at = np.arange(n) * length[-1] / n
    return np.stack([np.interp(at, length, closed[:, c]) for c in range(3)], axis=1)


@pytest.mark.parametrize("n", [1, 2, 7, 40])
@pytest.mark.parametrize("count", [2, 3, 11])
def test_resampling_follows_the_closed_length(count, n):
    points = np.random.default_rng(count).normal(size=(count, 3))
    points[count // 2] = points[0] if count > 2 else points[1]  # an edge without length, or more
    result = _native.resample_closed_curve(points, n)
    assert np.allclose(result, resampled(points, n), atol=1e-13)
    assert np.array_equal(result[0], points[0])
    assert np.array_equal(_native.sample_curve(points.tolist(), n), points if n == count else result)


def test_a_curve_of_the_right_count_stays_as_it_is():
    uneven = np.array([[0.0, 0, 0], [9, 0, 0], [10, 0, 0], [10, 1, 0]])
    assert np.array_equal(_native.sample_curve(uneven, 4), uneven)
    assert np.array_equal(_native.sample_curve(uneven, 7, arclength_uniform=False), uneven)
    assert np.allclose(_native.resample_closed_curve(uneven, 2), [[0, 0, 0], resampled(uneven, 2)[1]])


@pytest.mark.parametrize(
    "points", [np.zeros((0, 3)), np.ones((1, 3)), np.ones((5, 3)), np.full((5, 3), math.nan)], ids=str
)
def test_without_a_length_samples_are_zeros(points):
    assert np.array_equal(_native.resample_closed_curve(points, 6), np.zeros((6, 3)))
    assert _native.resample_closed_curve(points, 0).shape == (0, 3)


def test_circle():
    t = 2 * np.pi * np.arange(7) / 7
    expected = np.stack([2 * np.cos(t), 2 * np.sin(t), np.full(7, -3.0)], axis=1)
    assert np.allclose(_native.sample_circle(7, 2.0, z=-3.0), expected, atol=1e-15)
    assert np.array_equal(_native.sample_circle(1), [[1.0, 0.0, 0.0]])
    assert _native.sample_circle(0).shape == (0, 3)


@pytest.mark.parametrize("sample", [_native.resample_closed_curve, _native.sample_curve])
def test_bad_input(sample):
    with pytest.raises(ValueError, match=r"^Expected \(N,3\) array$"):
        sample(np.zeros((4, 2)), 4)
    for shape in [(3,), (2, 3, 3)]:
        text = f"^array has incorrect number of dimensions: {len(shape)}; expected 2$"
        with pytest.raises(ValueError, match=text):
            sample(np.zeros(shape), 4)
    for count in (-1, 2**32):
        with pytest.raises(TypeError):
            sample(np.zeros((4, 3)), count)
