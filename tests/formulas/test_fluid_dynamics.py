"""The fluid formulas, number by number and on lists."""

import math
import operator

import _native
import numpy as np
import pytest
from formulas.closed_forms import check, cross, dot
from sums import one_by_one

PI = 3.141592653589793


@pytest.mark.parametrize(
    ("name", "form"),
    [
        ("swirl_clock_rate", lambda dv_dx, du_dy: (dv_dx - du_dy) * 0.5),
        ("local_rotation_rate", lambda dv_dx, du_dy: (dv_dx - du_dy) * 0.5),
        ("swirl_clock_factor_from_speed", lambda v_norm, c: math.sqrt(max(1.0 - v_norm**2 / c**2, 0.0))),
        ("vorticity_from_curvature", lambda V, R: V / R),
        ("vortex_pressure_drop", lambda rho, c: rho * 0.5 * c * c),
        ("vortex_transverse_pressure_diff", lambda rho, c: rho * 0.25 * c * c),
        ("swirl_energy", lambda rho, omega: rho * 0.5 * omega * omega),
        ("swirl_energy_density_from_speed", lambda rho, v_norm: rho * 0.5 * v_norm * v_norm),
        ("swirl_tension_energy_density", lambda rho, omega, ell: rho * 0.5 * ell * ell * omega * omega),
        ("kairos_energy_trigger", lambda rho, omega, Ce: omega > Ce),
        ("potential_vorticity", lambda fa, zeta_r, h: (fa + zeta_r) / h),
        ("laplacian_phi", lambda d2phidx2, d2phidy2, d2phidz2: d2phidx2 + d2phidy2 + d2phidz2),
        ("bernoulli_pressure_potential", lambda velocity_squared, V: velocity_squared * 0.5 - V),
        ("rossby_number", lambda U, omega, d: U / ((omega + omega) * d)),
        ("ekman_number", lambda nu, omega, H: nu / (omega * H * H)),
        ("cylinder_mass", lambda rho, R, H: rho * PI * R * R * H),
        ("cylinder_inertia", lambda mass, R: mass * 0.5 * R * R),
        ("torque", lambda inertia, alpha: inertia * alpha),
    ],
)
def test_scalar_formula(name, form):
    check(getattr(_native, name), form)


@pytest.mark.parametrize(
    ("name", "form", "kinds"),
    [
        (
            "compute_pressure_field",
            lambda velocity_magnitude, rho_ae, P_infinity: [
                P_infinity - rho_ae * 0.5 * v * v for v in velocity_magnitude
            ],
            {"velocity_magnitude": "floats"},
        ),
        (
            "compute_bernoulli_pressure",
            lambda velocity_magnitude, rho, p_inf: [p_inf - rho * 0.5 * v * v for v in velocity_magnitude],
            {"velocity_magnitude": "floats"},
        ),
        (
            "compute_velocity_magnitude",
            lambda velocity: [math.sqrt(dot(v, v)) for v in velocity],
            {"velocity": "vecs"},
        ),
        (
            "compute_kinetic_energy",
            lambda velocity, rho_ae: rho_ae * 0.5 * one_by_one(dot(v, v) for v in velocity),
            {"velocity": "vecs"},
        ),
        (
            "compute_helicity",
            lambda velocity, vorticity, dV: one_by_one(map(dot, velocity, vorticity)) * dV,
            {"velocity": "vecs", "vorticity": "vecs"},
        ),
        (
            "circulation_surface_integral",
            lambda omega_field, dA_field: one_by_one(map(dot, omega_field, dA_field)),
            {"omega_field": "vecs", "dA_field": "vecs"},
        ),
        (
            "enstrophy",
            lambda omega_squared, ds_area: one_by_one(map(operator.mul, omega_squared, ds_area)),
            {"omega_squared": "floats", "ds_area": "floats"},
        ),
        (
            "compute_vorticity",
            lambda grad: [grad[2][1] - grad[1][2], grad[0][2] - grad[2][0], grad[1][0] - grad[0][1]],
            {"grad": "matrix"},
        ),
        ("grad_phi", lambda phi_grad: phi_grad, {"phi_grad": "vec"}),
    ],
)
def test_formula_on_lists(name, form, kinds):
    check(getattr(_native, name), form, **kinds)


