"""Energies of a closed polygon, the cutoff scan and the mass of a polyline, against plain Python loops."""

import math

import _native
import numpy as np
import pytest

RC = 1.40897017e-15


def curve(n, seed=0):
    return np.random.default_rng(seed).normal(size=(n, 3))


def circle(n, radius=1.0):
    s = 2 * np.pi * np.arange(n) / n
    return radius * np.stack([np.cos(s), np.sin(s), 0 * s], axis=1)


def plain_pairs(points, rc, term):
    """Sum of 2 term(dl_i, dl_j, R, rc) over i < j, one after the other."""
    p = points.tolist()
    d = (np.roll(points, -1, axis=0) - points).tolist()
    total = 0.0
    for i in range(len(p)):
        for j in range(i + 1, len(p)):
            total += term(d[i], d[j], [b - a for a, b in zip(p[i], p[j], strict=True)], rc)
    return total


def dot(a, b):
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]


def neumann_term(a, b, r, rc):
    return 2 * (dot(a, b) / math.sqrt(dot(r, r) + rc * rc))


def writhe_term(a, b, r, rc):
    n = math.sqrt(dot(r, r) + rc * rc)
    cross = (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])
    return 2 * dot(cross, r) / (n * n * n)


def plain_repulsion(points, rc):
    n, total = len(points), 0.0
    for i in range(n):
        for j in range(i + 2, n):
            if (i, j) == (0, n - 1):
                continue
            r = [b - a for a, b in zip(points[i].tolist(), points[j].tolist(), strict=True)]
            s = (rc + rc) / max(math.sqrt(dot(r, r)), 1e-30)
            if s > 0.1:
                total += s**12.0
    return total


@pytest.mark.parametrize("n", [2, 3, 4, 31, 32, 33, 34, 97])
def test_pair_sums_have_the_bits_of_the_plain_loop(n):
    points = curve(n, n)
    assert _native.calculate_neumann_self_energy(points, 0.3) == plain_pairs(points, 0.3, neumann_term)
    assert _native.calculate_writhe(points, 0.3) == plain_pairs(points, 0.3, writhe_term) / 12.566370614359172
    for rc in (0.02, 0.3, -1.0, math.nan):  # the first reaches some of the pairs only
        assert _native.calculate_core_repulsion(points, rc) == plain_repulsion(points, rc)


def test_curve_of_known_values():
    ring = circle(3000, 2.0)
    assert _native.calculate_length(ring) == pytest.approx(2 * math.pi * 2, rel=1e-6)
    assert _native.calculate_curvature_penalty(ring) == pytest.approx(2 * math.pi / 2, rel=1e-6)
    assert _native.calculate_writhe(ring, 0.0) == pytest.approx(0.0, abs=1e-12)
    # Neumann's integral of a thin ring of radius R softened by rc is 4 pi R (ln(8 R / rc) - 2).
    assert _native.calculate_neumann_self_energy(ring, 0.05) + 3000 * (4 * math.pi / 3000) ** 2 / 0.05 == pytest.approx(
        4 * math.pi * 2 * (math.log(8 * 2 / 0.05) - 2), rel=1e-3
    )
    s = 2 * np.pi * np.arange(4000) / 4000
    knot = np.stack([np.sin(s) + 2 * np.sin(2 * s), np.cos(s) - 2 * np.cos(2 * s), -np.sin(3 * s)], axis=1)
    assert _native.calculate_writhe(knot, 1e-6) == pytest.approx(-_native.compute_writhe([*knot, knot[0]]), rel=1e-6)


FUNCTIONALS = {
    "calculate_neumann_self_energy": (0.1,),
    "calculate_core_repulsion": (0.1,),
    "calculate_length": (),
    "calculate_writhe": (0.1,),
    "calculate_curvature_penalty": (),
}


@pytest.mark.parametrize("name", FUNCTIONALS)
def test_short_curves_and_bad_shapes(name):
    call = getattr(_native, name)
    assert call(np.zeros((0, 3)), *FUNCTIONALS[name]) == call(np.ones((1, 3)), *FUNCTIONALS[name]) == 0.0
    strided = np.asfortranarray(curve(40))[::2]
    assert call(strided, *FUNCTIONALS[name]) == call(strided.tolist(), *FUNCTIONALS[name])
    with pytest.raises(RuntimeError, match=rf"^{name}: points must have shape \(N, 3\)$"):
        call(np.zeros((3, 4)), *FUNCTIONALS[name])
    with pytest.raises(RuntimeError, match=r"^array has incorrect number of dimensions: 1; expected 2$"):
        call(np.zeros(3), *FUNCTIONALS[name])


