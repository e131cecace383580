#pragma once

/// The energy gap of Kelvin waves on a core, hbar v_swirl / r_c, beside atomic transitions and temperatures.
///
/// Energies in joule or electronvolt as the names say; hbar in J s, v_swirl in m/s, r_c in m, temperatures in K.

#include "mass/canonical_constants.hpp"

namespace vkm {

struct SpectroscopicGap {
  static constexpr double joule_per_ev = canonical::e_charge;  // exact in the SI
  static constexpr double boltzmann = 1.380649e-23;            // J/K, exact in the SI

  static double kelvin_gap_joule(double hbar, double v_swirl, double r_c, double multiplier = 1.0);
  static double kelvin_gap_ev(double hbar, double v_swirl, double r_c, double multiplier = 1.0);
  static double joule_to_ev(double E_joule);
  static double ev_to_joule(double E_ev);
  static double boltzmann_suppression(double gap_joule, double temperature_K, double k_B = boltzmann);
  static bool is_decoupled_from_atomic_transition(double transition_ev, double gap_ev, double safety_factor = 10.0);
  static double gap_ratio(double transition_ev, double gap_ev);
};

}  // namespace vkm
