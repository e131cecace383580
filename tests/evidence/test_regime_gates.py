"""Gates on regimes, spacetime, the worldsheet, the transverse projector, KAM and quasi-stationary states."""

import itertools
import math
import operator

import _native
import numpy as np
import pytest
from sums import one_by_one

NAN, INF = math.nan, math.inf
regime, spacetime = _native.IdealKnotRegimeAPI, _native.OperationalSpacetimeAPI
sheet, projector = _native.WorldsheetGuardsAPI, _native.TransverseProjectorAPI
kam, qss = _native.KAMDiagnosticsAPI, _native.QSSSpectroscopyAPI
Convention, Sector = _native.RopelengthConvention, _native.KAMSector


def exactly(expected):
    return pytest.approx(expected, rel=0, abs=0, nan_ok=True)


@pytest.mark.parametrize(
    ("cls", "members", "name_of", "names"),
    [
        (
            _native.KnotRegime,
            "Compact Slender Indeterminate",
            regime.regime_name,
            "compact slender indeterminate indeterminate",
        ),
        (Sector, "S T", kam.sector_name, "S T T"),
        (
            _native.KAMStage,
            "KAM0 KAM1 KAM2 KAM3 KAM4 KAM5",
            kam.stage_name,
            "KAM-0 KAM-1 KAM-2 KAM-3 KAM-4 KAM-5 KAM-0",
        ),
        (Convention, "HighRes Halvard Custom", None, ""),
    ],
)
def test_enumerations(cls, members, name_of, names):
    assert [cls(i).name for i in range(len(cls.__members__))] == members.split()
    assert [name_of(cls(i)) for i, _ in enumerate(names.split())] == names.split()


@pytest.mark.parametrize(
    ("function", "table"),
    [
        (regime.epsilon_kappa, {(2.0, 3.0): 6.0, (2.0, 0.0): 0.0, (0.0, 1.0): NAN, (1.0, -1.0): NAN, (1.0, NAN): NAN}),
        (regime.epsilon_sep, {(3.0, 2.0): 1.5, (1.0, 0.0): NAN, (NAN, 1.0): NAN}),
        (regime.moffatt_ricca_helicity, {(3.0, 1.5, 0.5): 18.0, (INF, 0.0, 0.0): NAN, (1.0, 1.0, NAN): NAN}),
        (projector.leading_response_R0, {(2.0,): 2.0 * 8.377580409572781, (0.0,): NAN, (NAN,): NAN}),
        (projector.rop_rad_from_ld, {(2.5,): 5.0, (0.0,): NAN}),
        (projector.R0_from_rop_rad, {(2.0,): 2.0 * 4.1887902047863905, (-1.0,): NAN}),
        (projector.delta_micro_plus, {(1.0, 2.0, 3.0, 4.0, 5.0, 6.0): 44.0}),
        (projector.R_VKM, {(1.0, 2.5): 3.5}),
        (projector.twist_energy_bound_rhs, {(2.0, 3.0, 1.0): 39.47841760435743 / 2 * 4, (0.0, 1.0, 0.0): NAN}),
        (projector.twist_energy_bound_rhs, {(1.0, INF, 0.0): NAN, (1.0, 0.0, NAN): NAN, (INF, 1.0, 0.0): 0.0}),
        (
            projector.twist_bound_satisfied,
            {(79.0, 2.0, 3.0, 1.0): True, (78.9, 2.0, 3.0, 1.0): False, (0.0, 1.0, 2.0, 2.0): True},
        ),
        (projector.twist_bound_satisfied, {(INF, 1.0, 1.0, 1.0): False, (1.0, 0.0, 1.0, 1.0): False}),
        (sheet.form_degree_H, {(3,): 3, (-7,): -7}),
        (sheet.two_form_degree_guard, {(2, 2): True, (2, 3): False, (3, 3): True}),
        (sheet.charge_differs_from_circulation, {(1.0, 1.0): False, (1.0, 1.5, 0.5): False, (NAN, NAN, INF): True}),
        (sheet.b_field_not_identified_with_a_em, {(True,): False, (False,): True}),
        (sheet.material_velocity_not_a_eff, {(True,): False, (False,): True}),
    ],
)
def test_helpers(function, table):
    for arguments, expected in table.items():
        assert function(*arguments) == exactly(expected), arguments


@pytest.mark.parametrize(
    ("arguments", "expected"),
    [
        ((0.3, 0.0), "Compact"),
        ((0.0, 0.3), "Compact"),
        ((0.29, 0.29), "Slender"),
        ((0.5, 0.5, 0.6), "Slender"),
        ((NAN, 1.0), "Indeterminate"),
        ((1.0, INF), "Indeterminate"),
        ((0.1, 0.1, NAN), "Indeterminate"),
    ],
)
def test_regimes(arguments, expected):
    assert regime.classify_regime(*arguments).name == expected


