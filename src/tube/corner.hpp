#pragma once

/// A corner a b c of a polygon, and the radius of the circle tangent to both of its edges at the end of the shorter:
/// min(l-, l+) / (2 tan(theta/2)).

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/elementary.hpp"
#include "core/vec3.hpp"
#include "tube/resolved_tube.hpp"

namespace vkm {

struct Corner {
  double length_minus;  ///< of the incoming edge
  double length_plus;   ///< of the outgoing edge
  double angle;         ///< turning angle, radians
};

/// cos theta of the edges u and w; 1 where one has collapsed.
inline double corner_cosine(const Vec3& u, const Vec3& w, double length_u, double length_w) {
  if (length_u <= tube_epsilon || length_w <= tube_epsilon) return 1.0;
  return std::clamp(dot(u, w) / (length_u * length_w), -1.0, 1.0);
}

inline Corner corner_of(const Vec3& a, const Vec3& b, const Vec3& c) {
  const Vec3 u = b - a;
  const Vec3 w = c - b;
  const double length_u = norm(u);
  const double length_w = norm(w);
  return {length_u, length_w, vkm::acos(corner_cosine(u, w, length_u, length_w))};
}

/// A collapsed edge makes the radius 0, a straight corner makes it infinite. `tangent` is tan(theta/2).
inline double corner_minrad(const Corner& corner, double tangent) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  if (corner.length_minus <= tube_epsilon || corner.length_plus <= tube_epsilon) return 0.0;
  if (corner.angle <= tube_epsilon) return infinity;
  const double d = 2.0 * tangent;
  if (std::fabs(d) <= tube_epsilon) return infinity;
  return std::min(corner.length_minus, corner.length_plus) / d;
}

/// A straight corner is infinite whatever its edges, and a vanishing tangent makes the radii 0: not what
/// corner_minrad says of either.
inline KinkRecord corner_kink(const Corner& corner, double tangent, std::uint64_t vertex) {
  KinkRecord kink;
  kink.vertex = vertex;
  kink.turning_angle = corner.angle;
  if (corner.angle <= tube_epsilon) {
    kink.minrad_minus = kink.minrad_plus = kink.minrad = std::numeric_limits<double>::infinity();
    return kink;
  }
  const double d = 2.0 * tangent;
  const bool small = std::fabs(d) <= tube_epsilon;
  kink.minrad_minus = corner.length_minus <= tube_epsilon || small ? 0.0 : corner.length_minus / d;
  kink.minrad_plus = corner.length_plus <= tube_epsilon || small ? 0.0 : corner.length_plus / d;
  kink.minrad = kink.minrad_minus > kink.minrad_plus ? kink.minrad_plus : kink.minrad_minus;
  return kink;
}

inline double half_tangent(const Corner& corner) { return vkm::tan(corner.angle / 2.0); }

}  // namespace vkm
