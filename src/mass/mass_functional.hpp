#pragma once

/// From invariants to a mass: M = rho_m r_c^3 gate Xi / S^2, with the gate of the knot's sector, the Xi of a model and
/// the clock factor S = sqrt(1 - v_swirl^2 / c^2). An older form, M = m_e gate Xi, stands beside it and stays: there Xi
/// means the mass ratio itself.

#include <string>

#include "core/numbers.hpp"
#include "mass/canonical_constants.hpp"
#include "mass/stored_constants.hpp"
#include "mass/xi_model.hpp"

namespace vkm {

/// The constants of the knot models, SI units. They are their own record: other defaults than those of
/// VKMCanonicalValues, and not derived from each other. A changed rho_f or v_swirl leaves rho_m as it is.
struct CanonicalConstants {
  double r_c = stored::core_radius;                                       // core radius, m
  double lambda_c = pi * 2.0 * canonical::hbar / 2.7309245307378233e-22;  // 2 pi hbar / (m_e c), m
  double m_e = canonical::m_e;                                            // electron mass, kg
  double rho_f = canonical::default_rho_f;                                // fluid density, kg/m^3
  double v_swirl = canonical::default_v_swirl;                            // swirl speed, m/s
  double c = canonical::c;                                                // speed of light, m/s
  double rho_m = 4.65949350504008e-12;                                    // mass-equivalent density, kg/m^3
  double rho_horn = VKMCanonicalConstants::core_density_closure(m_e, c, v_swirl, r_c);  // horn density, kg/m^3
};

/// What a mass evaluation yields.
struct KnotDerived {
  SectorGate gate = SectorGate::Unknown;
  double gate_factor = 1.0;
  double xi = 1.0;
  double mass_ratio = 1.0;  // to the electron's mass
  double mass_kg = 0.0;     // kg
  bool valid = false;
  std::string note;  // the formula used
};

class MassFunctional {
 public:
  /// std::invalid_argument unless r_c, lambda_c, m_e, rho_m and c are positive.
  explicit MassFunctional(const CanonicalConstants& constants = {});

  /// Baseline mass of a tube of ropelength L_tot, kg.
  double baseline_mass_from_ropelength(double L_tot) const;
  /// The same with the horn density; guards of VKMMasterEquation::geometric_horn_baseline_mass.
  double baseline_mass_from_horn_ropelength(double L_tot) const;
  /// rho_m r_c^3, kg
  double bare_master_mass_scale() const;
  /// lambda_c / (pi r_c) for an exposed sector, 1 for the others.
  double gate_factor(SectorGate G) const;

  /// The canonical form. The mass is infinite at v_swirl >= c.
  KnotDerived evaluate(const KnotInvariants& K, const XiModel& model) const;
  /// The older form.
  KnotDerived evaluate_electron_normalized(const KnotInvariants& K, const XiModel& model) const;

 private:
  CanonicalConstants constants_;
};

}  // namespace vkm
