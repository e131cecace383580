#pragma once

/// The edges of a closed polygon whose closing point is not repeated: edge i runs from point i to point i + 1, the last
/// one back to point 0.

#include <cstddef>
#include <span>

#include "core/lanes.hpp"
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

}  // namespace vkm
