"""Planar diagrams and crossing estimates, against plain Python loops and the determinants of known knots."""

import math
import sys
import types

import _native
import numpy as np
import pytest


def trefoil(n):
    s = 2 * np.pi * np.arange(n) / n
    return np.stack([np.sin(s) + 2 * np.sin(2 * s), np.cos(s) - 2 * np.cos(2 * s), -np.sin(3 * s)], axis=1)


def torus_knot(p, q, n):
    s = 2 * np.pi * np.arange(n) / n
    r = 2 + np.cos(q * s)
    return np.stack([r * np.cos(p * s), r * np.sin(p * s), np.sin(q * s)], axis=1)


def circle(n):
    s = 2 * np.pi * np.arange(n) / n
    return np.stack([np.cos(s), np.sin(s), 0 * s], axis=1)


def catalogue_knot(knot_id, n):
    block = _native.parse_embedded_ideal_ab_by_id(knot_id)
    s = (2 * np.pi * np.arange(n) / n).tolist()
    return np.asarray(_native.evaluate_ideal_component(block.components[0], s))


def determinant(code):
    """Determinant of the knot of a code, from the colouring matrix: at each crossing 2 over - under in - under out."""
    size = 2 * len(code)
    arc = list(range(size + 1))  # labels that a strand carries on under no crossing are one arc
    for _, over_in, _, over_out in sorted(code, key=lambda row: row[1]):
        old, new = arc[over_out], arc[over_in]
        arc = [new if label == old else label for label in arc]
    columns = {label: k for k, label in enumerate(sorted(set(arc[1:])))}
    matrix = np.zeros((len(code), len(columns)))
    for row, (under_in, over_in, under_out, _) in enumerate(code):
        matrix[row, columns[arc[over_in]]] += 2
        matrix[row, columns[arc[under_in]]] -= 1
        matrix[row, columns[arc[under_out]]] -= 1
    return round(abs(np.linalg.det(matrix[1:, 1:])))


def check_labels(code):
    assert sorted(label for row in code for label in row) == sorted([*range(1, 2 * len(code) + 1)] * 2)


class Stream:
    """Directions, from NumPy's generator (the same Mersenne Twister and seeding) and the polar method."""

    def __init__(self, seed):
        self.bits = np.random.MT19937()
        self.bits._legacy_seeding(seed)
        self.kept = None

    def uniform(self):
        low, high = (int(word) for word in self.bits.random_raw(2))
        return (float(low) + high * 4294967296.0) / 18446744073709551616.0

    def normal(self):
        if self.kept is not None:
            value, self.kept = self.kept, None
            return value
        s = 0.0
        while not 0.0 < s < 1.0:
            x, y = 2 * self.uniform() - 1, 2 * self.uniform() - 1
            s = x * x + y * y
        factor = math.sqrt(-2 * math.log(s) / s)
        self.kept = y * factor
        return x * factor

    def projection(self, points, guard):
        v = [self.normal() for _ in range(3)]
        length = math.sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2])
        d = [c / (length + guard) for c in v]
        w = (1.0, 0.0, 0.0) if abs(d[0]) < 0.9 else (0.0, 1.0, 0.0)
        a = cross(d, w)
        length = math.sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2])
        a = [c / (length + guard) for c in a]
        axes = (a, cross(d, a), d)
        return [[p[0] * e[0] + p[1] * e[1] + p[2] * e[2] for e in axes] for p in points]


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def plain_crossings(q, min_angle, depth_tol):
    n = len(q)
    found = []
    for i in range(n):
        for j in range(i + 2, n - (i == 0)):
            A, B, C, D = q[i], q[(i + 1) % n], q[j], q[(j + 1) % n]
            ex, ey, fx, fy, gx, gy = A[0] - B[0], A[1] - B[1], C[0] - D[0], C[1] - D[1], A[0] - C[0], A[1] - C[1]
            denom = fy * ex - fx * ey
            if abs(denom) < 1e-12:
                continue
            t, u = (fy * gx - fx * gy) / denom, (gx * ey - gy * ex) / denom
            if not (1e-12 < t < 0.999999999999 and 1e-12 < u < 0.999999999999):
                continue
            z1, z2 = A[2] + t * (B[2] - A[2]), C[2] + u * (D[2] - C[2])
            cosine = abs(ex * fx + ey * fy) / (math.hypot(ex, ey) * math.hypot(fx, fy))
            if abs(z1 - z2) < depth_tol or min_angle > math.degrees(math.acos(min(1.0, cosine))):
                continue
            found.append((i, j, t, u, z1 > z2))
    return found


def plain_code(points, tries, seed, min_angle=1.0, depth_tol=1e-6):
    stream, best = Stream(seed), []
    for _ in range(tries):
        stream.kept = None
        found = plain_crossings(stream.projection(points.tolist(), 1e-18), min_angle, depth_tol)
        best = found if len(found) > len(best) else best
    passages = []
    for c, (i, j, t, u, over) in enumerate(best):
        passages += [((i + t) / len(points), c, over), ((j + u) / len(points), c, not over)]
    code = [[0] * 4 for _ in best]
    for k, (_, c, over) in enumerate(sorted(passages)):
        code[c][over], code[c][over + 2] = k or len(passages), k + 1
    return code


