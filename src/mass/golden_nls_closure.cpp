#include "mass/golden_nls_closure.hpp"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <stdexcept>

#include "core/elementary.hpp"
#include "mass/canonical_constants.hpp"
#include "mass/stored_constants.hpp"

namespace vkm {

namespace {

using canonical::phi;
using stored::core_density;
using stored::core_radius;

constexpr double circulation_squared = 9.377248042326389e-17;  // of 9.683619203e-9 m^2/s
constexpr double twice_c_squared = 179751035747363520.0;       // m^2/s^2
constexpr double effective_density = 7e-7;                     // kg/m^3

}  // namespace

double GoldenNLSClosure::get_active_density() const {
  switch (regime_) {
    case DensityRegime::EFFECTIVE_FLUID:
      return effective_density;
    case DensityRegime::CORE_DOMINATED:
      return core_density;
  }
  throw std::runtime_error("Unknown density regime selected.");
}

double GoldenNLSClosure::calculate_loop_energy(double R) const {
  return (vkm::log(R * 8.0 / core_radius) - phi) * (get_active_density() * 0.5 * circulation_squared * R);
}

double GoldenNLSClosure::calculate_loop_mass(double R) const { return calculate_loop_energy(R) / canonical::c_squared; }

double GoldenNLSClosure::calculate_screened_mass(double bare_mass, std::int32_t double_k) const {
  const double screening = double_k == -2 ? phi * phi : vkm::pow(phi, -static_cast<double>(double_k));
  return screening * bare_mass;
}

double GoldenNLSClosure::mass_scale() const {
  return get_active_density() * circulation_squared / twice_c_squared * core_radius;
}

double GoldenNLSClosure::geometric_ratio_residual(double x, double target_mass) const {
  if (0.0 >= x) throw std::domain_error("geometric_ratio_residual: x must be > 0.");
  if (regime_ != DensityRegime::CORE_DOMINATED)
    std::cerr << "Warning: geometric ratio residual evaluated outside CORE_DOMINATED regime." << std::endl;
  return (vkm::log(x * 8.0) - phi) * x - target_mass / mass_scale();
}

double GoldenNLSClosure::infer_geometric_ratio(double target_mass, double tolerance, std::int32_t max_iter,
                                               const Poll& poll) const {
  if (regime_ != DensityRegime::CORE_DOMINATED)
    std::cerr << "Warning: Inferring fundamental mass geometric ratio outside of CORE_DOMINATED regime." << std::endl;
  const double target = target_mass / mass_scale();
  Heartbeat heartbeat(poll);
  double x = 1.0;
  for (std::int32_t i = 0; i < max_iter && !std::isnan(x); ++i) {  // no step leads back from a NaN
    const double log_8x = vkm::log(x * 8.0);
    const double step = ((log_8x - phi) * x - target) / (log_8x + 1.0 - phi);
    x -= step;
    if (std::abs(step) < tolerance) return x;
    heartbeat.tick();
  }
  throw std::runtime_error("Newton-Raphson failed to converge for geometric ratio.");
}

double GoldenNLSClosure::infer_geometric_ratio_safe(double target_mass, double x0, double x_min, double x_max,
                                                    double x_tol, double f_tol, std::int32_t max_iter,
                                                    const Poll& poll) const {
  if (!(0.0 < x_min && x_min < x_max))
    throw std::invalid_argument("infer_geometric_ratio_safe: require 0 < x_min < x_max.");
  Heartbeat heartbeat(poll);

  double x = x0;
  if (x > x_max) x = x_max;
  if (x < x_min) x = x_min;
  for (std::int32_t i = 0; i < max_iter && x > 0.0; ++i) {
    const double residual = geometric_ratio_residual(x, target_mass);
    if (std::abs(residual) < f_tol) return x;
    const double slope = vkm::log(x * 8.0) + 1.0 - phi;
    if (!std::isfinite(slope) || std::abs(slope) < 1e-14) break;
    const double step = residual / slope;
    x -= step;
    if (!std::isfinite(x) || x <= x_min || x >= x_max) break;
    if (std::abs(step) < x_tol && std::abs(geometric_ratio_residual(x, target_mass)) < f_tol) return x;
    heartbeat.tick();
  }

  double f_min = geometric_ratio_residual(x_min, target_mass);
  double f_max = geometric_ratio_residual(x_max, target_mass);
  if (!std::isfinite(f_min) || !std::isfinite(f_max))
    throw std::runtime_error("infer_geometric_ratio_safe: non-finite residual at bracket endpoints.");
  bool bracketed = !(f_min * f_max > 0.0);
  for (int widening = 0; !bracketed; ++widening) {
    if (widening == 12)
      throw std::runtime_error("infer_geometric_ratio_safe: could not bracket root for bisection fallback.");
    x_max = 2.0 * x_max;
    x_min = std::max(x_min * 0.5, 1e-12);
    f_min = geometric_ratio_residual(x_min, target_mass);
    f_max = geometric_ratio_residual(x_max, target_mass);
    bracketed = std::isfinite(f_min) && std::isfinite(f_max) && !(f_min * f_max > 0.0);
  }

  double lo = x_min;
  double hi = x_max;
  for (std::int64_t i = 0; i < std::int64_t{4} * max_iter; ++i) {
    const double middle = (lo + hi) * 0.5;
    const double residual = geometric_ratio_residual(middle, target_mass);
    if (!std::isfinite(residual))
      throw std::runtime_error("infer_geometric_ratio_safe: non-finite residual during bisection.");
    if (std::abs(residual) < f_tol || (hi - lo) * 0.5 < x_tol) return middle;
    if (residual * f_min > 0.0) {
      lo = middle;
      f_min = residual;
    } else {
      hi = middle;
    }
    heartbeat.tick();
  }
  throw std::runtime_error("infer_geometric_ratio_safe: failed to converge.");
}

double GoldenNLSClosure::infer_effective_base(double ratio, std::int32_t exponent_n) {
  if (0.0 >= ratio) throw std::domain_error("infer_effective_base: ratio must be > 0.");
  if (exponent_n < 1) throw std::invalid_argument("infer_effective_base: exponent_n must be positive.");
  return vkm::pow(ratio, 1.0 / exponent_n);
}

double GoldenNLSClosure::predicted_ratio_from_base(double base, std::int32_t exponent_n) {
  if (0.0 >= base) throw std::domain_error("predicted_ratio_from_base: base must be > 0.");
  return vkm::pow(base, exponent_n);
}

double GoldenNLSClosure::relative_error(double predicted, double observed) {
  if (observed == 0.0) throw std::domain_error("relative_error: observed must be nonzero.");
  return std::abs(predicted - observed) / std::abs(observed);
}

}  // namespace vkm
