"""Clearance of polygons: the bits of the plain loop over all pairs of edges."""

import math

import _native
import numpy as np
import pytest

KEYS = ["clearance", "self_min", "inter_min"]


def dot(a, b):
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]


def sub(a, b):
    return [a[0] - b[0], a[1] - b[1], a[2] - b[2]]


def segment_distance2(P0, P1, Q0, Q1):
    u, v, w = sub(P1, P0), sub(Q1, Q0), sub(P0, Q0)
    a, b, c, d, e = dot(u, u), dot(u, v), dot(v, v), dot(u, w), dot(v, w)
    D = a * c - b * b
    if D < 1e-30:
        sN, sD, tN, tD = 0.0, 1.0, e, c
    else:
        sN, sD, tN, tD = b * e - c * d, D, a * e - b * d, D
        if sN < 0:
            sN, tN, tD = 0.0, e, c
        elif sN > D:
            sN, tN, tD = D, e + b, c
    if tN < 0 or tN > tD:
        x, tN = (-d, 0.0) if tN < 0 else (-d + b, tD)
        if x < 0:
            sN = 0.0
        elif x > a:
            sN = sD
        else:
            sN, sD = x, a
    sc = 0.0 if abs(sD) < 1e-30 else sN / sD
    tc = 0.0 if abs(tD) < 1e-30 else tN / tD
    r = [w[k] + sc * u[k] - tc * v[k] for k in range(3)]
    return dot(r, r)


def plain(pairs, best=math.inf):
    """The plain loop: edges with midpoint and length, in order."""
    for (p, p1, pm, pl), (q, q1, qm, ql) in pairs:
        m = sub(pm, qm)
        g = math.sqrt(dot(m, m)) - 0.5 * (pl + ql)
        if not (g > 0 and g * g >= best):
            d2 = segment_distance2(p, p1, q, q1)
            best = d2 if d2 < best else best
    return math.sqrt(best)


def edges(curve):
    points = np.asarray(curve, float).tolist()
    result = []
    for i, p in enumerate(points):
        q = points[(i + 1) % len(points)]
        d = sub(q, p)
        result.append((p, q, [0.5 * (p[k] + q[k]) for k in range(3)], math.sqrt(dot(d, d))))
    return result


def plain_self(curve, window):
    E, n = edges(curve), len(curve)
    if n < 4:
        return math.inf
    return plain((E[i], E[j]) for i in range(n) for j in range(i + 1, n) if min(j - i, n - j + i) >= window)


def plain_pair(a, b):
    if min(len(a), len(b)) < 2:
        return math.inf
    return plain((p, q) for p in edges(a) for q in edges(b))


def knot(n, p=2, q=3):
    t = 2 * np.pi * np.arange(n) / n
    r = 2 + np.cos(q * t)
    return np.stack([r * np.cos(p * t), r * np.sin(p * t), np.sin(q * t)], axis=1)


def rectangle(n, width=0.7):
    """Straight sides, on which all neighbours' distances are equal but for their last bits."""
    s = np.arange(n) * 0.1
    low, high = np.stack([s, 0 * s, 0 * s], axis=1), np.stack([s[::-1], 0 * s + width, 0 * s], axis=1)
    return np.vstack([low, high])


RNG = np.random.default_rng(3)
CURVES = {
    "trefoil": knot(80),
    "shifted": knot(61, 3, 2) + np.array([0.3, -0.2, 0.9]),
    "rectangle": rectangle(35),
    "cloud": RNG.normal(size=(45, 3)),
    "walk": np.cumsum(RNG.normal(size=(70, 3)), axis=0),
    "repeated points": np.repeat(RNG.integers(-2, 3, size=(12, 3)).astype(float), 3, axis=0),
    "in a line": np.outer(np.arange(20.0), [0.1, 0.2, 0.3]),
    "far away": 1e6 + 1e-3 * knot(40),
    "nine": knot(9),
    "four": knot(4),
    "triangle": knot(3),
    "two": knot(2),
    "one": knot(1),
    "none": np.zeros((0, 3)),
}


