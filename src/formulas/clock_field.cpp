#include "formulas/clock_field.hpp"

#include <cmath>

#include "core/numbers.hpp"
#include "formulas/guards.hpp"

namespace vkm {

double ClockFieldEFT::c13(double c1, double c3) { return c1 + c3; }

double ClockFieldEFT::tensor_speed(double c13, double c) {
  reject_if(0.0 >= c, "c must be positive.");
  reject_if(0.0 >= 1.0 - c13, "Require 1 - c13 > 0.");
  return c / std::sqrt(1.0 - c13);
}

double ClockFieldEFT::tensor_speed_fractional_offset(double c13) {
  reject_if(0.0 >= 1.0 - c13, "Require 1 - c13 > 0.");
  return 1.0 / std::sqrt(1.0 - c13) - 1.0;
}

bool ClockFieldEFT::satisfies_gw170817(double c13, double tolerance) {
  reject_if(0.0 > tolerance, "tolerance must be non-negative.");
  return tolerance >= std::abs(tensor_speed_fractional_offset(c13));
}

ClockSectorConstraints ClockFieldEFT::constraints(double c1, double c3, double tolerance) {
  const double sum = c13(c1, c3);
  ClockSectorConstraints result;
  result.c13 = sum;
  result.tensor_speed = tensor_speed(sum, 1.0);
  result.tensor_speed_fractional_offset = tensor_speed_fractional_offset(sum);
  result.gw170817_ok = satisfies_gw170817(sum, tolerance);
  return result;
}

double ClockFieldEFT::poisson_source(double rho_matter, double G_eff) {
  reject_if(0.0 > G_eff, "G_eff must be non-negative.");
  return rho_matter * (G_eff * four_pi);
}

double ClockFieldEFT::effective_gravity_from_potential_gradient(double grad_chi) { return -grad_chi; }

std::array<double, 4> ClockFieldEFT::unit_timelike_from_gradient_minkowski(const std::array<double, 4>& grad_chi) {
  const auto& [g0, g1, g2, g3] = grad_chi;
  const double x = g0 * g0 - g1 * g1 - g2 * g2 - g3 * g3;
  reject_if(0.0 >= x, "gradient must be timelike in (-,+,+,+) signature.");
  const double scale = 1.0 / std::sqrt(x);
  return {g0 * scale, g1 * scale, g2 * scale, g3 * scale};
}

}  // namespace vkm
