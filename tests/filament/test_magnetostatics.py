"""Fields of wires and dipoles on arrays of points, against plain Python loops; the checks of their arguments."""

import itertools
import math

import _native
import numpy as np
import pytest
from numpy import zeros
from wide_kernels import kernels  # noqa: F401

INV_FOUR_PI = 0.07957747154594767


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def segments(wire):
    for a, b in itertools.pairwise(wire):
        yield [0.5 * (p + q) for p, q in zip(a, b, strict=True)], [q - p for p, q in zip(a, b, strict=True)]


def wire_field(point, wire, current):
    B = [0.0, 0.0, 0.0]
    f = current * INV_FOUR_PI
    for mid, dl in segments(wire):
        x, y, z = R = [p - q for p, q in zip(point, mid, strict=True)]
        n2 = x * x + y * y + z * z
        n = math.sqrt(n2)
        if n < 1e-12:
            continue
        B = [b + c * f * (1.0 / (n * n2)) for b, c in zip(B, cross(dl, R), strict=True)]
    return B


def potential(point, wire, current):
    S = [0.0, 0.0, 0.0]
    for mid, dl in segments(wire):
        x, y, z = (p - q for p, q in zip(point, mid, strict=True))
        n = math.sqrt(x * x + y * y + z * z)
        if n < 1e-12:
            continue
        S = [s + d * (1.0 / n) for s, d in zip(S, dl, strict=True)]
    return [s * current * INV_FOUR_PI for s in S]


def dipole(r, m):
    x, y, z = r
    n2 = x * x + y * y + z * z
    n = math.sqrt(n2)
    if n < 1e-12:
        return None
    q = (m[0] * x + m[1] * y + m[2] * z) / n * 3.0 / n / n
    return [(q * c - d) * INV_FOUR_PI * (1.0 / (n * n2)) for c, d in zip(r, m, strict=True)]


def bits(vectors):
    return [[c.hex() for c in v] for v in np.asarray(vectors, dtype=float).reshape(-1, 3).tolist()]


def points_of(X, Y, Z):
    return np.stack([np.asarray(a, dtype=float).ravel() for a in (X, Y, Z)], axis=1).tolist()


def check_fields(X, Y, Z, wire, moments):
    points, shape = points_of(X, Y, Z), np.shape(X)
    B = _native.biot_savart_wire_grid(X=X, Y=Y, Z=Z, wire_points=wire, current=-3.3)
    assert [b.shape for b in B] == [shape] * 3
    assert bits(points_of(*B)) == bits([wire_field(p, wire.tolist(), -3.3) for p in points])

    B = _native.dipole_ring_field_grid(X=X, Y=Y, Z=Z, positions=wire, moments=moments)
    assert [b.shape for b in B] == [shape] * 3
    expected = []
    for p in points:
        total = [0.0, 0.0, 0.0]
        for at, m in zip(wire.tolist(), moments.tolist(), strict=True):
            field = dipole([a - b for a, b in zip(p, at, strict=True)], m)
            total = total if field is None else [t + c for t, c in zip(total, field, strict=True)]
        expected.append(total)
    assert bits(points_of(*B)) == bits(expected)

    A = _native.biot_savart_vector_potential_grid(polyline=wire, grid=np.array(points), current=0.3)
    assert [a.shape for a in A] == [(len(points),)] * 3
    assert bits(points_of(*A)) == bits([potential(p, wire.tolist(), 0.3) for p in points])


LAYOUTS = {
    "c": np.ascontiguousarray,
    "fortran": np.asfortranarray,
    "strided": lambda a: np.repeat(a, 2, axis=-1)[..., ::2],
    "float32": lambda a: a.astype(np.float32),
    "list": lambda a: a.tolist(),
}


@pytest.mark.parametrize("layout", LAYOUTS)
@pytest.mark.parametrize("shape", [(1,), (33,), (5, 7), (3, 4, 3)])
@pytest.mark.usefixtures("kernels")
def test_fields_have_the_bits_of_the_plain_loops(shape, layout):
    rng = np.random.default_rng(11)
    wire, moments = rng.normal(size=(12, 3)), rng.normal(size=(12, 3))
    X, Y, Z = axes = [rng.normal(size=shape) for _ in range(3)]
    for a, coordinate in enumerate(axes):  # on a midpoint, and on a dipole
        coordinate.flat[0] = 0.5 * (wire[0, a] + wire[1, a])
        coordinate.flat[-1] = wire[3, a]
    X, Y, Z = (LAYOUTS[layout](a) for a in axes)
    check_fields(X, Y, Z, wire, moments)


@pytest.mark.usefixtures("kernels")
@pytest.mark.parametrize("order", list(itertools.permutations(range(3))))
@pytest.mark.parametrize("sizes", [(2, 3, 8), (3, 35, 9), (1, 1, 45), (1, 33, 17), (2, 2, 3)])
def test_fields_on_products_of_coordinates(sizes, order):
    rng = np.random.default_rng(sum(sizes) + order[0])
    wire, moments = rng.normal(size=(7, 3)), rng.normal(size=(7, 3))
    moments[2, 1] = wire[4, 0] = 0.0
    values = [rng.normal(size=n) for n in sizes]
    for row, axis in zip(values, order, strict=True):  # one point on a midpoint, one on a dipole
        row[0], row[-1] = 0.5 * (wire[0, axis] + wire[1, axis]), wire[3, axis]
    axes = np.meshgrid(*values, indexing="ij")
    check_fields(*(axes[order.index(a)] for a in range(3)), wire, moments)


