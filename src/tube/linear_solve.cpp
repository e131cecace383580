#include "tube/linear_solve.hpp"

#include <algorithm>
#include <cmath>

#include "core/kernel.hpp"
#include "core/memory.hpp"

namespace vkm {

namespace {

constexpr std::size_t panel_width = 4;
constexpr double least_pivot = 1e-18;

VKM_INLINE void subtract_multiple(double* __restrict row, const double* __restrict pivot_row, double factor,
                                  std::size_t begin, std::size_t end) {
  if (factor == 0.0) return;
  for (std::size_t j = begin; j < end; ++j) row[j] -= factor * pivot_row[j];
}

/// Four pivot rows in turn, one pass where all of them count.
VKM_INLINE void subtract_panel(double* __restrict row, const double* __restrict pivots, std::size_t stride,
                               const double* factor, std::size_t begin, std::size_t end) {
  const double f0 = factor[0];
  const double f1 = factor[1];
  const double f2 = factor[2];
  const double f3 = factor[3];
  if (f0 == 0.0 || f1 == 0.0 || f2 == 0.0 || f3 == 0.0) {
    for (std::size_t p = 0; p < panel_width; ++p) subtract_multiple(row, pivots + p * stride, factor[p], begin, end);
    return;
  }
  const double* __restrict r0 = pivots;
  const double* __restrict r1 = pivots + stride;
  const double* __restrict r2 = pivots + 2 * stride;
  const double* __restrict r3 = pivots + 3 * stride;
  for (std::size_t j = begin; j < end; ++j) row[j] = row[j] - f0 * r0[j] - f1 * r1[j] - f2 * r2[j] - f3 * r3[j];
}

/// `cells` are k rows of k coefficients and the right-hand side, `stride` apart; `pending` k rows of panel_width.
/// A row's cells right of the panel lag behind: its pending factors of the panel's pivot rows are still to be applied.
VKM_KERNEL bool eliminate(double* cells, std::size_t stride, std::size_t k, double* pending) {
  for (std::size_t first = 0; first < k; first += panel_width) {
    const std::size_t width = std::min(panel_width, k - first);
    const std::size_t behind = first + width;
    for (std::size_t i = 0; i < k * panel_width; ++i) pending[i] = 0.0;

    for (std::size_t p = 0; p < width; ++p) {
      const std::size_t q = first + p;
      std::size_t best = q;
      double magnitude = std::fabs(cells[q * stride + q]);
      for (std::size_t i = q + 1; i < k; ++i) {
        const double candidate = std::fabs(cells[i * stride + q]);
        if (candidate > magnitude) {
          magnitude = candidate;
          best = i;
        }
      }
      if (magnitude <= least_pivot) return false;
      double* pivot_row = cells + q * stride;
      double* pivot_pending = pending + q * panel_width;
      if (best != q) {
        std::swap_ranges(pivot_row + q, pivot_row + k + 1, cells + best * stride + q);
        std::swap_ranges(pivot_pending, pivot_pending + panel_width, pending + best * panel_width);
      }
      for (std::size_t r = 0; r < p; ++r) {
        subtract_multiple(pivot_row, cells + (first + r) * stride, pivot_pending[r], behind, k + 1);
        pivot_pending[r] = 0.0;
      }
      const double pivot = pivot_row[q];
      for (std::size_t j = q; j <= k; ++j) pivot_row[j] /= pivot;

      for (std::size_t i = 0; i < k; ++i) {
        if (i == q) continue;
        double* row = cells + i * stride;
        pending[i * panel_width + p] = row[q];
        subtract_multiple(row, pivot_row, row[q], q + 1, behind);
      }
    }

    // The panel's own rows come last, downwards: each serves the others as it was when it was the pivot row.
    const double* pivots = cells + first * stride;
    for (std::size_t i = 0; i < k; ++i) {
      if (i >= first && i < behind) continue;
      const double* factor = pending + i * panel_width;
      if (width == panel_width) {
        subtract_panel(cells + i * stride, pivots, stride, factor, behind, k + 1);
      } else {
        for (std::size_t p = 0; p < width; ++p) {
          subtract_multiple(cells + i * stride, pivots + p * stride, factor[p], behind, k + 1);
        }
      }
    }
    for (std::size_t p = 0; p < width; ++p) {
      for (std::size_t later = p + 1; later < width; ++later) {
        subtract_multiple(cells + (first + p) * stride, pivots + later * stride,
                          pending[(first + p) * panel_width + later], behind, k + 1);
      }
    }
  }
  return true;
}

}  // namespace

void LinearSystem::reset(std::size_t k) {
  k_ = k;
  stride_ = (k + 8) / 8 * 8;  // the right-hand side included, rows on cache lines
  require_memory(k, 8 * stride_);
  if (cells_.size() < k * stride_) cells_.resize(k * stride_);
  if (pending_.size() < k * panel_width) pending_.resize(k * panel_width);
}

bool LinearSystem::solve(double ridge, std::span<double> solution) {
  std::fill(solution.begin(), solution.end(), 0.0);
  const double added = std::max(ridge, 0.0);
  for (std::size_t i = 0; i < k_; ++i) at(i, i) += added;
  if (!eliminate(cells_.data(), stride_, k_, pending_.data())) return false;
  for (std::size_t i = 0; i < k_; ++i) solution[i] = rhs(i);
  return true;
}

}  // namespace vkm
