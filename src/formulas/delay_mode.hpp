#pragma once

/// Frequencies that a delayed feedback selects.
///
/// A signal that returns after the delay tau (s) locks an oscillator of natural frequency omega0 to the roots of
/// Omega - omega0 + kappa sin(Omega tau) = 0 (phase-locked loop with delay); frequencies and the coupling kappa in
/// rad/s, lengths in m, speeds in m/s.

#include <cstdint>

#include "core/poll.hpp"

namespace vkm {

struct DelayModeResult {
  double omega = 0.0;           // the frequency at which the iteration ended, rad/s
  double residual = 0.0;        // phase_lock_residual there
  double tau = 0.0;             // the delay, s
  bool converged = false;       // the last step was small enough
  std::int32_t iterations = 0;  // Newton steps taken
};

struct DelayModeSelector {
  static double circulation_delay(double length, double v_swirl);
  static double core_turnover_delay(double r_c, double v_swirl);
  static double discrete_mode_frequency(std::int32_t n, double tau);
  static double phase_lock_residual(double Omega, double omega0, double kappa, double tau);
  /// The residual's derivative, less one.
  static double phase_lock_stability_slope(double Omega, double kappa, double tau);
  /// Newton's iteration on the residual, from omega0 if `initial_guess` is exactly zero. It ends unconverged where the
  /// derivative vanishes. The test is on the step, relative to the frequency with a floor of one.
  static DelayModeResult solve_phase_locked_frequency(double omega0, double kappa, double tau,
                                                      double initial_guess = 0.0, std::int32_t max_iter = 64,
                                                      double tol = 1e-12, const Poll& poll = {});
};

}  // namespace vkm
