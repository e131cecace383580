#pragma once

/// How much of a medium takes part in a core's rotation.
///
/// r_c core radius (m), rho_horn horn envelope density, rho_ref reference density (kg/m^3), v_swirl swirl speed (m/s),
/// j_omega rotational inertia a length (kg/m). The formulas are the theory's own.

#include <cstdint>

#include "mass/canonical_constants.hpp"
#include "mass/stored_constants.hpp"

namespace vkm {

/// Twist waves are linear in the amplitude, Kelvin bends quadratic.
enum class WaveModeClass : std::int32_t { LinearTwist = 0, QuadraticKelvinBend = 1, Unknown = 2 };

struct RotorParticipationResult {
  double j_omega_rot = 0.0;     ///< pi r_c^2 rho_horn, kg/m
  double phi_dyn_ref = 0.0;     ///< rho_ref / (pi rho_horn)
  double ell_rho_eq_ref = 0.0;  ///< sqrt(j_omega_rot / rho_ref), m
  double c_omega = 0.0;         ///< wave speed, v_swirl as given, m/s
};

struct RotorParticipationAPI {
  /// Each NaN unless both arguments are positive.
  static double j_omega_rot(double r, double rho);
  static double phi_dyn_ref(double rho_ref, double rho_horn);
  static double ell_rho_eq_ref(double j, double rho);

  /// The identification of the two speeds: the argument itself.
  static double c_omega_equals_v_swirl(double v_swirl);
  static RotorParticipationResult evaluate(double r_c = stored::core_radius, double rho_horn = stored::core_density,
                                           double rho_ref = canonical::default_rho_f,
                                           double v_swirl = canonical::default_v_swirl);
  /// Unknown unless exactly one of the two holds.
  static WaveModeClass classify_wave_mode(bool linear, bool quadratic);
};

}  // namespace vkm
