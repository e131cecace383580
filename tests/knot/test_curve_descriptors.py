"""Curvature, length, bending energy and the other descriptors of Fourier curves."""

import math

import _native
import numpy as np
import pytest

COLUMNS = ("a_x", "b_x", "a_y", "b_y", "a_z", "b_z")


def block_of(rows):
    block = _native.FourierBlock()
    for name, column in zip(COLUMNS, np.asarray(rows, dtype=float).reshape(-1, 6).T, strict=True):
        setattr(block, name, column.tolist())
    return block


def random_block(n=5, seed=2):
    return block_of(np.random.default_rng(seed).normal(size=(n, 6)) / np.arange(1, n + 1)[:, None] ** 2)


def speeds_and_bends(block, n):
    """|r'| and |r' x r''| on the grid of n samples."""
    at = [_native.evaluate_with_derivatives(block, k * (2 * math.pi / n)) for k in range(n)]
    r1, r2 = np.array([a[1] for a in at]), np.array([a[2] for a in at])
    return np.linalg.norm(r1, axis=1), np.linalg.norm(np.cross(r1, r2), axis=1)


CIRCLE = block_of([[1, 0, 0, 1, 0, 0]])
ELLIPSE = block_of([[3, 0, 0, 1, 0, 0]])
STILL = block_of(np.zeros((3, 6)))


def test_circle():
    assert _native.length_exact(CIRCLE) == pytest.approx(2 * math.pi, rel=1e-13)
    assert _native.bending_energy_exact(CIRCLE) == pytest.approx(2 * math.pi, rel=1e-13)
    assert _native.curvature_exact(CIRCLE, [0.0, 1.0, 5.0]) == pytest.approx([1.0] * 3, rel=1e-15)
    assert _native.mode_energies(CIRCLE) == [2.0]


def test_ellipse():
    # 12 E(8/9), complete elliptic integral of the second kind
    assert _native.length_exact(ELLIPSE) == pytest.approx(13.364893220555258, rel=1e-13)
    assert _native.curvature_exact(ELLIPSE, [0.0, math.pi / 2]) == pytest.approx([3.0, 1 / 9], rel=1e-14)


def test_integrals_against_sums():
    block = random_block()
    for n, taken in ((1, 16), (-5, 16), (16, 16), (17, 17)):
        speed, _ = speeds_and_bends(block, taken)
        assert _native.length_exact(block, n) == pytest.approx(speed.sum() * 2 * math.pi / taken, rel=1e-14)
    for n, taken in ((1, 32), (33, 33)):
        for eps in (1e-12, 1.5):  # the clamped speed stands in the weight too
            speed, bend = speeds_and_bends(block, taken)
            v = np.maximum(speed, eps)
            expected = ((bend / v**3) ** 2 * v).sum() * 2 * math.pi / taken
            assert _native.bending_energy_exact(block, n, eps) == pytest.approx(expected, rel=1e-13)


def test_curvature_clamps_the_speed():
    block = random_block()
    s = [0.0, 0.4, 2.0]
    at = [_native.evaluate_with_derivatives(block, t) for t in s]
    for eps in (1e-12, 2.0):
        expected = [np.linalg.norm(np.cross(a[1], a[2])) / max(eps, np.linalg.norm(a[1])) ** 3 for a in at]
        assert _native.curvature_exact(block, s, eps) == pytest.approx(expected, rel=1e-14)
    assert _native.curvature_exact(block, []) == []
    assert _native.curvature_exact(STILL, s) == [0.0] * 3
    assert _native.bending_energy_exact(STILL) == 0.0 and _native.length_exact(STILL) == 0.0
    assert math.isnan(_native.curvature_exact(CIRCLE, [math.nan])[0])


def test_mode_energies_of_unequal_vectors():
    block = _native.FourierBlock()
    assert _native.mode_energies(block) == []
    block.a_x, block.b_z = [3.0], [4.0, 5.0, 6.0]
    assert _native.mode_energies(block) == [25.0, 25.0, 36.0]


