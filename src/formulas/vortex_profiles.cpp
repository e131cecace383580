#include "formulas/vortex_profiles.hpp"

#include <cmath>

#include "core/elementary.hpp"
#include "core/numbers.hpp"

namespace vkm {

double lamb_oseen_velocity(double Gamma, double r, double nu, double t) {
  return (1.0 - vkm::exp(-(r * r) / (4.0 * nu * t))) * (Gamma / (two_pi * r));
}

double lamb_oseen_vorticity(double Gamma, double r, double nu, double t) {
  return vkm::exp(-(r * r) / (4.0 * nu * t)) * (Gamma / (four_pi * nu * t));
}

double hill_streamfunction(double A, double r, double z, double a) {
  const double distance2 = r * r + z * z;
  return a * a > distance2 ? A * r * (a * a - distance2) : 0.0;
}

double hill_vorticity(double A, double r, double z, double a) {
  return a * a > r * r + z * z ? (4.0 * z * z + r * r - a * a) * A : 0.0;
}

double hill_circulation(double A, double a) { return vkm::pow(a, 3.0) * (A * two_pi) / 3.0; }

double hill_velocity(double A, double a) { return A / (a * 5.0); }

}  // namespace vkm
