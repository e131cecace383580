#include "mass/tension_scales.hpp"

#include <cmath>
#include <stdexcept>

#include "core/elementary.hpp"
#include "core/numbers.hpp"
#include "mass/canonical_constants.hpp"

namespace vkm {

double VKMTensionScales::F_swirl_max(double hbar, double omega_c, double r_c) {
  return VKMCanonicalConstants::f_swirl_max(hbar, omega_c, r_c);
}

double VKMTensionScales::F_gr_max(double c, double G) {
  if (0.0 >= c || 0.0 >= G) throw std::invalid_argument("c and G must be positive.");
  return vkm::pow(c, 4.0) / (4.0 * G);
}

double VKMTensionScales::gravitational_fine_structure(double G, double m_e, double hbar, double c) {
  if (0.0 >= G || 0.0 >= m_e || 0.0 >= hbar || 0.0 >= c) throw std::invalid_argument("arguments must be positive.");
  return (G * m_e * m_e) / (hbar * c);
}

double VKMTensionScales::tension_ratio_from_couplings(double alpha_g, double alpha) {
  if (0.0 >= alpha) throw std::invalid_argument("alpha must be positive.");
  return 4.0 * alpha_g / alpha;
}

double VKMTensionScales::coulomb_force_at_core(double e_charge, double epsilon_0, double r_c) {
  if (0.0 >= epsilon_0 || 0.0 >= r_c) throw std::invalid_argument("epsilon_0 and r_c must be positive.");
  return (e_charge * e_charge) / (four_pi * epsilon_0 * r_c * r_c);
}

double VKMTensionScales::electron_spring_constant(double F_swirl_max, double r_c, double n) {
  if (0.0 >= F_swirl_max || 0.0 >= r_c || 0.0 >= n) {
    throw std::invalid_argument("F_swirl_max, r_c, and n must be positive.");
  }
  return F_swirl_max / (r_c * n);
}

double VKMTensionScales::electron_spring_frequency(double F_swirl_max, double r_c, double m_e, double n) {
  if (0.0 >= m_e) throw std::invalid_argument("m_e must be positive.");
  return std::sqrt(electron_spring_constant(F_swirl_max, r_c, n) / m_e);
}

double VKMTensionScales::electron_spring_energy(double F_swirl_max, double r_c, double n) {
  return electron_spring_constant(F_swirl_max, r_c, n) * 0.5 * r_c * r_c;
}

double VKMTensionScales::rydberg_from_vkm(double v_swirl, double r_c, double c) {
  return VKMCanonicalConstants::rydberg_vkm(v_swirl, r_c, c);
}

double VKMTensionScales::swirl_impedance(double P_K, double v_K) {
  if (0.0 >= v_K) throw std::invalid_argument("v_K must be positive.");
  return P_K / v_K;
}

double VKMTensionScales::dimensionless_stiffness_ratio(double P_K, double V_K, double hbar, double omega) {
  if (0.0 > V_K || 0.0 >= hbar || 0.0 >= omega) {
    throw std::invalid_argument("V_K must be non-negative; hbar and omega must be positive.");
  }
  return (P_K * V_K) / (hbar * omega);
}

}  // namespace vkm
