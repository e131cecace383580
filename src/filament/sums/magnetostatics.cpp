#include "filament/sums/magnetostatics.hpp"

#include <algorithm>
#include <cmath>

#include "core/kernel.hpp"
#include "core/numbers.hpp"
#include "filament/sums/biot_savart.hpp"
#include "filament/sums/meshgrid_fields_wide.hpp"
#include "filament/sums/point_fields_wide.hpp"

namespace vkm {

namespace {

/// A block of field points in and the sums at them out.
struct Block {
  const double* x;
  const double* y;
  const double* z;
  double* u;
  double* v;
  double* w;
};

VKM_INLINE void store(const Block& block, const double* sum_x, const double* sum_y, const double* sum_z) {
  for (std::size_t k = 0; k < lane_block; ++k) {
    block.u[k] = sum_x[k];
    block.v[k] = sum_y[k];
    block.w[k] = sum_z[k];
  }
}

VKM_KERNEL void wire_block(const Vec3* mid, const Vec3* dl, std::size_t segments, double f, Block block) {
  double sum_x[lane_block] = {};
  double sum_y[lane_block] = {};
  double sum_z[lane_block] = {};
  const double* x = block.x;
  const double* y = block.y;
  const double* z = block.z;
  for (std::size_t s = 0; s < segments; ++s) {
    const double mx = mid[s][0], my = mid[s][1], mz = mid[s][2];
    const double dx = dl[s][0], dy = dl[s][1], dz = dl[s][2];
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double rx = x[k] - mx;
      const double ry = y[k] - my;
      const double rz = z[k] - mz;
      const double r2 = rx * rx + ry * ry + rz * rz;
      const double n = std::sqrt(r2);
      const bool near = n < least_distance;
      const double q = 1.0 / (n * r2);
      const double next_x = sum_x[k] + (dy * rz - dz * ry) * f * q;
      const double next_y = sum_y[k] + (dz * rx - dx * rz) * f * q;
      const double next_z = sum_z[k] + (dx * ry - dy * rx) * f * q;
      sum_x[k] = near ? sum_x[k] : next_x;
      sum_y[k] = near ? sum_y[k] : next_y;
      sum_z[k] = near ? sum_z[k] : next_z;
    }
  }
  store(block, sum_x, sum_y, sum_z);
}

VKM_KERNEL void potential_block(const Vec3* mid, const Vec3* dl, std::size_t segments, Block block) {
  double sum_x[lane_block] = {};
  double sum_y[lane_block] = {};
  double sum_z[lane_block] = {};
  const double* x = block.x;
  const double* y = block.y;
  const double* z = block.z;
  for (std::size_t s = 0; s < segments; ++s) {
    const double mx = mid[s][0], my = mid[s][1], mz = mid[s][2];
    const double dx = dl[s][0], dy = dl[s][1], dz = dl[s][2];
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double rx = x[k] - mx;
      const double ry = y[k] - my;
      const double rz = z[k] - mz;
      const double n = std::sqrt(rx * rx + ry * ry + rz * rz);
      const bool near = n < least_distance;
      const double q = 1.0 / n;
      const double next_x = sum_x[k] + dx * q;
      const double next_y = sum_y[k] + dy * q;
      const double next_z = sum_z[k] + dz * q;
      sum_x[k] = near ? sum_x[k] : next_x;
      sum_y[k] = near ? sum_y[k] : next_y;
      sum_z[k] = near ? sum_z[k] : next_z;
    }
  }
  store(block, sum_x, sum_y, sum_z);
}

