#pragma once

/// Where a number came from: written down once, recomputed, or put in as a calibration. SI units.

#include <cstdint>
#include <string>
#include <string_view>

namespace vkm {

enum class ValueOrigin : std::int32_t { CanonicalSnapshot = 0, Recomputed = 1, CalibratedInput = 2 };

struct CanonicalValue {
  std::string name;
  double value = 0.0;
  ValueOrigin origin = ValueOrigin::CanonicalSnapshot;
  std::int32_t significant_figures = -1;  ///< -1: not stated
};

/// A value as it was written down, beside what its formula gives.
struct SnapshotCompareResult {
  double snapshot = 0.0;
  double recomputed = 0.0;
  double residual = 0.0;            ///< |recomputed - snapshot|
  bool snapshot_unchanged = false;  ///< a tripwire for edits of the literal, no numerical test
};

struct ValueOriginAPI {
  /// "CanonicalSnapshot" for values outside the enumeration.
  static std::string_view origin_name(ValueOrigin origin);

  /// The maximal swirl force as it was written down, N.
  static double fmax_snapshot();
  /// The same from the canonical constants: hbar omega_c / (2 r_c), N.
  static double fmax_recompute_from_primitives();
  /// 16 pi^2 hbar R_infty^2 c / alpha^5, N; NaN unless all are positive.
  static double fmax_rydberg_16pi2(double hbar, double R_infty, double c, double alpha);
  /// Twice that.
  static double fmax_rydberg_32pi2(double hbar, double R_infty, double c, double alpha);
  static SnapshotCompareResult compare_fmax_snapshot_to_recomputed();

  /// L_tot / 4; NaN if it is not finite.
  static double bare_mass_ratio_from_dimensionless_length(double L_tot);
  /// L_tot m_e / 4; NaN unless m_e is positive and L_tot finite.
  static double bare_mass_from_dimensionless_length(double L_tot, double m_e);

  /// Rounded to two significant figures; NaN unless positive and finite.
  static double rho_f_two_sigfig(double rho_f);
  /// Whether the rounding changes nothing. The tolerance has a floor of 1e-30, absolute, which decides for all small
  /// densities.
  static bool rho_f_is_two_sigfig_calibration(double rho_f);

  /// Whether a rescale of the density leaves the four calibrated primitives alone, each within rel_tol times the larger
  /// of its two values, or of 1.
  static bool rho_eff_rescale_preserves_calibrated_primitives(double v_swirl_before, double omega_c_before,
                                                              double r_c_before, double gamma_0_before,
                                                              double v_swirl_after, double omega_c_after,
                                                              double r_c_after, double gamma_0_after,
                                                              double rel_tol = 0.0);

  /// A policy and no test, always true: a line inertia is no derivation of the fluid density.
  static bool reject_qdm_line_inertia_as_rho_f_derivation(double proposed_kg_per_m, double proposed_rho_f_kg_per_m3);

  static CanonicalValue make_canonical_value(std::string name, double value, ValueOrigin origin,
                                             std::int32_t significant_figures = -1);
};

}  // namespace vkm
