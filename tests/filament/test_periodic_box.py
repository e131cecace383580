"""Differences, interiors and invariants of fields on a periodic box."""

import math

import _native
import numpy as np
import pytest

B = _native.BiotSavart


def minus_curl(F, h):
    """np.roll form of the stencil; the same operations per component, hence the same bits."""

    def D(axis, component):
        f = F[..., component]
        return (np.roll(f, -1, axis) - np.roll(f, 1, axis)) / (h + h)

    return np.stack([D(2, 1) - D(1, 2), D(0, 2) - D(2, 0), D(1, 0) - D(0, 1)], axis=-1)


@pytest.mark.parametrize("shape", [(1, 1, 1), (1, 4, 3), (2, 2, 2), (5, 3, 4), (3, 1, 2)])
def test_vorticity_is_minus_the_curl(shape):
    F = np.random.default_rng(1).normal(size=(*shape, 3))
    flat = F.reshape(-1, 3).tolist()
    expected = minus_curl(F, 0.3)
    got = B.compute_vorticity(flat, shape, 0.3)
    assert got == expected.reshape(-1, 3).tolist()
    assert _native.compute_vorticity_grid(velocity=flat, shape=shape, spacing=0.3) == got
    for array in (F, np.asfortranarray(F), np.repeat(F, 2, axis=1)[:, ::2]):
        assert np.array_equal(_native.curl3d_central(vel=array, spacing=0.3), -expected)


def test_curl_of_a_periodic_flow():
    n = 24
    h = 2 * np.pi / n
    x, y, _ = np.meshgrid(*[np.arange(n) * h] * 3, indexing="ij")
    F = np.stack([np.sin(y), np.sin(x), 0 * x], axis=-1)
    curl = _native.curl3d_central(F, h)
    np.testing.assert_allclose(curl[..., 2], (np.cos(x) - np.cos(y)) * np.sin(h) / h, atol=1e-14)
    assert (curl[..., :2] == 0).all()


@pytest.mark.parametrize("shape", [(0, 2, 2), (2, 0, 2), (2, 2, 0), (2**31 - 1, 2**31 - 1, 0)])
def test_empty_boxes(shape):
    assert B.compute_vorticity([], shape, 1.0) == []
    assert B.extract_interior([], shape, 0) == []


def test_empty_arrays():
    for shape in [(2, 0, 2), (2, 2, 0), (10**6, 10**6, 0)]:
        assert _native.curl3d_central(np.zeros((*shape, 3)), 1.0).shape == (*shape, 3)


def test_interior():
    F = [[float(i), 0.0, 0.0] for i in range(4 * 5 * 6)]
    inner = _native.extract_interior_field(field=F, shape=(4, 5, 6), margin=1)
    numbers = np.arange(4 * 5 * 6).reshape(4, 5, 6)
    assert [f[0] for f in inner] == numbers[1:-1, 1:-1, 1:-1].ravel().tolist()
    assert B.extract_interior(F, (4, 5, 6), 1) == inner
    assert B.extract_interior(F, (4, 5, 6), 0) == F
    for margin in (2, 3, 2**31 - 1):
        assert B.extract_interior(F, (4, 5, 6), margin) == []
        assert B.extract_interior([], (4, 5, 6), margin) == []  # nothing is read
    assert B.extract_interior([], (-4, -(2**31), 6), 2**31 - 1) == []


def test_longer_lists_are_read_as_far_as_the_box_goes():
    F = np.random.default_rng(6).normal(size=(30, 3)).tolist()
    assert B.extract_interior(F, (3, 3, 3), 1) == [F[13]]
    assert B.compute_vorticity(F, (2, 3, 4), 0.5) == B.compute_vorticity(F[:24], (2, 3, 4), 0.5)


def test_invariants():
    rng = np.random.default_rng(4)
    v, w, r_sq = rng.normal(size=(9, 3)).tolist(), rng.normal(size=(9, 3)).tolist(), rng.uniform(size=9).tolist()
    charge = mass = 0.0
    for a, b, r in zip(v, w, r_sq, strict=True):
        charge += a[0] * b[0] + a[1] * b[1] + a[2] * b[2]
        size = math.sqrt(b[0] * b[0] + b[1] * b[1] + b[2] * b[2])  # rounded once more before it is squared
        mass += size * size * r
    expected = (charge, mass, 0.5 * (charge / mass - 1.0))
    assert B.compute_invariants(v, w, r_sq) == expected
    assert _native.compute_helicity_invariants(v_sub=v, w_sub=w, r_sq=r_sq) == expected


def test_invariants_without_mass():
    charge, mass, a_mu = B.compute_invariants([], [], [])
    assert charge == mass == 0 and math.isnan(a_mu)
    assert B.compute_invariants([[1, 0, 0]], [[1, 0, 0]], [0.0]) == (1.0, 0.0, math.inf)


@pytest.mark.parametrize(
    "call",
    [
        lambda: B.compute_vorticity([[0.0, 0.0, 0.0]], (2, 2, 2), 1.0),
        lambda: B.compute_vorticity([[0.0, 0.0, 0.0]], (-1, -1, 1), 1.0),
        lambda: B.extract_interior([[0.0, 0.0, 0.0]], (2, 2, 2), 0),
        lambda: B.extract_interior([[0.0, 0.0, 0.0]] * 26, (3, 3, 3), 1),
        lambda: B.extract_interior([[0.0, 0.0, 0.0]], (1, 1, 1), -1),
        lambda: B.compute_invariants([[1, 0, 0]], [], []),
        lambda: B.compute_invariants([], [[1, 0, 0]], []),
    ],
)
def test_lists_that_do_not_fit(call):
    with pytest.raises(ValueError):
        call()


def test_boxes_beyond_memory():
    with pytest.raises(MemoryError):
        B.compute_vorticity([], (2**31 - 1, 2**31 - 1, 2**31 - 1), 1.0)


@pytest.mark.parametrize("shape", [(2, 2, 3), (2, 2, 2, 2), (1, 2, 2, 2, 3)])
def test_arrays_of_other_shapes(shape):
    with pytest.raises(ValueError, match=r"^curl3d_central: vel must be \(Nx,Ny,Nz,3\)$"):
        _native.curl3d_central(np.zeros(shape), 1.0)


def test_positional_arguments():
    with pytest.raises(TypeError):
        B.compute_vorticity(velocity=[], shape=(0, 0, 0), spacing=1.0)
    with pytest.raises(TypeError):
        B()
