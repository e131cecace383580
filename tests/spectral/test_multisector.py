"""Multisector products, their logarithm and its derivative, truncation scans and fitting objectives."""

import cmath
import math

import _native
import numpy as np
import pytest
from interruption import ended_by_a_signal
from vkmcore import _engine

F1, F2, TRACE = _native.MultisectorFitter, _native.MultisectorFitterV2, _native.TraceFormula
SECTORS, THETAS, WEIGHTS = [2, 3, 5], [0.3, 1.1, 2.5], [1.0, 0.7, 2.0]


def products(t, weights, ell, truncation):
    """The log form and its derivative in extended precision."""
    s = 0.5 + 1j * np.asarray(t, dtype=np.longdouble)
    log, derivative = np.zeros_like(s), np.zeros_like(s)
    for nu, theta, weight in zip(SECTORS, THETAS, weights, strict=True):
        for m in range(1, truncation + 1):
            length = np.longdouble(nu * m * ell)
            z = np.exp(-s * length)
            c = np.cos(np.longdouble(m * theta))
            d = 1 - 2 * c * z + z * z
            log -= weight * (np.log(np.abs(d)) + 1j * np.angle(d))
            derivative -= weight * (2 * c * length * z - 2 * length * z * z) / d
    return log, derivative


@pytest.mark.parametrize("ell, truncation", [(0.31, 20), (2.7, 20), (0.004, 30), (-0.2, 6), (1.0, 0)])
def test_log_form_and_derivative_against_extended_precision(ell, truncation):
    t = np.concatenate([np.linspace(-3.0, 80.0, 601), [0.0, 5e3]])
    for weights in (None, WEIGHTS):
        log, derivative = products(t, weights or [1.0] * 3, ell, truncation)
        ours = TRACE.evaluate_multisector_logz(t, SECTORS, THETAS, weights, ell, truncation)
        # near a zero of a factor the rounding of t L is magnified as the derivative says
        tolerance = 1e-13 + 1e-15 * np.abs(derivative) * (1 + np.abs(t))
        assert (np.abs(ours - log) <= tolerance).all()
        ours = TRACE.evaluate_multisector_dlogz_ds(t, SECTORS, THETAS, weights, ell, truncation)
        np.testing.assert_allclose(ours, derivative.astype(complex), rtol=1e-11, atol=1e-11)


def test_lanes_and_library_agree_across_their_border():
    """Angles up to 1e8 are reduced in vector lanes, greater ones by the standard library."""
    t = np.array([1e8 - 10, 1e8 - 1, 1e8 + 1, 1e8 + 10, -1e8 + 1, -1e8 - 1, 12.0])
    ours = TRACE.evaluate_multisector_logz(t, [1], [0.4], None, 1.0, 1)
    for angle, value in zip(t, ours, strict=True):
        z = cmath.rect(math.exp(-0.5), -angle)
        d = 1 - 2 * math.cos(0.4) * z + z * z
        assert value == pytest.approx(-cmath.log(d), abs=4e-16)


@pytest.mark.parametrize("length", [83.0, 84.0, 700.0, 1600.0, -340.0, -700.0, -1600.0, math.inf])
def test_faint_and_huge_factors(length):
    """Factors whose D rounds to 1, underflows or overflows."""
    t = np.array([0.0, 0.3, -2.0, 11.0])
    log = TRACE.evaluate_multisector_logz(t, [1], [0.4], [1.0], length, 1)
    derivative = TRACE.evaluate_multisector_dlogz_ds(t, [1], [0.4], [1.0], length, 1)
    if length > 0.0:
        z = math.exp(-0.5 * length)
        assert np.array_equal(log.real, [0.0] * 4)
        angles = t * min(length, 1e6)
        assert log.imag == pytest.approx(-2 * math.cos(0.4) * z * np.sin(angles), rel=1e-12, abs=0)
        if length < math.inf:
            expected = -2 * math.cos(0.4) * length * z * np.exp(-1j * angles)
            np.testing.assert_allclose(derivative, expected, rtol=1e-12, atol=0)
    elif length > -701.0:
        np.testing.assert_allclose(log.real, length, rtol=1e-14)  # D is z^2 there
        np.testing.assert_allclose(derivative, 2 * length, rtol=1e-12)
    else:
        assert not np.isfinite(log.real).any()
        assert np.isnan(derivative.real).all() and np.isnan(derivative.imag).all()


