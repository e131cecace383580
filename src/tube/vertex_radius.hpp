#pragma once

/// The radii of a closed polygon's corners (corner.hpp): what curvature is to a curve. Vertex numbers are taken modulo
/// n.

#include <cstdint>
#include <span>

#include "core/vec3.hpp"
#include "tube/resolved_tube.hpp"

namespace vkm {

/// 0 where an edge has collapsed and for fewer than three points, +infinity where the corner is straight.
double minrad_at_vertex(std::span<const Vec3> points, std::uint64_t i);

/// Deviates from minrad_at_vertex on degenerate corners: a straight corner is infinite on both sides even if an edge
/// has collapsed, and an angle without a usable tangent gives 0. Throws std::invalid_argument below three points.
KinkRecord kink_at_vertex(std::span<const Vec3> points, std::uint64_t i);

/// The least minrad_at_vertex.
double global_minrad(std::span<const Vec3> points);

}  // namespace vkm
