"""Local minima, their ranking, the penalty for extra ones, and the phase derivative."""

import math

import _native
import numpy as np
import pytest

N = _native.NodeAnalyzer
PHASE = _native.TraceFormula.phase_derivative_from_xi


def test_extrema_are_inclusive():
    assert N.local_minima_indices([1.0] * 5).tolist() == [1, 2, 3]
    assert N.local_maxima_indices([1.0] * 5).tolist() == [1, 2, 3]
    assert N.local_minima_indices([0, 1, 0, 2, 2, 3]).tolist() == [2, 4]
    assert N.local_maxima_indices([0, 1, 0, 2, 2, 3]).tolist() == [1, 3]
    assert N.local_minima_indices([3, 1, math.nan, 1, 3, math.inf, math.inf, math.inf]).tolist() == [6]
    for y in ([], [1.0], [2.0, 1.0]):
        assert N.local_minima_indices(y).tolist() == N.local_maxima_indices(y).tolist() == []
    assert N.local_minima_indices([2, 1, 2]).dtype == np.int64


T = np.arange(9.0)
Y = np.array([5.0, 0.3, 4.0, 0.1, 4.0, 0.2, 4.0, 0.3, 5.0])  # minima at 1, 3, 5, 7


def test_strongest_minima_keep_the_deepest():
    assert N.strongest_minima_t(T, Y, 2).tolist() == [3, 5]
    assert N.strongest_minima_t(T, Y, 0).tolist() == []
    assert N.strongest_minima_t(T[::-1].copy(), Y, 99).tolist() == [1, 3, 5, 7]
    assert N.strongest_minima_values(Y, 3).tolist() == [0.1, 0.2, 0.3]
    assert N.strongest_minima_values(Y, 99).tolist() == [0.1, 0.2, 0.3, 0.3]
    t = T.copy()
    t[3] = math.nan
    assert N.strongest_minima_t(t, Y, 2).tolist()[0] == 5.0


def test_windows_include_their_edges():
    def minima(outside, targets=(2.5, 6.5), halfwidth=0.5, keep=9):
        return N.strongest_minima_t_with_neighborhood_exclusion(T, Y, targets, halfwidth, outside, keep).tolist()

    assert minima(True) == [1, 5]
    assert minima(False) == [3, 7]
    assert minima(False, keep=1) == [3]
    assert minima(True, targets=[]) == [1, 3, 5, 7]
    assert minima(False, targets=[]) == []
    assert minima(True, halfwidth=-1.0) == [1, 3, 5, 7]


def test_penalty_of_extra_minima():
    terms = np.exp(-np.array([0.3, 0.1, 0.2, 0.3]) / 0.05)
    assert N.extra_minima_penalty(T, Y, [], 0.5, 0.05) == pytest.approx(terms.sum(), rel=1e-15)
    assert N.extra_minima_penalty(T, Y, [1.5], 0.5, 0.05) == pytest.approx(terms[1:].sum(), rel=1e-15)
    assert N.extra_minima_penalty(T, Y, [1.5], 0.5, 0.05, False) == math.exp(-0.1 / 0.05)
    assert N.extra_minima_penalty(T, Y, [], 0.5, 0.0) == 0.0
    assert math.isnan(N.extra_minima_penalty([0, 1, 2], [1, 0, 1], [], 0.5, 0.0))


def test_phase_derivative_of_a_turning_number():
    t = np.linspace(0.0, 30.0, 400)
    np.testing.assert_allclose(PHASE(t, np.exp(2.5j * t)), -2.5, rtol=1e-9)  # winds twelve times
    np.testing.assert_allclose(PHASE(t, np.exp(-2.5j * t)), 2.5, rtol=1e-9)
    # a step of exactly pi stays
    assert PHASE([0, 1, 2, 3], [1, -1, -1, -1]).tolist() == [-math.pi / 2, -math.pi / 2, 0, 0]
    # equal neighbours give 0 and leave the others alone
    assert PHASE([0, 1, 0, 1, 5], np.exp(1j * np.arange(5) / 4)).tolist()[1:3] == [0, 0]
    assert PHASE([1, 2], [1j, 2]).tolist() == [0, 0]
    assert np.isnan(PHASE([0, 1, math.nan, 3, 4], np.exp(1j * np.arange(5.0)))[[1, 3]]).all()
    assert PHASE(np.arange(6.0), [1, math.nan, 1j, -1, -1j, 1]).shape == (6,)


@pytest.mark.parametrize("rate", [2.9, -2.7])
def test_phases_unwind_turn_by_turn(rate):
    """Thousands of turns, each with its own rounding."""
    t = np.linspace(0.0, 4000.0, 4001)
    xi = np.exp(1j * (rate * t + 0.2 * np.sin(t)))
    phase = [math.atan2(z.imag, z.real) for z in xi.tolist()]
    for i in range(1, len(phase)):
        while phase[i] - phase[i - 1] > math.pi:
            phase[i] -= 2 * math.pi
        while phase[i] - phase[i - 1] < -math.pi:
            phase[i] += 2 * math.pi
    assert abs(phase[-1]) > 10000
    expected = [-(phase[i + 1] - phase[i - 1]) / 2.0 for i in range(1, 4000)]
    assert PHASE(t, xi).tolist() == [expected[0], *expected, expected[-1]]


@pytest.mark.parametrize(
    "call, text",
    [
        (lambda: N.local_minima_indices(1.0), "local_minima_indices(y): expected a 1D array"),
        (lambda: N.local_maxima_indices([[1]]), "local_maxima_indices(y): expected a 1D array"),
        (lambda: N.strongest_minima_t([1], [[1]], 1), "strongest_minima_t(y): expected a 1D array"),
        (lambda: N.strongest_minima_t([1], [1, 2], 1), "strongest_minima_t: t and y must have same length"),
        (lambda: N.strongest_minima_values([[1]], 1), "strongest_minima_values(y): expected a 1D array"),
        (
            lambda: N.strongest_minima_t_with_neighborhood_exclusion([1, 2], [1], [], 1, True, 1),
            "strongest_minima_t_with_neighborhood_exclusion: t and y must have same length",
        ),
        (
            lambda: N.extra_minima_penalty([1], [1], 2.0, 1, 1),
            "extra_minima_penalty(target_nodes): expected a 1D array",
        ),
        (lambda: N.extra_minima_penalty([1], [], [], 1, 1), "extra_minima_penalty: t and y must have same length"),
        (lambda: PHASE([1, 2], [1]), "phase_derivative_from_xi: xi_values must match t_values"),
        (lambda: PHASE([1], [[1]]), "phase_derivative_from_xi(xi_values): expected a 1D array"),
    ],
)
def test_failures_have_their_texts(call, text):
    with pytest.raises(RuntimeError) as failure:
        call()
    assert str(failure.value) == text
