#pragma once

/// A second estimate of a knot's mass, complete in itself: sector from the geometry, Xi from all invariants, and the
/// mass in units of the electron's. Its constants are fixed.

#include <string>

#include "mass/knot_invariants.hpp"
#include "mass/xi_model.hpp"

namespace vkm {

struct KnotParticleModelParams {
  double a_k = 0.0;    // weight of the crossing number
  double a_b = 0.0;    // of the braid index
  double a_g = 0.0;    // of the genus
  double a_vol = 0.0;  // of hyperbolic_volume
  double a_L = 0.0;    // of ropelength_like
  double a_wr = 0.0;   // of the writhe
  double a_sep = 0.0;  // of 1 / self-distance, length
};

struct KnotPrediction {
  SectorGate gate = SectorGate::Unknown;
  double gate_factor = 1.0;
  double xi = 1.0;
  double mass_ratio = 1.0;  // to the electron's mass
  double mass_kg = 0.0;     // kg
  std::string note;         // what the estimate rests on
};

class KnotParticleModel {
 public:
  explicit KnotParticleModel(const KnotParticleModelParams& params = {}) : params_(params) {}

  /// exp of the weighted sum, within 1e-12 .. 1e12. Takes the plain volume and ropelength, not the effective ones.
  double compute_xi(const KnotInvariants& K) const;
  /// Unknown without a self-distance; exposed for a tight, strongly bent or complex (eight crossings) knot.
  SectorGate assign_gate(const KnotInvariants& K) const;
  KnotPrediction predict(const KnotInvariants& K) const;

 private:
  KnotParticleModelParams params_;
};

}  // namespace vkm
