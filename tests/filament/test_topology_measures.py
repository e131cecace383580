"""Writhe, linking number, twist and reconnection candidates of open vertex lists, against plain Python loops."""

import itertools
import math

import _native
import numpy as np
import pytest


def closed(points):
    return np.vstack([points, points[:1]])


def circle(n, center=(0.0, 0.0, 0.0), axes=((1, 0, 0), (0, 1, 0))):
    s = 2 * np.pi * np.arange(n) / n
    return np.asarray(center) + np.outer(np.cos(s), axes[0]) + np.outer(np.sin(s), axes[1])


def trefoil(n):
    s = 2 * np.pi * np.arange(n) / n
    return np.stack([np.sin(s) + 2 * np.sin(2 * s), np.cos(s) - 2 * np.cos(2 * s), -np.sin(3 * s)], axis=1)


def gauss_sum(X, d, Y, e, pairs):
    """The plain double loop, term after term."""
    total = 0.0
    for i, j in pairs:
        rx, ry, rz = (X[i][k] - Y[j][k] for k in range(3))
        r = math.sqrt(rx * rx + ry * ry + rz * rz)
        if r < 1e-6:
            continue
        (ax, ay, az), (bx, by, bz) = d[i], e[j]
        triple = (ay * bz - az * by) * rx + (az * bx - ax * bz) * ry + (ax * by - ay * bx) * rz
        total += triple / (r * r * r)
    return total


def plain_writhe(X):
    d = np.diff(X, axis=0).tolist()
    X = X.tolist()
    return gauss_sum(X, d, X, d, itertools.combinations(range(len(d)), 2)) / (2 * math.pi)


def plain_linking(A, B):
    a, b = np.diff(A, axis=0).tolist(), np.diff(B, axis=0).tolist()
    return gauss_sum(A.tolist(), a, B.tolist(), b, itertools.product(range(len(a)), range(len(b)))) / (4 * math.pi)


@pytest.mark.parametrize("n", [2, 3, 4, 17, 18, 19, 33, 34, 150])
def test_writhe_has_the_bits_of_the_plain_loop(n):
    X = np.random.default_rng(n).normal(size=(n, 3))
    X[n // 2] = X[0]  # a pair that is left out
    assert _native.compute_writhe(X.tolist()).hex() == plain_writhe(X).hex()


def test_writhe_of_known_curves():
    assert _native.compute_writhe(closed(circle(400)).tolist()) == pytest.approx(0.0, abs=1e-12)
    knot = closed(trefoil(2000))
    writhe = _native.compute_writhe(knot.tolist())
    assert abs(writhe) == pytest.approx(3.4, abs=0.2)
    assert _native.compute_writhe((knot * [1, 1, -1]).tolist()) == pytest.approx(-writhe, rel=1e-12)


def test_writhe_reads_an_open_list():
    knot = trefoil(40)
    assert _native.compute_writhe(knot.tolist()) != _native.compute_writhe(closed(knot).tolist())
    assert [_native.compute_writhe(knot[:n].tolist()) for n in range(4)][:3] == [0.0, 0.0, 0.0]


def test_near_starts_are_left_out_and_nan_is_not():
    X = np.array([[0, 0, 0], [1, 0, 0], [1, 1, 0.5], [0, 0, 0.9e-6], [0.2, 1, 1], [1, 2, 3]])
    assert _native.compute_writhe(X.tolist()).hex() == plain_writhe(X).hex()
    X[3, 2] = 1e-6  # the least distance that counts
    assert _native.compute_writhe(X.tolist()).hex() == plain_writhe(X).hex()
    X[4, 1] = math.nan
    assert math.isnan(_native.compute_writhe(X.tolist()))


def test_centerline_helicity_is_the_writhe():
    X = trefoil(50).tolist()
    assert _native.compute_centerline_helicity(X, []) == _native.compute_writhe(X)


def test_hopf_link():
    a, b = closed(circle(200)), closed(circle(200, (1, 0, 0), ((1, 0, 0), (0, 0, 1))))
    number = _native.compute_linking_number(a.tolist(), b.tolist())
    assert number == round(plain_linking(a[::2], b[::2])) and abs(number) == 1
    assert _native.compute_linking_number(a.tolist(), b[::-1].tolist()) == -number
    assert _native.compute_linking_number(a.tolist(), (b + np.array([5, 0, 0])).tolist()) == 0
    # two half circles hold half of the integral and less
    assert _native.compute_linking_number(a[:100].tolist(), b[:100].tolist()) == 0


def test_linking_number_of_short_and_wild_lists():
    a = trefoil(12)
    for first, second in (
        [[], a.tolist()],
        [a[:1].tolist(), a.tolist()],
        [a.tolist(), []],
        [a.tolist(), a[:1].tolist()],
    ):
        assert _native.compute_linking_number(first, second) == 0
    assert _native.compute_linking_number([[math.nan] * 3, [0.0] * 3], a.tolist()) == 0
    # one pair with ((a x b) . R) / r^3 = 1e12 or so: far beyond 32 bits
    huge = [[0.0, 0.0, 0.0], [1e6, 0.0, 0.0]], [[0.0, 0.0, -1.0], [0.0, 1e6, -1.0]]
    assert _native.compute_linking_number(*huge) == 2**31 - 1
    assert _native.compute_linking_number(*huge[::-1]) in (2**31 - 1, -(2**31))


def test_linking_number_rounds_halves_away_from_zero():
    def number(value):  # one pair of edges at distance 1 whose term is 4 pi value
        return _native.compute_linking_number([[0, 0, 0], [4 * math.pi * value, 0, 0]], [[0, 0, -1], [0, 1, -1]])

    assert [number(v) for v in (0.49, 0.5, 1.5, 2.5, -0.5, -2.5)] == [0, 1, 2, 3, -1, -3]


def test_twist_of_a_turning_normal():
    n, turns = 400, 3
    angle = 2 * np.pi * turns * np.arange(n) / (n - 1)
    N = np.stack([np.cos(angle), np.sin(angle), np.zeros(n)], axis=1)
    T = np.tile([0.0, 0.0, 1.0], (n, 1))
    step = angle[1]
    assert _native.compute_twist(T.tolist(), N.tolist()) == pytest.approx(-(n - 2) * math.sin(step) / (2 * math.pi))
    assert _native.compute_twist(T[:2].tolist(), N[:2].tolist()) == 0.0
    assert _native.compute_twist(T[:2].tolist(), []) == 0.0
    with pytest.raises(ValueError, match="compute_twist"):
        _native.compute_twist(T.tolist(), N[:-1].tolist())


@pytest.mark.parametrize("n", [0, 1, 5, 6, 21, 60])
@pytest.mark.parametrize("threshold", [0.0, 0.8, 2.0, math.inf, math.nan])
def test_reconnection_candidates(n, threshold):
    X = np.random.default_rng(n).normal(size=(n, 3))
    if n > 8:
        X[8] = math.nan
    pairs = [(i, j) for i in range(n) for j in range(i + 5, n) if threshold > math.dist(X[i], X[j])]
    assert _native.detect_reconnection_candidates(X.tolist(), threshold) == pairs


def test_reconnection_threshold_is_strict_and_does_not_wrap():
    X = [[float(i), 0.0, 0.0] for i in range(6)]
    assert _native.detect_reconnection_candidates(X, 5.0) == []
    assert _native.detect_reconnection_candidates(X, math.nextafter(5.0, 6.0)) == [(0, 5)]


def test_arguments_are_positional():
    for name in ("compute_writhe", "compute_twist", "detect_reconnection_candidates"):
        assert "arg0" in getattr(_native, name).__doc__
