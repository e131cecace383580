"""Velocities induced by a filament, against plain Python loops of the sums."""

import math

import _native
import numpy as np
import pytest

INV_FOUR_PI = 0.07957747154594767


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def bits(vectors):
    return [[c.hex() for c in v] for v in np.asarray(vectors, dtype=float).reshape(-1, 3).tolist()]


def closed_velocity(curve, point, circulation, cube=lambda r2: r2 * math.sqrt(r2)):
    total = [0.0, 0.0, 0.0]
    for a, b in zip(curve, curve[1:] + curve[:1], strict=True):
        dl = [q - p for p, q in zip(a, b, strict=True)]
        x, y, z = R = [g - 0.5 * (p + q) for g, p, q in zip(point, a, b, strict=True)]
        w = 1.0 / (cube(x * x + y * y + z * z) + 1e-12)
        total = [t + c * w for t, c in zip(total, cross(dl, R), strict=True)]
    return [t * (circulation / 12.566370614359172) for t in total]


def point_velocity(r, points, tangents, circulation):
    total = [0.0, 0.0, 0.0]
    for p, t in zip(points, tangents, strict=True):
        x, y, z = R = [a - b for a, b in zip(r, p, strict=True)]
        n = math.sqrt(x * x + y * y + z * z)
        if n > 1e-6:
            g = circulation / (n * n * n)
            total = [s + c * INV_FOUR_PI * g for s, c in zip(total, cross(t, R), strict=True)]
    return total


@pytest.mark.parametrize("n", [2, 3, 70])
@pytest.mark.parametrize("m", [1, 31, 32, 33, 65])
def test_closed_curve(n, m):
    rng = np.random.default_rng(n + m)
    curve, grid = rng.normal(size=(n, 3)), rng.normal(size=(m, 3))
    grid[0] = 0.5 * (curve[0] + curve[1])  # the distance of a segment may vanish
    got = _native.biot_savart_velocity_grid(curve, grid, circulation=-1.7)
    assert got.shape == (m, 3)
    assert bits(got) == bits([closed_velocity(curve.tolist(), g, -1.7) for g in grid.tolist()])
    assert bits(_native.BiotSavart.compute_velocity(curve.tolist(), grid.tolist(), -1.7)) == bits(got)
    power = [closed_velocity(curve.tolist(), g, -1.7, cube=lambda r2: math.pow(r2, 1.5)) for g in grid.tolist()]
    np.testing.assert_allclose(got, power, rtol=1e-11, atol=1e-12)


def test_closed_curve_of_a_circle_and_of_a_line():
    s = 2 * np.pi * np.arange(2000) / 2000
    circle = np.stack([np.cos(s), np.sin(s), 0 * s], axis=1)
    z = 0.75
    (velocity,) = _native.biot_savart_velocity_grid(circle, [[0.0, 0.0, z]], 3.0)
    np.testing.assert_allclose(velocity, [0, 0, 3.0 / (2 * (1 + z * z) ** 1.5)], rtol=1e-5, atol=1e-14)
    there_and_back = _native.biot_savart_velocity_grid([[0, 0, 0], [1, 0, 0]], [[0.3, 0.4, 0.5]])
    assert (there_and_back == 0).all()


def test_grid_forms_agree_and_default_to_circulation_one():
    rng = np.random.default_rng(5)
    curve, grid = rng.normal(size=(9, 3)).tolist(), rng.normal(size=(4, 3)).tolist()
    velocity = _native.BiotSavart.compute_velocity(curve=curve, grid_points=grid, circulation=1.0)
    assert _native.BiotSavart.compute_velocity(curve, grid) == velocity
    assert _native.compute_biot_savart_velocity_grid(curve=curve, grid_points=grid) == velocity
    assert _native.biot_savart_velocity_grid(polyline=curve, grid=grid).tolist() == velocity
    wide = np.repeat(np.array(grid), 2, axis=1)[:, ::2]  # strided
    assert _native.biot_savart_velocity_grid(np.asfortranarray(curve), wide).tolist() == velocity


@pytest.mark.parametrize("curve", [[], [[1.0, 2.0, 3.0]]])
def test_short_curves_give_zeros(curve):
    assert _native.BiotSavart.compute_velocity(curve, [[0.0, 0.0, 0.0]] * 5, math.nan) == [[0.0, 0.0, 0.0]] * 5
    array = np.array(curve).reshape(-1, 3)
    assert (_native.biot_savart_velocity_grid(array, np.ones((5, 3))) == np.zeros((5, 3))).all()
    assert _native.biot_savart_velocity_grid(np.ones((4, 3)), np.ones((0, 3))).shape == (0, 3)


def test_point_sources():
    rng = np.random.default_rng(2)
    points, tangents = rng.normal(size=(40, 3)), rng.normal(size=(40, 3))
    near = [points[:3] + np.array([d, 0, 0]) for d in (0.0, 1e-6, 1.000001e-6)]
    for r in np.concatenate([*near, rng.normal(size=(5, 3))]).tolist():
        got = _native.biot_savart_velocity(
            r=r, filament_points=points.tolist(), tangent_vectors=tangents.tolist(), circulation=2.5
        )
        assert bits(got) == bits(point_velocity(r, points.tolist(), tangents.tolist(), 2.5))


def test_point_source_cutoff_is_inclusive():
    def velocity(distance):
        return _native.biot_savart_velocity([distance, 0, 0], [[0, 0, 0]], [[0, 1, 0]])

    assert velocity(1e-6) == [0, 0, 0]
    assert velocity(math.nextafter(1e-6, 1))[2] == pytest.approx(-1e12 * INV_FOUR_PI)
    assert velocity(math.nan) == [0, 0, 0]


def test_lists_of_tangents():
    source, spare = [[1.0, 0.0, 0.0]], [9.0, 9.0, 9.0]
    one = _native.biot_savart_velocity([0, 0, 0], source, [[0, 1, 0]])
    assert one == [0.0, 0.0, INV_FOUR_PI]
    assert _native.biot_savart_velocity([0, 0, 0], source, [[0, 1, 0], spare]) == one
    with pytest.raises(ValueError, match="at least as long"):
        _native.biot_savart_velocity([0, 0, 0], source, [])
    with pytest.raises(TypeError):
        _native.biot_savart_velocity([0, 0], source, source)


@pytest.mark.parametrize("bad", [np.zeros(3), np.zeros((2, 2)), np.zeros((1, 2, 3)), []])
def test_arrays_of_other_shapes(bad):
    for arguments in [(bad, np.zeros((2, 3))), (np.zeros((2, 3)), bad)]:
        with pytest.raises(ValueError, match=r"^Expected array with shape \(N,3\)$"):
            _native.biot_savart_velocity_grid(*arguments)


def test_broadcast_arrays_of_absurd_length():
    endless, few = np.broadcast_to(np.ones(3), (2**40, 3)), np.eye(3)
    for arguments in [(endless, few), (few, endless)]:
        for function in (_native.biot_savart_velocity_grid, _native.biot_savart_vector_potential_grid):
            with pytest.raises(MemoryError):
                function(*arguments)
