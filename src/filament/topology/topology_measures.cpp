#include "filament/topology/topology_measures.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "core/kernel.hpp"
#include "core/memory.hpp"
#include "core/numbers.hpp"
#include "core/ordered_sum.hpp"
#include "filament/topology/gauss_terms.hpp"

namespace vkm {

namespace {

std::vector<Vec3> open_edges(std::span<const Vec3> X) {
  std::vector<Vec3> edges;
  edges.reserve(X.size());
  for (std::size_t i = 0; i + 1 < X.size(); ++i) edges.push_back(X[i + 1] - X[i]);
  return edges;
}

/// Edge starts and edges of an open list as columns.
GaussColumns edge_columns(std::span<const Vec3> X, const std::vector<Vec3>& edges) {
  return GaussColumns(X.first(edges.size()), edges);
}

/// Writes the j of begin .. end - 1 with |x - y_j| < threshold to `found`, in order, and returns their number.
/// `found` has room for the row.
VKM_KERNEL std::size_t near_in_row(const Vec3& x, const GaussColumns& columns, std::size_t begin, std::size_t end,
                                   double threshold, int* found) {
  constexpr std::size_t block = GaussColumns::block;
  const double* px = columns.point(0);
  const double* py = columns.point(1);
  const double* pz = columns.point(2);
  const double x0 = x[0], x1 = x[1], x2 = x[2];
  std::size_t count = 0;
  for (std::size_t j = begin; j < end; j += block) {
    double distance[block];
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t k = 0; k < block; ++k) {
      const double rx = x0 - px[j + k];
      const double ry = x1 - py[j + k];
      const double rz = x2 - pz[j + k];
      distance[k] = std::sqrt(rx * rx + ry * ry + rz * rz);
    }
    for (std::size_t k = 0; k < block; ++k) least = distance[k] < least ? distance[k] : least;
    if (!(threshold > least)) continue;
    for (std::size_t k = 0; k < std::min(block, end - j); ++k) {
      if (threshold > distance[k]) found[count++] = static_cast<int>(j + k);
    }
  }
  return count;
}

/// The nearest integer, halves away from zero; NaN gives 0 and values beyond the range its ends.
std::int32_t rounded_to_32_bits(double value) {
  constexpr double lowest = std::numeric_limits<std::int32_t>::min();
  constexpr double greatest = std::numeric_limits<std::int32_t>::max();
  if (std::isnan(value)) return 0;
  return static_cast<std::int32_t>(std::clamp(std::round(value), lowest, greatest));
}

}  // namespace

double compute_writhe(std::span<const Vec3> X, const Poll& poll, int threads) {
  if (X.size() < 2) return 0.0;
  const std::vector<Vec3> edges = open_edges(X);
  const GaussColumns columns = edge_columns(X, edges);
  const PairForm form = gauss_form(X);
  const auto fill = [&](std::size_t i, std::size_t first, std::size_t count, double* terms) {
    fill_gauss(X[i], edges[i], columns, first, count, terms, form);
  };
  return sum_over_pairs(edges.size(), threads, poll, fill) / two_pi;
}

std::int32_t compute_linking_number(std::span<const Vec3> A, std::span<const Vec3> B, const Poll& poll) {
  if (A.size() < 2 || B.size() < 2) return 0;
  const std::vector<Vec3> a = open_edges(A);
  const std::vector<Vec3> b = open_edges(B);
  const GaussColumns columns = edge_columns(B, b);
  const PairForm form_a = gauss_form(A), form_b = gauss_form(B);
  const PairForm form = form_a == form_b ? form_a : PairForm::plain;
  PairHeartbeat heartbeat(poll);
  double sum = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    sum = add_gauss_row(sum, A[i], a[i], columns, 0, b.size(), form);
    heartbeat.count(b.size());
  }
  return rounded_to_32_bits(sum / four_pi);
}

double compute_twist(std::span<const Vec3> T, std::span<const Vec3> N) {
  if (T.size() < 3) return 0.0;
  if (N.size() < T.size()) throw std::invalid_argument("compute_twist: N must have at least as many entries as T");
  double sum = 0.0;
  for (std::size_t i = 1; i + 1 < T.size(); ++i) {
    const Vec3 dN = 0.5 * (N[i + 1] - N[i - 1]);
    sum += dot(cross(T[i], dN), N[i]);
  }
  return sum / two_pi;
}

double compute_centerline_helicity(std::span<const Vec3> X, const Poll& poll) { return compute_writhe(X, poll); }

std::vector<std::pair<int, int>> detect_reconnection_candidates(std::span<const Vec3> X, double threshold,
                                                                const Poll& poll) {
  constexpr std::size_t excluded = 5;
  // A pair grows to a tuple of two integer objects in the caller's list.
  constexpr std::size_t bytes_each = 160;
  std::vector<std::pair<int, int>> pairs;
  const GaussColumns columns(X, X);
  std::vector<int> found(X.size());
  PairHeartbeat heartbeat(poll);
  for (std::size_t i = 0; i + excluded < X.size(); ++i) {
    const std::size_t count = near_in_row(X[i], columns, i + excluded, X.size(), threshold, found.data());
    if (pairs.capacity() - pairs.size() < count) {
      require_memory(pairs.size() + count, bytes_each);
      pairs.reserve(std::max(pairs.size() + count, 2 * pairs.capacity()));
    }
    for (std::size_t k = 0; k < count; ++k) pairs.emplace_back(static_cast<int>(i), found[k]);
    heartbeat.count(X.size() - i);
  }
  return pairs;
}

}  // namespace vkm