def test_regime_of_a_knot():
    result = regime.evaluate(a_core=0.5, kappa_max=0.6, d_sep=5.0, gamma=2.0, writhe=3.0, twist=-1.0)
    assert (result.epsilon_kappa, result.epsilon_sep, result.helicity_moffatt_ricca) == (0.3, 0.1, 8.0)
    assert (result.regime.name, result.lia_kam_excluded, result.kkt_residual) == ("Compact", True, 0.0)
    assert result.message == "compact ideal state: LIA/KAM excluded"
    for a_core, expected in ((0.1, "Slender"), (0.0, "Indeterminate")):
        result = regime.evaluate(a_core, 0.6, 5.0, 2.0, 3.0, -1.0, kkt_residual=0.25)
        assert (result.regime.name, result.lia_kam_excluded, result.kkt_residual) == (expected, False, 0.25)
        assert result.message == "regime diagnostic complete"


def test_radar():
    result = spacetime.radar_interval(1.0, 4.0, c=2.0)
    assert (result.causal, result.radar_time, result.radar_distance) == (True, 2.5, 3.0)
    assert spacetime.radar_interval(1.0, 1.0).radar_distance == 0.0
    for bad in ((1.0, 0.0), (0.0, 1.0, 0.0), (0.0, INF), (NAN, 1.0), (0.0, 1.0, NAN)):
        result = spacetime.radar_interval(*bad)
        assert not result.causal and math.isnan(result.radar_time) and math.isnan(result.radar_distance)
        assert (result.emission_time, result.reception_time) == exactly(bad[:2])


def test_boosts():
    c, velocity = 2.0, np.array([0.3, -0.9, 0.6])
    event = np.array([1.5, 0.2, -0.7, 1.1])
    beta = velocity / c
    gamma = 1 / np.sqrt(1 - beta @ beta)
    matrix = np.empty((4, 4))  # on (c t, x)
    matrix[0] = np.r_[gamma, -gamma * beta]
    matrix[1:, 0] = -gamma * beta
    matrix[1:, 1:] = np.eye(3) + (gamma - 1) * np.outer(beta, beta) / (beta @ beta)
    scale = np.array([c, 1, 1, 1])
    result = spacetime.lorentz_boost(event, velocity, c=c)
    assert np.allclose(result.transformed_event, matrix @ (event * scale) / scale, rtol=1e-14)
    assert result.gamma == pytest.approx(gamma, rel=1e-15) and result.invariant_residual < 1e-15
    zero = [0.0] * 4
    kept = spacetime.minkowski_interval2(result.transformed_event, zero, c)
    assert kept == pytest.approx(spacetime.minkowski_interval2(event, zero, c=c), rel=1e-13)
    along = spacetime.lorentz_boost_x(event=[1.0, 2.0, 3.0, 4.0], velocity=0.6)
    assert along.transformed_event == pytest.approx([-0.25, 1.75, 3.0, 4.0], rel=1e-14)
    assert spacetime.minkowski_interval2([3.0, 1.0, 2.0, 3.0], [1.0, 0.0, 0.0, 1.0], 2.0) == 7.0
    still = spacetime.lorentz_boost([0.1, 0.2, 0.3, 0.4], [0.0, 0.0, 0.0])
    assert (still.transformed_event, still.gamma, still.invariant_residual) == ([0.1, 0.2, 0.3, 0.4], 1.0, 0.0)


@pytest.mark.parametrize(
    ("event", "velocity", "c"),
    [
        ([1.0] * 4, 1.0, 1.0),
        ([1.0] * 4, -2.0, 1.0),
        ([1.0] * 4, NAN, 1.0),
        ([NAN] * 4, 0.0, 1.0),
        ([1.0] * 4, 0.0, 0.0),
    ],
)
def test_boosts_of_bad_input(event, velocity, c):
    for result in (
        spacetime.lorentz_boost_x(event, velocity, c),
        spacetime.lorentz_boost(event, [0.0, 0.0, velocity], c),
    ):
        assert np.isnan([*result.transformed_event, result.gamma, result.invariant_residual]).all()


