#include "formulas/chronos_kelvin.hpp"

#include <algorithm>
#include <cmath>

#include "formulas/guards.hpp"

namespace vkm {

double ChronosKelvinTransport::kelvin_invariant(double R, double omega) {
  reject_if(0.0 >= R, "R must be positive.");
  return R * R * omega;
}

double ChronosKelvinTransport::omega_from_invariant(double invariant, double R) {
  reject_if(0.0 >= R, "R must be positive.");
  return invariant / (R * R);
}

double ChronosKelvinTransport::omega_from_swirl_clock(double S_t, double r_c, double c) {
  reject_if(0.0 > S_t || S_t > 1.0 || 0.0 >= r_c || 0.0 >= c, "Require 0 <= S_t <= 1 and positive r_c, c.");
  return std::sqrt(std::max(1.0 - S_t * S_t, 0.0)) * (c / r_c);
}

double ChronosKelvinTransport::vorticity_from_swirl_clock(double S_t, double r_c, double c) {
  return 2.0 * omega_from_swirl_clock(S_t, r_c, c);
}

double ChronosKelvinTransport::swirl_clock_from_omega(double omega, double r_c, double c) {
  reject_if(0.0 >= r_c || 0.0 >= c, "r_c and c must be positive.");
  const double speed = omega * r_c;
  return std::sqrt(std::max(1.0 - speed * speed / (c * 4.0 * c), 0.0));
}

double ChronosKelvinTransport::chronos_kelvin_invariant(double R, double S_t, double r_c, double c) {
  const double vorticity = vorticity_from_swirl_clock(S_t, r_c, c);
  reject_if(0.0 >= R, "R must be positive.");
  return vorticity * R * R;
}

double ChronosKelvinTransport::clock_radius_derivative(double S_t, double R, double dR_dt) {
  reject_if(0.0 >= S_t || 0.0 >= R, "S_t and R must be positive.");
  const double deficit = 1.0 - S_t * S_t;
  return (deficit + deficit) / S_t * (dR_dt / R);
}

double ChronosKelvinTransport::radius_from_clock_invariant(double invariant, double S_t, double r_c, double c) {
  const double vorticity = vorticity_from_swirl_clock(S_t, r_c, c);
  reject_if(0.0 >= vorticity, "omega is zero; radius is not determined by invariant.");
  return std::sqrt(invariant / vorticity);
}

}  // namespace vkm
