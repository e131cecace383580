#include "evidence/maxwell_kinetic.hpp"

#include "core/finite.hpp"
#include "evidence/quiet_nan.hpp"

namespace vkm {

bool MaxwellKineticAPI::three_gate_condition(double coupling, double drive, double gap, double lifetime_threshold,
                                             double lifetime) {
  return all_finite({coupling, drive, gap, lifetime_threshold, lifetime}) && coupling != 0.0 && drive >= gap &&
         lifetime >= lifetime_threshold;
}

double MaxwellKineticAPI::collision_rate_inv(double density, double cross_section, double speed) {
  return all_finite({density, cross_section, speed}) ? density * cross_section * speed : quiet_nan;
}

MaxwellKineticResult MaxwellKineticAPI::evaluate(double coupling, double drive, double gap, double lifetime_threshold,
                                                 double lifetime, double density, double cross_section, double speed) {
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
