"""The master mass equation: factors, order of guards, defaults."""

import math

import _native
import pytest

E = _native.VKMMasterEquation
K = _native.VKMCanonicalConstants


def full_input(**changes):
    data = _native.VKMMasterEquationInput()
    top = data.topology  # a reference: what is assigned through it shows in the owner
    top.alpha_C, top.beta_L, top.gamma_H = 0.5, 0.25, 2.0
    top.crossing, top.ropelength, top.helicity = 3.0, 16.37, -1.5
    top.golden_layer = 3
    data.gate = 2
    for name, value in changes.items():
        setattr(data, name, value)
    return data


def test_default_input_weighs_nothing():
    data = _native.VKMMasterEquationInput()
    assert (data.rho_f, data.v_norm, data.r_c, data.c) == (7e-7, 1093845.63, 1.40897017e-15, 299792458.0)
    assert (data.lambda_c, data.gate, data.explicit_swirl_clock) == (0.0, 0, -1.0)
    assert data.topology.phi == K.phi()
    out = E.evaluate(data)
    assert out.mass_kg == 0.0 and out.geometric_gate == 1.0
    assert out.swirl_clock == K.swirl_clock(1093845.63)
    blank = _native.VKMMasterEquationOutput()
    assert (blank.swirl_clock, blank.clock_impedance, blank.geometric_gate, blank.mass_kg) == (1.0, 1.0, 1.0, 0.0)


def test_every_factor_and_their_product():
    out = E.evaluate(full_input())
    r_c, v, c = 1.40897017e-15, 1093845.63, 299792458.0
    assert out.rho_E == 7e-7 * 0.5 * v * v
    assert out.rho_m == out.rho_E / (c * c)
    assert out.clock_impedance == 1 / (out.swirl_clock * out.swirl_clock)
    assert out.geometric_gate == (K.full_compton_wavelength() / (r_c * math.pi)) ** 2.0
    assert out.topological_kernel == K.phi() ** -6.0 * ((0.5 * 3 + 0.25 * 16.37) + 2.0 * -1.5)
    assert out.bare_mass_scale_kg == K.bare_master_mass_scale(out.rho_m, r_c)
    assert out.mass_kg == out.bare_mass_scale_kg * out.geometric_gate * out.topological_kernel * out.clock_impedance


def test_wavelength_falls_back_to_the_electron_at_the_fixed_speed_of_light():
    own = E.evaluate(full_input(lambda_c=1e-12)).geometric_gate
    fallback = E.evaluate(full_input(c=1e9)).geometric_gate
    assert own == pytest.approx((1e-12 / (1.40897017e-15 * math.pi)) ** 2)
    for value in (0.0, -1.0, math.nan):
        assert E.evaluate(full_input(lambda_c=value)).geometric_gate == fallback


def test_explicit_clock_counts_only_when_positive():
    assert E.evaluate(full_input(explicit_swirl_clock=0.5)).clock_impedance == 4.0
    for unset in (0.0, -3.0, math.nan):
        assert E.evaluate(full_input(explicit_swirl_clock=unset)).swirl_clock == K.swirl_clock(1093845.63)
    assert E.evaluate(full_input(explicit_swirl_clock=0.5, v_norm=1e9)).swirl_clock == 0.5


def test_guards_of_evaluate_fire_in_order():
    data = full_input(rho_f=-1.0, v_norm=1e9, gate=-1)
    data.topology.phi = 0.0
    mends = (
        ("rho_f must be non-negative; r_c and c must be positive.", lambda: setattr(data, "rho_f", 1.0)),
        ("swirl_clock must be positive.", lambda: setattr(data, "v_norm", 1.0)),
        ("gate must be non-negative.", lambda: setattr(data, "gate", 1)),
        ("phi must be positive.", lambda: setattr(data.topology, "phi", 1.0)),
    )
    for text, mend in mends:
        with pytest.raises(ValueError) as error:
            E.evaluate(data)
        assert str(error.value) == text
        mend()
    assert E.evaluate(data).topological_kernel == 0.5 * 3 + 0.25 * 16.37 + 2.0 * -1.5
    assert math.isnan(E.evaluate(full_input(rho_f=math.nan)).mass_kg)
    for field in ("r_c", "c"):
        with pytest.raises(ValueError, match=r"rho_f must be non-negative; r_c and c must be positive\."):
            E.evaluate(full_input(**{field: 0.0}))


def test_a_negative_layer_amplifies():
    data = full_input()
    data.topology.golden_layer = -2
    assert E.topological_kernel(data.topology) == K.phi() ** 4.0 * (0.5 * 3 + 0.25 * 16.37 + 2.0 * -1.5)


def test_integers_are_of_32_bits():
    data = full_input()
    with pytest.raises(TypeError):
        data.gate = 2**31
    with pytest.raises(TypeError):
        data.topology.golden_layer = 1.5


def test_gate_factor_and_impedances():
    assert E.geometric_gate_factor(5.0, 1e300, 0) == 1.0
    assert E.geometric_gate_factor(lambda_c=2 * math.pi, r_c=1.0, gate=10) == 1024.0
    with pytest.raises(ValueError, match=r"lambda_c and r_c must be positive\."):
        E.geometric_gate_factor(0.0, 1.0, -1)
    with pytest.raises(ValueError, match=r"gate must be non-negative\."):
        E.geometric_gate_factor(1.0, 1.0, -1)
    assert E.clock_impedance(0.5) == 4.0
    assert E.weak_swirl_clock_impedance(v_norm=4.0, c=2.0) == 5.0
    with pytest.raises(ValueError, match=r"swirl_clock must be positive\."):
        E.clock_impedance(0.0)
    with pytest.raises(ValueError, match=r"c must be positive\."):
        E.weak_swirl_clock_impedance(1.0, 0.0)


def test_baseline_mass_and_its_other_names():
    rho, r, lam, length = 3.0, 0.7, 1.3, 16.4
    expected = 2 * math.pi**3 * rho * r**5 * length / lam**2
    for name, word in (
        ("geometric_baseline_mass", "rho_m"),
        ("geometric_baseline_mass_from_rho_m", "rho_m"),
        ("geometric_horn_baseline_mass", "rho_horn"),
    ):
        function = getattr(E, name)
        assert function(**{word: rho, "r_c": r, "lambda_c": lam, "L_tot": length}) == pytest.approx(expected, rel=1e-14)
        for bad in ((-1.0, r, lam), (rho, 0.0, lam), (rho, r, 0.0)):
            with pytest.raises(ValueError) as error:
                function(*bad, length)
            assert str(error.value) == f"{word} must be non-negative; r_c and lambda_c must be positive."
        assert function(0.0, r, lam, length) == 0.0
