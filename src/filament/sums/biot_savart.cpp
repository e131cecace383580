#include "filament/sums/biot_savart.hpp"

#include <cmath>
#include <stdexcept>

#include "core/numbers.hpp"
#include "core/pair_sums.hpp"
#include "core/polygon_edges.hpp"
#include "core/tasks.hpp"
#include "filament/sums/pair_forms.hpp"

namespace vkm {

namespace {

constexpr double closed_curve_softening = 1e-12;  // m^3

VKM_KERNEL void add_points(const PointSources& filament, std::size_t count, double circulation, const LaneView& points,
                           const LaneSpace& sums) {
  add_sources(filament, 0, count, points, sums, [circulation](const LaneVec3& t, const LaneVec3& r, auto...) VKM_TERM {
    const double n = std::sqrt(dot(r, r));
    const bool far = n > point_cutoff;  // a NaN distance is not
    return unless(!far, cross(t, r) * inv_four_pi * (circulation / (n * n * n)));
  });
}

/// Runs kernel(points, sums) on all blocks of points; a block is a task.
template <class Kernel>
Lanes sums_at(const Lanes& points, const Poll& poll, int threads, const Kernel& kernel) {
  Lanes sums(points.size());
  run_tasks(points.blocks(), threads, poll, [&](std::size_t block, Heartbeat& heartbeat) {
    kernel(view(points, block * lane_block), space(sums, block * lane_block));
    heartbeat.tick();
  });
  return sums;
}

void check_lengths(std::span<const Vec3> filament_points, std::span<const Vec3> tangents) {
  if (tangents.size() < filament_points.size()) {
    throw std::invalid_argument("biot_savart_velocity: tangent_vectors must be at least as long as filament_points");
  }
}

}  // namespace

Lanes closed_curve_velocity(std::span<const Vec3> curve, const Lanes& grid, double circulation, const Poll& poll,
                            int threads) {
  if (curve.size() < 2) return Lanes(grid.size());
  const Segments segments = closed_segments(curve);
  const PairForm form = closed_curve_kernel.form_for(moderate(curve));
  const PointSources sources = segments.sources();
  Lanes velocity = sums_at(grid, poll, threads, [&](const LaneView& at, const LaneSpace& sums) {
    add_closed_curve({sources, 0, segments.dl.size(), at, sums}, closed_curve_softening,
                     moderate_block(at) ? form : PairForm::plain);
  });
  const double scale = circulation / four_pi;
  for (std::size_t a = 0; a < 3; ++a) {
    for (double& sum : std::span(velocity.axis(a), grid.size())) sum *= scale;
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
  const auto add = [&](const LaneView& at, const LaneSpace& sums) {
    add_points({filament_points.data(), tangents.data()}, filament_points.size(), circulation, at, sums);
  };
  return sums_at(Lanes(targets), heartbeat, add).vectors();
}

std::vector<Vec3> biot_savart_velocities(std::span<const Vec3> targets, std::span<const Vec3> filament_points,
                                         std::span<const Vec3> tangents, double circulation, const Poll& poll,
                                         int threads) {
  check_lengths(filament_points, tangents);
  const auto add = [&](const LaneView& at, const LaneSpace& sums) {
    add_points({filament_points.data(), tangents.data()}, filament_points.size(), circulation, at, sums);
  };
  return sums_at(Lanes(targets), poll, threads, add).vectors();
}

}  // namespace vkm
