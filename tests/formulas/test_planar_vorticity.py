"""Planar vorticity and the terms of its equation, heat, radiation, the oscillator and the swirl field."""

import ctypes
import math

import _native
import numpy as np
import pytest
from formulas.closed_forms import check, cross, dot


def total(*vectors):
    """Sum of vectors from left to right."""
    result = vectors[0]
    for v in vectors[1:]:
        result = [a + b for a, b in zip(result, v, strict=True)]
    return result


def times(k, v):
    return [k * a for a in v]


def over(v, k):
    return [a / k for a in v]


VECTORS = dict.fromkeys(["velocity", "vorticity", "grad_phi", "grad_p", "grad_rho", "pressure_gradient"], "vec")


@pytest.mark.parametrize(
    ("name", "form", "kinds"),
    [
        ("vorticity_z_2D", lambda dv_dx, du_dy: dv_dx - du_dy, {}),
        ("local_circulation_density", lambda dv_dx, du_dy: dv_dx - du_dy, {}),
        ("solid_body_rotation_vorticity", lambda omega: 2 * omega, {}),
        ("couette_vorticity", lambda alpha: -alpha, {}),
        ("crocco_relation", lambda vorticity, rho, pressure_gradient: over(pressure_gradient, rho), VECTORS),
        (
            "rotating_frame_rhs",
            lambda velocity, vorticity, grad_phi, grad_p, omega, rho: total(
                times(2, cross(velocity, omega)), times(-1, grad_phi), times(-1, over(grad_p, rho))
            ),
            {**VECTORS, "omega": "vec"},
        ),
        (
            "crocco_gradient",
            lambda velocity, vorticity, grad_phi, grad_p, rho: total(
                times(rho, cross(vorticity, velocity)), grad_phi, over(grad_p, rho)
            ),
            VECTORS,
        ),
        (
            "baroclinic_term",
            lambda grad_rho, grad_p, rho: over(cross(grad_rho, grad_p), rho * rho),
            VECTORS,
        ),
        (
            "compute_vorticity_rhs",
            lambda omega, grad_u, div_u, grad_rho, grad_p, rho: total(
                [dot(row, omega) for row in grad_u],
                times(-div_u, omega),
                over(cross(grad_rho, grad_p), rho * rho),
            ),
            {**VECTORS, "omega": "vec", "grad_u": "matrix"},
        ),
        ("potential_temperature", lambda T, p0, p, R, cp: T * math.pow(p0 / p, R / cp), {}),
        ("entropy_from_theta", lambda cp, theta, dtheta: cp * dtheta / theta, {}),
        (
            "entropy_from_pv",
            lambda N, R, p, V, gamma: (math.log(p) + math.log(V)) * (N * R / (gamma - 1.0)),
            {},
        ),
        ("enthalpy", lambda internal_energy, p, V: internal_energy + p * V, {}),
    ],
)
def test_formula(name, form, kinds):
    check(getattr(_native, name), form, **kinds)


def test_zero_denominators_divide():
    assert _native.entropy_from_pv(1.0, 8.0, 2.0, 3.0, 1.0) == math.inf
    assert math.isnan(_native.entropy_from_pv(1.0, 8.0, 1.0, 1.0, 1.0))
    assert _native.crocco_relation([1, 1, 1], 0.0, [2, -4, 6]) == [math.inf, -math.inf, math.inf]
    assert _native.radiation_force(1.0, 1.0, 2.0, 1.0, 2.0) == math.inf


def test_positional_only_formulas():
    a, b, c, d, e = 2.0, 0.7, 0.3, 0.9, 1.7
    u, w = c / e, d / e
    assert _native.radiation_force(a, b, c, d, e) == w * u * ((a + a) / 3e8 * b) / (1.0 - u * u)
    assert _native.van_der_pol_dx(5.0, 2.0) == 2.0
    assert _native.van_der_pol_dy(0.3, 0.7, 1.9) == (1.0 - 0.3 * 0.3) * 1.9 * 0.7 - 0.3
    for call in (
        lambda: _native.radiation_force(a=1.0, b=1.0, c=1.0, d=1.0, e=2.0),
        lambda: _native.van_der_pol_dx(x=1.0, y=2.0),
        lambda: _native.van_der_pol_dy(x=1.0, y=2.0, mu=1.0),
    ):
        with pytest.raises(TypeError):
            call()


@pytest.mark.parametrize(("nx", "ny"), [(3, 3), (7, 5), (40, 4), (2, 6), (6, 2), (0, 5), (5, 0)])
def test_planar_vorticity(nx, ny):
    rng = np.random.default_rng(nx)
    u, v = rng.normal(size=(2, nx * ny + 1))  # one value more than needed does no harm
    U, V = u[:-1].reshape(ny, nx), v[:-1].reshape(ny, nx)
    dx, dy = 0.3, 0.7
    expected = np.zeros((ny, nx))
    if nx > 2 and ny > 2:
        ddx = (V[1:-1, 2:] - V[1:-1, :-2]) / (2 * dx)
        expected[1:-1, 1:-1] = ddx - (U[2:, 1:-1] - U[:-2, 1:-1]) / (2 * dy)
    found = _native.compute_vorticity(u=u.tolist(), v=v.tolist(), nx=nx, ny=ny, dx=dx, dy=dy)
    assert found == expected.ravel().tolist()


@pytest.mark.parametrize(("count", "nx", "ny"), [(8, 3, 3), (9, -3, -3), (9, -1, 3), (9, 2**62, 4), (9, 1, 2**62)])
def test_planar_vorticity_of_a_grid_that_the_lists_do_not_cover(count, nx, ny):
    values = [1.0] * count
    for u, v in ((values, [1.0] * 9), ([1.0] * 9, values)):
        with pytest.raises(ValueError, match=r"nx and ny must not|at least nx \* ny"):
            _native.compute_vorticity(u, v, nx, ny, 1.0, 1.0)
    assert _native.compute_vorticity([], [], 0, 2**62, 1.0, 1.0) == []


@pytest.mark.parametrize(("res", "time"), [(1, 0.0), (6, 1.7)])
def test_swirl_field_in_single_precision(res, time):
    sinf = ctypes.CDLL(None).sinf
    sinf.argtypes, sinf.restype = [ctypes.c_float], ctypes.c_float
    f = np.float32
    field = _native.compute_swirl_field(res=res, time=time)
    assert len(field) == res * res
    T = f(time) * f(6)
    for i in range(res):
        for j in range(res):
            y, x = f(i) / f(res) - f(0.5), f(j) / f(res) - f(0.5)
            r2 = x * x + y * y + f(1e-5)
            r = np.sqrt(r2)
            m = f(1) + f(0.03) * f(sinf(f(10) * r - T))
            A, B = f(0.1) / r2, f(0.25) / r
            assert field[i * res + j] == [(-A * y - B * x) * m, (-A * x + B * y) * m]


def test_swirl_field_of_no_resolution():
    assert _native.compute_swirl_field(0, 1.0) == []
    assert _native.compute_swirl_field(-2, 1.0) == [[0.0, 0.0]] * 4
    for res in (2**31 - 1, -(2**31)):
        with pytest.raises(MemoryError):
            _native.compute_swirl_field(res, 0.0)
