#pragma once

/// The particles of the Standard Model and the commonest hadrons, with rounded masses as texts: reference data that
/// no formula reads.

#include <array>

namespace vkm {

struct ParticleRecord {
  const char* category;
  const char* generation;  // I, II, III, or - where there is none
  const char* symbol;
  const char* name;
  const char* mass;    // with its unit; 0 for massless
  const char* charge;  // in elementary charges; pm1 is both signs
  double spin;         // in hbar
};

extern const std::array<ParticleRecord, 20> standard_model;

}  // namespace vkm
