#include "evidence/ideal_knot_regime.hpp"

#include "core/finite.hpp"
#include "evidence/quiet_nan.hpp"

namespace vkm {

double IdealKnotRegimeAPI::epsilon_kappa(double a_core, double kappa_max) {
  return a_core > 0.0 && kappa_max >= 0.0 ? a_core * kappa_max : quiet_nan;
}

double IdealKnotRegimeAPI::epsilon_sep(double a_core, double d_sep) {
  return a_core > 0.0 && d_sep > 0.0 ? a_core / d_sep : quiet_nan;
}

KnotRegime IdealKnotRegimeAPI::classify_regime(double eps_kappa, double eps_sep, double order_one) {
  if (!all_finite({eps_kappa, eps_sep})) return KnotRegime::Indeterminate;
  if (eps_kappa >= order_one || eps_sep >= order_one) return KnotRegime::Compact;
  if (eps_kappa < order_one && eps_sep < order_one) return KnotRegime::Slender;
  return KnotRegime::Indeterminate;  // order_one is NaN
}

double IdealKnotRegimeAPI::moffatt_ricca_helicity(double gamma, double writhe, double twist) {
  return all_finite({gamma, writhe, twist}) ? gamma * gamma * (writhe + twist) : quiet_nan;
}

IdealKnotRegimeResult IdealKnotRegimeAPI::evaluate(double a_core, double kappa_max, double d_sep, double gamma,
                                                   double writhe, double twist, double kkt_residual) {
  IdealKnotRegimeResult result;
  result.epsilon_kappa = epsilon_kappa(a_core, kappa_max);
  result.epsilon_sep = epsilon_sep(a_core, d_sep);
  result.regime = classify_regime(result.epsilon_kappa, result.epsilon_sep, 0.3);
  result.helicity_moffatt_ricca = moffatt_ricca_helicity(gamma, writhe, twist);
  result.kkt_residual = kkt_residual;
  result.lia_kam_excluded = result.regime == KnotRegime::Compact;
  result.message = result.lia_kam_excluded ? "compact ideal state: LIA/KAM excluded" : "regime diagnostic complete";
  return result;
}

std::string_view IdealKnotRegimeAPI::regime_name(KnotRegime regime) {
  switch (regime) {
    case KnotRegime::Compact:
      return "compact";
    case KnotRegime::Slender:
      return "slender";
    case KnotRegime::Indeterminate:
      break;
  }
  return "indeterminate";
}

}  // namespace vkm
