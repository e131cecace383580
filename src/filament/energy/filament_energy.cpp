#include "filament/energy/filament_energy.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "core/kernel.hpp"
#include "core/lanes.hpp"
#include "core/numbers.hpp"
#include "core/polygon_edges.hpp"

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

/// The terms of point i with all later points, added to `sum`. The roots and divisions are done a block at a time, the
/// additions one by one.
VKM_KERNEL double add_neumann_row(const double* x, const double* y, const double* z, const double* dx, const double* dy,
                                  const double* dz, std::size_t n, std::size_t i, double rc2, double sum) {
  const double px = x[i], py = y[i], pz = z[i];
  const double ex = dx[i], ey = dy[i], ez = dz[i];
  for (std::size_t block = block_of(i + 1); block < n; block += lane_block) {
    double term[lane_block];
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double rx = x[block + k] - px;
      const double ry = y[block + k] - py;
      const double rz = z[block + k] - pz;
      const double along = ex * dx[block + k] + ey * dy[block + k] + ez * dz[block + k];
      term[k] = 2.0 * (along / std::sqrt(rx * rx + ry * ry + rz * rz + rc2));
    }
    const LaneRange lanes = lanes_within(block, i + 1, n);
    for (std::size_t k = lanes.begin; k < lanes.end; ++k) sum += term[k];
  }
  return sum;
}

VKM_KERNEL double add_writhe_row(const double* x, const double* y, const double* z, const double* dx, const double* dy,
                                 const double* dz, std::size_t n, std::size_t i, double rc2, double sum) {
  const double px = x[i], py = y[i], pz = z[i];
  const double ex = dx[i], ey = dy[i], ez = dz[i];
  for (std::size_t block = block_of(i + 1); block < n; block += lane_block) {
    double term[lane_block];
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double rx = x[block + k] - px;
      const double ry = y[block + k] - py;
      const double rz = z[block + k] - pz;
      const double fx = dx[block + k], fy = dy[block + k], fz = dz[block + k];
      const double r = std::sqrt(rx * rx + ry * ry + rz * rz + rc2);
      const double triple = (ey * fz - ez * fy) * rx + (ez * fx - ex * fz) * ry + (ex * fy - ey * fx) * rz;
      term[k] = 2.0 * triple / (r * r * r);
    }
    const LaneRange lanes = lanes_within(block, i + 1, n);
    for (std::size_t k = lanes.begin; k < lanes.end; ++k) sum += term[k];
  }
  return sum;
}

/// The terms of point i with the points from `first` to `end` - 1. Blocks with no point nearer than the root of
/// `reach2` are passed over.
VKM_KERNEL double add_repulsion_row(const double* x, const double* y, const double* z, std::size_t i, std::size_t first,
                                    std::size_t end, double rc, double reach2, double sum) {
  const double px = x[i], py = y[i], pz = z[i];
  for (std::size_t block = block_of(first); block < end; block += lane_block) {
    double d2[lane_block];
    int near = 0;
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double rx = x[block + k] - px;
      const double ry = y[block + k] - py;
      const double rz = z[block + k] - pz;
      d2[k] = rx * rx + ry * ry + rz * rz;
      near |= d2[k] > reach2 ? 0 : 1;
    }
    if (near == 0) continue;
    const LaneRange lanes = lanes_within(block, first, end);
    for (std::size_t k = lanes.begin; k < lanes.end; ++k) {
      const double s = (rc + rc) / std::max(std::sqrt(d2[k]), 1e-30);
      if (s > 0.1) sum += std::pow(s, 12.0);
    }
  }
  return sum;
}

}  // namespace

double calculate_length(std::span<const Vec3> points) {
  const std::size_t n = points.size();
  if (n < 2) return 0.0;
  double length = 0.0;
  for (std::size_t i = 0; i < n; ++i) length += norm(edge_of(points, i));
  return length;
}

double calculate_neumann_self_energy(std::span<const Vec3> points, double rc, const Poll& poll) {
  const std::size_t n = points.size();
  if (n < 2) return 0.0;
  const Lanes p(points);
  const Lanes dl = edges_of(points);
  Heartbeat heartbeat(poll);
  double sum = 0.0;
  for (std::size_t i = 0; i + 1 < n; ++i) {
    sum = add_neumann_row(p.axis(0), p.axis(1), p.axis(2), dl.axis(0), dl.axis(1), dl.axis(2), n, i, rc * rc, sum);
    if (i % 16 == 0) heartbeat.tick();
  }
  return sum;
}

double calculate_writhe(std::span<const Vec3> points, double rc, const Poll& poll) {
  const std::size_t n = points.size();
  if (n < 2) return 0.0;
  const Lanes p(points);
  const Lanes dl = edges_of(points);
  Heartbeat heartbeat(poll);
  double sum = 0.0;
  for (std::size_t i = 0; i + 1 < n; ++i) {
    sum = add_writhe_row(p.axis(0), p.axis(1), p.axis(2), dl.axis(0), dl.axis(1), dl.axis(2), n, i, rc * rc, sum);
    if (i % 16 == 0) heartbeat.tick();
  }
  return sum / four_pi;
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
    sum = add_repulsion_row(p.axis(0), p.axis(1), p.axis(2), i, i + 2, end, rc, reach2, sum);
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
