"""The phase-locked frequency: Newton's iteration and how it ends."""

import math

import _native
import pytest
from _native import DelayModeSelector as Delay
from interruption import ended_by_a_signal


def newton(omega0, kappa, tau, initial_guess=0.0, max_iter=64, tol=1e-12):
    w = omega0 if initial_guess == 0.0 else initial_guess
    done, converged = 0, False
    while done < max_iter and not converged:
        d = math.cos(w * tau) * (kappa * tau) + 1.0
        if abs(d) < 1e-30:
            break
        step = (math.sin(w * tau) * kappa + (w - omega0)) / d
        done += 1
        w -= step
        converged = max(abs(w), 1.0) * tol >= abs(step)
    return w, math.sin(w * tau) * kappa + (w - omega0), tau, converged, done


def fields(result):
    return result.omega, result.residual, result.tau, result.converged, result.iterations


@pytest.mark.parametrize(
    "arguments",
    [
        {"omega0": 2.0, "kappa": 0.4, "tau": 1.5},
        {"omega0": 1e6, "kappa": 3.0, "tau": 0.2},
        {"omega0": 1e-3, "kappa": 0.5, "tau": 1.0},
        {"omega0": -3.0, "kappa": 5.0, "tau": 2.0, "initial_guess": 0.7, "max_iter": 200},
        {"omega0": 2.0, "kappa": 0.4, "tau": 1.5, "initial_guess": 0.0, "max_iter": 2},
        {"omega0": 2.0, "kappa": 0.0, "tau": 1.5, "initial_guess": 1.0},
        {"omega0": 2.0, "kappa": 0.0, "tau": 1.5},
        {"omega0": 3.0, "kappa": -1.0, "tau": 1.0, "initial_guess": 1e-20},  # the derivative is zero there
    ],
)
def test_the_plain_iteration(arguments):
    found = fields(Delay.solve_phase_locked_frequency(**arguments))
    assert found == newton(**arguments) == fields(Delay.solve_phase_locked_frequency(*arguments.values()))
    omega, residual, _, converged, _ = found
    if converged:
        assert abs(residual) <= 1e-11 * max(abs(omega), 1.0)


def test_how_it_ends():
    solve = Delay.solve_phase_locked_frequency
    away = solve(2.0, 0.0, 1.5, initial_guess=1.0)
    assert (away.omega, away.iterations, away.converged) == (2.0, 2, True)
    assert fields(solve(2.0, 0.0, 1.5)) == (2.0, 0.0, 1.5, True, 1)
    stuck = solve(3.0, -1.0, 1.0, initial_guess=1e-20)
    assert (stuck.omega, stuck.residual, stuck.iterations, stuck.converged) == (1e-20, -3.0, 0, False)
    lost = solve(math.nan, 1.0, 1.0)
    assert math.isnan(lost.omega) and (lost.iterations, lost.converged) == (64, False)
    fresh = _native.DelayModeResult()
    fresh.iterations = 3
    assert fields(fresh) == (0.0, 0.0, 0.0, False, 3)


CLOUD = [[math.sin(k), math.cos(k), float(k)] for k in range(60000)]


@pytest.mark.parametrize(
    "call",
    [
        lambda: Delay.solve_phase_locked_frequency(math.nan, 1.0, 1.0, max_iter=2**31 - 1),
        lambda: _native.compute_gravitational_potential_direct(CLOUD, CLOUD),
        lambda: _native.compute_gravitational_potential(CLOUD, CLOUD, 1e9),
    ],
)
def test_a_signal_ends_the_call(call):
    with ended_by_a_signal():
        call()