def test_worldsheet():
    good = {"form_degree_H": 3, "q_B": 1.0, "gamma_0": 2.0, "claimed_b_is_a_em": False, "claimed_v_is_a_eff": False}
    flags = ("form_degree_ok", "charge_not_gamma0", "b_not_a_em", "material_v_not_a_eff")
    result = sheet.evaluate(**good)
    assert (result.passed, result.message) == (True, "worldsheet guards passed")
    assert sheet.evaluate(**{**good, "q_B": NAN, "gamma_0": NAN}).passed
    changes = ({"form_degree_H": 2}, {"q_B": 2.0}, {"claimed_b_is_a_em": True}, {"claimed_v_is_a_eff": True})
    for failing, change in zip(flags, changes, strict=True):
        result = sheet.evaluate(**{**good, **change})
        assert {flag: getattr(result, flag) for flag in flags} == {flag: flag != failing for flag in flags}
        assert (result.passed, result.message) == (False, "worldsheet guard failure")
    assert sheet.two_form_degree_guard(form_degree_H=2) and not sheet.two_form_degree_guard(form_degree_H=3)
    names = "mode_census closure jacobi representations anomalies running oos_phenomenology unknown".split()
    assert [sheet.ladder_stage_name(i) for i in range(8)] == names and sheet.ladder_stage_name(-1) == "unknown"


def test_projector_constants_and_conventions():
    constants = (projector.high_res_ld(), projector.halvard_ld(), projector.projector_sphere_integral())
    assert constants == (16.3714672385, 16.371637, 8.377580409572781)
    mixed = {(a.name, b.name) for a, b in itertools.product(map(Convention, range(3)), repeat=2)
             if projector.conventions_mixed(a, b)}  # fmt: skip
    assert mixed == {("HighRes", "Halvard"), ("Halvard", "HighRes")}


def test_projector():
    arguments = dict(
        L_over_D=16.0, c_kappa=1.0, I_kappa2=2.0, c_Omega=0.5, I_Omega2=3.0, c_C=4.0, C_contact=5.0, SL=2.0, Wr=1.0
    )
    result = projector.evaluate(**arguments)
    assert (result.projector_sphere_integral, result.R0) == (8.377580409572781, 16.0 * 8.377580409572781)
    assert (result.rop_rad, result.delta_micro, result.R_VKM) == (32.0, 23.5, result.R0 + 23.5)
    assert result.twist_bound_rhs == 39.47841760435743 / 16.0
    assert (result.twist_bound_ok, result.message) == (True, "transverse projector evaluate ok")
    for change in ({"I_Omega2": 2.4}, {"I_Omega2": NAN}, {"SL": INF}, {"L_over_D": 0.0}):
        result = projector.evaluate(**{**arguments, **change}, convention=Convention.HighRes)
        assert (result.twist_bound_ok, result.message) == (False, "twist bound violated")
        assert result.convention_mixed is False
    assert all(map(math.isnan, (result.R0, result.rop_rad, result.R_VKM, result.twist_bound_rhs)))


def least_detuning(omega):
    return min(abs(one_by_one(map(operator.mul, ks, omega)))
               for ks in itertools.product(range(-2, 3), repeat=len(omega)) if any(ks))  # fmt: skip


@pytest.mark.parametrize("n", [1, 2, 3, 4, 5])
def test_kam_stage_1(n):
    rng = np.random.default_rng(n)
    for scale in (1.0, 1e-3, 1e-9):  # frequencies of one size, and some of very different sizes
        omega = (rng.normal(size=n) * scale ** rng.random(n)).tolist()
        hessian = rng.normal(size=(n, n))
        result = kam.stage1(Sector.T, omega, hessian.ravel().tolist(), diophantine_tau=1e-4)
        assert result.minimum_detuning == least_detuning(omega)
        assert result.hessian_determinant == pytest.approx(np.linalg.det(hessian), rel=1e-12)
        assert result.diophantine_margin == result.minimum_detuning - 1e-4
        passes = result.minimum_detuning > 1e-4 and abs(result.hessian_determinant) > 1e-4
        assert (result.status.name, result.achieved_stage.name) == (("Pass", "KAM1") if passes else ("Fail", "KAM0"))
        assert (result.sector, result.frequencies, result.hessian) == (Sector.T, omega, hessian.ravel().tolist())


