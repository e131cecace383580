#pragma once

/// Transition energies and line shifts, with a guard against counting a response twice: once here and once in xi_K.
///
/// delta_E transition energy (J), h Planck constant (J s), nu frequency (Hz).

#include <span>
#include <string>

namespace vkm {

struct SpectroResponseResult {
  double delta_E = 0.0;                 ///< J
  double nu = 0.0;                      ///< delta_E / h, Hz
  double delta_nu = 0.0;                ///< linear response, Hz
  bool double_count_with_xi_k = false;  ///< as claimed
  bool passed = false;
  std::string message;
};

struct SpectroResponseAPI {
  /// NaN unless both are finite.
  static double configuration_transition_energy(double E_a, double E_b);
  /// NaN unless h is positive and delta_E finite.
  static double transition_frequency(double delta_E, double h);
  /// (dE/dq . dq) / h; NaN unless h is positive and the lists are of one length. No terms give 0.
  static double linear_response_delta_nu(double h, std::span<const double> dE_dq, std::span<const double> dq);
  static bool rejects_double_count_with_xi_k(bool claimed);
  static SpectroResponseResult evaluate(double E_a, double E_b, double h, std::span<const double> dE_dq,
                                        std::span<const double> dq, bool claimed);
};

}  // namespace vkm