def test_thresholds():
    assert _native.swirl_clock_factor_from_speed(3e8) == 0.0 == _native.swirl_clock_factor_from_speed(1.0, 0.0)
    assert math.isnan(_native.swirl_clock_factor_from_speed(math.nan))
    assert not _native.kairos_energy_trigger(2.0, 0.3, 0.3)
    assert _native.kairos_energy_trigger(2.0, -0.4, 0.3)
    rows = ([2e-8, 9.0, 9.0], [9.0, 0.0, 9.0], [9.0, 9.0, -1e-8])
    assert not _native.is_incompressible(*rows)
    rows[2][2] = math.nextafter(-1e-8, -1.0)
    assert _native.is_incompressible(*rows)
    assert not _native.is_incompressible([0.0] * 3, [0.0, math.nan, 0.0], [0.0] * 3)
    assert _native.compute_bernoulli_pressure([2.0]) == [-7e-7 * 0.5 * 2.0 * 2.0]


def test_overloads_of_helicity_and_vorticity_are_told_apart_by_their_arguments():
    rng = np.random.default_rng(5)
    v, w = rng.normal(size=(2, 50, 3))
    single = np.float32(0.0)
    for a, b in zip(v, w, strict=True):
        single += np.float32(dot(a, b))
    assert _native.compute_helicity(v, w) == _native.compute_helicity(v.tolist(), w.tolist()) == single / np.float32(50)
    assert math.isnan(_native.compute_helicity([], []))
    assert _native.compute_helicity([], [], 2.0) == 0.0
    u = list(map(float, range(9)))
    assert _native.compute_vorticity(u, u, 3, 3, 1.0, 1.0) == [0.0] * 4 + [-2.0] + [0.0] * 4
    assert _native.compute_vorticity([[1, 2, 3], [4, 5, 6], [7, 8, 10]]) == [2.0, -4.0, 2.0]
    with pytest.raises(TypeError):
        _native.compute_helicity(velocity=v, vorticity=w)  # the pair form takes no names
    with pytest.raises(TypeError):
        _native.compute_vorticity(u, u, 3)


@pytest.mark.parametrize("shape", [(5, 4), (2, 2), (2, 7)])
def test_pressure_gradient_is_the_negated_gradient(shape):
    p = np.random.default_rng(1).normal(size=shape)
    gx, gy = np.gradient(p, 0.5, 0.25)  # steps that divide exactly: central and one-sided differences alike
    force = np.array(_native.pressure_gradient(p.tolist(), 0.5, 0.25))
    np.testing.assert_array_equal(force, np.stack([-gx, -gy, np.zeros(shape)], axis=2))
    assert _native.pressure_gradient(pressure_field=p.tolist()) == _native.pressure_gradient(p.tolist(), dy=1.0, dx=1.0)


@pytest.mark.parametrize(
    "call",
    [
        lambda: _native.pressure_gradient([[1.0, 2.0], [3.0]]),
        lambda: _native.pressure_gradient([[1.0, 2.0]]),
        lambda: _native.pressure_gradient([[1.0], [2.0]]),
        lambda: _native.compute_helicity([[1.0, 2.0, 3.0]], [], 1.0),
        lambda: _native.circulation_surface_integral([], [[1.0, 2.0, 3.0]]),
        lambda: _native.enstrophy([1.0, 2.0], [1.0]),
    ],
)
def test_lists_that_do_not_fit(call):
    with pytest.raises(ValueError, match=r"same length|at least two"):
        call()
    assert _native.pressure_gradient([]) == [] and _native.pressure_gradient([[], []]) == [[], []]


def test_rigid_rotation():
    omega = [0.3, -0.2, 0.7]
    grad = [[0.0, -omega[2], omega[1]], [omega[2], 0.0, -omega[0]], [-omega[1], omega[0], 0.0]]
    assert cross(omega, [1.0, 0.0, 0.0]) == [row[0] for row in grad]
    assert _native.compute_vorticity(grad) == [2 * w for w in omega]


@pytest.mark.parametrize(
    "given",
    [
        [1.0, 2.0, 3.0],
        [1, 2.0, True + 2],
        (1.0, 2.0, 3.0),
        np.array([1.0, 2.0, 3.0]),
        np.array([[1.0, 2.0, 3.0], [9.0] * 3]).T[:, 0],
        np.array([1, 2, 3], dtype=np.float32),
        np.array([1, 2, 3], dtype=">f8"),
        np.array([1, 2, 3]),
        map(float, (1, 2, 3)),
    ],
    ids=str,
)
def test_whatever_holds_floats_is_a_list_of_floats(given):
    assert _native.compute_bernoulli_pressure(given, 2.0, 9.0) == [8.0, 5.0, 0.0]


@pytest.mark.parametrize("given", [1.0, "abc", [1.0, "2"], [1.0, None], np.ones((2, 2)), None])
def test_whatever_does_not_is_a_type_error(given):
    with pytest.raises(TypeError):
        _native.compute_bernoulli_pressure(given, 2.0, 9.0)
