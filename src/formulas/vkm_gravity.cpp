#include "formulas/vkm_gravity.hpp"

#include <algorithm>
#include <cmath>

#include "core/elementary.hpp"
#include "formulas/guards.hpp"

namespace vkm {

namespace {

template <class Sample, class Formula>
std::vector<double> map(std::span<const Sample> field, Formula&& formula) {
  std::vector<double> values(field.size());
  std::transform(field.begin(), field.end(), values.begin(), formula);
  return values;
}

}  // namespace

std::vector<double> VKMGravity::compute_beltrami_shear(std::span<const Vec3> B_field, std::span<const Vec3> Curl_B) {
  reject_if(B_field.size() != Curl_B.size(), "B_field and Curl_B must have the same size.");
  std::vector<double> shear(B_field.size());
  for (std::size_t i = 0; i < shear.size(); ++i) shear[i] = norm(cross(B_field[i], Curl_B[i]));
  return shear;
}

std::vector<double> VKMGravity::compute_gravity_dilation(std::span<const Vec3> B_field, double omega_drive,
                                                         double B_saturation) {
  reject_if(0.0 >= B_saturation, "B_saturation must be positive.");
  const double L = omega_drive > 0.0 ? vkm::log10(omega_drive) : 0.0;
  return map(B_field, [=](const Vec3& B) { return std::clamp(1.0 - (norm(B) / B_saturation) * L, 0.0, 1.0); });
}

std::vector<double> VKMGravity::compute_helicity_density(std::span<const Vec3> A_field, std::span<const Vec3> B_field) {
  reject_if(A_field.size() != B_field.size(), "A_field and B_field must have the same size.");
  std::vector<double> density(A_field.size());
  for (std::size_t i = 0; i < density.size(); ++i) density[i] = dot(A_field[i], B_field[i]);
  return density;
}

std::vector<double> VKMGravity::compute_swirl_clock(std::span<const Vec3> v_swirl_field, double v_swirl) {
  const double scale = v_swirl * v_swirl;
  return map(v_swirl_field, [=](const Vec3& v) { return std::sqrt(std::max(1.0 - norm2(v) / scale, 0.0)); });
}

std::vector<double> VKMGravity::compute_swirl_coulomb_potential(std::span<const double> radii, double Lambda,
                                                                double r_c) {
  reject_if(0.0 >= r_c, "r_c must be positive.");
  return map(radii, [=](double r) { return -Lambda / std::sqrt(r * r + r_c * r_c); });
}

std::vector<double> VKMGravity::compute_swirl_coulomb_force(std::span<const double> radii, double Lambda, double r_c) {
  reject_if(0.0 >= r_c, "r_c must be positive.");
  std::vector<double> denominators = map(radii, [=](double r) { return r * r + r_c * r_c; });
  vkm::pow(denominators, 1.5, denominators);
  std::vector<double> force(radii.size());
  std::transform(radii.begin(), radii.end(), denominators.begin(), force.begin(),
                 [=](double r, double denominator) { return 0.0 >= denominator ? 0.0 : -Lambda * r / denominator; });
  return force;
}

std::vector<double> VKMGravity::compute_swirl_energy_density(std::span<const Vec3> v_field, double rho_f) {
  return map(v_field, [=](const Vec3& v) { return rho_f * 0.5 * norm2(v); });
}

double VKMGravity::compute_G_swirl(double v_swirl, double t_p, double F_max, double r_c, double c) {
  reject_if(0.0 >= F_max || 0.0 >= r_c, "F_max and r_c must be positive.");
  return vkm::pow(c, 5.0) * v_swirl * (t_p * t_p) / ((F_max + F_max) * r_c * r_c);
}

}  // namespace vkm
