#pragma once

/// What a non-negative least squares fit of A x to b finds.

#include <cstdint>
#include <string>
#include <vector>

namespace vkm {

struct NNLSResult {
  std::vector<double> multipliers;  ///< x, one per column
  double residual_norm = 0.0;       ///< |A x - b|
  double relative_residual = 0.0;   ///< residual_norm / max(|b|, 1e-14)
  double objective = 0.0;           ///< residual_norm^2 / 2
  std::uint64_t iterations = 0;     ///< sweeps or outer iterations used
  bool converged = false;
  std::string algorithm;              ///< "coordinate_descent", "coordinate_descent_sparse" or "active_set"
  std::uint64_t active_set_size = 0;  ///< multipliers above the tolerance
};

}  // namespace vkm
