"""The canonical constants and the relations between them."""

import math

import _native
import pytest

K = _native.VKMCanonicalConstants
NAN = float("nan")
C, HBAR, M_E = 299792458.0, 1.054571817e-34, 9.1093837015e-31
V = 1093845.63


def test_values_derive_everything_from_the_defaults():
    v = K.values()
    assert (v.c, v.hbar, v.alpha, v.m_e, v.e_charge) == (C, HBAR, 0.0072973525693, M_E, 1.602176634e-19)
    assert (v.rho_f, v.v_swirl) == (7e-7, V)
    assert v.omega_c == 776344071105010991104.0
    assert (v.lambda_c, v.lambda_bar_c) == (2.4263102371964454e-12, 3.8615926772428334e-13)
    assert v.r_c == 1.408970159897109e-15
    assert v.gamma_0 == 9.683619134053375e-09
    assert v.rho_E == 7e-7 * 0.5 * V * V
    assert v.rho_m == v.rho_E / 89875517873681760.0
    assert v.rho_core == v.rho_horn == K.core_density_closure(M_E, C, V, v.r_c)
    assert v.eta_0 == V / C
    assert v.geometric_gate == v.lambda_c / (v.r_c * math.pi)
    assert v.swirl_clock == math.sqrt(1 - V * V / (C * C))
    assert v.F_swirl_max == (HBAR * v.omega_c) / (v.r_c + v.r_c)
    assert v.R_infty_vkm == V * V * V / (C * (v.r_c * math.pi) * C * C)


def test_stored_constants_are_the_formulas_on_the_fixed_values():
    v = K.values()
    assert K.compton_angular_frequency() == v.omega_c
    assert K.reduced_compton_wavelength() == v.lambda_bar_c
    assert K.full_compton_wavelength() == v.lambda_c
    assert K.phi() == (1 + math.sqrt(5)) / 2
    assert K.epsilon_0() == 8.8541878128e-12


def test_closure_relations_hold_between_formulas():
    r = K.core_radius_from_compton_anchor(V, K.compton_angular_frequency())
    assert K.circulation_quantum(r, V) == pytest.approx(2 * math.pi * V**2 / K.compton_angular_frequency(), rel=1e-14)
    assert K.circulation_quantum_from_v_omega(V, K.compton_angular_frequency()) == pytest.approx(
        K.circulation_quantum(r, V), rel=1e-14
    )
    # The core's density times its own scale is the electron's rest energy.
    assert K.core_density_closure(M_E, C, V, r) * 2 * math.pi * V**2 * r**3 == pytest.approx(M_E * C**2, rel=1e-14)
    assert K.f_swirl_max(HBAR, K.compton_angular_frequency(), r) * 2 * r == pytest.approx(M_E * C**2, rel=1e-14)
    assert K.rydberg_vkm(V, r) == pytest.approx((V / C) ** 3 / (math.pi * r), rel=1e-14)
    assert K.bare_master_mass_scale(2.0, 3.0) == 54.0


def test_default_record_derives_nothing():
    v = _native.VKMCanonicalValues()
    names = [n for n in dir(v) if not n.startswith("_")]
    assert len(names) == 21
    assert [n for n in names if getattr(v, n) != 0] == ["alpha", "c", "e_charge", "hbar", "m_e", "rho_f", "v_swirl"]
    v.r_c = 3.0
    assert v.r_c == 3.0
    with pytest.raises(TypeError, match="No constructor defined"):
        K()


@pytest.mark.parametrize(("speed", "clock"), [(0.0, 1.0), (C, 0.0), (-2 * C, 0.0), (math.inf, 0.0)])
def test_swirl_clock_is_clamped(speed, clock):
    assert K.swirl_clock(speed) == clock


@pytest.mark.parametrize(
    ("name", "arguments", "bad", "text"),
    [
        ("compton_angular_frequency", (1.0, 1.0, 1.0), (0, 1, 2), "m_e, c, and hbar must be positive."),
        ("reduced_compton_wavelength", (1.0, 1.0, 1.0), (0, 1, 2), "hbar, m_e, and c must be positive."),
        ("full_compton_wavelength", (1.0, 1.0, 1.0), (0, 1, 2), "hbar, m_e, and c must be positive."),
        ("core_radius_from_compton_anchor", (1.0, 1.0), (0, 1), "v_swirl and omega_c must be positive."),
        ("circulation_quantum", (1.0, 1.0), (0, 1), "r_c and v_swirl must be positive."),
        ("eta0", (1.0, 1.0), (1,), "c must be positive."),
        ("swirl_clock", (1.0, 1.0), (1,), "c must be positive."),
        ("mass_equivalent_density", (1.0, 1.0), (1,), "c must be positive."),
        ("horn_envelope_density", (1.0,) * 4, (0, 1, 2, 3), "m_e, c, v_swirl, and r_c must be positive."),
        ("core_density_closure", (1.0,) * 4, (0, 1, 2, 3), "m_e, c, v_swirl, and r_c must be positive."),
        ("geometric_gate", (1.0, 1.0), (0, 1), "lambda_c and r_c must be positive."),
        ("f_swirl_max", (1.0,) * 3, (0, 1, 2), "hbar, omega_c, and r_c must be positive."),
        ("rydberg_vkm", (1.0,) * 3, (0, 1, 2), "v_swirl, r_c, and c must be positive."),
        ("bare_master_mass_scale", (1.0, 1.0), (1,), "rho_m must be non-negative and r_c positive."),
    ],
)
def test_guards_reject_zero_and_pass_nan(name, arguments, bad, text):
    function = getattr(K, name)
    for index in range(len(arguments)):
        for value in (0.0, -1.0):
            call = [value if i == index else a for i, a in enumerate(arguments)]
            if index in bad:
                with pytest.raises(ValueError) as error:
                    function(*call)
                assert str(error.value) == text
        assert math.isnan(function(*[NAN if i == index else a for i, a in enumerate(arguments)]))


def test_guards_of_non_negative_quantities():
    assert K.bare_master_mass_scale(0.0, 1e-15) == 0.0
    assert K.swirl_energy_density(0.0, V) == K.swirl_energy_density(1.0, 0.0) == 0.0
    assert K.swirl_energy_density(7e-7, -V) == K.swirl_energy_density(7e-7, V)
    with pytest.raises(ValueError, match=r"^rho_f must be non-negative\.$"):
        K.swirl_energy_density(-1.0, 1.0)
    with pytest.raises(ValueError, match=r"^rho_m must be non-negative and r_c positive\.$"):
        K.bare_master_mass_scale(-1.0, 1.0)
    assert K.circulation_quantum_from_v_omega(1.0, 0.0) == math.inf
    assert K.circulation_quantum_from_v_omega(1.0, -1.0) == -2 * math.pi


def test_guards_of_values_fire_in_order():
    v = K.values(rho_f=0.0)
    assert v.rho_E == v.rho_m == 0.0
    for arguments, text in (
        ({"v_swirl": 0.0, "rho_f": -1.0}, "v_swirl and omega_c must be positive."),
        ({"v_swirl": 5e-324, "rho_f": -1.0}, "r_c and v_swirl must be positive."),
        ({"rho_f": -1.0}, "rho_f must be non-negative."),
    ):
        with pytest.raises(ValueError) as error:
            K.values(**arguments)
        assert str(error.value) == text
    v = K.values(v_swirl=NAN)
    assert math.isnan(v.r_c) and math.isnan(v.swirl_clock) and v.lambda_c == 2.4263102371964454e-12
    assert K.values(v_swirl=2 * C).swirl_clock == 0.0
