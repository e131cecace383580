#pragma once

/// A force of radiation pressure, and the right-hand sides of van der Pol's oscillator x'' = mu (1 - x^2) x' - x.

namespace vkm {

/// w u (2 a / c0 b) / (1 - u^2) with u = c / e and w = d / e. The speed of light c0 is 3e8 m/s here, rounded, and not
/// the library's constant.
inline double radiation_force(double a, double b, double c, double d, double e) {
  constexpr double light = 3e8;
  const double u = c / e;
  const double w = d / e;
  return w * u * ((a + a) / light * b) / (1.0 - u * u);
}

/// x' = y.
inline double van_der_pol_dx(double, double y) { return y; }

/// y' = mu (1 - x^2) y - x.
inline double van_der_pol_dy(double x, double y, double mu) { return (1.0 - x * x) * mu * y - x; }

}  // namespace vkm
