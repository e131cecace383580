#pragma once

/// Non-negative least squares: multipliers x >= 0 that minimise |A x - b| for a rigidity matrix A, by the normal
/// equations: coordinate descent, and the active-set method of C. L. Lawson and R. J. Hanson, Solving Least Squares
/// Problems (1974), chapter 23, with a ridge in its inner solve.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "core/poll.hpp"
#include "tube/rigidity_matrix.hpp"

namespace vkm {

struct NNLSOptions {
  std::uint64_t max_iterations = 5000;  ///< sweeps or outer iterations; 0 counts as 1
  double tolerance = 1e-10;             ///< the default in place of one that is not positive
  double ridge = 1e-12;                 ///< of the active set: added to the diagonal of each subproblem
};

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

NNLSResult solve_by_coordinate_descent(const RigidityMatrix& matrix, std::span<const double> target,
                                       const NNLSOptions& options = {}, const Poll& poll = {});
NNLSResult solve_by_coordinate_descent(const SparseRigidityMatrix& matrix, std::span<const double> target,
                                       const NNLSOptions& options = {}, const Poll& poll = {});

NNLSResult solve_by_active_set(const RigidityMatrix& matrix, std::span<const double> target,
                               const NNLSOptions& options = {}, const Poll& poll = {});
NNLSResult solve_by_active_set(const SparseRigidityMatrix& matrix, std::span<const double> target,
                               const NNLSOptions& options = {}, const Poll& poll = {});

}  // namespace vkm
