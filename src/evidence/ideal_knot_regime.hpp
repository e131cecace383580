#pragma once

/// Whether a knot's tube is compact or slender. Thin-filament approximations (local induction, KAM) do not hold for a
/// compact one.
///
/// a_core core radius, kappa_max largest curvature, d_sep least separation of strands, gamma circulation, writhe and
/// twist as in the helicity H = gamma^2 (Wr + Tw) of a closed tube (Moffatt & Ricca 1992). Any consistent units.

#include <cstdint>
#include <string>
#include <string_view>

namespace vkm {

enum class KnotRegime : std::int32_t { Compact = 0, Slender = 1, Indeterminate = 2 };

struct IdealKnotRegimeResult {
  double epsilon_kappa = 0.0;  ///< a_core kappa_max
  double epsilon_sep = 0.0;    ///< a_core / d_sep
  KnotRegime regime = KnotRegime::Indeterminate;
  double helicity_moffatt_ricca = 0.0;
  double kkt_residual = 0.0;      ///< as given
  bool lia_kam_excluded = false;  ///< the regime is compact
  std::string message;
};

struct IdealKnotRegimeAPI {
  /// NaN unless a_core is positive and kappa_max at least 0.
  static double epsilon_kappa(double a_core, double kappa_max);
  /// NaN unless both are positive.
  static double epsilon_sep(double a_core, double d_sep);
  /// Compact if either number reaches order_one; Indeterminate if either is not finite.
  static KnotRegime classify_regime(double eps_kappa, double eps_sep, double order_one = 0.3);
  /// gamma^2 (writhe + twist); NaN unless all are finite.
  static double moffatt_ricca_helicity(double gamma, double writhe, double twist);
  /// Classifies with the bound 0.3.
  static IdealKnotRegimeResult evaluate(double a_core, double kappa_max, double d_sep, double gamma, double writhe,
                                        double twist, double kkt_residual = 0.0);
  /// "indeterminate" for values outside the enumeration.
  static std::string_view regime_name(KnotRegime regime);
};

}  // namespace vkm
