#include "filament/sums/magnetostatics.hpp"

#include <algorithm>
#include <cmath>

#include "core/numbers.hpp"
#include "core/pair_sums.hpp"
#include "core/polygon_edges.hpp"
#include "filament/sums/fields_wide.hpp"
#include "filament/sums/pair_forms.hpp"

namespace vkm {

namespace {

VKM_KERNEL void add_potential(const PointSources& polyline, std::size_t count, const LaneView& points,
                              const LaneSpace& sums) {
  add_sources(polyline, 0, count, points, sums, [](const LaneVec3& dl, const LaneVec3& r, auto...) VKM_TERM {
    const double n = std::sqrt(dot(r, r));
    return unless(n < least_distance, dl * (1.0 / n));
  });
}

VKM_KERNEL void add_dipoles(const PointSources& dipoles, std::size_t count, const LaneView& points,
                            const LaneSpace& sums) {
  add_sources(dipoles, 0, count, points, sums, [](const LaneVec3& m, const LaneVec3& r, auto...) VKM_TERM {
    const double r2 = dot(r, r);
    const double n = std::sqrt(r2);
    const double radial = dot(m, r) / n * 3.0 / n / n;
    return unless(n < least_distance, (r * radial - m) * inv_four_pi * (1.0 / (n * r2)));
  });
}

Lanes wire_field_by_points(const Segments& segments, const Lanes& points, double f, PairForm form, const Poll& poll) {
  Heartbeat heartbeat(poll);
  const PointSources sources = segments.sources();
  return sums_at(points, heartbeat, [&](const LaneView& at, const LaneSpace& sums) {
    add_wire({sources, 0, segments.dl.size(), at, sums}, f, moderate_block(at) ? form : PairForm::plain);
  });
}

Lanes dipole_field_by_points(std::span<const Vec3> at, std::span<const Vec3> moments, const Lanes& points,
                             const Poll& poll) {
  if (std::optional<Lanes> field = dipole_field_on_points(at, moments, points, poll)) return *std::move(field);
  Heartbeat heartbeat(poll);
  return sums_at(points, heartbeat, [&](const LaneView& block, const LaneSpace& sums) {
    add_dipoles({at.data(), moments.data()}, at.size(), block, sums);
  });
}

/// 8 x 2 x 32 points and 64 sources, to measure forms with.
struct TrialGrid {
  Segments segments;
  Lanes points{512};
  Meshgrid grid;

  TrialGrid() {
    segments.append(std::span(trial_curve().at).first(64), 64);
    for (std::size_t i = 0; i < points.size(); ++i) {
      points.set(i, {2.0 + static_cast<double>(i / 64), static_cast<double>(i / 32 % 2), static_cast<double>(i % 32)});
    }
    grid = *meshgrid_of(points);
  }
};

const TrialGrid& trial_grid() {
  static const TrialGrid grid;
  return grid;
}

}  // namespace

const PairKernel wire_grid_kernel("wire, meshgrid", [](PairForm form) {
  const auto& [segments, points, grid] = trial_grid();
  if (form == PairForm::plain) wire_field_by_points(segments, points, 1.0, form, {});
  wire_field_on_meshgrid(segments.mid, segments.dl, 1.0, grid, {}, form);
});
const PairKernel dipole_grid_kernel("dipoles, meshgrid", [](PairForm form) {
  const auto& [segments, points, grid] = trial_grid();
  if (form == PairForm::plain) dipole_field_by_points(segments.mid, segments.dl, points, {});
  dipole_field_on_meshgrid(segments.mid, segments.dl, grid, {}, form);
});

Lanes wire_field(std::span<const Vec3> wire, const Lanes& points, double current, const Poll& poll) {
  const Segments segments = open_segments(wire);
  const double f = current * inv_four_pi;
  if (const std::optional<Meshgrid> grid = meshgrid_of(points)) {
    std::optional<Lanes> field =
        wire_field_on_meshgrid(segments.mid, segments.dl, f, *grid, poll, wire_grid_kernel.form());
    if (field) return *std::move(field);
  }
  const PairForm form = wire_kernel.form_for(moderate(segments.mid) && moderate(segments.dl));
  return wire_field_by_points(segments, points, f, form, poll);
}

Lanes vector_potential(std::span<const Vec3> polyline, const Lanes& points, double current, const Poll& poll) {
  if (polyline.size() < 2) return Lanes(points.size());  // zeros, whatever the current
  const Segments segments = open_segments(polyline);
  std::optional<Lanes> potential = potential_on_points(segments.mid, segments.dl, points, poll);
  if (!potential) {
    Heartbeat heartbeat(poll);
    potential = sums_at(points, heartbeat, [&](const LaneView& at, const LaneSpace& sums) {
      add_potential(segments.sources(), segments.dl.size(), at, sums);
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
  if (const std::optional<Meshgrid> grid = meshgrid_of(points)) {
    std::optional<Lanes> field = dipole_field_on_meshgrid(at, m, *grid, poll, dipole_grid_kernel.form());
    if (field) return *std::move(field);
  }
  return dipole_field_by_points(at, m, points, poll);
}

}  // namespace vkm
