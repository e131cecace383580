#pragma once

/// A thin vortex loop in a fluid whose density is chosen by a regime, and the golden closure of its energy.
///
/// E(R) = (rho / 2) Gamma^2 R (ln(8 R / r_c) - phi): the energy of a thin ring of radius R and core radius r_c with
/// circulation Gamma, in which the golden ratio phi stands for the constant of the core (7/4 or 2 in the classical
/// rings). With x = R / r_c and S = rho Gamma^2 r_c / (2 c^2), a mass M asks for the root of
///   f(x) = x (ln(8 x) - phi) - M / S.
/// SI units; x and its powers are dimensionless.

#include <cstdint>

#include "core/poll.hpp"

namespace vkm {

enum class DensityRegime : std::int32_t { EFFECTIVE_FLUID = 0, CORE_DOMINATED = 1 };

class GoldenNLSClosure {
 public:
  /// Electron mass in kg of an older adjustment, not that of the canonical constants.
  static constexpr double default_target_mass = 9.10938356e-31;

  explicit GoldenNLSClosure(DensityRegime regime = DensityRegime::CORE_DOMINATED) : regime_(regime) {}

  void set_regime(DensityRegime regime) { regime_ = regime; }
  /// kg/m^3. std::runtime_error for a regime that is none of the two, here and in all that needs the density.
  double get_active_density() const;

  double calculate_loop_energy(double R) const;
  double calculate_loop_mass(double R) const;
  double calculate_screened_mass(double bare_mass, std::int32_t double_k) const;

  /// Newton's iteration from x = 1, which ends when a step is below the tolerance; std::runtime_error if none is.
  /// Outside the core-dominated regime it warns once on standard error.
  double infer_geometric_ratio(double target_mass = default_target_mass, double tolerance = 1e-12,
                               std::int32_t max_iter = 100, const Poll& poll = {}) const;
  /// Newton's iteration from x0 within a bracket; bisection, in a bracket widened as needed, where it fails.
  double infer_geometric_ratio_safe(double target_mass = default_target_mass, double x0 = 1.0, double x_min = 1e-6,
                                    double x_max = 10.0, double x_tol = 1e-12, double f_tol = 1e-12,
                                    std::int32_t max_iter = 100, const Poll& poll = {}) const;
  /// f(x). Outside the core-dominated regime every evaluation warns on standard error.
  double geometric_ratio_residual(double x, double target_mass = default_target_mass) const;

  static double infer_effective_base(double ratio, std::int32_t exponent_n);
  static double predicted_ratio_from_base(double base, std::int32_t exponent_n);
  static double relative_error(double predicted, double observed);

 private:
  double mass_scale() const;

  DensityRegime regime_;
};

}  // namespace vkm
