#include "evidence/biot_savart_gate.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/finite.hpp"
#include "core/numbers.hpp"

namespace vkm {

BiotSavartGateResult BiotSavartGateAPI::evaluate(double observable, double estimated_limit, double boundary_margin,
                                                 double min_boundary_margin, std::uint64_t sample_count,
                                                 std::string regularization_id, double residual_tol,
                                                 bool use_four_pi_identity) {
  BiotSavartGateResult result;
  result.observable = observable;
  result.estimated_limit = estimated_limit;
  result.boundary_margin = boundary_margin;
  result.sample_count = sample_count;
  result.regularization_id = std::move(regularization_id);
  result.status = CertificateStatus::Indeterminate;
  if (result.regularization_id.empty() || sample_count == 0 || residual_tol < 0.0 || min_boundary_margin < 0.0 ||
      !all_finite({observable, boundary_margin})) {
    return result;
  }
  if (use_four_pi_identity) {
    result.estimated_limit = inv_four_pi;
    result.relative_residual = std::fabs(observable * four_pi - 1.0);
  } else {
    if (!std::isfinite(estimated_limit)) return result;
    result.relative_residual = std::fabs(observable - estimated_limit) / std::max(std::fabs(estimated_limit), 1e-30);
  }
  const bool holds = !(boundary_margin < min_boundary_margin) && residual_tol >= result.relative_residual;
  result.status = holds ? CertificateStatus::Pass : CertificateStatus::Fail;
  return result;
}

}  // namespace vkm
