#include "formulas/delay_mode.hpp"

#include <algorithm>
#include <cmath>

#include "core/elementary.hpp"
#include "core/numbers.hpp"
#include "formulas/guards.hpp"

namespace vkm {

double DelayModeSelector::circulation_delay(double length, double v_swirl) {
  reject_if(0.0 > length || 0.0 >= v_swirl, "length must be non-negative and v_swirl positive.");
  return length / v_swirl;
}

double DelayModeSelector::core_turnover_delay(double r_c, double v_swirl) {
  reject_if(0.0 >= r_c || 0.0 >= v_swirl, "r_c and v_swirl must be positive.");
  return r_c * two_pi / v_swirl;
}

double DelayModeSelector::discrete_mode_frequency(std::int32_t n, double tau) {
  reject_if(0.0 >= tau, "tau must be positive.");
  return n * two_pi / tau;
}

double DelayModeSelector::phase_lock_residual(double Omega, double omega0, double kappa, double tau) {
  return vkm::sin(Omega * tau) * kappa + (Omega - omega0);
}

double DelayModeSelector::phase_lock_stability_slope(double Omega, double kappa, double tau) {
  return vkm::cos(Omega * tau) * (kappa * tau);
}

DelayModeResult DelayModeSelector::solve_phase_locked_frequency(double omega0, double kappa, double tau,
                                                                double initial_guess, std::int32_t max_iter, double tol,
                                                                const Poll& poll) {
  reject_if(0.0 >= tau || 0 >= max_iter || 0.0 >= tol, "tau, max_iter, and tol must be positive.");
  constexpr double least_derivative = 1e-30;
  constexpr std::int32_t steps_a_tick = 1024;
  Heartbeat heartbeat(poll);
  DelayModeResult result;
  result.tau = tau;
  double w = initial_guess == 0.0 ? omega0 : initial_guess;
  while (result.iterations < max_iter) {
    const double derivative = phase_lock_stability_slope(w, kappa, tau) + 1.0;
    if (std::abs(derivative) < least_derivative) break;
    const double step = phase_lock_residual(w, omega0, kappa, tau) / derivative;
    ++result.iterations;
    w -= step;
    if (std::max(std::abs(w), 1.0) * tol >= std::abs(step)) {
      result.converged = true;
      break;
    }
    if (result.iterations % steps_a_tick == 0) heartbeat.tick();
  }
  result.omega = w;
  result.residual = phase_lock_residual(w, omega0, kappa, tau);
  return result;
}

}  // namespace vkm