@pytest.mark.parametrize(("nsamples", "taken"), [(1, 64), (64, 64), (65, 65), (200, 200)])
def test_describe_gathers_the_parts(nsamples, taken):
    block = random_block()
    points = _native.evaluate_fourier_block(block, [k * 2 * math.pi / taken for k in range(taken)])
    found = _native.describe_fourier_block(block, nsamples, 7)
    m = max(512, 4 * taken)
    assert found.length == _native.length_exact(block, m)
    assert found.bending_energy == _native.bending_energy_exact(block, m)
    assert found.min_self_distance == _native.min_self_distance_sampled(points, 7)
    assert found.min_self_distance == _native.min_self_distance_exactish(block, nsamples, 7)
    assert found.writhe == _native.compute_writhe(points)
    assert found.mode_energy == _native.mode_energies(block)


def test_describe_defaults_and_record():
    found = _native.describe_fourier_block(CIRCLE)
    assert found.min_self_distance == pytest.approx(2 * math.sin(5 * math.pi / 2048), rel=1e-12)
    with pytest.raises(AttributeError):
        found.length = 1.0
    for record in (_native.GeometricDescriptors, _native.FourierResult, _native.LoadedKnot):
        with pytest.raises(TypeError, match="No constructor defined"):
            record()


@pytest.mark.parametrize("call", [_native.min_self_distance_exactish, _native.describe_fourier_block])
def test_absurd_sample_counts_and_unequal_vectors(call):
    for nsamples in (2**40, 2**61, 2**63 - 1):
        with pytest.raises(MemoryError):
            call(CIRCLE, nsamples)
    block = random_block()
    block.b_z = [1.0]
    with pytest.raises(ValueError):
        call(block)
    assert _native.length_exact(block) > 0.0


def test_fourier_knot_eval():
    block, s = random_block(), np.linspace(0, 6, 11)
    x, y, z = _native.fourier_knot_eval(*(np.array(getattr(block, name)) for name in COLUMNS), s)
    assert np.array_equal(np.stack([x, y, z], axis=1), _native.evaluate_fourier_block(block, s.tolist()))
    # a longer y pair is cut at the length of a_x
    x, y, z = _native.fourier_knot_eval([1], [0], [0, 5], [1, 5], [0], [0], s.astype(np.float32))
    assert x.shape == y.shape == z.shape == s.shape and np.allclose(y, np.sin(s))


@pytest.mark.parametrize("pair", ["a_x/b_x", "a_y/b_y", "a_z/b_z"])
def test_fourier_knot_eval_checks_pairs_in_order(pair):
    arguments = {name: np.ones(2) for name in (*COLUMNS, "s")}
    for bad in (np.ones(3), np.ones((2, 1)), 1.0):
        wrong = {**arguments, pair[4:]: bad, "a_z": np.ones(5), "s": 0.0}
        with pytest.raises(ValueError, match=f"^fourier_knot_eval: {pair} must be 1D and same length$"):
            _native.fourier_knot_eval(**wrong)
    with pytest.raises(ValueError, match=r"^fourier_knot_eval: s must be 1D$"):
        _native.fourier_knot_eval(**{**arguments, "s": np.ones((2, 2))})


@pytest.mark.parametrize("n", [0, 1, 2, 3, 4, 30])
def test_discrete_curvature(n):
    p = np.random.default_rng(n).normal(size=(n, 3))
    d1 = (np.roll(p, -1, 0) - np.roll(p, 1, 0)) / 2
    d2 = np.roll(p, -1, 0) - 2 * p + np.roll(p, 1, 0)
    for eps in (1e-8, 0.7):
        expected = np.linalg.norm(np.cross(d1, d2), axis=1) / (np.linalg.norm(d1, axis=1) ** 3 + eps)
        if n < 3:
            expected = np.zeros(n)
        assert np.allclose(_native.compute_curvature(p, eps), expected, rtol=1e-13, atol=0)
    assert np.array_equal(_native.compute_curvature(p), _native.compute_curvature(points=p, eps=1e-8))


def test_discrete_curvature_checks_the_shape():
    for shape in ((3, 5), (3,), (2, 3, 3)):
        with pytest.raises(ValueError, match=r"^pd_from_curve: expected array with shape \(N,3\)$"):
            _native.compute_curvature(np.zeros(shape))
