#pragma once

/// Golden masses of the Master Dictionary: the mass of a knot from its bridge number b and genus g alone,
///   m = b m_0 phi^(-2 g),  m_0 = 1.0290437436843307e-54 kg,
/// in MeV through c^2 and 1.602176634e-13 J per MeV. No geometry is touched.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vkm {

struct ZooResult {
  std::string identifier;
  double mass_mev = 0.0;  // MeV
  double bridge_b = 0.0;
  std::int32_t genus_g = 0;
};

class ZooEvaluator {
 public:
  ZooEvaluator() = delete;

  /// All entries, in the order of their identifiers' bytes.
  static std::vector<ZooResult> evaluate_all_golden_nls();
  /// Mass in MeV; -1 for an identifier that the dictionary does not hold.
  static double get_entry_mass(std::string_view identifier);
};

}  // namespace vkm
