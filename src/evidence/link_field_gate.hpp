#pragma once

/// Admissibility of the parameters of a link field, in four steps of fixed order.

#include <cstdint>
#include <string>
#include <string_view>

#include "evidence/check_kind.hpp"

namespace vkm {

/// The first step that fails.
enum class LinkGateFailure : std::int32_t { None = 0, E = 1, T = 2, N = 3, M = 4 };

struct LinkFieldGateResult {
  bool passed = false;
  LinkGateFailure failure = LinkGateFailure::None;
  double rho_star = 0.0;        ///< density as given, kg/m^3
  double Gamma_star = 0.0;      ///< circulation as given, m^2/s
  double r_star = 0.0;          ///< length as given, m
  double phase_residual = 0.0;  ///< as given, rad
  std::string epistemic_status{check_kind_export_string(CheckKind::OpenResearchGate)};
};

struct LinkFieldGateAPI {
  /// "None" for values outside the enumeration.
  static std::string_view failure_name(LinkGateFailure failure);

  /// E, T, N: rho_star, Gamma_star, r_star not positive (NaN is not). M: |phase_residual| above tol.
  static LinkFieldGateResult evaluate(double rho_star, double Gamma_star, double r_star, double phase_residual,
                                      double tol = 1e-6);
};

}  // namespace vkm
