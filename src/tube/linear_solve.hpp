#pragma once

/// Linear equations by Gauss-Jordan elimination with partial pivoting and a ridge on the diagonal.
///
/// One order of operations holds: column by column, every other row a(i, .) -= a(i, q) pivot row. The columns are taken
/// in panels of eight, and what a panel does to the columns behind it is applied in one pass over them, each element's
/// subtractions still in order of the pivots; so the bits are those of the plain loop at a fraction of its traffic.
/// Products with a zero factor or a zero of a pivot row may be skipped or not: they change no more than the sign of a
/// zero.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vkm {

/// k equations, row by row, each row's right-hand side behind its k coefficients. Reused, it allocates only to grow.
class LinearSystem {
 public:
  static constexpr std::size_t width = 8;
  struct alignas(64) Lanes {
    double at[width];
  };

  /// Makes room for k equations; their cells hold anything.
  void reset(std::size_t k);

  std::size_t size() const { return k_; }
  /// The k coefficients of equation i, and its right-hand side at k.
  double* row(std::size_t i) { return cells_[i * lanes_].at; }

  /// Adds max(ridge, 0) to the diagonal and eliminates; destroys the equations. Ties between pivots go to the upper
  /// row. False, and zeros, if a pivot is at most 1e-18 in magnitude. `solution` has k elements.
  bool solve(double ridge, std::span<double> solution);

 private:
  std::size_t k_ = 0;
  std::size_t lanes_ = 0;  ///< per row
  std::vector<Lanes> cells_;
  std::vector<Lanes> panel_;
  std::vector<Lanes> factors_;
  std::vector<std::size_t> busy_;
};

}  // namespace vkm
