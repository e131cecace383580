#include "tube/compressed_columns.hpp"

#include <cmath>

#include "core/memory.hpp"

namespace vkm {

CompressedColumns::CompressedColumns(const RigidityMatrix& matrix, bool keep_zeros) : row_count_(matrix.row_count) {
  for (std::size_t k = 0; k < matrix.columns.size(); ++k) {
    const std::vector<double>& values = matrix.columns[k].values;
    for (std::size_t row = 0; row < values.size(); ++row) {
      if (keep_zeros || values[row] != 0.0) entries_.push_back({row, k, values[row]});
    }
  }
}

CompressedColumns::CompressedColumns(const SparseRigidityMatrix& matrix) : row_count_(matrix.row_count) {
  for (std::size_t k = 0; k < matrix.columns.size(); ++k) {
    for (const SparseEntry& entry : matrix.columns[k].entries) entries_.push_back({entry.row, k, entry.value});
  }
}

void CompressedColumns::times(std::span<const double> x, std::vector<double>& product) const {
  require_memory(row_count_, 8);
  product.assign(row_count_, 0.0);
  for (const Entry& entry : entries_) {
    if (entry.row < row_count_ && x[entry.column] != 0.0) product[entry.row] += entry.value * x[entry.column];
  }
}

double euclidean_norm(std::span<const double> values) {
  double sum = 0.0;
  for (const double value : values) sum += value * value;
  return std::sqrt(sum);
}

}  // namespace vkm
