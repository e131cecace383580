"""The exact Gauss integral of closed polygons."""

import math

import _native
import numpy as np
import pytest

KEYS = ["signed_integral", "absolute_integral", "linking_integer_audit"]


def circle(n, center=(0.0, 0.0, 0.0), axes=((1, 0, 0), (0, 1, 0))):
    s = 2 * np.pi * np.arange(n) / n
    return np.asarray(center) + np.outer(np.cos(s), axes[0]) + np.outer(np.sin(s), axes[1])


def hopf(n):
    return circle(n), circle(n, (1, 0, 0), ((1, 0, 0), (0, 0, 1)))


def solid_angle(p1, p2, p3, p4):
    r13, r14, r23, r24 = p3 - p1, p4 - p1, p3 - p2, p4 - p2
    normals = [np.cross(r13, r14), np.cross(r14, r24), np.cross(r24, r23), np.cross(r23, r13)]
    if min(n @ n for n in normals) < 1e-60:
        return 0.0
    n1, n2, n3, n4 = (n / math.sqrt(n @ n) for n in normals)
    w = sum(math.asin(max(-1.0, min(1.0, c))) for c in (n2 @ n3, n1 @ n2, n3 @ n4, n4 @ n1))
    return -w if r13 @ np.cross(p4 - p3, p2 - p1) < 0 else w


@pytest.mark.parametrize("n", [3, 4, 10, 37])
def test_hopf_link_is_exact_at_any_resolution(n):
    a, b = hopf(n)
    result = _native.compute_polygonal_gauss(a, b, same_curve=False)
    assert list(result) == KEYS
    assert abs(result["signed_integral"]) == pytest.approx(1.0, abs=1e-7)  # asin near 1 halves the digits
    assert abs(result["linking_integer_audit"]) == 1 and isinstance(result["linking_integer_audit"], int)
    assert result["absolute_integral"] >= 1.0 - 1e-7
    reversed_b = _native.compute_polygonal_gauss(a, b[::-1], same_curve=False)
    assert reversed_b["linking_integer_audit"] == -result["linking_integer_audit"]
    apart = _native.compute_polygonal_gauss(a, b + np.array([0, 9, 0]), same_curve=False)
    assert apart["signed_integral"] == pytest.approx(0.0, abs=1e-7) and apart["absolute_integral"] > 0


def test_agrees_with_the_formula():
    rng = np.random.default_rng(5)
    a, b = rng.normal(size=(9, 3)), rng.normal(size=(7, 3))

    def edge(curve, i):
        return curve[i], curve[(i + 1) % len(curve)]

    pair = [solid_angle(*edge(a, i), *edge(b, j)) for i in range(9) for j in range(7)]
    result = _native.compute_polygonal_gauss(a, b, same_curve=False)
    assert result["signed_integral"] == pytest.approx(sum(pair) / (4 * math.pi), abs=1e-12)
    assert result["absolute_integral"] == pytest.approx(sum(map(abs, pair)) / (4 * math.pi), rel=1e-12)
    own = [solid_angle(*edge(a, i), *edge(a, j)) for i in range(9) for j in range(i + 2, 9) if (i, j) != (0, 8)]
    result = _native.compute_polygonal_gauss(a)
    assert result["signed_integral"] == pytest.approx(sum(own) / (2 * math.pi), rel=1e-12)
    assert result["absolute_integral"] == pytest.approx(sum(map(abs, own)) / (2 * math.pi), rel=1e-12)
    assert result["linking_integer_audit"] == round(sum(own) / (2 * math.pi))


def test_self_form_is_the_limit_of_the_writhe_and_scale_free():
    s = 2 * np.pi * np.arange(1500) / 1500
    knot = np.stack([np.sin(s) + 2 * np.sin(2 * s), np.cos(s) - 2 * np.cos(2 * s), -np.sin(3 * s)], axis=1)
    exact = _native.compute_polygonal_gauss(knot[::5])["signed_integral"]
    summed = _native.compute_writhe([*knot.tolist(), knot[0].tolist()])
    assert exact == pytest.approx(summed, abs=0.02)
    assert _native.compute_polygonal_gauss(1e5 * knot[::5])["signed_integral"] == pytest.approx(exact, rel=1e-9)
    planar = _native.compute_polygonal_gauss(circle(20))
    assert planar["signed_integral"] == pytest.approx(0.0, abs=1e-6)


def test_curve_b_counts_only_when_same_curve_is_false():
    a, b = hopf(12)
    assert _native.compute_polygonal_gauss(a, b) == _native.compute_polygonal_gauss(a)
    assert _native.compute_polygonal_gauss(a, None, False) == _native.compute_polygonal_gauss(a)
    assert _native.compute_polygonal_gauss(a, np.zeros((2, 2))) == _native.compute_polygonal_gauss(a)


def test_short_and_degenerate_curves_give_zeros():
    a, _ = hopf(12)
    zeros = dict(zip(KEYS, (0.0, 0.0, 0), strict=True))
    assert _native.compute_polygonal_gauss(a[:3]) == zeros  # every pair of edges is adjacent
    assert _native.compute_polygonal_gauss(np.zeros((0, 3))) == zeros
    assert _native.compute_polygonal_gauss(a, a[:2], False) == zeros
    assert _native.compute_polygonal_gauss(np.outer(np.arange(8.0), [1, 2, 3])) == zeros  # all in a line
    assert _native.compute_polygonal_gauss(np.ones((8, 3))) == zeros


def test_nan_gives_nan_and_audit_zero():
    a, _ = hopf(6)
    a[2, 1] = math.nan
    result = _native.compute_polygonal_gauss(a)
    assert math.isnan(result["signed_integral"]) and result["linking_integer_audit"] == 0


@pytest.mark.parametrize("shape", [(3,), (4, 2), (3, 4), (2, 3, 3)])
def test_wrong_shapes(shape):
    a, _ = hopf(6)
    with pytest.raises(ValueError, match=r"^Expected \(N,3\) array$"):
        _native.compute_polygonal_gauss(np.zeros(shape))
    with pytest.raises(ValueError, match=r"^Expected \(N,3\) array$"):
        _native.compute_polygonal_gauss(a, np.zeros(shape), same_curve=False)
