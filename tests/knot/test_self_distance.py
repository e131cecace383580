"""The search for the least self-distance against the plain loop over all pairs."""

import math

import _native
import numpy as np
import pytest


def plain(points, window):
    points = np.asarray(points, dtype=float).tolist()
    n = len(points)
    if n < 4:
        return 0.0
    best = math.inf
    for i in range(n):
        for j in range(i + 1, n):
            if min(j - i, n - (j - i)) > window:
                dx, dy, dz = (a - b for a, b in zip(points[i], points[j], strict=True))
                d = math.sqrt(dx * dx + dy * dy + dz * dz)
                if d < best:
                    best = d
    return best if best < math.inf else 0.0


def cloud(n, seed=0):
    return np.random.default_rng(seed).normal(size=(n, 3))


def torus_knot(n, p=2, q=3):
    s = 2 * np.pi * np.arange(n) / n
    r = 2 + np.cos(q * s)
    return np.stack([r * np.cos(p * s), r * np.sin(p * s), np.sin(q * s)], axis=1)


def spoiled(points, bad):
    """Every seventh point with one coordinate that is not finite; one point with all three."""
    points = points.copy()
    points[::7, 1] = bad
    points[3] = bad
    return points


CURVES = {
    **{f"cloud {n}": cloud(n, n) for n in (0, 1, 3, 4, 5, 7, 8, 9, 16, 17, 64, 65, 129, 300)},
    "knot": torus_knot(257),
    "tight knot": torus_knot(200, 3, 7) * [1, 1, 0.05],
    "equal points": np.ones((90, 3)),
    "line": np.outer(np.arange(90.0) ** 2, [1, 2, 3]),
    "grid with ties": np.round(cloud(200, 1) * 3),
    "two places": np.repeat([[0.0, 0, 0], [1, 1, 1]], 40, axis=0),
    "alternating": np.tile([[0.0, 0, 0], [1, 1, 1]], (40, 1)),
    "nan": spoiled(cloud(80), math.nan),
    "infinite": spoiled(cloud(80), math.inf),
    "minus infinite": spoiled(cloud(80), -math.inf),
    "all nan": np.full((20, 3), math.nan),
    "huge": cloud(70) * 1e150,
    "overflowing": np.clip(cloud(70), -1.7, 1.7) * 1e308,
    "widest": np.sign(cloud(70)) * 1.7e308,
    "tiny": cloud(70) * 1e-170,
    "one outlier": np.vstack([cloud(70), [[1e300, 0, 0]]]),
    "signed zeros": np.where(cloud(40) > 0, 0.0, -0.0),
}


@pytest.mark.parametrize("window", [-(2**62), -1, 0, 1, 4, 20, 31, 2**62])
@pytest.mark.parametrize("name", CURVES)
def test_bits_of_the_plain_loop(name, window):
    points = CURVES[name]
    assert _native.min_self_distance_sampled(points.tolist(), window).hex() == plain(points, window).hex()


@pytest.mark.parametrize("window", range(0, 41, 5))
def test_windows_up_to_half_the_curve(window):
    points = torus_knot(80)
    assert _native.min_self_distance_sampled(points.tolist(), window).hex() == plain(points, window).hex()


def test_defaults_and_least_sizes():
    assert _native.min_self_distance_sampled([[0.0, 0, 0], [1, 0, 0], [0, 1, 0]], 0) == 0.0
    points = cloud(12)
    assert _native.min_self_distance_sampled(points=points.tolist()) == plain(points, 4)
    assert _native.min_self_distance_sampled(points[:5].tolist()) == 0.0  # no gap above 4
    square = [[0.0, 0, 0], [3, 0, 0], [3, 4, 0], [0, 4, 0]]
    assert _native.min_self_distance_sampled(square, 1) == 5.0  # only the diagonals are not neighbours
