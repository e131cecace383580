"""Gates on core torsion, link fields and small pieces of physics."""

import math

import _native
import pytest

NAN, INF = math.nan, math.inf
OPEN = "OPEN_RESEARCH_GATE"
ctor, link = _native.CoreTorsionAPI, _native.LinkFieldGateAPI
maxwell, falsifier = _native.MaxwellKineticAPI, _native.MechanicalFalsifierAPI
tonic, rotor = _native.SwirlTonicAPI, _native.RotorParticipationAPI
spectro, action = _native.SpectroResponseAPI, _native.ActionPhaseAPI


def exactly(expected):
    return pytest.approx(expected, rel=0, abs=0, nan_ok=True)


@pytest.mark.parametrize(
    ("function", "table"),
    [
        (falsifier.delta_p_omega, {(3.0, 1.0): 2.0, (INF, 1.0): NAN, (1.0, NAN): NAN}),
        (falsifier.C_blind, {(6.0, 2.0, 0.5): 12.0, (6.0, 0.0, 1.0): NAN, (6.0, 1.0, NAN): NAN, (INF, 1.0, 1.0): NAN}),
        (falsifier.blind_scaling_gate, {(1, 2, 0): True, (1, 2, 1): False, (2, 1, 0): False, (0, 2, 0): False}),
        (maxwell.collision_rate_inv, {(2.0, 3.0, -4.0): -24.0, (INF, 1.0, 1.0): NAN, (1.0, 1.0, NAN): NAN}),
        (
            maxwell.three_gate_condition,
            {
                (-1.0, 2.0, 2.0, 3.0, 3.0): True,
                (0.0, 2.0, 2.0, 3.0, 3.0): False,
                (1.0, 1.9, 2.0, 3.0, 3.0): False,
                (1.0, 2.0, 2.0, 3.0, 2.9): False,
                (1.0, INF, 2.0, 3.0, 3.0): False,
            },
        ),
        (tonic.material_holonomy, {(3.0, 2.0): 1.5, (3.0, 0.0): NAN, (3.0, NAN): NAN, (INF, 1.0): NAN}),
        (tonic.material_tonic_not_a_eff, {(True,): False, (False,): True}),
        (rotor.j_omega_rot, {(2.0, 3.0): 2.0 * math.pi * 2.0 * 3.0, (0.0, 1.0): NAN, (1.0, NAN): NAN}),
        (rotor.phi_dyn_ref, {(2.0, 3.0): 2.0 / (3.0 * math.pi), (1.0, 0.0): NAN, (-1.0, 1.0): NAN}),
        (rotor.ell_rho_eq_ref, {(8.0, 2.0): 2.0, (0.0, 1.0): NAN, (1.0, NAN): NAN}),
        (rotor.c_omega_equals_v_swirl, {(-3.5,): -3.5, (NAN,): NAN}),
        (spectro.configuration_transition_energy, {(3.0, 1.0): 2.0, (INF, INF): NAN}),
        (spectro.transition_frequency, {(3.0, 2.0): 1.5, (3.0, 0.0): NAN, (INF, 1.0): NAN, (1.0, NAN): NAN}),
        (
            spectro.linear_response_delta_nu,
            {
                (2.0, (1.0, 2.0), (3.0, 4.0)): 5.5,
                (1.0, (), ()): 0.0,
                (1.0, (1.0,), (1.0, 2.0)): NAN,
                (0.0, (), ()): NAN,
                (NAN, (), ()): NAN,
            },
        ),
        (spectro.rejects_double_count_with_xi_k, {(True,): True, (False,): False}),
    ],
)
def test_helpers(function, table):
    for arguments, expected in table.items():
        assert function(*arguments) == exactly(expected), arguments


@pytest.mark.parametrize("E0, I, c_T", [(3.0, 5.0, 7.0), (0.0, 1.0, 1.0), (8.2e-14, 0.5, 1e6)])
def test_torsional_mass(E0, I, c_T):  # noqa: E741
    for function, factor, convention in (
        (ctor.torsion_inertial_mass, 1.0, "E0*I/c_T^2"),
        (ctor.torsion_inertial_mass_legacy_factor2, 2.0, "legacy_2*E0*I/c_T^2"),
    ):
        result = function(E0=E0, I=I, c_T=c_T)
        assert (result.mass, result.convention, result.ok) == (factor * ((E0 * I) / (c_T * c_T)), convention, True)
        assert result.dimensional_residual < 1e-15


