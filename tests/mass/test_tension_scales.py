"""Force, coupling and spring scales."""

import math

import _native
import pytest

S = _native.VKMTensionScales
K = _native.VKMCanonicalConstants


def test_forwarded_scales_are_those_of_the_constants():
    assert S.F_swirl_max(2.0, 3.0, 5.0) == K.f_swirl_max(2.0, 3.0, 5.0) == 0.6
    assert S.rydberg_from_vkm(2.0, 3.0, 5.0) == K.rydberg_vkm(2.0, 3.0, 5.0)
    with pytest.raises(ValueError, match=r"hbar, omega_c, and r_c must be positive\."):
        S.F_swirl_max(0.0, 1.0, 1.0)
    with pytest.raises(ValueError, match=r"v_swirl, r_c, and c must be positive\."):
        S.rydberg_from_vkm(1.0, 1.0, 0.0)


@pytest.mark.parametrize(
    ("name", "arguments", "expected"),
    [
        ("F_gr_max", {"c": 2.0, "G": 0.5}, 8.0),
        ("gravitational_fine_structure", {"G": 3.0, "m_e": 2.0, "hbar": 0.5, "c": 4.0}, 6.0),
        ("tension_ratio_from_couplings", {"alpha_g": -3.0, "alpha": 2.0}, -6.0),
        ("coulomb_force_at_core", {"e_charge": -2.0, "epsilon_0": 1.0, "r_c": 0.5}, 4 / math.pi),
        ("electron_spring_constant", {"F_swirl_max": 6.0, "r_c": 1.5}, 2.0),
        ("electron_spring_constant", {"F_swirl_max": 6.0, "r_c": 1.5, "n": 4.0}, 1.0),
        ("electron_spring_frequency", {"F_swirl_max": 6.0, "r_c": 1.5, "m_e": 0.5}, 2.0),
        ("electron_spring_energy", {"F_swirl_max": 6.0, "r_c": 1.5, "n": 2.0}, 2.25),
        ("swirl_impedance", {"P_K": 6.0, "v_K": 1.5}, 4.0),
        ("dimensionless_stiffness_ratio", {"P_K": 6.0, "V_K": 2.0, "hbar": 3.0, "omega": 0.5}, 8.0),
    ],
)
def test_values(name, arguments, expected):
    assert getattr(S, name)(**arguments) == pytest.approx(expected, rel=1e-15)


@pytest.mark.parametrize(
    ("name", "arguments", "text"),
    [
        ("F_gr_max", (0.0, 1.0), "c and G must be positive."),
        ("F_gr_max", (1.0, 0.0), "c and G must be positive."),
        ("gravitational_fine_structure", (1.0, 1.0, 1.0, -1.0), "arguments must be positive."),
        ("tension_ratio_from_couplings", (1.0, 0.0), "alpha must be positive."),
        ("coulomb_force_at_core", (0.0, 0.0, 1.0), "epsilon_0 and r_c must be positive."),
        ("electron_spring_constant", (1.0, 1.0, 0.0), "F_swirl_max, r_c, and n must be positive."),
        ("electron_spring_frequency", (0.0, 0.0, 0.0, 0.0), "m_e must be positive."),
        ("electron_spring_frequency", (0.0, 1.0, 1.0), "F_swirl_max, r_c, and n must be positive."),
        ("electron_spring_energy", (1.0, 0.0), "F_swirl_max, r_c, and n must be positive."),
        ("swirl_impedance", (1.0, 0.0), "v_K must be positive."),
        (
            "dimensionless_stiffness_ratio",
            (1.0, -1.0, 1.0, 1.0),
            "V_K must be non-negative; hbar and omega must be positive.",
        ),
        (
            "dimensionless_stiffness_ratio",
            (1.0, 0.0, 1.0, 0.0),
            "V_K must be non-negative; hbar and omega must be positive.",
        ),
    ],
)
def test_guards(name, arguments, text):
    with pytest.raises(ValueError) as error:
        getattr(S, name)(*arguments)
    assert str(error.value) == text
    assert math.isnan(getattr(S, name)(*[math.nan] * len(arguments)))
