"""Magnus force, swirl potentials and clock maps."""

import math

import _native
import numpy as np
import pytest
from _native import VKMGravity as Gravity
from formulas.closed_forms import cross, dot
from vkmcore import _engine


def exp(x):
    """The module's own, since that of Python is the C library's."""
    return _engine.elementary("exp", [x])[0]


def minus(a, b):
    return [x - y for x, y in zip(a, b, strict=True)]


@pytest.mark.parametrize("radius", [0.4, 1e-30, math.nextafter(1e-30, 1.0), 0.0, -1.0, math.nan])
def test_magnus_force(radius):
    t, n, v, v_bg = np.random.default_rng(2).normal(size=(4, 3)).tolist()
    body = _native.MagnusBernoulliIntegrator(rho_f=0.7, v_swirl=3.0, r_c=0.2, Gamma=1.3)
    found = body.compute_magnus_force(tangent=t, normal=n, curvature_radius=radius, v_knot=v, v_bg=v_bg)
    curvature = [x * (1.0 / radius) for x in n] if radius > 1e-30 else [0.0] * 3
    assert found == [(0.7 * 1.3) * (a + b) for a, b in zip(cross(t, minus(v, v_bg)), curvature, strict=True)]


def test_swirl_coulomb_acceleration():
    body = _native.MagnusBernoulliIntegrator(0.7, 3.0, 0.2, 1.3)
    p, q = [0.3, -0.2, 0.5], [0.1, 0.1, 0.1]
    R = minus(p, q)
    r = math.sqrt(dot(R, R))
    expected = [x / r * exp(-2 * r / 0.2) * (-(3.0 * 3.0) / r) for x in R]
    assert body.compute_swirl_coulomb_accel(eval_pos=p, source_pos=q) == expected
    assert dot(expected, R) < 0.0
    for far in (p, minus(p, [70.1, 0.0, 0.0])):
        assert body.compute_swirl_coulomb_accel(p, far) == [0.0] * 3
    assert body.compute_swirl_coulomb_accel([0.0] * 3, [69.9, 0.0, 0.0])[0] > 0.0


def direct(p, w, epsilon):
    result = []
    for i in range(len(p)):
        total = 0.0
        for j in range(len(p)):
            if j != i:
                d = minus(p[i], p[j])
                s = dot(d, d) + epsilon * epsilon
                total += dot(d, w[j]) / (s * math.sqrt(s))
        result.append(-0.07957747154594767 * total)
    return result


def gaussian(p, w, epsilon):
    result = []
    for i in range(len(p)):
        a = [0.0] * 3
        for j in range(len(p)):
            if j != i:
                d = minus(p[i], p[j])
                g = exp(-dot(d, d) / ((epsilon + epsilon) * epsilon))
                a = [x + g * y for x, y in zip(a, w[j], strict=True)]
        result.append(-0.5 * dot(a, a))
    return result


@pytest.mark.parametrize("n", [1, 2, 31, 33, 70])
def test_potentials_of_the_plain_loops(n):
    p, w = np.random.default_rng(n).normal(size=(2, n, 3)).tolist()
    for epsilon in (0.1, 0.02, 7e-7):
        assert _native.compute_gravitational_potential_direct(p, w, epsilon) == direct(p, w, epsilon)
        assert _native.compute_gravitational_potential_gradient(p, w, epsilon) == gaussian(p, w, epsilon)
    assert _native.compute_gravitational_potential_direct(positions=p, vorticity=w) == direct(p, w, 0.1)
    near = [[1e-7 * x for x in point] for point in p]
    for name in ("compute_gravitational_potential_gradient", "compute_gravitational_potential"):
        assert getattr(_native, name)(positions=near, vorticity=w) == gaussian(near, w, 7e-7)
    assert (n == 1) == (_native.compute_gravitational_potential(near, w) == [0.0])


def test_potentials_of_odd_samples():
    p = [[0.0] * 3, [0.0] * 3, [1.0, 0.0, 0.0]]
    w = [[1.0, 2.0, 3.0]] * 3
    zero = _native.compute_gravitational_potential_direct(p, w, 0.0)
    assert math.isnan(zero[0]) and math.isnan(zero[1]) and zero[2] == -0.07957747154594767 * 2.0
    assert math.isnan(_native.compute_gravitational_potential(p, w, 0.0)[0])
    # A factor of zero makes a NaN of an infinite vorticity, and hides a finite one.
    infinite = _native.compute_gravitational_potential(p, [*w[:2], [math.inf, 0.0, 0.0]])
    assert math.isnan(infinite[0]) and infinite[2] == 0.0
    for name in ("_direct", "_gradient", ""):
        with pytest.raises(ValueError, match="same length"):
            getattr(_native, "compute_gravitational_potential" + name)(p, w[:2])


