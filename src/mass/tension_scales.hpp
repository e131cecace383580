#pragma once

/// Closed-form force, coupling and spring scales on the canonical constants. SI units: forces in N, energies in J,
/// frequencies in 1/s; r_c core radius in m, G Newton's constant in m^3 kg^-1 s^-2, P_K in Pa, v_K in m/s, V_K in m^3.

namespace vkm {

/// Guards reject the bad range (std::invalid_argument), so a NaN passes and gives a NaN.
class VKMTensionScales {
 public:
  VKMTensionScales() = delete;

  static double F_swirl_max(double hbar, double omega_c, double r_c);
  /// c^4 / (4 G), the maximal force of general relativity.
  static double F_gr_max(double c, double G);
  static double gravitational_fine_structure(double G, double m_e, double hbar, double c);
  static double tension_ratio_from_couplings(double alpha_g, double alpha);
  static double coulomb_force_at_core(double e_charge, double epsilon_0, double r_c);
  static double electron_spring_constant(double F_swirl_max, double r_c, double n = 2.0);
  static double electron_spring_frequency(double F_swirl_max, double r_c, double m_e, double n = 2.0);
  static double electron_spring_energy(double F_swirl_max, double r_c, double n = 2.0);
  static double rydberg_from_vkm(double v_swirl, double r_c, double c);
  static double swirl_impedance(double P_K, double v_K);
  static double dimensionless_stiffness_ratio(double P_K, double V_K, double hbar, double omega);
};

}  // namespace vkm
