#pragma once

/// Linear equations by Gauss-Jordan elimination with partial pivoting and a ridge on the diagonal.
///
/// One order of operations holds: column by column, every other row a(i, .) -= a(i, q) pivot row. The columns are taken
/// in panels, and what a panel does to the columns behind it is applied in one pass over them, each element's
/// subtractions still in order of the pivots; so the bits are those of the plain loop at a fraction of its traffic.

#include <cstddef>
#include <span>
#include <vector>

namespace vkm {

/// k equations, row by row, each row's right-hand side behind its k coefficients. Reused, it allocates only to grow.
class LinearSystem {
 public:
  /// Makes room for k equations; their cells hold anything.
  void reset(std::size_t k);

  std::size_t size() const { return k_; }
  double& at(std::size_t i, std::size_t j) { return cells_[i * stride_ + j]; }
  double& rhs(std::size_t i) { return cells_[i * stride_ + k_]; }

  /// Adds max(ridge, 0) to the diagonal and eliminates; destroys the equations. Ties between pivots go to the upper
  /// row. False, and zeros, if a pivot is at most 1e-18 in magnitude. `solution` has k elements.
  bool solve(double ridge, std::span<double> solution);

 private:
  std::size_t k_ = 0;
  std::size_t stride_ = 0;
  std::vector<double> cells_;
  std::vector<double> pending_;  ///< by row: factors of the panel's pivot rows
};

}  // namespace vkm
