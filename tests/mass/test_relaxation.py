"""ParticleEvaluator.relax holds the bits of the plain loop over all pairs."""

import _native
import numpy as np
import pytest
from interruption import ended_by_a_signal

ELECTRON_RADIUS = 2.81794034e-15


def plain_relax(filaments, iterations, dt=0.01, sources=None):
    """The formulas over all pairs, with the sums in their order. `sources` may name the only points that repel."""
    sizes = [len(f) for f in filaments]
    first = np.repeat(np.cumsum([0, *sizes[:-1]]), sizes)
    size = np.repeat(sizes, sizes)
    p = np.array([q for f in filaments for q in f], dtype=float).reshape(-1, 3)
    n = len(p)
    local = np.arange(n) - first
    before, after = first + (local + size - 1) % size, first + (local + 1) % size
    v = np.zeros_like(p)
    with np.errstate(all="ignore"):
        for _ in range(iterations):
            centre = np.cumsum(p, axis=0)[-1] / n
            force = np.zeros_like(p)
            force += ((p[after] - p) + (p[before] - p)) * 25.0
            force += (centre - p) * 15.0
            for j in range(n) if sources is None else sources:
                d = p - p[j]
                r2 = d[:, 0] * d[:, 0] + d[:, 1] * d[:, 1] + d[:, 2] * d[:, 2]
                hit = (r2 > 1e-8) & (r2 < 0.04000000000000001)
                hit[[j, before[j], after[j]]] = False
                d, r2 = d[hit], r2[hit]
                force[hit] += (d / np.sqrt(r2)[:, None]) * np.minimum(200.0, 0.5 / (r2 * r2))[:, None]
            v = (dt * force + v) * 0.7
            p = dt * v + p
        centre = np.cumsum(p, axis=0)[-1] / n
        d = p - centre
        radius = np.sqrt(d[:, 0] * d[:, 0] + d[:, 1] * d[:, 1] + d[:, 2] * d[:, 2])
        radius = np.fmax.reduce(radius, initial=0.0)
        if radius < 1e-12:
            radius = 1e-6
        p = (p - centre) * (ELECTRON_RADIUS / radius) + centre
    return p


def relaxed(filaments, iterations, dt=0.01):
    evaluator = _native.ParticleEvaluator([[list(map(float, q)) for q in f] for f in filaments])
    evaluator.relax(iterations, dt)
    result = evaluator.get_filaments()
    assert [len(f) for f in result] == [len(f) for f in filaments]
    return np.array([q for f in result for q in f], dtype=float).reshape(-1, 3)


def trefoil(n, length):
    t = np.arange(n) * 2 * np.pi / n
    p = np.column_stack([np.sin(t) + 2 * np.sin(2 * t), np.cos(t) - 2 * np.cos(2 * t), -np.sin(3 * t)])
    return p * (length / np.linalg.norm(np.roll(p, -1, axis=0) - p, axis=1).sum())


def cloud(n, width, seed=1, at=0.0):
    return np.random.default_rng(seed).uniform(-width / 2, width / 2, (n, 3)) + np.array(at)


def crossing_windows():
    """Distances on both edges of the window, one ulp around them too."""
    far, near = 0.2, 1e-4
    xs = [0.0]
    for gap in (far, near, np.nextafter(far, 1), np.nextafter(near, 0), np.nextafter(far, 0), np.nextafter(near, 1)):
        xs += [xs[-1] + 10.0, xs[-1] + 10.0 + gap]
    return [[[x, 0.0, 0.0]] for x in xs] + [[[0.2, 0.0, 0.0]], [[0.0, -0.2, 0.0]], [[0.0, 0.0, 1e-4]]]


