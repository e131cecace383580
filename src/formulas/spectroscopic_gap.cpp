#include "formulas/spectroscopic_gap.hpp"

#include <cmath>

#include "core/elementary.hpp"
#include "formulas/guards.hpp"

namespace vkm {

double SpectroscopicGap::kelvin_gap_joule(double hbar, double v_swirl, double r_c, double multiplier) {
  reject_if(0.0 >= hbar || 0.0 >= v_swirl || 0.0 >= r_c || 0.0 >= multiplier, "invalid positive scale.");
  return hbar * multiplier * v_swirl / r_c;
}

double SpectroscopicGap::kelvin_gap_ev(double hbar, double v_swirl, double r_c, double multiplier) {
  return joule_to_ev(kelvin_gap_joule(hbar, v_swirl, r_c, multiplier));
}

double SpectroscopicGap::joule_to_ev(double E_joule) { return E_joule / joule_per_ev; }

double SpectroscopicGap::ev_to_joule(double E_ev) { return E_ev * joule_per_ev; }

double SpectroscopicGap::boltzmann_suppression(double gap_joule, double temperature_K, double k_B) {
  reject_if(0.0 >= temperature_K || 0.0 >= k_B, "temperature_K and k_B must be positive.");
  return vkm::exp(-gap_joule / (temperature_K * k_B));
}

bool SpectroscopicGap::is_decoupled_from_atomic_transition(double transition_ev, double gap_ev, double safety_factor) {
  reject_if(0.0 > transition_ev || 0.0 > gap_ev || 0.0 >= safety_factor, "invalid arguments.");
  return gap_ev >= transition_ev * safety_factor;
}

double SpectroscopicGap::gap_ratio(double transition_ev, double gap_ev) {
  reject_if(transition_ev == 0.0, "transition_ev must be nonzero.");
  return gap_ev / transition_ev;
}

}  // namespace vkm