def test_products_are_exponentials_of_the_log_form():
    t = np.linspace(0.1, 20.0, 700)
    args = (t, SECTORS, THETAS, WEIGHTS, 0.4, 12)
    log = TRACE.evaluate_multisector_logz(*args)
    for fitter in (F1, F2):
        phi = fitter.evaluate_multisector(*args)
        np.testing.assert_allclose(phi, np.exp(log), rtol=1e-14)
        np.testing.assert_allclose(fitter.evaluate_multisector_abs(*args), np.abs(phi), rtol=1e-15)
        completed = fitter.evaluate_multisector(*args, completion_mode=1, alpha=0.3, beta=-0.2)
        np.testing.assert_allclose(completed, phi * np.exp(0.3 * (0.5 + 1j * t) - 0.2), rtol=1e-13)
        sector = fitter.evaluate_sector(t, 3, 1.1, 0.4, 12)
        assert np.array_equal(sector, fitter.evaluate_multisector(t, [3], [1.1], ell_trefoil=0.4, truncation_M=12))
    # a single sector is never completed, whatever the mode
    assert np.array_equal(F2.evaluate_sector(t, 3, 1.1, 0.4, 12, 7, 1.0, 1.0), sector)
    assert np.array_equal(
        F2.evaluate_sector_abs(t, 3, 1.1, 0.4, 12, 7), _engine.elementary("hypot", sector.real, sector.imag)
    )
    # a weight of 0 removes a sector, no sectors leave 1
    without = F2.evaluate_multisector(t, [2, 5], [0.3, 2.5], None, 0.4, 12)
    np.testing.assert_allclose(F2.evaluate_multisector(t, SECTORS, THETAS, [1, 0, 1], 0.4, 12), without, rtol=1e-14)
    assert np.array_equal(F2.evaluate_multisector(t, [], [], [], 0.4, 12), np.ones(700))


def test_truncation_scan_has_the_bits_of_single_evaluations():
    t = np.linspace(0.1, 30.0, 300)
    truncations = [7, 0, 25, 3, 25, 1]
    rows = F2.evaluate_multisector_abs_batch_M(t, SECTORS, THETAS, WEIGHTS, 0.2, truncations, 1, 0.1, 0.2)
    assert rows.shape == (6, 300)
    for row, truncation in zip(rows, truncations, strict=True):
        single = F2.evaluate_multisector_abs(t, SECTORS, THETAS, WEIGHTS, 0.2, truncation, 1, 0.1, 0.2)
        assert np.array_equal(row, single)
    # a point has the same bits wherever it stands among the others
    assert np.array_equal(
        F2.evaluate_multisector_abs(t[13:], SECTORS, THETAS, WEIGHTS, 0.2, 7, 1, 0.1, 0.2), rows[0, 13:]
    )
    assert F2.evaluate_multisector_abs_batch_M(t, SECTORS, THETAS, None, 0.2, []).shape == (0, 300)
    assert F2.evaluate_multisector_abs_batch_M([], SECTORS, THETAS, None, 0.2, [1, 2], 9).shape == (2, 0)
    with pytest.raises(ValueError, match="must not be negative"):
        F2.evaluate_multisector_abs_batch_M(t, SECTORS, THETAS, None, 0.2, [-1])