@pytest.mark.parametrize(
    ("omega", "hessian", "status"),
    [
        ([1.0, 1.618033988749895], [1.0, 0.0, 0.0, 1.0], "Pass"),
        ([1.0, 2.0], [1.0, 0.0, 0.0, 1.0], "Fail"),  # 2 : 1 resonance
        ([1.0, 1.618033988749895], [1.0, 2.0, 2.0, 4.0], "Fail"),  # degenerate
        ([1.0, 2.3, 7.9], [0.0] * 9, "Fail"),
        ([1.0, 2.3, 7.9], [0.0, 1.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0], "Pass"),  # rows change places
        ([0.0], [1.0], "Fail"),
        ([], [], "Indeterminate"),
        ([1.0], [1.0, 2.0], "Indeterminate"),
        ([NAN], [1.0], "Indeterminate"),
        ([1.0], [INF], "Indeterminate"),
    ],
)
def test_kam_outcomes(omega, hessian, status):
    result = kam.stage1(sector=Sector.S, frequencies=omega, hessian_row_major=hessian)
    assert (result.status.name, result.achieved_stage.name) == (status, "KAM1" if status == "Pass" else "KAM0")
    for tau in (0.0, -1.0, NAN, INF):
        assert kam.stage1(Sector.S, [1.0], [1.0], tau).status.name == "Indeterminate"


def test_golden_ratio():
    assert kam.golden_ratio_null_test(1.618033988749895) and kam.golden_ratio_null_test(value=1.6, tol=0.02)
    for bad in ((1.618,), (NAN, INF), (INF, INF), (1.618033988749895, NAN), (1.618033988749895, -1.0)):
        assert kam.golden_ratio_null_test(*bad) is False


@pytest.mark.parametrize(
    ("matrix", "eigenvalues", "ratio"),
    [
        ([1, 0, 0, 2], [2, 1], 2.0),
        ([0, -1, 1, 0], [1j, -1j], 1.0),
        ([0, 0, 0, 0], [0, 0], INF),
        ([1, -4, 1, 1], [1 + 2j, 1 - 2j], 1.0),
        ([-3, 100, 0, 1], [1, -3], 3.0),
    ],
)
def test_eigenvalues(matrix, eigenvalues, ratio):
    result = qss.eigen_2x2(matrix_row_major=matrix)
    assert (result.eigenvalues, result.eigen_residual) == (eigenvalues, 0.0)
    assert result.eigenvalue_magnitude_ratio == result.conditioning == ratio
    assert result.epistemic_status == "SYNTHETIC_DIAGNOSTIC"


def test_eigenvalues_of_random_and_bad_input():
    for matrix in np.random.default_rng(7).normal(size=(20, 2, 2)):
        result = qss.eigen_2x2(matrix.ravel())
        assert np.allclose(np.sort_complex(result.eigenvalues), np.sort_complex(np.linalg.eigvals(matrix)), atol=1e-12)
        assert result.eigen_residual < 1e-13
    for bad in ([], [1.0] * 3, [1.0] * 5):
        result = qss.eigen_2x2(bad)
        assert (result.eigenvalues, result.epistemic_status) == ([], "OPEN_RESEARCH_GATE")
        assert np.isnan([result.eigen_residual, result.eigenvalue_magnitude_ratio, result.conditioning]).all()
    assert math.isnan(qss.eigen_2x2([NAN] * 4).eigen_residual)


def test_pseudospectrum():
    result = qss.pseudospectrum_diag_2x2(
        a00=0.5, a11=-1.0, real_min=-2.0, real_max=1.0, n_real=4, imag_min=0.25, imag_max=2.0, n_imag=3
    )
    points = [complex(x, y) for x in np.linspace(-2, 1, 4) for y in np.linspace(0.25, 2, 3)]
    assert [complex(s.real_z, s.imag_z) for s in result.samples] == points
    norms = [1 / min(abs(z - 0.5), abs(z + 1)) for z in points]
    assert [s.resolvent_norm for s in result.samples] == pytest.approx(norms, rel=1e-15)
    assert result.max_resolvent_norm == max(s.resolvent_norm for s in result.samples) == 4.0
    assert result.epistemic_status == "SYNTHETIC_DIAGNOSTIC"
    (sample,) = qss.pseudospectrum_diag_2x2(0, 1, 0, 0, 1, 0, 0, 1).samples
    assert (sample.real_z, sample.imag_z, sample.resolvent_norm) == (0.0, 0.0, 1 / 1e-30)


@pytest.mark.parametrize("bad", [(0, 1, 0, 0, 1, 1), (0, 1, 1, 0, 1, -1), (1, 0, 2, 0, 1, 2), (0, NAN, 2, 0, 1, 2)])
def test_pseudospectrum_of_bad_input(bad):
    for grid in (bad, (*bad[3:], *bad[:3])):
        result = qss.pseudospectrum_diag_2x2(0.0, 1.0, *grid)
        assert (result.samples, result.epistemic_status) == ([], "OPEN_RESEARCH_GATE")
        assert math.isnan(result.max_resolvent_norm)
    with pytest.raises(MemoryError):
        qss.pseudospectrum_diag_2x2(0, 1, 0, 1, 2**62, 0, 1, 2**62)