@pytest.mark.usefixtures("kernels")
def test_fields_of_more_sources_than_are_taken_at_once():
    rng = np.random.default_rng(5)
    wire, moments = rng.normal(size=(2, 211, 3))
    check_fields(*np.meshgrid(*rng.normal(size=(3, 9)), indexing="xy"), wire, moments)
    check_fields(*rng.normal(size=(3, 20)), wire, moments)


@pytest.mark.usefixtures("kernels")
@pytest.mark.parametrize("scale", [1e-60, 1e-39, 1e-13, 1e39, 1e70, 1e160, math.inf, math.nan])
def test_fields_of_extreme_magnitude(scale):
    rng = np.random.default_rng(6)
    wire, moments = rng.normal(size=(2, 5, 3))
    X, Y, Z = np.meshgrid(*rng.normal(size=(3, 8)), indexing="ij")
    with np.errstate(all="ignore"):
        for case in ((X, Y, Z, scale * wire, moments), (X, Y, Z, wire, scale * moments)):
            check_fields(*case)
        wire[2, 1] = X[:, 1] = scale
        check_fields(X, Y, Z, wire, moments)
        check_fields(X, Y, Z + rng.normal(size=Z.shape), wire, moments)


def test_dipole_at_a_point():
    rng = np.random.default_rng(3)
    for r, m in rng.normal(size=(10, 2, 3)).tolist():
        assert bits(_native.dipole_field_at_point(r=r, m=m)) == bits(dipole(r, m))
    assert _native.dipole_field_at_point([math.nextafter(1e-12, 0), 0, 0], [1, 2, 3]) == [0, 0, 0]
    assert _native.dipole_field_at_point([1e-12, 0, 0], [1, 2, 3]) != [0, 0, 0]
    # On the axis at |r| = 2 the radial term is 3 m / |r|, half of the textbook's 3 m.
    assert _native.dipole_field_at_point([2, 0, 0], [1, 0, 0])[0] == pytest.approx((1.5 / 2 - 0.5) / (16 * math.pi))


def test_long_straight_wire():
    z = np.linspace(-2000, 2000, 40001)
    wire = np.stack([0 * z, 0 * z, z], axis=1)
    Bx, By, Bz = _native.biot_savart_wire_grid(np.array([2.0]), np.array([0.0]), np.array([0.0]), wire, 5.0)
    assert By[0] == pytest.approx(5.0 / (2 * math.pi * 2.0), rel=1e-5)
    assert Bx[0] == Bz[0] == 0


def test_one_wire_point_and_no_field_points():
    X = zeros((2, 2))
    for b in _native.biot_savart_wire_grid(X, X, X, [[1, 2, 3]], math.nan):
        assert (b == 0).all() and b.shape == (2, 2)
    for a in _native.biot_savart_vector_potential_grid([[1, 2, 3]], np.ones((4, 3)), math.nan):
        assert (a == 0).all() and a.shape == (4,)
    empty = zeros((2, 0, 3))
    assert [b.shape for b in _native.biot_savart_wire_grid(empty, empty, empty, np.eye(3))] == [(2, 0, 3)] * 3


CONVERTIBLE = "Inputs must be convertible to float64 arrays"
GRID_FAULTS = [
    ((zeros(3), zeros((3, 1)), zeros(3), zeros(7)), "X, Y, Z must share the same number of dimensions"),
    ((zeros((2, 3)), zeros((2, 3)), zeros((3, 2)), zeros(7)), "X, Y, Z must have identical shapes"),
    ((zeros(()), zeros(()), zeros(()), zeros(7)), "invalid axis"),
    ((zeros(3), zeros(3), zeros(3), zeros((2, 2))), "SOURCES must have shape [N,3]"),
    ((zeros(3), zeros(3), zeros(3), []), "SOURCES must have shape [N,3]"),
    ((zeros(3), zeros(3), zeros(3), zeros((0, 3))), "SOURCES must have at least 1 row"),
    ((zeros(3), [[1], [1, 2]], zeros(3), zeros((2, 3))), CONVERTIBLE),
    ((object(), zeros(3), zeros(3), zeros((2, 3))), CONVERTIBLE),
    ((zeros(4), zeros(3), zeros(3), "wire"), CONVERTIBLE),
]


@pytest.mark.parametrize(("arguments", "text"), GRID_FAULTS)
def test_faults_of_grids(arguments, text):
    with pytest.raises(ValueError) as wire:
        _native.biot_savart_wire_grid(*arguments)
    assert str(wire.value) == text.replace("SOURCES", "wire_points")
    with pytest.raises(ValueError) as ring:
        _native.dipole_ring_field_grid(*arguments, zeros((2, 3)))
    assert str(ring.value) == text.replace("SOURCES", "positions")


@pytest.mark.parametrize(
    ("moments", "text"),
    [
        (zeros((2, 4)), "moments must have shape [N,3]"),
        (zeros((0, 3)), "moments must have at least 1 row"),
        (zeros((3, 3)), "positions and moments must have the same number of rows"),
        ("moments", CONVERTIBLE),
    ],
)
def test_faults_of_moments(moments, text):
    with pytest.raises(ValueError) as fault:
        _native.dipole_ring_field_grid(zeros(3), zeros(3), zeros(3), zeros((2, 3)), moments)
    assert str(fault.value) == text


def test_faults_of_the_potential():
    with pytest.raises(ValueError, match=r"^polyline must have shape \[N,3\]$"):
        _native.biot_savart_vector_potential_grid(zeros((2, 2)), zeros((2, 2)))
    with pytest.raises(ValueError, match=r"^grid must have shape \[M,3\]$"):
        _native.biot_savart_vector_potential_grid(zeros((2, 3)), zeros(3))
