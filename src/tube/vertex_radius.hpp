#pragma once

/// The radii of a closed polygon's corners (corner.hpp): what curvature is to a curve. Vertex numbers are taken modulo
/// n.

#include <cstdint>
#include <span>
#include <vector>

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

/// Twice the relative error of an estimated radius, and more.
inline constexpr double estimate_margin = 1e-12;

/// Vertex radii without the inverse cosine and the tangent, by 2 tan(theta/2) = 2 sqrt((1 - cos) / (1 + cos)). Corners
/// too sharp for that, and collapsed ones, have their exact radius. For three points and more with their edge lengths.
std::vector<double> estimated_radii(std::span<const Vec3> points, std::span<const double> lengths);

/// global_minrad by the estimates: only corners whose estimate comes close to the least estimate can hold it.
double least_radius(std::span<const Vec3> points, std::span<const double> radii);

/// The kinks whose minrad is at most `contact`, by the estimates.
std::vector<KinkRecord> kinks_within(std::span<const Vec3> points, std::span<const double> radii, double contact);

}  // namespace vkm
