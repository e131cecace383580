#include "filament/energy/filament_energy.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "core/elementary.hpp"
#include "core/elementary/power.hpp"
#include "core/numbers.hpp"
#include "core/ordered_sum.hpp"
#include "core/pair_sums.hpp"
#include "core/polygon_edges.hpp"
#include "filament/energy/polygon_terms.hpp"

namespace vkm {

namespace {

/// The lanes of the block at `block` that hold the indices from `first` to `end` - 1.
struct LaneRange {
  std::size_t begin;
  std::size_t end;
};

VKM_INLINE LaneRange lanes_within(std::size_t block, std::size_t first, std::size_t end) {
  return {first > block ? first - block : 0, std::min(lane_block, end - block)};
}

VKM_INLINE std::size_t block_of(std::size_t index) { return index / lane_block * lane_block; }

/// The terms of point i with the points from `first` to `end` - 1. Blocks with no point nearer than the root of
/// `reach2` are passed over.
VKM_KERNEL double add_repulsion_row(const LaneView& at, std::size_t i, std::size_t first, std::size_t end, double rc,
                                    double reach2, double sum) {
  const double px = at.x[i], py = at.y[i], pz = at.z[i];
  for (std::size_t block = block_of(first); block < end; block += lane_block) {
    double d2[lane_block];
    int near = 0;
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double rx = at.x[block + k] - px;
      const double ry = at.y[block + k] - py;
      const double rz = at.z[block + k] - pz;
      d2[k] = rx * rx + ry * ry + rz * rz;
      near |= d2[k] > reach2 ? 0 : 1;
    }
    if (near == 0) continue;
    double s[lane_block];
    double power[lane_block];
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double r = std::sqrt(d2[k]);
      s[k] = (rc + rc) / (r < 1e-30 ? 1e-30 : r);
      power[k] = elementary::try_whole_power<12>(s[k]);
    }
    const LaneRange lanes = lanes_within(block, first, end);
    for (std::size_t k = lanes.begin; k < lanes.end; ++k) {
      if (s[k] > 0.1) sum += std::isnan(power[k]) ? vkm::pow(s[k], 12.0) : power[k];
    }
  }
  return sum;
}

/// The sum over all pairs i < j of a closed polygon.
template <class Fill>
double sum_of_terms(std::span<const Vec3> points, double rc, const Poll& poll, int threads, const Fill& fill) {
  if (points.size() < 2) return 0.0;
  constexpr std::size_t margin = 8;  // that terms read behind the last point
  Lanes at(points.size() + margin), edges(points.size() + margin);
  for (std::size_t i = 0; i < points.size(); ++i) {
    at.set(i, points[i]);
    edges.set(i, edge_of(points, i));
  }
  const LaneSources polygon{view(at), view(edges)};
  return sum_over_pairs(points.size(), threads, poll,
                        [&](std::size_t i, std::size_t first, std::size_t count, double* terms) {
                          fill(polygon, i, first, count, rc * rc, terms);
                        });
}

}  // namespace

double calculate_length(std::span<const Vec3> points) {
  const std::size_t n = points.size();
  if (n < 2) return 0.0;
  double length = 0.0;
  for (std::size_t i = 0; i < n; ++i) length += norm(edge_of(points, i));
  return length;
}

double calculate_neumann_self_energy(std::span<const Vec3> points, double rc, const Poll& poll, int threads) {
  const bool regular = moderate(points) && rc != 0.0 && moderate(rc);  // no two points meet at a root of 0 then
  const PairForm form = neumann_kernel.form_for(regular);
  return sum_of_terms(points, rc, poll, threads, [form](auto... arguments) { fill_neumann(arguments..., form); });
}

double calculate_writhe(std::span<const Vec3> points, double rc, const Poll& poll, int threads) {
  const PairForm form = writhe_kernel.form_for(modest(points) && rc != 0.0 && modest(rc));
  const auto fill = [form](auto... arguments) { fill_writhe(arguments..., form); };
  return sum_of_terms(points, rc, poll, threads, fill) / four_pi;
}

double calculate_core_repulsion(std::span<const Vec3> points, double rc, const Poll& poll) {
  const std::size_t n = points.size();
  if (n < 3) return 0.0;
  const Lanes p(points);
  // Pairs beyond 20 rc add nothing. The margin is for rounding; a square that underflows belongs to an rc so small
  // that the floor of the distance keeps every ratio below the threshold.
  const double reach2 = 400.0 * rc * rc * (1.0 + 1e-9);
  Heartbeat heartbeat(poll);
  double sum = 0.0;
  for (std::size_t i = 0; i + 2 < n; ++i) {
    const std::size_t end = i == 0 ? n - 1 : n;
    sum = add_repulsion_row(view(p), i, i + 2, end, rc, reach2, sum);
    if (i % 16 == 0) heartbeat.tick();
  }
  return sum;
}

double calculate_curvature_penalty(std::span<const Vec3> points) {
  constexpr double least_length = 1e-20;  // m
  const std::size_t n = points.size();
  if (n < 2) return 0.0;
  double sum = 0.0;
  for (std::size_t i = 0; i < n; ++i) {
    const Vec3& previous = points[i == 0 ? n - 1 : i - 1];
    const Vec3& next = points[i + 1 == n ? 0 : i + 1];
    const Vec3 a = points[i] - previous;
    const Vec3 b = next - points[i];
    const double la = norm(a), lb = norm(b), lc = norm(next - previous);
    double kappa = 0.0;
    if (la > least_length && lb > least_length && lc > least_length) kappa = 2.0 * norm(cross(a, b)) / (la * lb * lc);
    sum += (lb + la) * 0.5 * (kappa * kappa);
  }
  return sum;
}

}  // namespace vkm
