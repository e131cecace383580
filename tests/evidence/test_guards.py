"""Origins of values, classes of scaling, symbols of densities."""

import math

import _native
import pytest

V = _native.ValueOriginAPI
S = _native.ScalingAuditAPI
D = _native.DensityOntologyAPI
NAN, INF = math.nan, math.inf


@pytest.mark.parametrize(
    ("cls", "name_of", "members", "names", "other"),
    [
        (
            _native.ValueOrigin,
            V.origin_name,
            "CanonicalSnapshot Recomputed CalibratedInput",
            "CanonicalSnapshot Recomputed CalibratedInput",
            "CanonicalSnapshot",
        ),
        (_native.ScalingClass, S.scaling_class_name, "A B C Q X", "A B C Q X", "?"),
        (_native.PrimitiveSet, S.primitive_set_name, "PCal POpen PRef", "P_cal P_open P_ref", "?"),
        (_native.DensitySymbol, D.symbol_name, "RhoSub RhoEff JOmega MuL", "rho_sub rho_eff J_omega mu_l", "unknown"),
        (_native.DensitySymbol, D.symbol_unit, "RhoSub RhoEff JOmega MuL", "kg/m^3 kg/m^3 kg/m kg/m", ""),
    ],
)
def test_names_of_enumerators(cls, name_of, members, names, other):
    assert [int(cls.__members__[name]) for name in members.split()] == list(range(len(cls.__members__)))
    assert [name_of(cls(value)) for value in range(-1, len(names.split()) + 1)] == [other, *names.split(), other]
    with pytest.raises(TypeError):
        name_of(value=cls(0))


def test_maximal_force():
    recomputed = _native.VKMCanonicalConstants.values(7e-7, 1093845.63).F_swirl_max
    result = V.compare_fmax_snapshot_to_recomputed()
    assert (result.snapshot, result.recomputed) == (V.fmax_snapshot(), V.fmax_recompute_from_primitives())
    assert (result.snapshot, result.recomputed) == (29.053507, recomputed)
    assert result.residual == abs(recomputed - 29.053507) and result.snapshot_unchanged is True
    hbar, rydberg, c, alpha = 1.054571817e-34, 10973731.568160, 299792458.0, 0.0072973525693
    force = V.fmax_rydberg_16pi2(hbar=hbar, R_infty=rydberg, c=c, alpha=alpha)
    assert force == (hbar * 157.91367041742973 * rydberg * rydberg * c) / (alpha * alpha * alpha * alpha * alpha)
    assert force == pytest.approx(recomputed, rel=1e-6)
    assert V.fmax_rydberg_32pi2(hbar, rydberg, c, alpha) == 2 * force
    for place in range(4):
        for bad in (0.0, -1.0, NAN):
            arguments = [hbar, rydberg, c, alpha]
            arguments[place] = bad
            assert math.isnan(V.fmax_rydberg_16pi2(*arguments)) and math.isnan(V.fmax_rydberg_32pi2(*arguments))


def test_bare_masses():
    assert V.bare_mass_ratio_from_dimensionless_length(L_tot=-6.0) == -1.5
    assert V.bare_mass_from_dimensionless_length(L_tot=6.0, m_e=3.0) == 4.5
    for bad in (NAN, INF, -INF):
        assert math.isnan(V.bare_mass_ratio_from_dimensionless_length(bad))
        assert math.isnan(V.bare_mass_from_dimensionless_length(bad, 1.0))
    for bad in (NAN, 0.0, -1.0):
        assert math.isnan(V.bare_mass_from_dimensionless_length(1.0, bad))


@pytest.mark.parametrize(
    ("rho", "rounded", "unchanged"),
    [(123.0, 120.0, False), (120.0, 120.0, True), (995.0, 1000.0, False), (1.0, 1.0, True), (15.0, 15.0, True)],
)
def test_two_figures(rho, rounded, unchanged):
    assert V.rho_f_two_sigfig(rho) == pytest.approx(rounded, rel=1e-15)
    assert V.rho_f_is_two_sigfig_calibration(rho) is unchanged


def test_two_figures_of_small_and_bad_densities():
    assert V.rho_f_two_sigfig(7.04e-7) == pytest.approx(7e-7, rel=1e-14)
    assert V.rho_f_is_two_sigfig_calibration(7.04e-7) is False
    p = math.pow(10.0, math.floor(math.log10(7e-7)) - 1)
    assert V.rho_f_is_two_sigfig_calibration(7e-7) is (abs(round(7e-7 / p) * p - 7e-7) <= 1e-30)
    assert V.rho_f_is_two_sigfig_calibration(1.04e-40) is True  # below the floor of the tolerance
    for bad in (0.0, -1.0, NAN, INF):
        assert math.isnan(V.rho_f_two_sigfig(bad)) and V.rho_f_is_two_sigfig_calibration(bad) is False


