#pragma once

/// Discrete measures of a closed polygon whose closing point is not repeated. Lengths in the unit of the points.

#include <cstdint>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// The curvature of a vertex is the change of the unit tangent over half the length of its two edges. A vertex with a
/// collapsed edge has none: it adds nothing to the sums but counts as a vertex of the mean.
struct PolygonMeasures {
  double length = 0.0;
  double kappa_max = 0.0;    // 1 / length
  double kappa_mean = 0.0;   // over the vertices, 1 / length
  double bend_energy = 0.0;  // sum of kappa^2 ds, 1 / length
};

/// All but the length is 0 for fewer than three points or a length that is not positive.
PolygonMeasures measure_polygon(std::span<const Vec3> points);

/// Least distance of vertices whose gap along the polygon is greater than `skip`. 0 for fewer than four points; 1e300
/// when no pair counts.
double min_non_neighbor_distance(std::span<const Vec3> points, std::int32_t skip, const Poll& poll = {});

/// Thickness of the polygon as a tube; 0 for fewer than four points.
double reach_proxy(std::span<const Vec3> points, std::int32_t skip, const Poll& poll = {});

/// (p[i+1] - p[i]) / |p[i+1] - p[i]|; the zero vector for a collapsed edge.
std::vector<Vec3> forward_tangents(std::span<const Vec3> points);

}  // namespace vkm