def test_vanishing_and_undefined_factors():
    t = [0.0, 1.0]
    # L = 0 and theta = 0: z = 1 and D = 0 at every t
    assert np.array_equal(TRACE.evaluate_multisector_logz(t, [0], [0.0], None, 1.0, 1).real, [math.inf] * 2)
    assert not np.isfinite(TRACE.evaluate_multisector_dlogz_ds(t, [0], [0.0], None, 1.0, 1)).any()
    for bad in (math.nan, math.inf, -math.inf):
        log = TRACE.evaluate_multisector_logz([bad, 1.0], [2, 300], [0.1, 0.2], None, 1.0, 2)
        assert cmath.isnan(log[0]) and math.isnan(log[0].real) and cmath.isfinite(log[1])
        derivative = TRACE.evaluate_multisector_dlogz_ds([bad, 1.0], [2], [0.1], None, 1.0, 2)
        assert cmath.isnan(derivative[0]) and cmath.isfinite(derivative[1])
        assert np.isnan(F2.evaluate_multisector_abs(t, [2], [bad], None, 1.0, 2)).all()


def test_completion_factor():
    assert F2.completion_factor(0.2 + 3j) == 1.0
    assert F2.completion_factor(0.2 + 3j, 1, 0.7, -0.4) == pytest.approx(cmath.exp(0.7 * (0.2 + 3j) - 0.4), rel=1e-15)
    assert F2.evaluate_multisector([2.0], SECTORS, THETAS, None, 1.0, 0, 1, 0.7, -0.4)[0] == pytest.approx(
        F2.completion_factor(0.5 + 2j, 1, 0.7, -0.4), rel=1e-14
    )
    for call in (
        lambda: F2.completion_factor(1j, 2),
        lambda: F1.evaluate_multisector([1.0], [], [], None, 1.0, 1, -1),
        lambda: F2.evaluate_multisector_abs_batch_M([1.0], [], [], None, 1.0, [1], 2),
    ):
        with pytest.raises(RuntimeError, match=r"^Unknown completion_mode in multisector completion factor$"):
            call()
    assert F1.evaluate_multisector([], SECTORS, THETAS, None, 1.0, 1, 99).shape == (0,)


class TestObjectives:
    t = np.linspace(0.5, 12.0, 400)
    args = (t, SECTORS, THETAS, WEIGHTS, 0.3, 8, 0, 0.0, 0.0)
    y = F2.evaluate_multisector_abs(*args)
    targets = (1.4, 4.9)

    def test_near_nodes(self):
        found = _native.NodeAnalyzer.strongest_minima_t(self.t, self.y, 2)
        expected = 3.0 * (found[0] - 1.4) ** 2 + 0.5 * (found[1] - 4.9) ** 2
        for fitter in (F1, F2):
            assert fitter.objective_near_nodes(*self.args, self.targets, [3.0, 0.5]) == expected
            assert fitter.objective_near_nodes(*self.args, []) == 0.0
            assert fitter.objective_near_nodes(*self.args, np.arange(99.0)) == 1e300
            assert fitter.objective_near_nodes([], SECTORS, THETAS, None, 1.0, 3, target_nodes=[1.0]) == 1e300

    @pytest.mark.parametrize("every", [True, False])
    def test_breakdown(self, every):
        options = (0.4, 0.2, 0.03, 0.6, every)
        parts = F2.objective_suppressed_breakdown(*self.args, self.targets, None, *options)
        assert list(parts) == ["total", "mismatch", "extra_penalty", "reg_penalty"]
        assert parts["mismatch"] == F2.objective_near_nodes(*self.args, self.targets)
        penalty = _native.NodeAnalyzer.extra_minima_penalty(self.t, self.y, self.targets, 0.6, 0.2, every)
        assert parts["extra_penalty"] == penalty > 0.0
        assert parts["reg_penalty"] == pytest.approx(0.3**2 + 1.0)
        assert parts["total"] == 0.4 * penalty + parts["mismatch"] + 0.03 * parts["reg_penalty"]
        assert F2.objective_suppressed(*self.args, self.targets, None, *options) == parts["total"]

    def test_defaults_and_too_few_minima(self):
        named = dict(lambda_extra=0.5, sigma_extra=0.05, lambda_reg=0.01, target_halfwidth=0.35)
        assert F2.objective_suppressed(*self.args, self.targets) == F2.objective_suppressed(
            *self.args, target_nodes=self.targets, penalize_all_extra_minima=True, **named
        )
        few = F2.objective_suppressed_breakdown(*self.args, np.arange(99.0))
        assert few == {"total": 1e300, "mismatch": 0.0, "extra_penalty": 0.0, "reg_penalty": 0.0}


