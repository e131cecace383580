#pragma once

/// The normal equations of a least squares fit A x to b: the Gram matrix G = A^T A, c = A^T b, and the residual.
///
/// Columns are few and long and mostly zero, so G is gathered row by row of A from the non-zero entries: a zero product
/// changes no bit of a sum that starts at +0, and each sum keeps its order, row by row.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "tube/compressed_columns.hpp"
#include "tube/rigidity_matrix.hpp"

namespace vkm {

class NormalEquations {
 public:
  /// Dots run over the shorter of two vectors. `target` must outlive the equations.
  NormalEquations(const RigidityMatrix& matrix, std::span<const double> target, Heartbeat& heartbeat);
  /// Entries at or beyond the target's end count for nothing in c.
  NormalEquations(const SparseRigidityMatrix& matrix, std::span<const double> target, Heartbeat& heartbeat);

  std::size_t size() const { return c_.size(); }
  /// Row i of G, which is also its column i.
  const double* gram_row(std::size_t i) const { return gram_.data() + i * size(); }
  const std::vector<double>& c() const { return c_; }
  double target_norm() const { return target_norm_; }
  const CompressedColumns& columns() const { return columns_; }

  /// G x, column by column; columns with x exactly 0 are skipped.
  void gram_times(std::span<const double> x, std::vector<double>& product) const;

  /// |A x - b| over row_count rows; b counts as 0 beyond its end.
  double residual_norm(std::span<const double> x) const;

 private:
  NormalEquations(CompressedColumns&& columns, std::size_t count, std::span<const double> target, Heartbeat& heartbeat);

  void form_gram(Heartbeat& heartbeat);

  std::span<const double> target_;
  double target_norm_;
  CompressedColumns columns_;
  std::vector<double> gram_;
  std::vector<double> c_;
  std::optional<CompressedColumns> packed_;  ///< for the residual, where the matrix claims far more rows than it has
  std::uint64_t residual_rows_;
  mutable std::vector<double> residual_;
};

/// y += factor x.
void add_multiple(std::span<double> y, const double* x, double factor);

}  // namespace vkm