@pytest.mark.parametrize("bad", [(-1.0, 1.0, 1.0), (1.0, -1.0, 1.0), (1.0, 1.0, 0.0), (NAN, 1.0, 1.0), (1.0, 1.0, INF)])
def test_torsional_mass_of_bad_input(bad):
    for function in (ctor.torsion_inertial_mass, ctor.torsion_inertial_mass_legacy_factor2):
        result = function(*bad)
        assert math.isnan(result.mass) and math.isnan(result.dimensional_residual)
        assert (result.ok, result.convention) == (False, "E0*I/c_T^2")


def test_anisotropy():
    result = ctor.anisotropy_residuals(M_row_major=[2.0, 0, 0, 0, 2.0, 0, 0, 0, 2.0], E0=4.0, c_T=3.0)
    assert (result.chi_hat, result.delta_aniso, result.normalization) == (4.5, 0.0, 12.0)
    assert result.ok and result.epistemic_status == OPEN
    result = ctor.anisotropy_residuals([1.0, 0.5, 0.25, 0.5, 2.0, 0.75, 0.25, 0.75, 6.0], 1.0, 1.0)
    deviator = 4.0 + 1.0 + 9.0 + 2 * (0.5**2 + 0.25**2 + 0.75**2)
    assert result.delta_aniso == pytest.approx(math.sqrt(deviator / 8) / 3, rel=1e-15)
    zero = ctor.anisotropy_residuals([0.0] * 9, 1.0, 1.0)
    assert (zero.chi_hat, zero.delta_aniso, zero.ok) == (0.0, 0.0, True)


@pytest.mark.parametrize(("place", "mirror"), [(1, 3), (2, 6), (5, 7)])
def test_anisotropy_needs_symmetry(place, mirror):
    matrix = [1.0, 0, 0, 0, 1.0, 0, 0, 0, 1.0]
    tolerance = (math.sqrt(3.0) + 1.0) * 1e-12
    for excess, symmetric in ((0.99, True), (1.01, False)):
        for changed in (place, mirror):
            result = ctor.anisotropy_residuals(
                [excess * tolerance if i == changed else m for i, m in enumerate(matrix)], 1.0, 1.0
            )
            assert (result.ok, math.isnan(result.delta_aniso)) == (symmetric, not symmetric)
            assert (result.chi_hat, result.normalization) == ((1.0, 3.0) if symmetric else (0.0, 0.0))


@pytest.mark.parametrize(("entry", "E0", "c_T"), [(1.0, 0.0, 1.0), (1.0, 1.0, NAN), (NAN, 1.0, 1.0), (INF, 1.0, 1.0)])
def test_anisotropy_of_bad_input(entry, E0, c_T):
    result = ctor.anisotropy_residuals([entry] * 9, E0, c_T)
    assert (result.chi_hat, result.delta_aniso, result.normalization, result.ok) == (0.0, 0.0, 0.0, False)
    with pytest.raises(TypeError):
        ctor.anisotropy_residuals([entry] * 8, E0, c_T)


@pytest.mark.parametrize(
    ("arguments", "failure"),
    [
        ((1.0, 1.0, 1.0, 1e-6), "None"),
        ((1.0, 1.0, 1.0, -0.5, 0.5), "None"),
        ((NAN, 0.0, 0.0, NAN), "E"),
        ((0.0, 1.0, 1.0, 0.0), "E"),
        ((1.0, -1.0, 0.0, NAN), "T"),
        ((1.0, 1.0, NAN, NAN), "N"),
        ((1.0, 1.0, 1.0, NAN), "M"),
        ((1.0, 1.0, 1.0, math.nextafter(1e-6, 1)), "M"),
        ((1.0, 1.0, 1.0, 0.0, -1.0), "M"),
        ((1.0, 1.0, 1.0, 0.0, NAN), "M"),
        ((INF, INF, INF, INF, INF), "M"),
    ],
)
def test_link_field(arguments, failure):
    result = link.evaluate(*arguments)
    assert (link.failure_name(result.failure), result.passed) == (failure, failure == "None")
    given = (result.rho_star, result.Gamma_star, result.r_star, result.phase_residual)
    assert given == exactly(arguments[:4]) and result.epistemic_status == OPEN


