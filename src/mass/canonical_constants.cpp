#include "mass/canonical_constants.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/numbers.hpp"

namespace vkm {

namespace {

void reject_if(bool bad, const char* text) {
  if (bad) throw std::invalid_argument(text);
}

}  // namespace

double VKMCanonicalConstants::compton_angular_frequency(double m_e, double c, double hbar) {
  reject_if(0.0 >= m_e || 0.0 >= c || 0.0 >= hbar, "m_e, c, and hbar must be positive.");
  return (m_e * c * c) / hbar;
}

double VKMCanonicalConstants::reduced_compton_wavelength(double hbar, double m_e, double c) {
  reject_if(0.0 >= hbar || 0.0 >= m_e || 0.0 >= c, "hbar, m_e, and c must be positive.");
  return hbar / (m_e * c);
}

double VKMCanonicalConstants::full_compton_wavelength(double hbar, double m_e, double c) {
  return reduced_compton_wavelength(hbar, m_e, c) * two_pi;
}

double VKMCanonicalConstants::core_radius_from_compton_anchor(double v_swirl, double omega_c) {
  reject_if(0.0 >= v_swirl || 0.0 >= omega_c, "v_swirl and omega_c must be positive.");
  return v_swirl / omega_c;
}

double VKMCanonicalConstants::circulation_quantum(double r_c, double v_swirl) {
  reject_if(0.0 >= r_c || 0.0 >= v_swirl, "r_c and v_swirl must be positive.");
  return (r_c * two_pi) * v_swirl;
}

double VKMCanonicalConstants::circulation_quantum_from_v_omega(double v_swirl, double omega_c) {
  return (two_pi * v_swirl * v_swirl) / omega_c;
}

double VKMCanonicalConstants::eta0(double v_swirl, double c) {
  reject_if(0.0 >= c, "c must be positive.");
  return v_swirl / c;
}

double VKMCanonicalConstants::swirl_clock(double v_norm, double c) {
  reject_if(0.0 >= c, "c must be positive.");
  // The clamped value comes first: std::max keeps its first argument on NaN.
  return std::sqrt(std::max(1.0 - (v_norm * v_norm) / (c * c), 0.0));
}

double VKMCanonicalConstants::swirl_energy_density(double rho_f, double v_norm) {
  reject_if(0.0 > rho_f, "rho_f must be non-negative.");
  return (rho_f * 0.5 * v_norm) * v_norm;
}

double VKMCanonicalConstants::mass_equivalent_density(double rho_E, double c) {
  reject_if(0.0 >= c, "c must be positive.");
  return rho_E / (c * c);
}

double VKMCanonicalConstants::horn_envelope_density(double m_e, double c, double v_swirl, double r_c) {
  return core_density_closure(m_e, c, v_swirl, r_c);
}

double VKMCanonicalConstants::core_density_closure(double m_e, double c, double v_swirl, double r_c) {
  reject_if(0.0 >= m_e || 0.0 >= c || 0.0 >= v_swirl || 0.0 >= r_c, "m_e, c, v_swirl, and r_c must be positive.");
  return (m_e * c * c) / (two_pi * v_swirl * v_swirl * r_c * r_c * r_c);
}

double VKMCanonicalConstants::geometric_gate(double lambda_c, double r_c) {
  reject_if(0.0 >= lambda_c || 0.0 >= r_c, "lambda_c and r_c must be positive.");
  return lambda_c / (r_c * pi);
}

double VKMCanonicalConstants::f_swirl_max(double hbar, double omega_c, double r_c) {
  reject_if(0.0 >= hbar || 0.0 >= omega_c || 0.0 >= r_c, "hbar, omega_c, and r_c must be positive.");
  return (hbar * omega_c) / (r_c + r_c);
}

double VKMCanonicalConstants::rydberg_vkm(double v_swirl, double r_c, double c) {
  reject_if(0.0 >= v_swirl || 0.0 >= r_c || 0.0 >= c, "v_swirl, r_c, and c must be positive.");
  return (v_swirl * v_swirl * v_swirl) / (c * (r_c * pi) * c * c);
}

double VKMCanonicalConstants::bare_master_mass_scale(double rho_m, double r_c) {
  reject_if(0.0 > rho_m || 0.0 >= r_c, "rho_m must be non-negative and r_c positive.");
  return rho_m * r_c * r_c * r_c;
}

VKMCanonicalValues VKMCanonicalConstants::values(double rho_f, double v_swirl) {
  VKMCanonicalValues v;
  v.rho_f = rho_f;
  v.v_swirl = v_swirl;
  v.omega_c = canonical::omega_c;
  v.r_c = core_radius_from_compton_anchor(v_swirl, v.omega_c);
  // r_c is 0 here when the division underflows, and the circulation's guard fires.
  v.gamma_0 = circulation_quantum(v.r_c, v_swirl);
  v.lambda_bar_c = canonical::lambda_bar_c;
  v.lambda_c = canonical::lambda_c;
  v.rho_E = swirl_energy_density(rho_f, v_swirl);
  v.rho_m = v.rho_E / canonical::c_squared;
  v.rho_core = core_density_closure(v.m_e, v.c, v_swirl, v.r_c);
  v.rho_horn = v.rho_core;
  v.eta_0 = eta0(v_swirl, v.c);
  v.geometric_gate = geometric_gate(v.lambda_c, v.r_c);
  v.swirl_clock = swirl_clock(v_swirl, v.c);
  v.F_swirl_max = f_swirl_max(v.hbar, v.omega_c, v.r_c);
  v.R_infty_vkm = rydberg_vkm(v_swirl, v.r_c, v.c);
  return v;
}

}  // namespace vkm
