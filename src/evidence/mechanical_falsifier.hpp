#pragma once

/// A blind mechanical test: the difference of two pressures, scaled by a length and the square of a strength that were
/// fixed beforehand. Units are the caller's.

#include <cstdint>
#include <string>

namespace vkm {

struct MechanicalFalsifierResult {
  double delta_p_omega = 0.0;  ///< difference of the pressures
  double C_blind = 0.0;        ///< delta_p_omega / (L K^2)
  bool scaling_ok = false;     ///< C_blind is finite
  std::string message;
};

struct MechanicalFalsifierAPI {
  /// NaN unless both are finite.
  static double delta_p_omega(double p_a, double p_b);
  /// NaN unless L and K are positive and delta is finite.
  static double C_blind(double delta, double L, double K);
  /// True for the exponents (1, 2, 0) alone.
  static bool blind_scaling_gate(std::int32_t first, std::int32_t second, std::int32_t third);
  static MechanicalFalsifierResult evaluate(double p_a, double p_b, double L, double K);
};

}  // namespace vkm
