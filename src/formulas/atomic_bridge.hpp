#pragma once

/// From the scales of the swirling medium to those of the atom.
///
/// SI units: r_c core radius (m), v_swirl swirl speed (m/s), alpha fine-structure constant, a0 Bohr radius (m), E_R
/// Rydberg energy (J), eta0 = v_swirl / c, rho_f and rho_core densities (kg/m^3), Gamma0 circulation quantum (m^2/s),
/// Lambda strength of the soft-core Coulomb potential (J m). sigma is the sign of a clock branch, gamma the
/// dimensionless packet amplitude. Bohr radius and energy are those of quantum mechanics with the core radius in
/// place of the electron's; the soft core is Plummer's.

#include <cstdint>

#include "mass/canonical_constants.hpp"

namespace vkm {

struct AtomicBridgeModel {
  static double eta0(double v_swirl, double c = canonical::c);
  static double bohr_radius_vkm(double r_c, double alpha);
  static double rydberg_energy(double hbar, double reduced_mass, double a0);
  static double lambda_vkm(double rho_core, double v_swirl, double r_c);
  static double soft_core_potential(double r, double Lambda, double r_c);
  static double soft_core_force(double r, double Lambda, double r_c);
  static double clock_branch_factor(double sigma, double eta0, double gamma);
  static double scalar_clock_potential_linear(double sigma, double E_R, double eta0, double gamma);
  static double orbit_coupling_energy(double sigma, double E_R, double eta0, double anticommutator_value);
  static double frozen_linear_interaction(double sigma, double E_R, double eta0, double gamma,
                                          double anticommutator_value);
  static double pauli_barrier_scale(double rho_f, double Gamma0, double L, double a_cut, double shape_factor = 1.0);
  static double omega_z_from_displacement_gradient(double Omega, double dxi_dz);
  static double u_theta_uniform_vorticity(double r, double omega_z);
  static double gamma_from_uniform_vorticity(double r, double omega_z, double Gamma0);
  static double helical_packet_gamma(double r, double phi, double z, double t, double A_gamma, double w_r, double w_z,
                                     double v, std::int32_t m, double k, double omega);
};

}  // namespace vkm