@pytest.mark.parametrize(
    "points, options",
    [
        (trefoil(70), {}),
        (torus_knot(7, 12, 300), {"tries": 3}),
        (trefoil(33), {"seed": -7, "tries": 3}),
        (np.random.default_rng(1).normal(size=(45, 3)), {"tries": 6, "min_angle_deg": 20.0, "depth_tol": 0.3}),
        (np.random.default_rng(2).normal(size=(45, 3)) * 1e4, {"tries": 4}),
        (np.random.default_rng(3).normal(size=(45, 3)).round(0), {"tries": 4}),  # edges that touch and overlap
        (np.vstack([trefoil(60), [[math.nan, 0, 0], [math.inf, 1, 1], [1e200, 0, 3]]]), {"tries": 8}),
    ],
)
def test_code_is_that_of_the_plain_loop(points, options):
    code = _native.pd_from_curve(points, **options)
    check_labels(code)
    plain = {"tries": 40, "seed": 12345, **options}
    assert code == plain_code(
        points, plain["tries"], plain["seed"] % 2**32, plain.get("min_angle_deg", 1.0), plain.get("depth_tol", 1e-6)
    )


def test_estimate_is_that_of_the_plain_loop():
    points = np.random.default_rng(5).normal(size=(50, 3))
    for directions in (1, 2, 5):
        stream = Stream(99)  # one normal distribution for all directions
        counts = []
        for _ in range(directions):
            q = stream.projection(points.tolist(), 1e-12)
            counts.append(len(plain_crossings(q, 0.0, 0.0)))
        assert _native.estimate_crossing_number(points.tolist(), directions, 99) == min(counts)


@pytest.mark.parametrize("knot_id, wanted", [("3:1:1", 3), ("4:1:1", 5), ("0:1:1", 1)])
def test_determinants_of_catalogue_knots(knot_id, wanted):
    points = catalogue_knot(knot_id, 301)
    if knot_id == "0:1:1":
        points[:, 2] += 0.3 * np.sin(3 * np.arange(301) * 2 * np.pi / 301)
        points[::2] *= 1.05
    for seed in (12345, 1):
        code = _native.pd_from_curve(points, seed=seed)
        check_labels(code)
        assert determinant(code) == wanted
    crossings = int(knot_id[0])
    assert crossings <= _native.estimate_crossing_number(points.tolist(), directions=400) <= len(code)


def test_curves_without_a_diagram():
    failure = "^Failed to extract PD from any projection$"
    for points, options in (
        (circle(100), {}),
        (trefoil(80), {"depth_tol": 100.0}),
        (trefoil(80), {"min_angle_deg": 91.0}),
        (trefoil(80), {"tries": 0}),
        (np.zeros((5, 3)), {}),
        (np.full((5, 3), math.nan), {}),
    ):
        with pytest.raises(RuntimeError, match=failure):
            _native.pd_from_curve(points, **options)
    with pytest.raises(ValueError, match=r"^pd_from_curve: need at least 4 points$"):
        _native.pd_from_curve(np.zeros((3, 3)))
    for function in (_native.pd_from_curve, _native.compute_curvature):  # one text for both
        with pytest.raises(ValueError, match=r"^pd_from_curve: expected array with shape \(N,3\)$"):
            function(np.zeros((3, 9)))
    assert _native.estimate_crossing_number(circle(100).tolist()) == 0
    assert _native.estimate_crossing_number(circle(10).tolist(), directions=0) == 100
    assert [_native.estimate_crossing_number([[0.0, 0.0, 0.0]] * n) for n in range(4)] == [0] * 4


@pytest.fixture
def solver(monkeypatch):
    module = types.ModuleType("vkm_hypvol_no_deps")
    monkeypatch.setitem(sys.modules, "vkm_hypvol_no_deps", module)
    return module


def test_hyperbolic_volume_is_delegated(solver):
    seen = []
    solver.hyperbolic_volume_from_pd = lambda pd, verbose=True: seen.append((pd, verbose)) or np.float32(2.5)
    assert _native.hyperbolic_volume_from_pd(pd=[(1, 2, 3, 4), [2, 1, 4, 3]]) == 2.5
    assert seen == [([[1, 2, 3, 4], [2, 1, 4, 3]], False)]
    solver.hyperbolic_volume_from_pd = lambda pd, verbose: 3  # looked up anew at each call
    assert _native.hyperbolic_volume_from_pd([]) == 3.0
    solver.hyperbolic_volume_from_pd = lambda pd, verbose: "none"
    with pytest.raises(RuntimeError, match="cast"):
        _native.hyperbolic_volume_from_pd([])
    solver.hyperbolic_volume_from_pd = lambda pd, verbose: 1 / 0
    with pytest.raises(ZeroDivisionError):
        _native.hyperbolic_volume_from_pd([])


def test_hyperbolic_volume_without_a_solver(monkeypatch):
    monkeypatch.setitem(sys.modules, "vkm_hypvol_no_deps", None)
    with pytest.raises(ImportError):
        _native.hyperbolic_volume_from_pd([[1, 2, 3, 4]])