def test_phase_invariants():
    assert F2.phase_invariants([0.5, 0.2, 1.0, 99.0]) == {
        "delta23": 0.3,
        "delta35": -0.8,
        "theta_sum_mod": pytest.approx(1.7, rel=1e-15),
    }
    assert F2.phase_invariants([-0.1, 0.0, 0.0])["theta_sum_mod"] == 2 * math.pi - 0.1
    assert F2.phase_invariants([3.0, 3.0, 3.0])["theta_sum_mod"] == 9.0 - 2 * math.pi
    assert all(math.isnan(value) for value in F2.phase_invariants([1.0, 2.0]).values())


GOOD = {"t_values": [1.0], "sectors": [2], "thetas": [0.1], "sector_weights": [1.0], "ell_trefoil": 1.0}
OBJECTIVE = {**GOOD, "truncation_M": 2, "target_nodes": [1.0], "node_weights": [1.0]}
CALLS = [
    *(
        (fitter, name, {**GOOD, "truncation_M": 2})
        for fitter in (F1, F2)
        for name in ("evaluate_multisector", "evaluate_multisector_abs")
    ),
    (F1, "objective_near_nodes", OBJECTIVE),
    (F2, "objective_near_nodes", OBJECTIVE),
    (F2, "objective_suppressed", OBJECTIVE),
    (F2, "objective_suppressed_breakdown", OBJECTIVE),
    (F2, "evaluate_multisector_abs_batch_M", {**GOOD, "truncation_values": [2]}),
    (TRACE, "evaluate_multisector_logz", {**GOOD, "truncation_M": 2}),
    (TRACE, "evaluate_multisector_dlogz_ds", {**GOOD, "truncation_M": 2}),
]


@pytest.mark.parametrize("owner, name, good", CALLS, ids=lambda value: getattr(value, "__name__", None))
def test_array_arguments_are_checked_with_their_texts(owner, name, good):
    def text(**bad):
        with pytest.raises(RuntimeError) as failure:
            getattr(owner, name)(**{**good, **bad})
        return str(failure.value)

    getattr(owner, name)(**good)
    for argument, value in good.items():
        if isinstance(value, list):
            assert text(**{argument: [value]}) == f"{name}({argument}): expected a 1D array"
    must = {argument: "have same length as" if owner is F1 else "match" for argument in good}
    assert text(thetas=[0.1, 0.2]) == f"{name}: thetas must {must['thetas']} sectors"
    assert text(sector_weights=[]) == f"{name}: sector_weights must {must['thetas']} sectors"
    if "node_weights" in good:
        assert text(node_weights=[]) == f"{name}: node_weights must {must['thetas']} target_nodes"


def test_sector_calls_check_their_arrays():
    for call, text in (
        (lambda: F1.evaluate_sector(1.0, 2, 0.1, 1.0, 3), "evaluate_sector(t_values): expected a 1D array"),
        (lambda: F2.evaluate_sector_abs([[1]], 2, 0.1, 1.0, 3), "evaluate_sector_abs(t_values): expected a 1D array"),
        (lambda: F2.phase_invariants(1.0), "phase_invariants(thetas): expected a 1D array"),
    ):
        with pytest.raises(RuntimeError) as failure:
            call()
        assert str(failure.value) == text


def test_docstrings_open_with_their_texts():
    opening = {
        "evaluate_sector": "Evaluate one sector zeta Z_nu(1/2 + i t).",
        "evaluate_multisector": "Evaluate the full multisector primitive-cycle product Phi_pc(t).",
        "evaluate_multisector_abs": "Evaluate |Phi_pc(t)| for the full multisector primitive-cycle product.",
        "objective_near_nodes": "Objective function for fitting multisector phases against near-node targets.",
    }
    for name, text in opening.items():
        assert getattr(F1, name).__doc__.split("\n\n", 1)[1].startswith(text)


def test_long_evaluations_can_be_interrupted():
    with ended_by_a_signal(0.05):
        F2.evaluate_multisector_abs([1.0], [2], [0.1], None, 1.0, 10**15)
