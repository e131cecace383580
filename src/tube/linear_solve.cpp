#include "tube/linear_solve.hpp"

#include <algorithm>
#include <cmath>

#include "core/kernel.hpp"
#include "core/memory.hpp"

namespace vkm {

namespace {

using Lanes = LinearSystem::Lanes;
constexpr std::size_t width = LinearSystem::width;
constexpr double least_pivot = 1e-18;

VKM_INLINE void subtract_multiple(Lanes& __restrict a, const Lanes& __restrict r, double factor) {
  for (std::size_t l = 0; l < width; ++l) a.at[l] -= factor * r.at[l];
}

VKM_INLINE void divide(Lanes& a, double pivot) {
  for (std::size_t l = 0; l < width; ++l) a.at[l] /= pivot;
}

VKM_INLINE bool all_zero(const Lanes& a) {
  return !(a.at[0] != 0.0 || a.at[1] != 0.0 || a.at[2] != 0.0 || a.at[3] != 0.0 || a.at[4] != 0.0 || a.at[5] != 0.0 ||
           a.at[6] != 0.0 || a.at[7] != 0.0);
}

/// Eight pivot rows in turn on the listed lanes of one row.
VKM_INLINE void subtract_panel(Lanes* __restrict row, const Lanes* __restrict pivots, std::size_t lanes, const Lanes& f,
                               const std::size_t* busy, std::size_t busy_count) {
  for (std::size_t b = 0; b < busy_count; ++b) {
    const Lanes* __restrict r = pivots + busy[b];
    double* __restrict a = row[busy[b]].at;
    for (std::size_t l = 0; l < width; ++l) {
      a[l] = a[l] - f.at[0] * r[0].at[l] - f.at[1] * r[lanes].at[l] - f.at[2] * r[2 * lanes].at[l] -
             f.at[3] * r[3 * lanes].at[l] - f.at[4] * r[4 * lanes].at[l] - f.at[5] * r[5 * lanes].at[l] -
             f.at[6] * r[6 * lanes].at[l] - f.at[7] * r[7 * lanes].at[l];
    }
  }
}

/// The same on two rows at once: each lane of a pivot row is loaded once for both.
VKM_INLINE void subtract_panel_from_two(Lanes* __restrict row, Lanes* __restrict other, const Lanes* __restrict pivots,
                                        std::size_t lanes, const Lanes& f, const Lanes& g, const std::size_t* busy,
                                        std::size_t busy_count) {
  for (std::size_t b = 0; b < busy_count; ++b) {
    const Lanes* __restrict r = pivots + busy[b];
    double* __restrict a = row[busy[b]].at;
    double* __restrict c = other[busy[b]].at;
    for (std::size_t l = 0; l < width; ++l) {
      const double r0 = r[0].at[l], r1 = r[lanes].at[l], r2 = r[2 * lanes].at[l], r3 = r[3 * lanes].at[l];
      const double r4 = r[4 * lanes].at[l], r5 = r[5 * lanes].at[l], r6 = r[6 * lanes].at[l], r7 = r[7 * lanes].at[l];
      a[l] = a[l] - f.at[0] * r0 - f.at[1] * r1 - f.at[2] * r2 - f.at[3] * r3 - f.at[4] * r4 - f.at[5] * r5 -
             f.at[6] * r6 - f.at[7] * r7;
      c[l] = c[l] - g.at[0] * r0 - g.at[1] * r1 - g.at[2] * r2 - g.at[3] * r3 - g.at[4] * r4 - g.at[5] * r5 -
             g.at[6] * r6 - g.at[7] * r7;
    }
  }
}

/// `cells` are k rows of `lanes` lanes: k coefficients, the right-hand side, padding. The panel is worked on in a copy
/// of its columns; a row's cells behind it lag: its factors of the panel's pivot rows are still to be applied.
VKM_KERNEL bool eliminate(Lanes* cells, std::size_t lanes, std::size_t k, Lanes* panel, Lanes* factors,
                          std::size_t* busy) {
  for (std::size_t first = 0; first < k; first += width) {
    const std::size_t count = std::min(width, k - first);
    const std::size_t own = first / width;
    for (std::size_t i = 0; i < k; ++i) {
      panel[i] = cells[i * lanes + own];
      factors[i] = Lanes{};
    }

    for (std::size_t p = 0; p < count; ++p) {
      const std::size_t q = first + p;
      std::size_t best = q;
      double magnitude = std::fabs(panel[q].at[p]);
      for (std::size_t i = q + 1; i < k; ++i) {
        const double candidate = std::fabs(panel[i].at[p]);
        if (candidate > magnitude) {
          magnitude = candidate;
          best = i;
        }
      }
      if (magnitude <= least_pivot) return false;
      Lanes* pivot_row = cells + q * lanes;
      if (best != q) {
        std::swap_ranges(pivot_row + own + 1, pivot_row + lanes, cells + best * lanes + own + 1);
        std::swap(panel[q], panel[best]);
        std::swap(factors[q], factors[best]);
      }
      const double pivot = panel[q].at[p];
      for (std::size_t b = own + 1; b < lanes; ++b) {
        Lanes a = pivot_row[b];
        for (std::size_t r = 0; r < p; ++r) subtract_multiple(a, cells[(first + r) * lanes + b], factors[q].at[r]);
        divide(a, pivot);
        pivot_row[b] = a;
      }
      factors[q] = Lanes{};
      divide(panel[q], pivot);
      const Lanes pivot_panel = panel[q];
      for (std::size_t i = 0; i < k; ++i) {
        if (i == q) continue;
        const double factor = panel[i].at[p];
        factors[i].at[p] = factor;
        subtract_multiple(panel[i], pivot_panel, factor);
      }
    }

    std::size_t busy_count = 0;
    const Lanes* pivots = cells + first * lanes;
    for (std::size_t b = own + 1; b < lanes; ++b) {
      bool any = false;
      for (std::size_t p = 0; p < count; ++p) any = any || !all_zero(pivots[p * lanes + b]);
      if (any) busy[busy_count++] = b;
    }
    for (std::size_t i = 0; i < k; ++i) {
      if ((i >= first && i < first + count) || all_zero(factors[i])) continue;
      if (count == width && i + 1 < k && i + 1 != first) {
        subtract_panel_from_two(cells + i * lanes, cells + (i + 1) * lanes, pivots, lanes, factors[i], factors[i + 1],
                                busy, busy_count);
        ++i;
      } else if (count == width) {
        subtract_panel(cells + i * lanes, pivots, lanes, factors[i], busy, busy_count);
      } else {
        for (std::size_t p = 0; p < count; ++p) {
          for (std::size_t b = 0; b < busy_count; ++b) {
            subtract_multiple(cells[i * lanes + busy[b]], pivots[p * lanes + busy[b]], factors[i].at[p]);
          }
        }
      }
    }
    // The panel's own rows come last, downwards: each serves the others as it was when it was the pivot row.
    for (std::size_t p = 0; p < count; ++p) {
      for (std::size_t later = p + 1; later < count; ++later) {
        for (std::size_t b = 0; b < busy_count; ++b) {
          subtract_multiple(cells[(first + p) * lanes + busy[b]], pivots[later * lanes + busy[b]],
                            factors[first + p].at[later]);
        }
      }
    }
    if (first + width > k) {
      for (std::size_t i = 0; i < k; ++i) cells[i * lanes + own] = panel[i];  // the right-hand side is among these
    }
  }
  return true;
}

}  // namespace

void LinearSystem::reset(std::size_t k) {
  k_ = k;
  lanes_ = k / width + 1;
  require_memory(k, sizeof(Lanes) * lanes_);
  if (cells_.size() < k * lanes_) cells_.resize(k * lanes_);
  if (panel_.size() < k) {
    panel_.resize(k);
    factors_.resize(k);
  }
  busy_.resize(lanes_);
  for (std::size_t i = 0; i < k; ++i) cells_[i * lanes_ + lanes_ - 1] = Lanes{};
}

bool LinearSystem::solve(double ridge, std::span<double> solution) {
  std::fill(solution.begin(), solution.end(), 0.0);
  const double added = std::max(ridge, 0.0);
  for (std::size_t i = 0; i < k_; ++i) row(i)[i] += added;
  if (!eliminate(cells_.data(), lanes_, k_, panel_.data(), factors_.data(), busy_.data())) return false;
  for (std::size_t i = 0; i < k_; ++i) solution[i] = row(i)[k_];
  return true;
}

}  // namespace vkm
