#include "evidence/value_origin.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/elementary.hpp"
#include "evidence/quiet_nan.hpp"
#include "mass/canonical_constants.hpp"
#include "mass/stored_constants.hpp"

namespace vkm {

namespace {

constexpr double sixteen_pi_squared = 157.91367041742973;  // 16 pi^2

/// The literal that is published. The comparison below has its own copy.
constexpr double stored_fmax_snapshot = stored::maximal_force;

bool is_positive_and_finite(double x) { return x > 0.0 && std::isfinite(x); }

}  // namespace

std::string_view ValueOriginAPI::origin_name(ValueOrigin origin) {
  switch (origin) {
    case ValueOrigin::CanonicalSnapshot:
      return "CanonicalSnapshot";
    case ValueOrigin::Recomputed:
      return "Recomputed";
    case ValueOrigin::CalibratedInput:
      return "CalibratedInput";
  }
  return "CanonicalSnapshot";
}

double ValueOriginAPI::fmax_snapshot() { return stored_fmax_snapshot; }

double ValueOriginAPI::fmax_recompute_from_primitives() {
  return VKMCanonicalConstants::values(canonical::default_rho_f, canonical::default_v_swirl).F_swirl_max;
}

double ValueOriginAPI::fmax_rydberg_16pi2(double hbar, double R_infty, double c, double alpha) {
  if (!(hbar > 0.0) || !(R_infty > 0.0) || !(c > 0.0) || !(alpha > 0.0)) return quiet_nan;
  return (hbar * sixteen_pi_squared * R_infty * R_infty * c) / (alpha * alpha * alpha * alpha * alpha);
}

double ValueOriginAPI::fmax_rydberg_32pi2(double hbar, double R_infty, double c, double alpha) {
  return 2.0 * fmax_rydberg_16pi2(hbar, R_infty, c, alpha);
}

SnapshotCompareResult ValueOriginAPI::compare_fmax_snapshot_to_recomputed() {
  SnapshotCompareResult result;
  result.snapshot = fmax_snapshot();
  result.recomputed = fmax_recompute_from_primitives();
  result.residual = std::fabs(result.recomputed - result.snapshot);
  result.snapshot_unchanged = result.snapshot == stored_fmax_snapshot;
  return result;
}

double ValueOriginAPI::bare_mass_ratio_from_dimensionless_length(double L_tot) {
  return std::isfinite(L_tot) ? L_tot * 0.25 : quiet_nan;
}

double ValueOriginAPI::bare_mass_from_dimensionless_length(double L_tot, double m_e) {
  return m_e > 0.0 && std::isfinite(L_tot) ? L_tot * 0.25 * m_e : quiet_nan;
}

double ValueOriginAPI::rho_f_two_sigfig(double rho_f) {
  if (!is_positive_and_finite(rho_f)) return quiet_nan;
  const double p = vkm::pow(10.0, std::floor(vkm::log10(rho_f)) - 1.0);
  return std::round(rho_f / p) * p;
}

bool ValueOriginAPI::rho_f_is_two_sigfig_calibration(double rho_f) {
  if (!is_positive_and_finite(rho_f)) return false;
  return std::fabs(rho_f_two_sigfig(rho_f) - rho_f) <= std::max(std::fabs(rho_f), 1.0) * 1e-30;
}

bool ValueOriginAPI::rho_eff_rescale_preserves_calibrated_primitives(double v_swirl_before, double omega_c_before,
                                                                     double r_c_before, double gamma_0_before,
                                                                     double v_swirl_after, double omega_c_after,
                                                                     double r_c_after, double gamma_0_after,
                                                                     double rel_tol) {
  const auto kept = [rel_tol](double a, double b) {
    return std::fabs(a - b) <= std::max({std::fabs(a), std::fabs(b), 1.0}) * rel_tol;
  };
  return kept(v_swirl_before, v_swirl_after) && kept(omega_c_before, omega_c_after) && kept(r_c_before, r_c_after) &&
         kept(gamma_0_before, gamma_0_after);
}

bool ValueOriginAPI::reject_qdm_line_inertia_as_rho_f_derivation(double, double) { return true; }

CanonicalValue ValueOriginAPI::make_canonical_value(std::string name, double value, ValueOrigin origin,
                                                    std::int32_t significant_figures) {
  return {std::move(name), value, origin, significant_figures};
}

}  // namespace vkm
