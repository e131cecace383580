"""The golden closure of a vortex loop, its inversions, and the profiles beside it."""

import math

import _native
import pytest

CORE, FLUID = _native.DensityRegime.CORE_DOMINATED, _native.DensityRegime.EFFECTIVE_FLUID
G = _native.GoldenNLSClosure
PHI = (1 + math.sqrt(5)) / 2
RHO = {CORE: 3893435826691868672.0, FLUID: 7e-7}
GAMMA2, R_C, C2, ELECTRON = 9.377248042326389e-17, 1.40897017e-15, 89875517873681760.0, 9.10938356e-31
WARNING = "Warning: geometric ratio residual evaluated outside CORE_DOMINATED regime.\n"
BRACKET = "infer_geometric_ratio_safe: could not bracket root for bisection fallback."
FAILED = "infer_geometric_ratio_safe: failed to converge."


def residual(x, target=ELECTRON, rho=RHO[CORE]):
    return (math.log(x * 8) - PHI) * x - target / (rho * GAMMA2 / (2 * C2) * R_C)


@pytest.mark.parametrize("regime", [CORE, FLUID])
def test_loop(regime):
    loop = G(regime=regime)
    assert loop.get_active_density() == RHO[regime]
    for radius in (1e-16, R_C, 3e-11, math.inf):
        energy = (math.log(radius * 8 / R_C) - PHI) * (RHO[regime] * 0.5 * GAMMA2 * radius)
        assert loop.calculate_loop_energy(R=radius) == energy
        assert loop.calculate_loop_mass(radius) == energy / C2
    assert math.isnan(loop.calculate_loop_energy(-1.0)) and math.isnan(loop.calculate_loop_energy(0.0))


def test_screened_mass():
    loop = G()
    assert loop.calculate_screened_mass(3.0, -2) == PHI * PHI * 3.0
    for double_k in (0, 1, 5, -3):
        expected = PHI**-double_k * 0.511
        assert loop.calculate_screened_mass(bare_mass=0.511, double_k=double_k) == pytest.approx(expected, rel=1e-15)
    assert loop.calculate_screened_mass(1.0, -(2**31)) == math.inf


def test_both_inversions_find_the_root_quietly(capfd):
    loop = G()
    for target in (ELECTRON, 1.67262192e-27, 1e-32):
        plain, safe = loop.infer_geometric_ratio(target), loop.infer_geometric_ratio_safe(target, x_max=1e5)
        mass = loop.calculate_loop_mass(plain * R_C)
        assert mass == pytest.approx(target, rel=1e-9)
        assert safe == pytest.approx(plain, rel=1e-11)
        scale = target / (RHO[CORE] * GAMMA2 / (2 * C2) * R_C)
        assert abs(residual(safe, target)) < max(1e-12, 1e-12 * scale)
    assert loop.geometric_ratio_residual(0.7, target_mass=1e-30) == residual(0.7, 1e-30)
    assert capfd.readouterr() == ("", "")


def test_last_newton_step_is_applied_before_the_test():
    log = math.log(8.0)
    first = 1.0 - residual(1.0) / (log + 1 - PHI)
    assert G().infer_geometric_ratio(tolerance=math.inf, max_iter=1) == pytest.approx(first, rel=1e-15)
    with pytest.raises(RuntimeError, match=r"^Newton-Raphson failed to converge for geometric ratio\.$"):
        G().infer_geometric_ratio(max_iter=2)
    for arguments in ({"max_iter": 0}, {"target_mass": math.nan}, {"target_mass": math.inf, "max_iter": 2**31 - 1}):
        with pytest.raises(RuntimeError, match="Newton-Raphson"):
            G().infer_geometric_ratio(**arguments)


def test_warnings_go_to_the_process_s_standard_error(capfd, recwarn):
    loop = G()
    loop.set_regime(FLUID)
    assert loop.geometric_ratio_residual(1.0) == residual(1.0, rho=RHO[FLUID])
    assert capfd.readouterr() == ("", WARNING)
    loop.infer_geometric_ratio()
    once = "Warning: Inferring fundamental mass geometric ratio outside of CORE_DOMINATED regime.\n"
    assert capfd.readouterr() == ("", once)
    # two ends of the bracket and two for each of 12 widenings
    with pytest.raises(RuntimeError, match=BRACKET):
        loop.infer_geometric_ratio_safe(max_iter=0)
    assert capfd.readouterr() == ("", WARNING * 26)
    with pytest.raises(ValueError):
        loop.geometric_ratio_residual(0.0)
    assert capfd.readouterr() == ("", "") and not recwarn.list


def test_unknown_regime_is_found_where_the_density_is_needed(capfd):
    loop = G(_native.DensityRegime(7))
    for call in (
        loop.get_active_density,
        lambda: loop.calculate_loop_mass(1.0),
        lambda: loop.geometric_ratio_residual(1.0),
        loop.infer_geometric_ratio,
        loop.infer_geometric_ratio_safe,
    ):
        with pytest.raises(RuntimeError, match=r"^Unknown density regime selected\.$"):
            call()
    assert loop.calculate_screened_mass(2.0, 0) == 2.0
    assert capfd.readouterr().err.count("Warning") == 3


def bisect(target, low, high, x_tol, f_tol):
    at_low = residual(low, target)
    while True:
        middle = (low + high) * 0.5
        value = residual(middle, target)
        if abs(value) < f_tol or (high - low) * 0.5 < x_tol:
            return middle
        if value * at_low > 0:
            low, at_low = middle, value
        else:
            high = middle


