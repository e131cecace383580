#include "formulas/magnus_bernoulli.hpp"

#include <cmath>

#include "core/elementary.hpp"

namespace vkm {

namespace {

constexpr double least_length = 1e-30;  // m
constexpr double vanished_exponent = -700.0;

}  // namespace

Vec3 MagnusBernoulliIntegrator::compute_magnus_force(const Vec3& tangent, const Vec3& normal, double curvature_radius,
                                                     const Vec3& v_knot, const Vec3& v_bg) const {
  const Vec3 w = v_knot - v_bg;
  const Vec3 curvature = curvature_radius > least_length ? normal * (1.0 / curvature_radius) : Vec3{};
  return (rho_f_ * Gamma_) * (cross(tangent, w) + curvature);
}

Vec3 MagnusBernoulliIntegrator::compute_swirl_coulomb_accel(const Vec3& eval_pos, const Vec3& source_pos) const {
  const Vec3 R = eval_pos - source_pos;
  const double r = norm(R);
  const double exponent = -2.0 * r / r_c_;
  if (r < least_length || exponent < vanished_exponent) return {};
  return (R / r) * vkm::exp(exponent) * (-(v_swirl_ * v_swirl_) / r);
}

}  // namespace vkm
