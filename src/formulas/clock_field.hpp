#pragma once

/// Effective field theory of a unit timelike clock field.
///
/// c1 and c3 are two of the couplings of Einstein-aether theory; their sum c13 sets the speed of tensor waves,
/// c / sqrt(1 - c13), which the neutron-star merger GW170817 bounds. Signature (-,+,+,+); SI units where there are any.

#include <array>

#include "mass/canonical_constants.hpp"

namespace vkm {

struct ClockSectorConstraints {
  double c13 = 0.0;                             // c1 + c3
  double tensor_speed = 0.0;                    // in units of the speed of light
  double tensor_speed_fractional_offset = 0.0;  // tensor speed over the speed of light, less one
  bool gw170817_ok = false;                     // the offset lies inside the tolerance
};

struct ClockFieldEFT {
  static double c13(double c1, double c3);
  /// In the unit of `c`, unlike the field of ClockSectorConstraints.
  static double tensor_speed(double c13, double c = canonical::c);
  static double tensor_speed_fractional_offset(double c13);
  static bool satisfies_gw170817(double c13, double tolerance = 1e-15);
  static ClockSectorConstraints constraints(double c1, double c3, double tolerance = 1e-15);
  /// Right-hand side of Poisson's equation, 4 pi G_eff rho_matter.
  static double poisson_source(double rho_matter, double G_eff);
  static double effective_gravity_from_potential_gradient(double grad_chi);
  /// The gradient over its Minkowski norm; the sign of the time component stays.
  static std::array<double, 4> unit_timelike_from_gradient_minkowski(const std::array<double, 4>& grad_chi);
};

}  // namespace vkm
