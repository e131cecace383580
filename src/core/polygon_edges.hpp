#pragma once

/// The edges of polygons: of a closed one, whose closing point is not repeated, edge i runs from point i to point i + 1
/// and the last one back to point 0.

#include <cstddef>
#include <span>
#include <vector>

#include "core/lanes.hpp"
#include "core/pair_sums.hpp"
#include "core/vec3.hpp"

namespace vkm {

inline Vec3 edge_of(std::span<const Vec3> points, std::size_t i) {
  return points[i + 1 == points.size() ? 0 : i + 1] - points[i];
}

inline Lanes edges_of(std::span<const Vec3> points) {
  Lanes edges(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) edges.set(i, edge_of(points, i));
  return edges;
}

/// Edges as elements of a sum: their vectors, each at its midpoint.
struct Segments {
  std::vector<Vec3> mid;
  std::vector<Vec3> dl;

  PointSources sources() const { return {mid.data(), dl.data()}; }

  /// Appends the first `count` edges of a polygon.
  void append(std::span<const Vec3> points, std::size_t count) {
    for (std::size_t s = 0; s < count; ++s) {
      const Vec3& next = points[s + 1 == points.size() ? 0 : s + 1];
      mid.push_back(0.5 * (points[s] + next));
      dl.push_back(next - points[s]);
    }
  }
};

/// N segments of N points, the last one from the last point to the first.
inline Segments closed_segments(std::span<const Vec3> points) {
  Segments segments;
  segments.append(points, points.size());
  return segments;
}

/// N - 1 segments of N points.
inline Segments open_segments(std::span<const Vec3> points) {
  Segments segments;
  segments.append(points, points.empty() ? 0 : points.size() - 1);
  return segments;
}

}  // namespace vkm
