#pragma once

/// Transport of the swirl clock along a Kelvin invariant.
///
/// A core of radius R (m) that turns at the angular rate omega (rad/s) keeps R^2 omega while it moves with an inviscid
/// fluid (Kelvin's circulation theorem). Its clock runs at S = sqrt(1 - (omega r_c / c)^2), r_c core radius in m and c
/// speed of light in m/s; the vorticity of a rigid turn is 2 omega.

#include "mass/canonical_constants.hpp"

namespace vkm {

struct ChronosKelvinTransport {
  static double kelvin_invariant(double R, double omega);
  static double omega_from_invariant(double invariant, double R);
  static double omega_from_swirl_clock(double S_t, double r_c, double c = canonical::c);
  static double vorticity_from_swirl_clock(double S_t, double r_c, double c = canonical::c);
  /// Inverse of vorticity_from_swirl_clock: its `omega` is a vorticity, in spite of the name.
  static double swirl_clock_from_omega(double omega, double r_c, double c = canonical::c);
  static double chronos_kelvin_invariant(double R, double S_t, double r_c, double c = canonical::c);
  static double clock_radius_derivative(double S_t, double R, double dR_dt);
  static double radius_from_clock_invariant(double invariant, double S_t, double r_c, double c = canonical::c);
};

}  // namespace vkm