@pytest.mark.parametrize("name", CURVES)
@pytest.mark.parametrize("core_radius", [0.0, 0.3, 5.0, math.inf, -1.0, math.nan])
def test_self_distance_is_that_of_the_plain_loop(name, core_radius):
    curve = CURVES[name]
    window = 2
    if core_radius > 0 and len(curve) >= 2:
        mean = np.linalg.norm(np.roll(curve, -1, axis=0) - curve, axis=1).sum() / len(curve)
        window = max(2, math.ceil(min(core_radius * 6 / max(mean, 1e-12), 1e6)))
    result = _native.analyze_resolved_tube_clearance([curve], core_radius)
    expected = plain_self(curve, window)
    assert result == {"clearance": expected, "self_min": expected, "inter_min": math.inf}
    assert list(result) == KEYS


@pytest.mark.parametrize("name", CURVES)
def test_distance_of_two_is_that_of_the_plain_loop(name):
    for other in CURVES.values():
        result = _native.compute_topology_clearance([CURVES[name], other])
        assert result["inter_min"] == plain_pair(CURVES[name], other)
        assert result["clearance"] == min(result["self_min"], result["inter_min"])


def test_many_curves():
    curves = [c + RNG.normal(scale=6, size=3) for c in CURVES.values()]
    result = _native.compute_topology_clearance(curves)
    pairs = [plain_pair(a, b) for i, a in enumerate(curves) for b in curves[i + 1 :]]
    assert result["inter_min"] == min(pairs)
    assert result["self_min"] == min(plain_self(c, 2) for c in curves)
    assert result == _native.analyze_resolved_tube_clearance(curves)
    assert _native.compute_topology_clearance([]) == dict.fromkeys(KEYS, math.inf)


def test_known_distances():
    circle = _native.sample_circle(720)
    other = _native.sample_circle(720, 1.0, 0.25)
    assert _native.compute_topology_clearance([circle, other])["inter_min"] == pytest.approx(0.25, rel=1e-12)
    hopf = circle[:, [0, 2, 1]] + np.array([1, 0, 0])
    assert _native.compute_topology_clearance([circle, hopf])["inter_min"] == pytest.approx(1.0, rel=1e-4)
    crossing = np.array([[0.0, 0, -1], [0.5, 0, 0.3], [3, 0, 0]]) + np.array([1, 0, 0])
    assert _native.compute_topology_clearance([circle, crossing - [0.5, 0, 0]])["inter_min"] < 0.2
    assert _native.compute_topology_clearance([circle, circle + np.array([0.5, 0, 0])])["inter_min"] < 1e-12


@pytest.mark.parametrize("bad", [math.nan, math.inf, 1e300])
def test_points_without_a_finite_distance_do_not_count(bad):
    curve = knot(50)
    curve[7, 1] = bad
    result = _native.compute_topology_clearance([curve, knot(30) + np.array([0, 0, 4])])
    assert result["self_min"] == plain_self(curve, 2) < math.inf
    assert result["inter_min"] == plain_pair(curve, knot(30) + np.array([0, 0, 4])) < math.inf
    nowhere = np.full((6, 3), bad)
    assert _native.compute_topology_clearance([nowhere, knot(30)])["inter_min"] == plain_pair(nowhere, knot(30))


@pytest.mark.parametrize("shape", [(3,), (4, 2), (2, 3, 3)])
def test_wrong_shapes(shape):
    calls = [
        _native.compute_topology_clearance,
        _native.analyze_resolved_tube_clearance,
        _native.compute_continuous_reach,
        _native.analyze_smooth_resolved_tube,
    ]
    for call in calls:
        with pytest.raises(ValueError, match=r"^Expected \(N,3\) array$"):
            call([knot(9), np.zeros(shape)])
