#include "evidence/maxwell_kinetic.hpp"

#include <cmath>

#include "evidence/quiet_nan.hpp"

namespace vkm {

bool MaxwellKineticAPI::three_gate_condition(double coupling, double drive, double gap, double lifetime_threshold,
                                             double lifetime) {
  for (const double x : {coupling, drive, gap, lifetime_threshold, lifetime}) {
    if (!std::isfinite(x)) return false;
  }
  return coupling != 0.0 && drive >= gap && lifetime >= lifetime_threshold;
}

double MaxwellKineticAPI::collision_rate_inv(double density, double cross_section, double speed) {
  if (!std::isfinite(density) || !std::isfinite(cross_section) || !std::isfinite(speed)) return quiet_nan;
  return density * cross_section * speed;
}

MaxwellKineticResult MaxwellKineticAPI::evaluate(double coupling, double drive, double gap, double lifetime_threshold,
                                                 double lifetime, double density, double cross_section,
                                                 double speed) {
  MaxwellKineticResult result;
  result.coupling_nonzero = coupling != 0.0;
  result.drive_above_gap = drive >= gap;
  result.lifetime_observable = lifetime >= lifetime_threshold;
  result.three_gate_ok = three_gate_condition(coupling, drive, gap, lifetime_threshold, lifetime);
  result.tau_inv = collision_rate_inv(density, cross_section, speed);
  result.message = result.three_gate_ok ? "three-gate activation ok" : "three-gate not satisfied";
  return result;
}

}  // namespace vkm
