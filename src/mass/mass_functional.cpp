#include "mass/mass_functional.hpp"

#include <stdexcept>

#include "mass/master_equation.hpp"

namespace vkm {

MassFunctional::MassFunctional(const CanonicalConstants& constants) : constants_(constants) {
  const CanonicalConstants& k = constants_;
  if (0.0 >= k.r_c || 0.0 >= k.lambda_c || 0.0 >= k.m_e || 0.0 >= k.rho_m || 0.0 >= k.c) {
    throw std::invalid_argument("Canonical constants must be positive.");
  }
}

double MassFunctional::baseline_mass_from_ropelength(double L_tot) const {
  return VKMMasterEquation::geometric_baseline_mass(constants_.rho_m, constants_.r_c, constants_.lambda_c, L_tot);
}

double MassFunctional::baseline_mass_from_horn_ropelength(double L_tot) const {
  return VKMMasterEquation::geometric_horn_baseline_mass(constants_.rho_horn, constants_.r_c, constants_.lambda_c,
                                                         L_tot);
}

double MassFunctional::bare_master_mass_scale() const {
  return constants_.r_c * constants_.rho_m * constants_.r_c * constants_.r_c;
}

double MassFunctional::gate_factor(SectorGate G) const {
  return G == SectorGate::Exposed ? constants_.lambda_c / (constants_.r_c * pi) : 1.0;
}

KnotDerived MassFunctional::evaluate(const KnotInvariants& K, const XiModel& model) const {
  KnotDerived D;
  D.gate = model.assign_gate(K);
  D.xi = model.compute_xi(K);
  D.gate_factor = gate_factor(D.gate);
  const double S = VKMCanonicalConstants::swirl_clock(constants_.v_swirl, constants_.c);
  D.mass_kg = (bare_master_mass_scale() * D.gate_factor * D.xi) * (1.0 / (S * S));
  D.mass_ratio = D.mass_kg / constants_.m_e;
  D.valid = true;
  D.note = "Canon v0.8.1 mass computed from rho_m*r_c^3 * gate * Xi * S_t^-2.";
  return D;
}

KnotDerived MassFunctional::evaluate_electron_normalized(const KnotInvariants& K, const XiModel& model) const {
  KnotDerived D;
  D.gate = model.assign_gate(K);
  D.xi = model.compute_xi(K);
  D.gate_factor = gate_factor(D.gate);
  D.mass_ratio = D.xi * D.gate_factor;
  D.mass_kg = D.mass_ratio * constants_.m_e;
  D.valid = true;
  D.note = "Legacy electron-normalized shortcut: M/m_e = gate * Xi.";
  return D;
}

}  // namespace vkm
