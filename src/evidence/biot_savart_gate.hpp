#pragma once

/// Gate on the limit of a regularised Biot-Savart observable: it must agree with its limit, away from the boundary.

#include <cstdint>
#include <string>

#include "evidence/certificate_status.hpp"

namespace vkm {

struct BiotSavartGateResult {
  CertificateStatus status = CertificateStatus::NotEvaluated;
  double observable = 0.0;         ///< as given
  double estimated_limit = 0.0;    ///< as given, or 1 / (4 pi)
  double relative_residual = 0.0;  ///< deviation of the observable from the limit
  double boundary_margin = 0.0;    ///< as given
  std::uint64_t sample_count = 0;  ///< as given
  std::string regularization_id;   ///< as given
};

struct BiotSavartGateAPI {
  /// With `use_four_pi_identity` the limit is 1 / (4 pi), whatever is given. Fail for a margin below its minimum or a
  /// residual above its tolerance; Indeterminate without samples or an id, for negative tolerances and for numbers
  /// that are not finite.
  static BiotSavartGateResult evaluate(double observable, double estimated_limit, double boundary_margin,
                                       double min_boundary_margin, std::uint64_t sample_count,
                                       std::string regularization_id, double residual_tol = 0.001,
                                       bool use_four_pi_identity = true);
};

}  // namespace vkm
