#pragma once

/// What keeps a tight rope from getting shorter: the contacts that carry force. A rope under tension 1 is critical
/// when the tension's forces on its vertices are balanced by non-negative forces along struts and at kinks
/// (J. Cantarella, J. Fu, R. Kusner, J. Sullivan, Ropelength criticality, 2014).

#include <vector>

#include "ideal/rope.hpp"

namespace vkm::ideal {

/// A contact between points (1 - s) p_i + s p_next(i) and (1 - t) p_j + t p_next(j).
struct StrutForce {
  Index i;
  double s;
  Index j;
  double t;
  double distance;
  double force;  ///< in units of the tension
};

/// A corner at the limit of curvature.
struct KinkForce {
  Index at;
  double radius;  ///< MinRad
  double force;   ///< that pushes the two neighbours apart, in units of the tension
};

struct Balance {
  std::vector<StrutForce> struts;
  std::vector<KinkForce> kinks;
  /// Norm of the forces that no contact balances over the norm of the tension's forces.
  double residual;
};

/// Of a rope with a tube of radius 1.
Balance balance(const Rope& rope);

}  // namespace vkm::ideal
