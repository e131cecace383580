#pragma once

/// What a rescale of the density may change: symbols by the set of primitives that they belong to, observables by how
/// they scale.

#include <cstdint>
#include <string_view>

namespace vkm {

/// Calibrated, open and reference primitives.
enum class PrimitiveSet : std::int32_t { PCal = 0, POpen = 1, PRef = 2 };

/// A invariant, B normalisations, C absolute values, Q quanta, X unclassified.
enum class ScalingClass : std::int32_t { A = 0, B = 1, C = 2, Q = 3, X = 4 };

struct PrimitiveSetMembership {
  bool in_p_cal = false;
  bool in_p_open = false;
  bool in_p_ref = false;
  bool legacy_reference = false;  ///< kept for old inputs only
};

struct ScalingAuditAPI {
  /// "?" for values outside the enumeration.
  static std::string_view scaling_class_name(ScalingClass scaling);
  static std::string_view primitive_set_name(PrimitiveSet set);

  /// Case-sensitive; no field is set for an unknown symbol.
  static PrimitiveSetMembership classify_symbol(std::string_view symbol);

  /// The reference density of old inputs, kg/m^3.
  static double rho_ref_legacy();
  /// That very number, not one near it.
  static bool is_legacy_reference_density(double rho);

  /// Case-sensitive; X for an unknown observable.
  static ScalingClass classify_observable(std::string_view observable);

  /// Policies and no tests, always true.
  static bool class_a_invariant_under_rescale();
  static bool class_x_blocks_inference();
};

}  // namespace vkm
