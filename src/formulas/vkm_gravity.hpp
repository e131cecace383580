#pragma once

/// Gravity-like effects of a swirling medium, sample by sample on fields.
///
/// B a swirl field and A its vector potential, v_swirl the speed at which a clock stops (m/s), Lambda the strength of
/// the swirl-Coulomb potential, r_c its core radius (m), rho_f density (kg/m^3). Fields are lists of vectors; every
/// function gives one number a sample.

#include <span>
#include <vector>

#include "core/vec3.hpp"
#include "mass/canonical_constants.hpp"

namespace vkm {

struct VKMGravity {
  /// |B x curl B|, zero for a Beltrami field. Fields of different lengths throw std::invalid_argument, here and below.
  static std::vector<double> compute_beltrami_shear(std::span<const Vec3> B_field, std::span<const Vec3> Curl_B);
  /// 1 - (|B| / B_saturation) log10(omega_drive), between 0 and 1; the logarithm is 0 unless omega_drive > 0.
  static std::vector<double> compute_gravity_dilation(std::span<const Vec3> B_field, double omega_drive,
                                                      double B_saturation);
  static std::vector<double> compute_helicity_density(std::span<const Vec3> A_field, std::span<const Vec3> B_field);
  /// sqrt(max(1 - |v|^2 / v_swirl^2, 0)).
  static std::vector<double> compute_swirl_clock(std::span<const Vec3> v_swirl_field, double v_swirl);
  /// -Lambda / sqrt(r^2 + r_c^2).
  static std::vector<double> compute_swirl_coulomb_potential(std::span<const double> radii, double Lambda, double r_c);
  /// -Lambda r / (r^2 + r_c^2)^(3/2); 0 where the denominator underflows.
  static std::vector<double> compute_swirl_coulomb_force(std::span<const double> radii, double Lambda, double r_c);
  /// rho_f |v|^2 / 2.
  static std::vector<double> compute_swirl_energy_density(std::span<const Vec3> v_field, double rho_f);
  /// c^5 v_swirl t_p^2 / (2 F_max r_c^2), t_p the Planck time in s and F_max a force in N: a coupling in
  /// m^3/(kg s^2).
  static double compute_G_swirl(double v_swirl, double t_p, double F_max, double r_c, double c = canonical::c);
};

}  // namespace vkm