CASES = {
    "knot": ([trefoil(400, 6.0)], 7, 0.01),
    "dense knot": ([trefoil(500, 2.0)], 5, 0.01),
    "slow dense knot": ([trefoil(300, 2.0)], 4, 1e-5),
    "two rings and a cloud": ([trefoil(60, 3.0), cloud(200, 1.0), trefoil(80, 4.0)[::-1] + 0.1], 8, 0.01),
    "sparse cloud": ([cloud(500, 4.0)], 6, 0.01),
    "all in one cell": ([cloud(300, 0.05, at=0.1)], 2, 1e-6),
    "across the origin of cells": ([cloud(200, 0.3)], 3, 0.01),
    "short filaments": ([cloud(1, 0.1), [], cloud(2, 0.1, 2), cloud(3, 0.1, 3), cloud(1, 0.1, 4)], 6, 0.01),
    "coincident points": ([np.repeat(cloud(20, 0.3), 3, axis=0), np.zeros((5, 3))], 5, 0.01),
    "outliers": ([[[1e9, -1e9, 1e9]], cloud(100, 0.5), [[1e300, 0, 0]], [[0, -1e18, 0]]], 3, 0.01),
    "far from the origin": ([cloud(150, 0.5, at=(3e8, -3e8, 7e12))], 3, 0.01),
    "beyond the last cell": ([cloud(40, 0.6, at=(4.2e8, 0, -4.2e8)), cloud(40, 0.6, at=9e8)], 2, 0.01),
    "long line": ([np.column_stack([np.linspace(-300, 300, 700), np.zeros(700), np.zeros(700)])], 3, 0.01),
    "not a number": ([cloud(50, 0.3), [[np.nan, 0, 0]], [[0, np.inf, 0]], [[0, 0, -np.inf]]], 1, 0.01),
    "overflow": ([cloud(30, 0.3), [[1.7e308, 0, 0]], [[-1.7e308, 0, 0]]], 3, 0.01),
    "edges of the window": (crossing_windows(), 1, 1e-9),
    "negative step": ([trefoil(100, 3.0)], 3, -0.01),
}


@pytest.mark.parametrize("case", CASES)
def test_same_bits_as_the_plain_loop(case):
    filaments, iterations, dt = CASES[case]
    for count in {0, 1, iterations}:
        np.testing.assert_array_equal(relaxed(filaments, count, dt), plain_relax(filaments, count, dt))


def test_partners_scattered_over_a_long_list_are_added_in_order():
    n = 30000
    points = np.column_stack([np.arange(n) * 1.0, np.zeros(n), np.zeros(n)])
    crowd = np.sort(np.random.default_rng(3).choice(n, 60, replace=False))
    points[crowd] = cloud(60, 0.2, at=(0.5, 5.0, 0.0))
    filaments = points[:, None, :]
    np.testing.assert_array_equal(relaxed(filaments, 2), plain_relax(filaments, 2, sources=crowd))


@pytest.mark.parametrize("iterations", [-5, 0, 20])
def test_body_has_the_electron_radius(iterations):
    p = relaxed([trefoil(150, 5.0), trefoil(40, 3.0) + 0.3], iterations)
    radius = np.linalg.norm(p - p.mean(axis=0), axis=1).max()
    assert radius == pytest.approx(ELECTRON_RADIUS, rel=0.02)  # the mean lies far off on this scale


def test_coincident_points_take_the_floor_of_the_radius():
    p = relaxed([[[1.0, 2.0, 3.0], [1.0, 2.0, 3.0 + 1e-13]]], 0)
    assert p[1, 2] - p[0, 2] == pytest.approx(0.0, abs=1e-15)
    np.testing.assert_array_equal(p[:, :2], [[1.0, 2.0], [1.0, 2.0]])
    p = relaxed([[[0.0, 0.0, -1e-13], [0.0, 0.0, 1e-13]]], 0)
    assert p[1, 2] == 1e-13 * (ELECTRON_RADIUS / 1e-6)


@pytest.mark.parametrize("filaments", [[], [[]], [[], []]])
def test_nothing_to_relax(filaments):
    evaluator = _native.ParticleEvaluator(filaments)
    evaluator.relax()
    assert evaluator.get_filaments() == filaments


def test_repeated_calls_go_on_from_the_relaxed_points():
    evaluator = _native.ParticleEvaluator([trefoil(50, 4.0).tolist()])
    evaluator.relax(iterations=3, timestep=0.02)
    once = evaluator.get_filaments()
    evaluator.relax(2)
    np.testing.assert_array_equal(evaluator.get_filaments()[0], plain_relax(once, 2))


@pytest.mark.parametrize("points", [60, 3000])
def test_an_interrupted_call_leaves_the_filaments_as_they_were(points):
    evaluator = _native.ParticleEvaluator([trefoil(points, 5.0).tolist()])
    before = evaluator.get_filaments()

    with ended_by_a_signal(0.05):
        evaluator.relax(2**31 - 1)
    assert evaluator.get_filaments() == before
