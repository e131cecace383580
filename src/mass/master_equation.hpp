#pragma once

/// The master mass equation of the theory,
///   M = (1/2 rho_f v^2 / c^2) r_c^3 (lambda_c / (pi r_c))^n phi^(-2k) (alpha_C C + beta_L L + gamma_H H) / S^2,
/// with every intermediate factor returned. SI units: rho_f fluid density in kg/m^3, v swirl speed in m/s, r_c core
/// radius in m, lambda_c Compton wavelength in m, n gate exponent, k golden layer, C crossing, L ropelength and
/// H helicity measure, S swirl clock. The relations beneath it are in mass/canonical_constants.hpp.

#include <cstdint>

#include "mass/canonical_constants.hpp"
#include "mass/stored_constants.hpp"

namespace vkm {

struct VKMTopologyKernelInput {
  double alpha_C = 0.0;           // weight of the crossing term
  double beta_L = 0.0;            // weight of the ropelength term
  double gamma_H = 0.0;           // weight of the helicity term
  double crossing = 0.0;          // crossing measure
  double ropelength = 0.0;        // ropelength measure
  double helicity = 0.0;          // helicity measure
  std::int32_t golden_layer = 0;  // layer k of the golden suppression; negative amplifies
  double phi = canonical::phi;    // base of the suppression
};

struct VKMMasterEquationInput {
  double rho_f = canonical::default_rho_f;     // fluid density, kg/m^3
  double v_norm = canonical::default_v_swirl;  // swirl speed, m/s
  double r_c = stored::core_radius;            // core radius, m; a stored literal, not v_swirl / omega_c
  double lambda_c = 0.0;                       // Compton wavelength, m; unless > 0 the electron's
  std::int32_t gate = 0;                       // gate exponent n
  VKMTopologyKernelInput topology;             // input of the topological kernel
  double c = canonical::c;                     // speed of light, m/s
  double explicit_swirl_clock = -1.0;          // a positive value replaces the computed clock
};

struct VKMMasterEquationOutput {
  double rho_E = 0.0;               // swirl energy density, J/m^3
  double rho_m = 0.0;               // mass-equivalent density, kg/m^3
  double swirl_clock = 1.0;         // the clock factor used
  double clock_impedance = 1.0;     // 1 / swirl_clock^2
  double geometric_gate = 1.0;      // the gate factor
  double topological_kernel = 0.0;  // the kernel
  double bare_mass_scale_kg = 0.0;  // rho_m r_c^3, kg
  double mass_kg = 0.0;             // the mass, kg
};

/// Guards reject the bad range (std::invalid_argument), so a NaN passes and gives a NaN.
class VKMMasterEquation {
 public:
  VKMMasterEquation() = delete;

  static double topological_kernel(const VKMTopologyKernelInput& input);
  static double geometric_gate_factor(double lambda_c, double r_c, std::int32_t gate);
  static double clock_impedance(double swirl_clock);
  /// First order of clock_impedance in v_norm^2 / c^2, not equal to it; takes speeds above c.
  static double weak_swirl_clock_impedance(double v_norm, double c);
  static double geometric_baseline_mass(double rho_m, double r_c, double lambda_c, double L_tot);
  static double geometric_baseline_mass_from_rho_m(double rho_m, double r_c, double lambda_c, double L_tot);
  static double geometric_horn_baseline_mass(double rho_horn, double r_c, double lambda_c, double L_tot);
  static VKMMasterEquationOutput evaluate(const VKMMasterEquationInput& input);
};

}  // namespace vkm
