"""Atomic scales, clock transport and field, spectroscopic gap: formulas, guards and their order."""

import math

import _native
import pytest
from _native import AtomicBridgeModel as Atom
from _native import ChronosKelvinTransport as Clock
from _native import ClockFieldEFT as Field
from _native import DelayModeSelector as Delay
from _native import SpectroscopicGap as Gap
from formulas.closed_forms import check

PI = 3.141592653589793
EV = 1.602176634e-19


def rate(S_t, r_c, c):
    return math.sqrt(max(1.0 - S_t * S_t, 0.0)) * (c / r_c)


def branch(sigma, E_R, eta0, gamma):
    return sigma * -2.0 * E_R * eta0 * gamma


def orbit(sigma, E_R, eta0, anticommutator_value):
    return E_R * 0.5 * eta0 * sigma * anticommutator_value


def packet(r, phi, z, t, A_gamma, w_r, w_z, v, m, k, omega):
    envelope = math.exp(-(r * r) / (2 * w_r * w_r)) * A_gamma * math.exp(-((z - t * v) ** 2) / (2 * w_z * w_z))
    return math.cos(m * phi + z * k - t * omega) * envelope


@pytest.mark.parametrize(
    ("function", "form"),
    [
        (Atom.eta0, lambda v_swirl, c: v_swirl / c),
        (Atom.bohr_radius_vkm, lambda r_c, alpha: (r_c + r_c) / (alpha * alpha)),
        (Atom.rydberg_energy, lambda hbar, reduced_mass, a0: hbar * hbar / ((2 * reduced_mass) * a0 * a0)),
        (Atom.lambda_vkm, lambda rho_core, v_swirl, r_c: r_c**4.0 * (rho_core * (4 * PI) * v_swirl * v_swirl)),
        (Atom.soft_core_potential, lambda r, Lambda, r_c: -Lambda / math.sqrt(r * r + r_c * r_c)),
        (Atom.soft_core_force, lambda r, Lambda, r_c: -Lambda * r / math.pow(r * r + r_c * r_c, 1.5)),
        (Atom.clock_branch_factor, lambda sigma, eta0, gamma: sigma * eta0 * gamma + 1.0),
        (Atom.scalar_clock_potential_linear, branch),
        (Atom.orbit_coupling_energy, orbit),
        (
            Atom.frozen_linear_interaction,
            lambda sigma, E_R, eta0, gamma, anticommutator_value: (
                branch(sigma, E_R, eta0, gamma) + orbit(sigma, E_R, eta0, anticommutator_value)
            ),
        ),
        (
            Atom.pauli_barrier_scale,
            lambda rho_f, Gamma0, L, a_cut, shape_factor: (
                rho_f * Gamma0 * Gamma0 / (4 * PI) * (L / a_cut) * shape_factor
            ),
        ),
        (Atom.omega_z_from_displacement_gradient, lambda Omega, dxi_dz: (Omega + Omega) * dxi_dz),
        (Atom.u_theta_uniform_vorticity, lambda r, omega_z: r * (omega_z * 0.5)),
        (Atom.gamma_from_uniform_vorticity, lambda r, omega_z, Gamma0: r * PI * r * omega_z / Gamma0),
        (Atom.helical_packet_gamma, packet),
        (Clock.kelvin_invariant, lambda R, omega: R * R * omega),
        (Clock.omega_from_invariant, lambda invariant, R: invariant / (R * R)),
        (Clock.omega_from_swirl_clock, rate),
        (Clock.vorticity_from_swirl_clock, lambda S_t, r_c, c: 2 * rate(S_t, r_c, c)),
        (
            Clock.swirl_clock_from_omega,
            lambda omega, r_c, c: math.sqrt(max(1.0 - (omega * r_c) ** 2 / (c * 4.0 * c), 0.0)),
        ),
        (Clock.chronos_kelvin_invariant, lambda R, S_t, r_c, c: 2 * rate(S_t, r_c, c) * R * R),
        (Clock.clock_radius_derivative, lambda S_t, R, dR_dt: 2 * (1.0 - S_t * S_t) / S_t * (dR_dt / R)),
        (
            Clock.radius_from_clock_invariant,
            lambda invariant, S_t, r_c, c: math.sqrt(invariant / (2 * rate(S_t, r_c, c))),
        ),
        (Field.c13, lambda c1, c3: c1 + c3),
        (Field.tensor_speed, lambda c13, c: c / math.sqrt(1.0 - c13)),
        (Field.tensor_speed_fractional_offset, lambda c13: 1.0 / math.sqrt(1.0 - c13) - 1.0),
        (Field.satisfies_gw170817, lambda c13, tolerance: 1.0 / math.sqrt(1.0 - c13) - 1.0 <= tolerance),
        (Field.poisson_source, lambda rho_matter, G_eff: rho_matter * (G_eff * (4 * PI))),
        (Field.effective_gravity_from_potential_gradient, lambda grad_chi: -grad_chi),
        (Delay.circulation_delay, lambda length, v_swirl: length / v_swirl),
        (Delay.core_turnover_delay, lambda r_c, v_swirl: r_c * (2 * PI) / v_swirl),
        (Delay.discrete_mode_frequency, lambda n, tau: n * (2 * PI) / tau),
        (
            Delay.phase_lock_residual,
            lambda Omega, omega0, kappa, tau: math.sin(Omega * tau) * kappa + (Omega - omega0),
        ),
        (Delay.phase_lock_stability_slope, lambda Omega, kappa, tau: math.cos(Omega * tau) * (kappa * tau)),
        (Gap.kelvin_gap_joule, lambda hbar, v_swirl, r_c, multiplier: hbar * multiplier * v_swirl / r_c),
        (Gap.kelvin_gap_ev, lambda hbar, v_swirl, r_c, multiplier: hbar * multiplier * v_swirl / r_c / EV),
        (Gap.joule_to_ev, lambda E_joule: E_joule / EV),
        (Gap.ev_to_joule, lambda E_ev: E_ev * EV),
        (
            Gap.boltzmann_suppression,
            lambda gap_joule, temperature_K, k_B: math.exp(-gap_joule / (temperature_K * k_B)),
        ),
        (
            Gap.is_decoupled_from_atomic_transition,
            lambda transition_ev, gap_ev, safety_factor: gap_ev >= transition_ev * safety_factor,
        ),
        (Gap.gap_ratio, lambda transition_ev, gap_ev: gap_ev / transition_ev),
    ],
)
def test_formula(function, form):
    integer = {Atom.helical_packet_gamma: "m", Delay.discrete_mode_frequency: "n"}.get(function)
    check(function, form, **({integer: "int"} if integer else {}))