def test_time_dilation_maps():
    speeds = [0.0, 0.6, math.nextafter(1.0, 0.0), 1.0, 2.0, math.nan]
    t = [[0.0, v, 0.0] for v in speeds]
    assert _native.compute_time_dilation_map_linear(tangents=t, C_e=1.0)[:-1] == [1.0 - v * v for v in speeds[:-1]]
    expected = [math.sqrt(1.0 - (v * v if v < 1.0 else 0.999999)) for v in speeds[:-1]]
    for function in (_native.compute_time_dilation_map_sqrt, _native.compute_time_dilation_map):
        found = function(tangents=t, C_e=1.0)
        assert found[:-1] == expected and math.isnan(found[-1])
        assert function([[1093845.63, 0.0, 0.0]]) == [math.sqrt(1.0 - 0.999999)]
    with pytest.raises(TypeError):
        _native.compute_time_dilation_map_linear(t)


def test_fields():
    A, B = np.random.default_rng(7).normal(size=(2, 20, 3))
    a, b = A.tolist(), B.tolist()
    size = [math.sqrt(dot(v, v)) for v in b]
    crossed = [cross(x, y) for x, y in zip(b, a, strict=True)]
    assert Gravity.compute_beltrami_shear(B_field=B, Curl_B=A) == [math.sqrt(dot(v, v)) for v in crossed]
    assert Gravity.compute_helicity_density(A_field=A, B_field=B) == list(map(dot, a, b))
    dilation = Gravity.compute_gravity_dilation(B_field=B, omega_drive=30.0, v_swirl=9.0, B_saturation=2.0)
    assert dilation == [min(max(1.0 - (s / 2.0) * math.log10(30.0), 0.0), 1.0) for s in size]
    for drive in (1.0, 0.0, -5.0):
        assert Gravity.compute_gravity_dilation(B, drive, math.nan, 2.0) == [1.0] * 20
    clock = Gravity.compute_swirl_clock(v_swirl_field=B, v_swirl=1.5)
    assert clock == [math.sqrt(max(1.0 - dot(v, v) / (1.5 * 1.5), 0.0)) for v in b] and 0.0 in clock
    assert Gravity.compute_swirl_energy_density(v_field=B, rho_f=0.3) == [0.3 * 0.5 * dot(v, v) for v in b]
    assert Gravity.compute_helicity_density(A.astype(np.float32)[::-2], B[::2]) == pytest.approx(
        (A[::-2] * B[::2]).sum(axis=1), abs=1e-6
    )


def test_swirl_coulomb_on_radii_and_the_coupling():
    r = [-1.0, 0.0, 0.3, 5.0]
    potential = Gravity.compute_swirl_coulomb_potential(radii=r, Lambda=2.0, r_c=0.5)
    assert potential == [-2.0 / math.sqrt(x * x + 0.25) for x in r]
    force = Gravity.compute_swirl_coulomb_force(radii=np.array(r), Lambda=2.0, r_c=0.5)
    assert force == [-2.0 * x / math.pow(x * x + 0.25, 1.5) for x in r]
    assert Gravity.compute_swirl_coulomb_force([0.0, 1e-170], 2.0, 1e-200) == [0.0, 0.0]
    v, t_p, F, r_c, c = 1093845.63, 5.391247e-44, 29.053507, 1.40897e-15, 299792458.0
    assert Gravity.compute_G_swirl(v, t_p, F, r_c) == c**5 * v * t_p**2 / ((F + F) * r_c * r_c)
    assert Gravity.compute_G_swirl(v_swirl=1.0, t_p=2.0, F_max=0.5, r_c=1.0, c=2.0) == 128.0


N3, N = "Expected array with shape (N, 3)", "Expected 1D array with shape (N,)"
POINTS = np.ones((2, 3))


@pytest.mark.parametrize(
    ("call", "text"),
    [
        (
            lambda: Gravity.compute_beltrami_shear(POINTS, np.ones((3, 3))),
            "B_field and Curl_B must have the same size.",
        ),
        (lambda: Gravity.compute_beltrami_shear(POINTS.T, POINTS), N3),
        (lambda: Gravity.compute_helicity_density(POINTS, POINTS[:1]), "A_field and B_field must have the same size."),
        (lambda: Gravity.compute_helicity_density(POINTS, POINTS[0]), N3),
        (lambda: Gravity.compute_gravity_dilation(POINTS, 1.0, 1.0, 0.0), "B_saturation must be positive."),
        (lambda: Gravity.compute_gravity_dilation(np.ones(6), 1.0, 1.0, 0.0), N3),
        (lambda: Gravity.compute_swirl_clock(np.ones((2, 2)), 1.0), N3),
        (lambda: Gravity.compute_swirl_energy_density(np.ones((1, 2, 3)), 1.0), N3),
        (lambda: Gravity.compute_swirl_coulomb_potential([1.0], 1.0, 0.0), "r_c must be positive."),
        (lambda: Gravity.compute_swirl_coulomb_force([1.0], 1.0, -1.0), "r_c must be positive."),
        (lambda: Gravity.compute_swirl_coulomb_force(1.0, 1.0, 1.0), N),
        (lambda: Gravity.compute_swirl_coulomb_potential(POINTS, 1.0, 0.0), N),
        (lambda: Gravity.compute_G_swirl(1.0, 1.0, 0.0, 1.0), "F_max and r_c must be positive."),
        (lambda: Gravity.compute_G_swirl(1.0, 1.0, 1.0, -1.0), "F_max and r_c must be positive."),
    ],
)
def test_rejected(call, text):
    with pytest.raises(ValueError) as error:
        call()
    assert str(error.value) == text
