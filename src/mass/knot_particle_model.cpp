#include "mass/knot_particle_model.hpp"

#include <algorithm>
#include <cmath>

#include "core/elementary.hpp"
#include "core/numbers.hpp"
#include "mass/canonical_constants.hpp"
#include "mass/stored_constants.hpp"

namespace vkm {

namespace {

using stored::core_radius;

const char* note_of(SectorGate gate) {
  switch (gate) {
    case SectorGate::Exposed:
      return "exposed-sector estimate";
    case SectorGate::Shielded:
      return "shielded-sector estimate";
    case SectorGate::Unknown:
      break;
  }
  return "unknown-sector estimate (insufficient geometric separation)";
}

}  // namespace

double KnotParticleModel::compute_xi(const KnotInvariants& K) const {
  const KnotParticleModelParams& p = params_;
  const double s = std::max(K.min_self_distance, 1e-9);
  const double topology =
      (p.a_b * K.braid_index + p.a_k * K.crossing_number) + p.a_g * K.seifert_genus + p.a_vol * K.hyperbolic_volume;
  const double xi = vkm::exp(p.a_L * K.ropelength_like + topology + p.a_wr * K.writhe + p.a_sep / s);
  return std::clamp(xi, 1e-12, 1e12);
}

SectorGate KnotParticleModel::assign_gate(const KnotInvariants& K) const {
  if (!(K.min_self_distance > 0.0)) return SectorGate::Unknown;
  const bool tight = K.min_self_distance < 0.2;
  const bool bent = K.bending_energy > 20.0;
  return tight || bent || K.crossing_number >= 8 ? SectorGate::Exposed : SectorGate::Shielded;
}

KnotPrediction KnotParticleModel::predict(const KnotInvariants& K) const {
  const double lambda_c = VKMCanonicalConstants::full_compton_wavelength(canonical::hbar, canonical::m_e, canonical::c);
  KnotPrediction prediction;
  prediction.gate = assign_gate(K);
  prediction.gate_factor = prediction.gate == SectorGate::Exposed ? lambda_c / (pi * core_radius) : 1.0;
  prediction.xi = compute_xi(K);
  prediction.mass_ratio = prediction.gate_factor * prediction.xi;
  prediction.mass_kg = prediction.mass_ratio * canonical::m_e;
  prediction.note = note_of(prediction.gate);
  return prediction;
}

}  // namespace vkm
