#pragma once

/// Forces of a swirling medium on a vortex segment.
///
/// rho_f density (kg/m^3), v_swirl swirl speed (m/s), r_c core radius (m), Gamma circulation (m^2/s).

#include "core/vec3.hpp"

namespace vkm {

class MagnusBernoulliIntegrator {
 public:
  MagnusBernoulliIntegrator(double rho_f, double v_swirl, double r_c, double Gamma)
      : rho_f_(rho_f), v_swirl_(v_swirl), r_c_(r_c), Gamma_(Gamma) {}

  /// rho_f Gamma (t x (v_knot - v_bg) + n / R), the Magnus force a length with a term of curvature. The curvature
  /// vector carries no factor of velocity: that is how the force is defined here. A radius of at most 1e-30 (a NaN as
  /// well) drops it.
  Vec3 compute_magnus_force(const Vec3& tangent, const Vec3& normal, double curvature_radius, const Vec3& v_knot,
                            const Vec3& v_bg) const;

  /// -(v_swirl^2 / r) exp(-2 r / r_c) along the line from the source: a short-range pull. Zero at distances below 1e-30
  /// and where the exponent lies below -700.
  Vec3 compute_swirl_coulomb_accel(const Vec3& eval_pos, const Vec3& source_pos) const;

 private:
  double rho_f_;
  double v_swirl_;
  double r_c_;
  double Gamma_;
};

}  // namespace vkm