VKM_KERNEL void dipoles_block(const Vec3* positions, const Vec3* moments, std::size_t sources, Block block) {
  double sum_x[lane_block] = {};
  double sum_y[lane_block] = {};
  double sum_z[lane_block] = {};
  const double* x = block.x;
  const double* y = block.y;
  const double* z = block.z;
  for (std::size_t s = 0; s < sources; ++s) {
    const double px = positions[s][0], py = positions[s][1], pz = positions[s][2];
    const double mx = moments[s][0], my = moments[s][1], mz = moments[s][2];
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double rx = x[k] - px;
      const double ry = y[k] - py;
      const double rz = z[k] - pz;
      const double r2 = rx * rx + ry * ry + rz * rz;
      const double n = std::sqrt(r2);
      const bool near = n < least_distance;
      const double radial = (mx * rx + my * ry + mz * rz) / n * 3.0 / n / n;
      const double q = 1.0 / (n * r2);
      const double next_x = sum_x[k] + (radial * rx - mx) * inv_four_pi * q;
      const double next_y = sum_y[k] + (radial * ry - my) * inv_four_pi * q;
      const double next_z = sum_z[k] + (radial * rz - mz) * inv_four_pi * q;
      sum_x[k] = near ? sum_x[k] : next_x;
      sum_y[k] = near ? sum_y[k] : next_y;
      sum_z[k] = near ? sum_z[k] : next_z;
    }
  }
  store(block, sum_x, sum_y, sum_z);
}

/// Runs a block kernel over all field points.
template <class Kernel>
Lanes over_blocks(const Lanes& points, const Poll& poll, Kernel kernel) {
  Lanes field(points.size());
  Heartbeat heartbeat(poll);
  for (std::size_t block = 0; block < points.blocks(); ++block) {
    const std::size_t at = block * lane_block;
    kernel(Block{points.axis(0) + at, points.axis(1) + at, points.axis(2) + at, field.axis(0) + at, field.axis(1) + at,
                 field.axis(2) + at});
    heartbeat.tick();
  }
  return field;
}

}  // namespace

Lanes wire_field(std::span<const Vec3> wire, const Lanes& points, double current, const Poll& poll) {
  const Segments segments = open_segments(wire);
  const double f = current * inv_four_pi;
  if (const std::optional<ProductGrid> grid = product_grid(points)) {
    std::optional<Lanes> field = wire_field_on_product(segments.mid, segments.dl, f, *grid, poll);
    if (field) return *std::move(field);
  }
  return over_blocks(points, poll, [&](const Block& block) {
    wire_block(segments.mid.data(), segments.dl.data(), segments.dl.size(), f, block);
  });
}

Lanes vector_potential(std::span<const Vec3> polyline, const Lanes& points, double current, const Poll& poll) {
  if (polyline.size() < 2) return Lanes(points.size());  // zeros, whatever the current
  const Segments segments = open_segments(polyline);
  std::optional<Lanes> potential = potential_on_points(segments.mid, segments.dl, points, poll);
  if (!potential) {
    potential = over_blocks(points, poll, [&](const Block& block) {
      potential_block(segments.mid.data(), segments.dl.data(), segments.dl.size(), block);
    });
  }
  for (std::size_t a = 0; a < 3; ++a) {
    for (double& sum : std::span(potential->axis(a), points.size())) sum = sum * current * inv_four_pi;
  }
  return *std::move(potential);
}

Vec3 dipole_field(const Vec3& r, const Vec3& m) {
  const double n2 = norm2(r);
  const double n = std::sqrt(n2);
  if (n < least_distance) return {};
  const double radial = dot(m, r) / n * 3.0 / n / n;
  return (radial * r - m) * inv_four_pi * (1.0 / (n * n2));
}

Lanes dipole_field_sum(std::span<const Vec3> positions, std::span<const Vec3> moments, const Lanes& points,
                       const Poll& poll) {
  const std::size_t sources = std::min(positions.size(), moments.size());
  const std::span<const Vec3> at = positions.first(sources), m = moments.first(sources);
  if (const std::optional<ProductGrid> grid = product_grid(points)) {
    if (std::optional<Lanes> field = dipole_field_on_product(at, m, *grid, poll)) return *std::move(field);
  }
  if (std::optional<Lanes> field = dipole_field_on_points(at, m, points, poll)) return *std::move(field);
  return over_blocks(points, poll,
                     [&](const Block& block) { dipoles_block(positions.data(), moments.data(), sources, block); });
}

}  // namespace vkm