SCALES = "rho_f must be non-negative; Gamma0, L, and a_cut must be positive."
CLOCK = "Require 0 <= S_t <= 1 and positive r_c, c."
TENSOR = "Require 1 - c13 > 0."
TOLERANCE = "tolerance must be non-negative."
SOLVER = "tau, max_iter, and tol must be positive."


@pytest.mark.parametrize(
    ("function", "good", "bad", "text"),
    [  # `bad` gives for an argument's place the values that are rejected
        (Atom.eta0, (1.0, 1.0), {1: (0.0, -1.0)}, "c must be positive."),
        (Atom.bohr_radius_vkm, (1, 1), {0: (0, -1), 1: (0, -1)}, "r_c and alpha must be positive."),
        (
            Atom.rydberg_energy,
            (1, 1, 1),
            {0: (0,), 1: (-1,), 2: (0,)},
            "hbar, reduced_mass, and a0 must be positive.",
        ),
        (Atom.lambda_vkm, (1, 1, 1), {0: (0,), 1: (-1,), 2: (0,)}, "rho_core, v_swirl, and r_c must be positive."),
        (Atom.soft_core_potential, (-1, 1, 1), {2: (0, -1)}, "r_c must be positive."),
        (Atom.soft_core_force, (-1, 1, 1), {2: (0, -1)}, "r_c must be positive."),
        (Atom.pauli_barrier_scale, (0, 1, 1, 1, 0), {0: (-1,), 1: (0,), 2: (0,), 3: (0, -1)}, SCALES),
        (Atom.pauli_barrier_scale, (0, 1, 1, 1, 0), {4: (-1e-300,)}, "shape_factor must be non-negative."),
        (Atom.pauli_barrier_scale, (-1, 1, 1, 1, 0), {4: (-1,)}, SCALES),
        (Atom.gamma_from_uniform_vorticity, (1, 1, 1), {2: (0, -1)}, "Gamma0 must be positive."),
        (
            Atom.helical_packet_gamma,
            (1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1),
            {5: (0,), 6: (-1,)},
            "w_r and w_z must be positive.",
        ),
        (Clock.kelvin_invariant, (1, -1), {0: (0, -1)}, "R must be positive."),
        (Clock.omega_from_invariant, (-1, 1), {1: (0, -1)}, "R must be positive."),
        (Clock.omega_from_swirl_clock, (0, 1, 1), {0: (-1e-300, 1.0000000000000002), 1: (0,), 2: (0,)}, CLOCK),
        (Clock.vorticity_from_swirl_clock, (1, 1, 1), {0: (-1, 2), 1: (-1,), 2: (-1,)}, CLOCK),
        (Clock.swirl_clock_from_omega, (9, 1, 1), {1: (0,), 2: (0,)}, "r_c and c must be positive."),
        (Clock.chronos_kelvin_invariant, (1, 1, 1, 1), {0: (0, -1)}, "R must be positive."),
        (Clock.chronos_kelvin_invariant, (0, 1, 1, 1), {1: (2,), 2: (0,), 3: (0,)}, CLOCK),
        (Clock.clock_radius_derivative, (2, 1, 0), {0: (0, -1), 1: (0,)}, "S_t and R must be positive."),
        (Clock.radius_from_clock_invariant, (1, 0, 1, 1), {1: (2, -1), 2: (0,)}, CLOCK),
        (
            Clock.radius_from_clock_invariant,
            (1, 0, 1, 1),
            {1: (1,)},
            "omega is zero; radius is not determined by invariant.",
        ),
        (Field.tensor_speed, (0, 1), {0: (1, 2)}, TENSOR),
        (Field.tensor_speed, (2, 1), {1: (0,)}, "c must be positive."),
        (Field.tensor_speed_fractional_offset, (0,), {0: (1,)}, TENSOR),
        (Field.satisfies_gw170817, (0, 0), {0: (1,)}, TENSOR),
        (Field.satisfies_gw170817, (1, 0), {1: (-1e-300,)}, TOLERANCE),
        (Field.constraints, (0, 0, 0), {2: (-1,)}, TOLERANCE),
        (Field.constraints, (0, 0, -1), {0: (1,), 1: (1,)}, TENSOR),
        (Field.poisson_source, (-1, 0), {1: (-1,)}, "G_eff must be non-negative."),
        (
            Field.unit_timelike_from_gradient_minkowski,
            ([1, 0, 0, 0],),
            {0: ([1, 1, 0, 0], [0, 0, 0, 0], [1, 0, 0, 2])},
            "gradient must be timelike in (-,+,+,+) signature.",
        ),
        (
            Delay.circulation_delay,
            (0, 1),
            {0: (-1,), 1: (0, -1)},
            "length must be non-negative and v_swirl positive.",
        ),
        (Delay.core_turnover_delay, (1, 1), {0: (0,), 1: (0,)}, "r_c and v_swirl must be positive."),
        (Delay.discrete_mode_frequency, (-1, 1), {1: (0, -1)}, "tau must be positive."),
        (
            Delay.solve_phase_locked_frequency,
            (1, 1, 1, 0, 64, 1e-9),
            {2: (0, -1), 4: (0, -1), 5: (0, -1)},
            SOLVER,
        ),
        (Gap.kelvin_gap_joule, (1, 1, 1, 1), {k: (0, -1) for k in range(4)}, "invalid positive scale."),
        (Gap.kelvin_gap_ev, (1, 1, 1, 1), {k: (0, -1) for k in range(4)}, "invalid positive scale."),
        (
            Gap.boltzmann_suppression,
            (-1, 1, 1),
            {1: (0, -1), 2: (0, -1)},
            "temperature_K and k_B must be positive.",
        ),
        (
            Gap.is_decoupled_from_atomic_transition,
            (0, 0, 1),
            {0: (-1,), 1: (-1,), 2: (0, -1)},
            "invalid arguments.",
        ),
        (Gap.gap_ratio, (-1, -1), {0: (0.0, -0.0)}, "transition_ev must be nonzero."),
    ],
)
def test_guard(function, good, bad, text):
    for at, values in bad.items():
        for value in values:
            with pytest.raises(ValueError) as error:
                function(*good[:at], value, *good[at + 1 :])
            assert str(error.value) == text