def test_guards():
    triangle = curve(3)
    assert _native.calculate_core_repulsion(triangle, 1e3) == 0.0
    square = circle(4)
    double = np.insert(square, 2, square[2], axis=0)  # vertices next to a repeated point are straight
    assert _native.calculate_curvature_penalty(double) == pytest.approx(3 * math.sqrt(2))
    assert math.isnan(_native.calculate_writhe([[0, 0, 0], [1, 0, 0], [0, 0, 0], [0, 1, 1]], 0.0))  # 0 / 0
    far = [[0, 0, 0], [9, 0, 0], [0, 0, 0], [0, 9, 0], [9, 9, 9]]
    assert _native.calculate_core_repulsion(far, 1e-20) == pytest.approx((2e-20 / 1e-30) ** 12)
    on_threshold = [[0, 0, 0], [0, 50, 0], [20, 0, 0], [0, -50, 0]]  # 2 rc / d is 0.1 for rc = 1
    assert _native.calculate_core_repulsion(on_threshold, 1.0) == 0.0
    assert _native.calculate_core_repulsion(on_threshold, 1.0 + 1e-9) == pytest.approx(1e-12)


def plain_cutoff(points, tangents, ds, cutoff):
    d = np.linalg.norm(points[:, None] - points, axis=2)
    with np.errstate(divide="ignore", invalid="ignore"):
        x = tangents @ tangents.T / d * ds[:, None] * ds
    return x[(d > cutoff) & (d > 0)].sum() / (8 * math.pi)


@pytest.mark.parametrize("n", [0, 1, 2, 33, 90])
def test_cutoff_scan(n):
    rng = np.random.default_rng(n)
    points, tangents, ds = rng.normal(size=(n, 3)), rng.normal(size=(n, 3)), rng.uniform(0.1, 1, n)
    if n > 40:
        points[40] = points[3]  # coincident: counts never
    a_values = np.sort(np.concatenate([[-1.0, 0.0, 0.0], rng.uniform(0, 5, 97), [100.0]]))
    energies = _native.calculate_bs_cutoff_energy_scan(points, tangents, ds, a_values)
    wanted = [plain_cutoff(points, tangents, ds, a) for a in a_values]
    np.testing.assert_allclose(energies, wanted, rtol=1e-12, atol=1e-12)
    for m in (0, 3, 50):
        single = _native.calculate_bs_cutoff_energy(points, tangents, ds, a_cutoff=a_values[m])
        assert single == pytest.approx(energies[m], rel=1e-12, abs=1e-12)
    assert _native.calculate_bs_cutoff_energy(points, tangents, ds, 100.0) == 0.0
    assert _native.calculate_bs_cutoff_energy_scan(points, tangents, ds, []).shape == (0,)


def test_cutoff_boundary_is_excluded_and_an_unsorted_list_follows_the_binary_search():
    points, tangents, ds = np.array([[0.0, 0, 0], [3, 4, 0]]), np.array([[1.0, 0, 0]] * 2), np.ones(2)
    pair = 2 / 5 / (8 * math.pi)
    scan = _native.calculate_bs_cutoff_energy_scan
    assert scan(points, tangents, ds, [4.9, 5.0, 5.1]).tolist() == [pytest.approx(pair), 0.0, 0.0]
    # The search for the first entry that is not below 5 probes 1, then 9, and stops there: two entries count.
    assert scan(points, tangents, ds, [9.0, 7.0, 1.0, 9.0]).tolist() == pytest.approx([pair, pair, pair, 0.0])
    assert scan(points, tangents, ds, [math.nan]).tolist() == [0.0]


@pytest.mark.parametrize(
    "name, last", [("calculate_bs_cutoff_energy", 1.0), ("calculate_bs_cutoff_energy_scan", [1.0])]
)
def test_cutoff_shapes(name, last):
    call, good = getattr(_native, name), np.zeros((5, 3))
    for points, tangents, ds in (
        (good, good[:4], np.zeros(5)),
        (good, good, np.zeros(4)),
        (good, np.zeros((4, 2)), []),
    ):
        with pytest.raises(RuntimeError, match=f"^{name}: inconsistent N dimensions$"):
            call(points, tangents, ds, last)
    with pytest.raises(RuntimeError, match=rf"^{name}: points/tangents must have shape \(N, 3\)$"):
        call(good, np.zeros((5, 2)), np.zeros(5), last)
    with pytest.raises(RuntimeError, match=r"^array has incorrect number of dimensions: 2; expected 1$"):
        call(good, good, good, last)


@pytest.mark.parametrize("n", [1, 2, 32, 70])
def test_mass_of_a_polyline(n):
    points = curve(n, n) * RC
    d = np.roll(points, -1, axis=0) - points
    total = 0.0
    for i in range(n):
        row = 0.0
        for j in range(n):
            r = (points[i] - points[j]).tolist()
            row += dot(d[i].tolist(), d[j].tolist()) / math.sqrt(dot(r, r) + 1.985196939949829e-30)
        total += row
    core, fluid = _native.compute_vkm_mass(points.tolist(), 2.0)
    assert core == _native.calculate_length(points) * 2.4282113828462446e-11
    assert fluid == 2.0 * 2.0 * 2.6117619251066605e-24 * total / 89875517873681760.0
    assert _native.compute_vkm_mass([], chi_spin=math.inf) == (0.0, 0.0)
