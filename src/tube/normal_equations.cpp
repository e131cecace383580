#include "tube/normal_equations.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/finite.hpp"
#include "core/kernel.hpp"
#include "core/memory.hpp"

namespace vkm {

namespace {

bool all_finite(const RigidityMatrix& matrix) {
  return std::all_of(matrix.columns.begin(), matrix.columns.end(),
                     [](const RigidityColumn& column) { return vkm::all_finite(column.values); });
}

VKM_KERNEL void add_multiple_kernel(double* __restrict y, const double* __restrict x, double factor, std::size_t n) {
  for (std::size_t k = 0; k < n; ++k) y[k] += factor * x[k];
}

}  // namespace

void add_multiple(std::span<double> y, const double* x, double factor) {
  add_multiple_kernel(y.data(), x, factor, y.size());
}

NormalEquations::NormalEquations(const RigidityMatrix& matrix, std::span<const double> target, Heartbeat& heartbeat)
    : NormalEquations(CompressedColumns(matrix, !vkm::all_finite(target) || !all_finite(matrix)), matrix.columns.size(),
                      target, heartbeat) {}

NormalEquations::NormalEquations(const SparseRigidityMatrix& matrix, std::span<const double> target,
                                 Heartbeat& heartbeat)
    : NormalEquations(CompressedColumns(matrix), matrix.columns.size(), target, heartbeat) {}

NormalEquations::NormalEquations(CompressedColumns&& columns, std::size_t count, std::span<const double> target,
                                 Heartbeat& heartbeat)
    : target_(target), target_norm_(euclidean_norm(target)), columns_(std::move(columns)), c_(count, 0.0) {
  for (const auto& entry : columns_.entries()) {
    if (entry.row < target.size()) c_[entry.column] += entry.value * target[entry.row];
  }
  // Rows of zeros, of which a matrix may claim any number, add nothing to the norm of the residual.
  residual_rows_ = std::min(columns_.row_count(), std::max<std::uint64_t>(columns_.rows_in_use(), target.size()));
  if (residual_rows_ / 16 > columns_.entries().size() + target.size() + 4096) {
    packed_ = columns_.closed_up(target.size());
    residual_rows_ = std::max<std::uint64_t>(packed_->rows_in_use(), target.size());
  }
  form_gram(heartbeat);
}

void NormalEquations::form_gram(Heartbeat& heartbeat) {
  const std::size_t n = size();
  require_memory(n, 8 * n);
  gram_.assign(n * n, 0.0);
  using Entry = CompressedColumns::Entry;
  std::vector<Entry> entries = columns_.entries();
  std::stable_sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.row < b.row; });
  for (auto begin = entries.begin(); begin != entries.end();) {
    heartbeat.tick();
    const auto end = std::find_if(begin, entries.end(), [&](const Entry& entry) { return entry.row != begin->row; });
    for (auto a = begin; a != end; ++a) {
      double* row = gram_.data() + a->column * n;
      for (auto b = begin; b != end && b->column <= a->column; ++b) row[b->column] += a->value * b->value;
    }
    begin = end;
  }
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < i; ++j) gram_[j * n + i] = gram_[i * n + j];
  }
}

void NormalEquations::gram_times(std::span<const double> x, std::vector<double>& product) const {
  product.assign(size(), 0.0);
  for (std::size_t k = 0; k < size(); ++k) {
    if (x[k] != 0.0) add_multiple(product, gram_row(k), x[k]);
  }
}

double NormalEquations::residual_norm(std::span<const double> x) const {
  (packed_ ? *packed_ : columns_).times(x, residual_, residual_rows_);
  const std::size_t rows = std::min(residual_.size(), target_.size());
  for (std::size_t row = 0; row < rows; ++row) residual_[row] -= target_[row];
  return euclidean_norm(residual_);
}

}  // namespace vkm
