#include "evidence/link_field_gate.hpp"

#include <cmath>

namespace vkm {

namespace {

LinkGateFailure first_failure(double rho_star, double Gamma_star, double r_star, double phase_residual, double tol) {
  if (!(rho_star > 0.0)) return LinkGateFailure::E;
  if (!(Gamma_star > 0.0)) return LinkGateFailure::T;
  if (!(r_star > 0.0)) return LinkGateFailure::N;
  const bool matches = std::isfinite(phase_residual) && tol >= 0.0 && std::fabs(phase_residual) <= tol;
  return matches ? LinkGateFailure::None : LinkGateFailure::M;
}

}  // namespace

std::string_view LinkFieldGateAPI::failure_name(LinkGateFailure failure) {
  switch (failure) {
    case LinkGateFailure::None:
      return "None";
    case LinkGateFailure::E:
      return "E";
    case LinkGateFailure::T:
      return "T";
    case LinkGateFailure::N:
      return "N";
    case LinkGateFailure::M:
      return "M";
  }
  return "None";
}

LinkFieldGateResult LinkFieldGateAPI::evaluate(double rho_star, double Gamma_star, double r_star, double phase_residual,
                                               double tol) {
  LinkFieldGateResult result;
  result.rho_star = rho_star;
  result.Gamma_star = Gamma_star;
  result.r_star = r_star;
  result.phase_residual = phase_residual;
  result.failure = first_failure(rho_star, Gamma_star, r_star, phase_residual, tol);
  result.passed = result.failure == LinkGateFailure::None;
  return result;
}

}  // namespace vkm
