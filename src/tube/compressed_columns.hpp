#pragma once

/// The columns of a rigidity matrix, of either form, as their non-zero entries, and the product with multipliers.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tube/rigidity_matrix.hpp"

namespace vkm {

class CompressedColumns {
 public:
  struct Entry {
    std::uint64_t row;
    std::size_t column;
    double value;
  };

  /// Zeros are kept on demand, for where a number that is not finite would make something of them.
  explicit CompressedColumns(const RigidityMatrix& matrix, bool keep_zeros = false);
  explicit CompressedColumns(const SparseRigidityMatrix& matrix);

  /// Column by column, each in the order of the matrix.
  const std::vector<Entry>& entries() const { return entries_; }

  /// A x, row_count elements, summed column by column. Entries at or beyond row_count drop out, and so do columns with
  /// x exactly 0.
  void times(std::span<const double> x, std::vector<double>& product) const;

  /// The first `rows` elements of it.
  void times(std::span<const double> x, std::vector<double>& product, std::uint64_t rows) const;

  /// The same with the rows from `first` on closed up, in their order, where A has none.
  CompressedColumns closed_up(std::uint64_t first) const;

  std::uint64_t row_count() const { return row_count_; }

  /// One more than the greatest row below row_count that has an entry: A x is 0 from there on.
  std::uint64_t rows_in_use() const;

 private:
  std::uint64_t row_count_;
  std::vector<Entry> entries_;
};

/// Square root of the sum of squares, in order.
double euclidean_norm(std::span<const double> values);

}  // namespace vkm
