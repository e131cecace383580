#include "formulas/atomic_bridge.hpp"

#include <cmath>

#include "core/elementary.hpp"
#include "core/numbers.hpp"
#include "formulas/guards.hpp"

namespace vkm {

double AtomicBridgeModel::eta0(double v_swirl, double c) {
  reject_if(0.0 >= c, "c must be positive.");
  return v_swirl / c;
}

double AtomicBridgeModel::bohr_radius_vkm(double r_c, double alpha) {
  reject_if(0.0 >= r_c || 0.0 >= alpha, "r_c and alpha must be positive.");
  return (r_c + r_c) / (alpha * alpha);
}

double AtomicBridgeModel::rydberg_energy(double hbar, double reduced_mass, double a0) {
  reject_if(0.0 >= hbar || 0.0 >= reduced_mass || 0.0 >= a0, "hbar, reduced_mass, and a0 must be positive.");
  return hbar * hbar / ((reduced_mass + reduced_mass) * a0 * a0);
}

double AtomicBridgeModel::lambda_vkm(double rho_core, double v_swirl, double r_c) {
  reject_if(0.0 >= rho_core || 0.0 >= v_swirl || 0.0 >= r_c, "rho_core, v_swirl, and r_c must be positive.");
  return vkm::pow(r_c, 4.0) * (rho_core * four_pi * v_swirl * v_swirl);
}

double AtomicBridgeModel::soft_core_potential(double r, double Lambda, double r_c) {
  reject_if(0.0 >= r_c, "r_c must be positive.");
  return -Lambda / std::sqrt(r * r + r_c * r_c);
}

double AtomicBridgeModel::soft_core_force(double r, double Lambda, double r_c) {
  reject_if(0.0 >= r_c, "r_c must be positive.");
  return -Lambda * r / vkm::pow(r * r + r_c * r_c, 1.5);
}

double AtomicBridgeModel::clock_branch_factor(double sigma, double eta0, double gamma) {
  return sigma * eta0 * gamma + 1.0;
}

double AtomicBridgeModel::scalar_clock_potential_linear(double sigma, double E_R, double eta0, double gamma) {
  return sigma * -2.0 * E_R * eta0 * gamma;
}

double AtomicBridgeModel::orbit_coupling_energy(double sigma, double E_R, double eta0, double anticommutator_value) {
  return E_R * 0.5 * eta0 * sigma * anticommutator_value;
}

double AtomicBridgeModel::frozen_linear_interaction(double sigma, double E_R, double eta0, double gamma,
                                                    double anticommutator_value) {
  return scalar_clock_potential_linear(sigma, E_R, eta0, gamma) +
         orbit_coupling_energy(sigma, E_R, eta0, anticommutator_value);
}

double AtomicBridgeModel::pauli_barrier_scale(double rho_f, double Gamma0, double L, double a_cut,
                                              double shape_factor) {
  reject_if(0.0 > rho_f || 0.0 >= Gamma0 || 0.0 >= L || 0.0 >= a_cut,
            "rho_f must be non-negative; Gamma0, L, and a_cut must be positive.");
  reject_if(0.0 > shape_factor, "shape_factor must be non-negative.");
  return rho_f * Gamma0 * Gamma0 / four_pi * (L / a_cut) * shape_factor;
}

double AtomicBridgeModel::omega_z_from_displacement_gradient(double Omega, double dxi_dz) {
  return (Omega + Omega) * dxi_dz;
}

double AtomicBridgeModel::u_theta_uniform_vorticity(double r, double omega_z) { return r * (omega_z * 0.5); }

double AtomicBridgeModel::gamma_from_uniform_vorticity(double r, double omega_z, double Gamma0) {
  reject_if(0.0 >= Gamma0, "Gamma0 must be positive.");
  return r * pi * r * omega_z / Gamma0;
}

double AtomicBridgeModel::helical_packet_gamma(double r, double phi, double z, double t, double A_gamma, double w_r,
                                               double w_z, double v, std::int32_t m, double k, double omega) {
  reject_if(0.0 >= w_r || 0.0 >= w_z, "w_r and w_z must be positive.");
  const double along = z - t * v;
  const double envelope =
      vkm::exp(-(r * r) / (2.0 * w_r * w_r)) * A_gamma * vkm::exp(-(along * along) / (2.0 * w_z * w_z));
  return vkm::cos(m * phi + z * k - t * omega) * envelope;
}

}  // namespace vkm