def test_a_rescale_that_keeps_the_calibrated_primitives():
    names = ("v_swirl", "omega_c", "r_c", "gamma_0")
    same = {
        f"{name}_{when}": value
        for name, value in zip(names, (1e6, -8.0, 0.5, 0.0), strict=True)
        for when in ("before", "after")
    }
    keeps = V.rho_eff_rescale_preserves_calibrated_primitives
    assert keeps(**same) is True
    for name in names:
        assert keeps(**{**same, f"{name}_after": math.nextafter(same[f"{name}_after"], INF)}) is False
        assert keeps(**{**same, f"{name}_after": NAN}, rel_tol=1.0) is False
    assert keeps(**{**same, "omega_c_after": -10.0}, rel_tol=0.2) is True
    assert keeps(**{**same, "omega_c_after": -10.1}, rel_tol=0.2) is False
    assert keeps(**{**same, "r_c_after": 0.7}, rel_tol=0.2) is True  # relative to no less than 1


def test_policies_answer_always():
    assert V.reject_qdm_line_inertia_as_rho_f_derivation(proposed_kg_per_m=NAN, proposed_rho_f_kg_per_m3=7e-7) is True
    assert D.reject_j_omega_equals_rho_f_ell2_without_bridge(j_omega=1.0, rho_f=NAN, ell2=1.0) is True
    assert D.rho_f_aliases_rho_eff() is S.class_a_invariant_under_rescale() is S.class_x_blocks_inference() is True


def test_canonical_values():
    value = V.make_canonical_value("x", 2.5, _native.ValueOrigin.CalibratedInput)
    assert (value.name, value.value, value.origin, value.significant_figures) == (
        "x", 2.5, _native.ValueOrigin.CalibratedInput, -1,
    )  # fmt: skip
    assert V.make_canonical_value("", NAN, _native.ValueOrigin(0), significant_figures=3).significant_figures == 3


@pytest.mark.parametrize(
    ("symbols", "fields"),
    [
        ("v_swirl omega_c ω_c", {"in_p_cal"}),
        ("rho_sub rho_eff rho_f", {"in_p_open"}),
        ("rho_ref RHO_FLUID RHO_FLUID_CANON", {"in_p_ref", "legacy_reference"}),
        ("rho_F V_SWIRL rho Ω_c rho_f\0", set()),
    ],
)
def test_symbols(symbols, fields):
    for symbol in symbols.split():
        found = S.classify_symbol(symbol)
        names = ("in_p_cal", "in_p_open", "in_p_ref", "legacy_reference")
        assert {name for name in names if getattr(found, name)} == fields
    assert not S.classify_symbol("").in_p_open


def test_observables():
    classes = {
        "A": "dimensionless acceleration euler_balance c_T_squared",
        "B": "field_norm absorbed_normalization",
        "C": "absolute_energy absolute_force absolute_mass absolute_pressure impedance",
        "Q": "action_quantum quantum_normalization",
        "X": "mass Dimensionless absolute",
    }
    for letter, observables in classes.items():
        assert {S.classify_observable(text).name for text in observables.split()} == {letter}
    assert S.classify_observable("") == _native.ScalingClass.X


def test_legacy_density():
    assert S.rho_ref_legacy() == 7e-7 and S.is_legacy_reference_density(7e-7) is True
    for other in (math.nextafter(7e-7, 1), NAN, INF):
        assert S.is_legacy_reference_density(other) is False


@pytest.mark.parametrize("differ", [D.rho_sub_differs_from_rho_f, D.j_omega_differs_from_mu_l])
def test_densities_kept_apart(differ):
    assert [differ(1.0, 1.0), differ(1.0, 1.5), differ(1.0, 1.5, 0.5), differ(1.0, 1.5, abs_tol=0.49)] == [
        False, True, False, True,
    ]  # fmt: skip
    assert differ(NAN, 1.0, INF) is differ(1.0, INF, INF) is True


def test_energy_densities():
    form = _native.EnergyDensityForm
    expected = {
        form.HalfRhoEffDtASquared: (True, "u_disp = 1/2 rho_eff |d_t A|^2 with [A]=m is dimensionally valid"),
        form.HalfJOmegaOmegaSquared: (True, "u_rot = 1/2 J_omega |omega|^2 is dimensionally valid"),
        form.HalfRhoFOmegaSquaredNoLength: (False, "forbidden: 1/2 rho_f |omega|^2 without derived length^2"),
        form.Unknown: (False, "unknown energy-density form"),
        form(9): (False, "unknown energy-density form"),
    }
    assert [int(key) for key in expected] == [0, 1, 2, 3, 9]
    for key, (allowed, reason) in expected.items():
        result = D.validate_energy_density_form(key)
        assert (result.allowed, result.reason) == (allowed, reason)
