#include "tube/compressed_columns.hpp"

#include <algorithm>
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

std::uint64_t CompressedColumns::rows_in_use() const {
  std::uint64_t end = 0;
  for (const Entry& entry : entries_) {
    if (entry.row < row_count_) end = std::max(end, entry.row + 1);
  }
  return end;
}

CompressedColumns CompressedColumns::closed_up(std::uint64_t first) const {
  std::vector<std::uint64_t> rows;
  for (const Entry& entry : entries_) {
    if (entry.row >= first && entry.row < row_count_) rows.push_back(entry.row);
  }
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  CompressedColumns packed = *this;
  for (Entry& entry : packed.entries_) {
    if (entry.row < first || entry.row >= row_count_) continue;
    entry.row =
        first + static_cast<std::uint64_t>(std::lower_bound(rows.begin(), rows.end(), entry.row) - rows.begin());
  }
  return packed;
}

void CompressedColumns::times(std::span<const double> x, std::vector<double>& product) const {
  times(x, product, row_count_);
}

void CompressedColumns::times(std::span<const double> x, std::vector<double>& product, std::uint64_t rows) const {
  require_memory(rows, 8);
  product.assign(rows, 0.0);
  for (const Entry& entry : entries_) {
    if (entry.row < rows && x[entry.column] != 0.0) product[entry.row] += entry.value * x[entry.column];
  }
}

double euclidean_norm(std::span<const double> values) {
  double sum = 0.0;
  for (const double value : values) sum += value * value;
  return std::sqrt(sum);
}

}  // namespace vkm
