#include "mass/master_equation.hpp"

#include <cmath>
#include <stdexcept>

#include "core/elementary.hpp"
#include "core/numbers.hpp"

namespace vkm {

namespace {

using Constants = VKMCanonicalConstants;

/// 2 pi^3 rho r_c^5 L_tot / lambda_c^2.
double baseline_mass(double rho, double r_c, double lambda_c, double L_tot) {
  constexpr double two_pi_cubed = 62.01255336059963;  // 2 pi^3
  return (vkm::pow(r_c, 5.0) * (rho * two_pi_cubed)) / (lambda_c * lambda_c) * L_tot;
}

}  // namespace

double VKMMasterEquation::topological_kernel(const VKMTopologyKernelInput& input) {
  if (0.0 >= input.phi) throw std::invalid_argument("phi must be positive.");
  const double weighted =
      (input.alpha_C * input.crossing + input.beta_L * input.ropelength) + input.gamma_H * input.helicity;
  return vkm::pow(input.phi, static_cast<double>(input.golden_layer) * -2.0) * weighted;
}

double VKMMasterEquation::geometric_gate_factor(double lambda_c, double r_c, std::int32_t gate) {
  const double base = Constants::geometric_gate(lambda_c, r_c);
  if (gate < 0) throw std::invalid_argument("gate must be non-negative.");
  return vkm::pow(base, static_cast<double>(gate));
}

double VKMMasterEquation::clock_impedance(double swirl_clock) {
  if (0.0 >= swirl_clock) throw std::invalid_argument("swirl_clock must be positive.");
  return 1.0 / (swirl_clock * swirl_clock);
}

double VKMMasterEquation::weak_swirl_clock_impedance(double v_norm, double c) {
  if (0.0 >= c) throw std::invalid_argument("c must be positive.");
  return 1.0 + (v_norm * v_norm) / (c * c);
}

double VKMMasterEquation::geometric_baseline_mass(double rho_m, double r_c, double lambda_c, double L_tot) {
  if (0.0 > rho_m || 0.0 >= r_c || 0.0 >= lambda_c) {
    throw std::invalid_argument("rho_m must be non-negative; r_c and lambda_c must be positive.");
  }
  return baseline_mass(rho_m, r_c, lambda_c, L_tot);
}

double VKMMasterEquation::geometric_baseline_mass_from_rho_m(double rho_m, double r_c, double lambda_c, double L_tot) {
  return geometric_baseline_mass(rho_m, r_c, lambda_c, L_tot);
}

double VKMMasterEquation::geometric_horn_baseline_mass(double rho_horn, double r_c, double lambda_c, double L_tot) {
  if (0.0 > rho_horn || 0.0 >= r_c || 0.0 >= lambda_c) {
    throw std::invalid_argument("rho_horn must be non-negative; r_c and lambda_c must be positive.");
  }
  return baseline_mass(rho_horn, r_c, lambda_c, L_tot);
}

VKMMasterEquationOutput VKMMasterEquation::evaluate(const VKMMasterEquationInput& input) {
  if (0.0 > input.rho_f || 0.0 >= input.r_c || 0.0 >= input.c) {
    throw std::invalid_argument("rho_f must be non-negative; r_c and c must be positive.");
  }
  VKMMasterEquationOutput out;
  // The electron's wavelength is taken at the fixed speed of light, whatever input.c is.
  const double lambda_c = input.lambda_c > 0.0 ? input.lambda_c : Constants::full_compton_wavelength();
  out.rho_E = Constants::swirl_energy_density(input.rho_f, input.v_norm);
  out.rho_m = Constants::mass_equivalent_density(out.rho_E, input.c);
  out.swirl_clock =
      input.explicit_swirl_clock > 0.0 ? input.explicit_swirl_clock : Constants::swirl_clock(input.v_norm, input.c);
  out.clock_impedance = clock_impedance(out.swirl_clock);
  out.geometric_gate = geometric_gate_factor(lambda_c, input.r_c, input.gate);
  out.topological_kernel = topological_kernel(input.topology);
  out.bare_mass_scale_kg = Constants::bare_master_mass_scale(out.rho_m, input.r_c);
  out.mass_kg = out.bare_mass_scale_kg * out.geometric_gate * out.topological_kernel * out.clock_impedance;
  return out;
}

}  // namespace vkm