def test_safe_inversion_leaves_newton_for_bisection():
    # The slope vanishes near 0.232: Newton's first step leads beyond the bracket, which holds a change of sign.
    assert 0.235 - residual(0.235) / (math.log(8 * 0.235) + 1 - PHI) > 1.0
    found = G().infer_geometric_ratio_safe(x0=0.235, x_min=0.23, x_max=1.0, x_tol=1e-9, f_tol=0.0, max_iter=40)
    assert found == bisect(ELECTRON, 0.23, 1.0, 1e-9, 0.0)
    # NaN is no point to start from, and the root lies above the bracket: it is widened.
    root = G().infer_geometric_ratio()
    low, high = root / 8, root / 3
    widened = G().infer_geometric_ratio_safe(x0=math.nan, x_min=low, x_max=high, x_tol=1e-9, f_tol=0.0)
    assert widened == bisect(ELECTRON, low / 4, high * 4, 1e-9, 0.0)


def test_newton_starts_at_the_end_of_the_bracket_that_x0_lies_beyond():
    loop = G()
    for x0, end in ((50.0, 2.0), (-1.0, 0.3)):
        assert loop.infer_geometric_ratio_safe(x0=x0, x_min=0.3, x_max=2.0, f_tol=1e9) == end


@pytest.mark.parametrize(
    ("arguments", "error", "text"),
    [
        ({"x_min": 1.0, "x_max": 1.0}, ValueError, "infer_geometric_ratio_safe: require 0 < x_min < x_max."),
        ({"x_min": 0.0}, ValueError, "infer_geometric_ratio_safe: require 0 < x_min < x_max."),
        ({"x_min": math.nan}, ValueError, "infer_geometric_ratio_safe: require 0 < x_min < x_max."),
        (
            {"target_mass": math.nan},
            RuntimeError,
            "infer_geometric_ratio_safe: non-finite residual at bracket endpoints.",
        ),
        ({"target_mass": -1.0}, RuntimeError, BRACKET),
        ({"max_iter": 0}, RuntimeError, FAILED),
        ({"max_iter": -5}, RuntimeError, FAILED),
        ({"x_tol": 0.0, "f_tol": 0.0, "max_iter": 3}, RuntimeError, FAILED),
    ],
)
def test_safe_inversion_fails_with_its_texts(arguments, error, text):
    with pytest.raises(error) as caught:
        G().infer_geometric_ratio_safe(**arguments)
    assert str(caught.value) == text


def test_static_relations_and_their_guards():
    assert G.infer_effective_base(ratio=8.0, exponent_n=3) == pytest.approx(2.0, rel=1e-15)
    assert G.predicted_ratio_from_base(base=1.5, exponent_n=-2) == 1.5**-2
    assert G.relative_error(predicted=3.0, observed=-4.0) == 1.75
    for call, text in (
        (lambda: G.infer_effective_base(0.0, 0), "infer_effective_base: ratio must be > 0."),
        (lambda: G.infer_effective_base(1.0, 0), "infer_effective_base: exponent_n must be positive."),
        (lambda: G.predicted_ratio_from_base(-1.0, 2), "predicted_ratio_from_base: base must be > 0."),
        (lambda: G.relative_error(1.0, -0.0), "relative_error: observed must be nonzero."),
        (lambda: G().geometric_ratio_residual(-1.0), "geometric_ratio_residual: x must be > 0."),
    ):
        with pytest.raises(ValueError) as caught:
            call()
        assert str(caught.value) == text
    nan = math.nan
    for value in (G.infer_effective_base(nan, 2), G.predicted_ratio_from_base(nan, 2), G.relative_error(1.0, nan)):
        assert math.isnan(value)


def test_lamb_oseen_profiles():
    gamma, r, nu, t = 2.0, 0.7, 0.01, 3.0
    decay = math.exp(-(r**2) / (4 * nu * t))
    speed = _native.lamb_oseen_velocity(gamma, r, nu, t)
    assert speed == pytest.approx((1 - decay) * gamma / (2 * math.pi * r), rel=1e-15)
    assert _native.lamb_oseen_vorticity(gamma, r, nu, t) == pytest.approx(
        decay * gamma / (4 * math.pi * nu * t), rel=1e-15
    )
    # the vorticity is the curl of the velocity: 1/r d(r v)/dr
    h = 1e-5
    ahead, behind = (_native.lamb_oseen_velocity(gamma, r + s * h, nu, t) * (r + s * h) for s in (1, -1))
    assert (ahead - behind) / (2 * h * r) == pytest.approx(_native.lamb_oseen_vorticity(gamma, r, nu, t), rel=1e-6)


def test_hill_profiles_inside_and_outside_the_sphere():
    assert _native.hill_streamfunction(2.0, 0.5, 0.25, 1.0) == 2.0 * 0.5 * (1 - 0.3125)
    assert _native.hill_vorticity(2.0, 0.5, 0.25, 1.0) == (4 * 0.0625 + 0.25 - 1.0) * 2.0
    for r, z in ((2.0, 0.0), (1.0, 0.0), (math.nan, 0.0)):
        assert _native.hill_streamfunction(1.0, r, z, 1.0) == 0.0 == _native.hill_vorticity(1.0, r, z, 1.0)
    assert _native.hill_circulation(3.0, 2.0) == pytest.approx(16 * math.pi, rel=1e-15)
    assert _native.hill_velocity(3.0, 2.0) == 0.3
