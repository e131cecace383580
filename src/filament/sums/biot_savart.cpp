#include "filament/sums/biot_savart.hpp"

#include <cmath>
#include <stdexcept>

#include "core/kernel.hpp"
#include "core/memory.hpp"
#include "core/numbers.hpp"

namespace vkm {

namespace {

constexpr double closed_curve_softening = 1e-12;  // m^3

/// One block of field points at x, y, z; its sums go to u, v, w. One reciprocal a pair serves all three components:
/// the divider is what limits this loop.
VKM_KERNEL void closed_curve_block(const Vec3* mid, const Vec3* dl, std::size_t segments, const double* x,
                                   const double* y, const double* z, double scale, double* u, double* v, double* w) {
  double sum_x[lane_block] = {};
  double sum_y[lane_block] = {};
  double sum_z[lane_block] = {};
  for (std::size_t s = 0; s < segments; ++s) {
    const double mx = mid[s][0], my = mid[s][1], mz = mid[s][2];
    const double dx = dl[s][0], dy = dl[s][1], dz = dl[s][2];
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double rx = x[k] - mx;
      const double ry = y[k] - my;
      const double rz = z[k] - mz;
      const double r2 = rx * rx + ry * ry + rz * rz;
      const double q = 1.0 / (r2 * std::sqrt(r2) + closed_curve_softening);
      sum_x[k] += (dy * rz - dz * ry) * q;
      sum_y[k] += (dz * rx - dx * rz) * q;
      sum_z[k] += (dx * ry - dy * rx) * q;
    }
  }
  for (std::size_t k = 0; k < lane_block; ++k) {
    u[k] = sum_x[k] * scale;
    v[k] = sum_y[k] * scale;
    w[k] = sum_z[k] * scale;
  }
}

/// One block of targets against point sources. A source that is skipped leaves the sum as it is, a NaN distance too.
VKM_KERNEL void point_sources_block(const Vec3* points, const Vec3* tangents, std::size_t sources, const double* x,
                                    const double* y, const double* z, double circulation, double* u, double* v,
                                    double* w) {
  double sum_x[lane_block] = {};
  double sum_y[lane_block] = {};
  double sum_z[lane_block] = {};
  for (std::size_t s = 0; s < sources; ++s) {
    const double px = points[s][0], py = points[s][1], pz = points[s][2];
    const double tx = tangents[s][0], ty = tangents[s][1], tz = tangents[s][2];
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double rx = x[k] - px;
      const double ry = y[k] - py;
      const double rz = z[k] - pz;
      const double n = std::sqrt(rx * rx + ry * ry + rz * rz);
      const bool far = n > point_cutoff;
      const double g = circulation / (n * n * n);
      const double next_x = sum_x[k] + (ty * rz - tz * ry) * inv_four_pi * g;
      const double next_y = sum_y[k] + (tz * rx - tx * rz) * inv_four_pi * g;
      const double next_z = sum_z[k] + (tx * ry - ty * rx) * inv_four_pi * g;
      sum_x[k] = far ? next_x : sum_x[k];
      sum_y[k] = far ? next_y : sum_y[k];
      sum_z[k] = far ? next_z : sum_z[k];
    }
  }
  for (std::size_t k = 0; k < lane_block; ++k) {
    u[k] = sum_x[k];
    v[k] = sum_y[k];
    w[k] = sum_z[k];
  }
}

void check_lengths(std::span<const Vec3> filament_points, std::span<const Vec3> tangents) {
  if (tangents.size() < filament_points.size()) {
    throw std::invalid_argument("biot_savart_velocity: tangent_vectors must be at least as long as filament_points");
  }
}

Segments segments_of(std::span<const Vec3> points, std::size_t count) {
  Segments segments;
  segments.mid.reserve(count);
  segments.dl.reserve(count);
  for (std::size_t s = 0; s < count; ++s) {
    const Vec3& a = points[s];
    const Vec3& b = points[s + 1 == points.size() ? 0 : s + 1];
    segments.mid.push_back(0.5 * (a + b));
    segments.dl.push_back(b - a);
  }
  return segments;
}

}  // namespace

Segments closed_segments(std::span<const Vec3> points) { return segments_of(points, points.size()); }

Segments open_segments(std::span<const Vec3> points) {
  return segments_of(points, points.empty() ? 0 : points.size() - 1);
}

Lanes closed_curve_velocity(std::span<const Vec3> curve, const Lanes& grid, double circulation, const Poll& poll) {
  Lanes velocity(grid.size());
  if (curve.size() < 2) return velocity;
  const Segments segments = closed_segments(curve);
  const double scale = circulation / four_pi;
  Heartbeat heartbeat(poll);
  for (std::size_t block = 0; block < grid.blocks(); ++block) {
    const std::size_t at = block * lane_block;
    closed_curve_block(segments.mid.data(), segments.dl.data(), segments.dl.size(), grid.axis(0) + at,
                       grid.axis(1) + at, grid.axis(2) + at, scale, velocity.axis(0) + at, velocity.axis(1) + at,
                       velocity.axis(2) + at);
    heartbeat.tick();
  }
  return velocity;
}

std::vector<Vec3> closed_curve_velocity(std::span<const Vec3> curve, std::span<const Vec3> grid, double circulation,
                                        const Poll& poll) {
  return closed_curve_velocity(curve, Lanes(grid), circulation, poll).vectors();
}

Vec3 biot_savart_velocity(const Vec3& r, std::span<const Vec3> filament_points, std::span<const Vec3> tangents,
                          double circulation) {
  check_lengths(filament_points, tangents);
  Vec3 velocity{};
  for (std::size_t i = 0; i < filament_points.size(); ++i) {
    const Vec3 R = r - filament_points[i];
    const double n = norm(R);
    if (n > point_cutoff) velocity += cross(tangents[i], R) * inv_four_pi * (circulation / (n * n * n));
  }
  return velocity;
}

std::vector<Vec3> biot_savart_velocities(std::span<const Vec3> targets, std::span<const Vec3> filament_points,
                                         std::span<const Vec3> tangents, double circulation, Heartbeat& heartbeat) {
  check_lengths(filament_points, tangents);
  const Lanes at_points(targets);
  Lanes velocity(targets.size());
  for (std::size_t block = 0; block < at_points.blocks(); ++block) {
    const std::size_t at = block * lane_block;
    point_sources_block(filament_points.data(), tangents.data(), filament_points.size(), at_points.axis(0) + at,
                        at_points.axis(1) + at, at_points.axis(2) + at, circulation, velocity.axis(0) + at,
                        velocity.axis(1) + at, velocity.axis(2) + at);
    heartbeat.tick();
  }
  return velocity.vectors();
}

}  // namespace vkm