def test_edges_of_the_domains():
    assert Atom.pauli_barrier_scale(0.0, 1.0, 1.0, 1.0) == 0.0
    assert Atom.soft_core_force(-2.0, 3.0, 0.5) == -Atom.soft_core_force(2.0, 3.0, 0.5) > 0.0
    assert Clock.omega_from_swirl_clock(1.0, 2.0) == 0.0
    assert Clock.vorticity_from_swirl_clock(0.0, 2.0) == 299792458.0
    assert Clock.swirl_clock_from_omega(3.0, 1.0, 1.0) == 0.0
    assert math.isnan(Clock.radius_from_clock_invariant(-1.0, 0.5, 1.0))
    assert Field.satisfies_gw170817(0.0, 0.0) and not Field.satisfies_gw170817(-1e-3)
    assert Gap.is_decoupled_from_atomic_transition(2.0, 20.0)
    assert Gap.gap_ratio(-2.0, 3.0) == -1.5
    with pytest.raises(TypeError):
        Field.unit_timelike_from_gradient_minkowski([1.0, 0.0, 0.0])


def test_swirl_clock_from_omega_inverts_the_vorticity():
    for S_t in (0.1, 0.6, 0.999):
        w = Clock.vorticity_from_swirl_clock(S_t, 1.4e-15)
        assert Clock.swirl_clock_from_omega(w, 1.4e-15) == pytest.approx(S_t, rel=1e-12)
        R = Clock.radius_from_clock_invariant(Clock.chronos_kelvin_invariant(0.3, S_t, 1.4e-15), S_t, 1.4e-15)
        assert R == pytest.approx(0.3, rel=1e-14)


def test_clock_field():
    found = Field.constraints(c1=0.2, c3=-0.1, tolerance=0.1)
    assert found.c13 == 0.2 + -0.1
    assert found.tensor_speed == 1.0 / math.sqrt(1.0 - found.c13)  # dimensionless, unlike the function
    assert found.tensor_speed_fractional_offset == found.tensor_speed - 1.0
    assert found.gw170817_ok and not Field.constraints(0.2, -0.1).gw170817_ok
    assert Field.unit_timelike_from_gradient_minkowski([-5.0, 3.0, 0.0, 0.0]) == [-1.25, 0.75, 0.0, 0.0]
    fresh = _native.ClockSectorConstraints()
    fresh.c13, fresh.gw170817_ok = 0.5, True
    assert (fresh.c13, fresh.tensor_speed, fresh.gw170817_ok) == (0.5, 0.0, True)
