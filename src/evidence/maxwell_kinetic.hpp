#pragma once

/// Activation of a kinetic relaxation channel: a coupling, a drive at or above its gap, a lifetime long enough to see.
/// All quantities in the caller's units.

#include <string>

namespace vkm {

struct MaxwellKineticResult {
  bool coupling_nonzero = false;
  bool drive_above_gap = false;      ///< at the gap counts
  bool lifetime_observable = false;  ///< at the threshold counts
  bool three_gate_ok = false;        ///< all three, of finite numbers
  double tau_inv = 0.0;              ///< collision rate, product of its three factors
  std::string message;
};

struct MaxwellKineticAPI {
  static bool three_gate_condition(double coupling, double drive, double gap, double lifetime_threshold,
                                   double lifetime);
  /// n sigma v, say; NaN unless all are finite.
  static double collision_rate_inv(double density, double cross_section, double speed);
  static MaxwellKineticResult evaluate(double coupling, double drive, double gap, double lifetime_threshold,
                                       double lifetime, double density, double cross_section, double speed);
};

}  // namespace vkm