def test_enumerations():
    failures = _native.LinkGateFailure
    assert [failures(i).name for i in range(5)] == ["None_", "E", "T", "N", "M"]
    assert link.failure_name(failures(5)) == link.failure_name(failures(-1)) == "None"
    waves = [rotor.classify_wave_mode(a, b).name for a, b in ((1, 0), (0, 1), (0, 0), (1, 1))]
    assert waves == ["LinearTwist", "QuadraticKelvinBend", "Unknown", "Unknown"]
    assert [_native.WaveModeClass(i).name for i in range(3)] == waves[:3]


def test_maxwell_kinetic():
    result = maxwell.evaluate(1.0, 2.0, 2.0, 3.0, 3.0, 2.0, 3.0, 4.0)
    assert (result.three_gate_ok, result.tau_inv, result.message) == (True, 24.0, "three-gate activation ok")
    result = maxwell.evaluate(1.0, INF, 2.0, 3.0, 4.0, NAN, 1.0, 1.0)
    assert result.coupling_nonzero and result.drive_above_gap and result.lifetime_observable
    assert (result.three_gate_ok, result.message) == (False, "three-gate not satisfied") and math.isnan(result.tau_inv)
    result = maxwell.evaluate(NAN, 1.0, 2.0, 3.0, 2.0, 1.0, 1.0, 1.0)
    assert (result.coupling_nonzero, result.drive_above_gap, result.lifetime_observable) == (True, False, False)


def test_mechanical_falsifier():
    result = falsifier.evaluate(7.0, 1.0, 2.0, 0.5)
    assert (result.delta_p_omega, result.C_blind, result.scaling_ok) == (6.0, 12.0, True)
    assert result.message == "blind mechanical falsifier ok"
    for bad in ((NAN, 1.0, 1.0, 1.0), (1.0, 1.0, 0.0, 1.0), (1.0, 0.0, 1e-300, 1e-300)):
        result = falsifier.evaluate(*bad)
        assert (result.scaling_ok, result.message) == (False, "blind mechanical falsifier failure")


def test_swirl_tonic():
    lists = [[1.0, 2.0], [3.0, 4.0], [5.0, 6.0], [7.0, 8.0], [9.0, 10.0], [11.0, 12.0]]
    expected = 7.0 + 27.0 + 55.0 + 16.0 + 40.0 + 72.0
    assert tonic.stokes_circulation(*lists) == expected
    result = tonic.evaluate(*lists, 2.0, False)
    assert (result.circulation, result.holonomy, result.material_not_a_eff) == (expected, expected / 2, True)
    assert (result.passed, result.message) == (True, "swirl-tonic ok")
    for bad in ((*lists, 2.0, True), (*lists, 0.0, False), (*([[]] * 6), 1.0, False)):
        result = tonic.evaluate(*bad)
        assert (result.passed, result.message) == (False, "swirl-tonic guard failure")
    for place in range(6):
        assert math.isnan(tonic.stokes_circulation(*lists[:place], [1.0] * 3, *lists[place + 1 :]))


def test_rotor_participation():
    result = rotor.evaluate()
    j = 1.40897017e-15 * math.pi * 1.40897017e-15 * 3893435826691868672.0
    assert (result.j_omega_rot, result.c_omega) == (j, 1093845.63)
    assert result.phi_dyn_ref == 7e-7 / (3893435826691868672.0 * math.pi)
    assert result.ell_rho_eq_ref == math.sqrt(j / 7e-7)
    result = rotor.evaluate(r_c=0.0, v_swirl=NAN)
    assert all(map(math.isnan, (result.j_omega_rot, result.ell_rho_eq_ref, result.c_omega)))
    assert result.phi_dyn_ref > 0


