#include "evidence/rotor_participation.hpp"

#include <cmath>

#include "core/numbers.hpp"
#include "evidence/quiet_nan.hpp"

namespace vkm {

double RotorParticipationAPI::j_omega_rot(double r, double rho) {
  return r > 0.0 && rho > 0.0 ? r * pi * r * rho : quiet_nan;
}

double RotorParticipationAPI::phi_dyn_ref(double rho_ref, double rho_horn) {
  return rho_ref > 0.0 && rho_horn > 0.0 ? rho_ref / (rho_horn * pi) : quiet_nan;
}

double RotorParticipationAPI::ell_rho_eq_ref(double j, double rho) {
  return j > 0.0 && rho > 0.0 ? std::sqrt(j / rho) : quiet_nan;
}

double RotorParticipationAPI::c_omega_equals_v_swirl(double v_swirl) { return v_swirl; }

RotorParticipationResult RotorParticipationAPI::evaluate(double r_c, double rho_horn, double rho_ref, double v_swirl) {
  RotorParticipationResult result;
  result.j_omega_rot = j_omega_rot(r_c, rho_horn);
  result.phi_dyn_ref = phi_dyn_ref(rho_ref, rho_horn);
  result.ell_rho_eq_ref = ell_rho_eq_ref(result.j_omega_rot, rho_ref);
  result.c_omega = c_omega_equals_v_swirl(v_swirl);
  return result;
}

WaveModeClass RotorParticipationAPI::classify_wave_mode(bool linear, bool quadratic) {
  if (linear == quadratic) return WaveModeClass::Unknown;
  return linear ? WaveModeClass::LinearTwist : WaveModeClass::QuadraticKelvinBend;
}

}  // namespace vkm
