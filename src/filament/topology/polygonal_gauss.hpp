#pragma once

/// The Gauss integral of closed polygons, exact for every pair of edges, with its integer audit.
///
/// The double integral of (dr1 x dr2) . r12 / |r12|^3 over two straight edges is the solid angle of the tetrahedron's
/// two visible faces, in closed form (Klenin and Langowski, Biopolymers 54 (2000) 307, method 1a; Banchoff 1976).
/// Lengths drop out: every number here is dimensionless. Indices wrap, the closing vertex is not repeated.

#include <cstdint>
#include <span>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// All zero for a curve of fewer than three vertices.
struct PolygonalGaussResult {
  double signed_integral = 0.0;            // writhe (self form) or linking number (pair form)
  double absolute_integral = 0.0;          // the same with absolute values: mean number of crossings seen, self form
  std::int64_t linking_integer_audit = 0;  // nearest integer to the signed integral, halves away from zero
};

/// Signed solid angle of the edges p1 p2 and p3 p4, in steradians. 0 where a face of the tetrahedron has (nearly) no
/// area: edges that touch, or that lie in a line.
double edge_pair_solid_angle(const Vec3& p1, const Vec3& p2, const Vec3& p3, const Vec3& p4);

/// Writhe: every pair of edges without a common vertex, once, over 2 pi.
PolygonalGaussResult polygonal_gauss_self(std::span<const Vec3> curve, const Poll& poll = {}, int threads = 1);

/// Linking number of two closed polygons: every pair of edges, over 4 pi.
PolygonalGaussResult polygonal_gauss_pair(std::span<const Vec3> a, std::span<const Vec3> b, const Poll& poll = {},
                                          int threads = 1);

}  // namespace vkm