def test_spectro_response():
    result = spectro.evaluate(3.0, 1.0, 2.0, [1.0, 2.0], [3.0, 4.0], False)
    assert (result.delta_E, result.nu, result.delta_nu, result.double_count_with_xi_k) == (2.0, 1.0, 5.5, False)
    assert (result.passed, result.message) == (True, "spectro response ok")
    result = spectro.evaluate(NAN, 1.0, 2.0, [], [], False)
    assert result.passed and math.isnan(result.delta_E) and math.isnan(result.nu)
    for bad in ((1.0, 1.0, 2.0, [], [], True), (1.0, 1.0, 0.0, [], [], False), (1.0, 1.0, 1.0, [1.0], [], False)):
        result = spectro.evaluate(*bad)
        assert (result.passed, result.message) == (False, "spectro response guard failure")


def test_mass_shell():
    shell = {"p": -3.0, "E0": 8.0, "c": 2.0}
    assert action.mass_shell_hamiltonian(**shell) == 10.0
    assert action.velocity_from_mass_shell(**shell) == pytest.approx(-1.2, rel=1e-15)
    assert action.gamma_from_mass_shell(**shell) == 1.25
    assert action.proper_time_rate(**shell) == 0.8
    assert action.internal_phase_rate_at_fixed_momentum(**shell, Omega0=5.0) == 4.0
    assert action.fixed_v_phase_error_factor(**shell) == 0.5625
    assert action.delta_shape_separability(**shell, dE0_dq=3.0) == 0.0
    assert action.coupled_shape_residual(**shell, dE0_dq=5.0, f_q=2.0, df_dq=0.0, eps=0.5) == 9.0
    assert action.gamma_from_mass_shell(0.0, 2.0, 3.0) == 1.0


def test_mass_shell_of_bad_input():
    shell = (action.mass_shell_hamiltonian, action.velocity_from_mass_shell, action.gamma_from_mass_shell)
    for bad in ((NAN, 1.0, 1.0), (INF, 1.0, 1.0), (1.0, 0.0, 1.0), (1.0, 1.0, -1.0), (1.0, INF, 1.0)):
        for function in (*shell, action.proper_time_rate, action.fixed_v_phase_error_factor):
            assert math.isnan(function(*bad))
        assert math.isnan(action.internal_phase_rate_at_fixed_momentum(*bad, 1.0))
    assert math.isnan(action.internal_phase_rate_at_fixed_momentum(1.0, 1.0, 1.0, INF))
    assert math.isnan(action.delta_shape_separability(1.0, 1.0, INF, 1.0))
    for place in (2, 4, 5, 6):
        arguments = [1.0] * 7
        arguments[place] = INF
        assert math.isnan(action.coupled_shape_residual(*arguments))


def test_action_phase_residuals():
    names = "hamiltonian velocity gamma proper_time phase_rate".split()

    def residuals(result):
        return [getattr(result, f"{name}_consistency") for name in names] + [result.delta_shape_separability]

    result = action.action_phase_residuals(p=1.7, E0=3.1, c=2.3, Omega0=0.4)
    H = math.hypot(1.7 * 2.3, 3.1)
    assert result.hamiltonian_consistency == abs(H * H - (3.1 * 3.1 + (2.3 * 1.7) ** 2)) / (H * H)
    assert residuals(result)[1:] == [0.0] * 5 and result.finite and result.within_tolerance and result.ok
    for bad in ((1.0, 0.0, 1.0, 1.0), (1.0, 1.0, 1.0, NAN), (1.0, 1.0, 1.0, 1.0, -1e-9)):
        result = action.action_phase_residuals(*bad)
        assert residuals(result) == [0.0] * 6 and not (result.finite or result.within_tolerance or result.ok)
    result = action.action_phase_residuals(1.0, 1.0, 1.0, 1.0, tol=NAN)
    assert (result.finite, result.ok) == (True, False)
    assert action.action_phase_residuals(1e200, 1.0, 1.0, 1.0).finite is False  # H^2 overflows
