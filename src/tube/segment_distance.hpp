#pragma once

/// Distance of two segments p0 p1 and q0 q1: the closest points p0 + s (p1 - p0) and q0 + t (q1 - q0) by minimising
/// the quadratic in s and t over the unit square (D. Eberly, Robust computation of distance between line segments;
/// the clamping order is that of D. Sunday, Distance between lines and segments with closest point of approach).
///
/// The tests compare squared lengths, and their products, with the epsilon, so that pairs of short edges count as
/// parallel early. One operand order holds for all callers: results are compared bit by bit.

#include <algorithm>
#include <cmath>

#include "core/kernel.hpp"
#include "core/vec3.hpp"

namespace vkm {

struct SegmentDistance {
  double distance;
  double s;
  double t;
};

VKM_INLINE SegmentDistance segment_distance(const Vec3& p0, const Vec3& p1, const Vec3& q0, const Vec3& q1) {
  constexpr double eps = 1e-14;
  const Vec3 d1 = p1 - p0;
  const Vec3 d2 = q1 - q0;
  const Vec3 r = p0 - q0;
  const double a = dot(d1, d1);
  const double e = dot(d2, d2);
  const double f = dot(d2, r);

  if (a <= eps && e <= eps) return {norm(p0 - q0), 0.0, 0.0};
  if (a <= eps) {
    const double t = std::clamp(f / e, 0.0, 1.0);
    return {norm(p0 - (q0 + t * d2)), 0.0, t};
  }
  const double c = dot(d1, r);
  if (e <= eps) {
    const double s = std::clamp(-c / a, 0.0, 1.0);
    return {norm((p0 + s * d1) - q0), s, 0.0};
  }

  const double b = dot(d1, d2);
  const double D = a * e - b * b;
  double sN;
  double sD;
  double tN;
  double tD;
  if (D < eps) {
    sN = 0.0;
    sD = 1.0;
    tN = f;
    tD = e;
  } else {
    sD = D;
    sN = b * f - c * e;
    if (sN < 0.0) {
      sN = 0.0;
      tN = f;
      tD = e;
    } else if (sN > D) {
      sN = D;
      tN = f + b;
      tD = e;
    } else {
      tN = a * f - b * c;
      tD = D;
    }
  }
  const bool below = tN < 0.0;
  if (below || tN > tD) {
    const double m = below ? -c : b - c;
    tN = below ? 0.0 : tD;
    if (m < 0.0) {
      sN = 0.0;
    } else if (m > a) {
      sN = sD;
    } else {
      sN = m;
      sD = a;
    }
  }
  const double s = std::clamp(std::fabs(sN) < eps ? 0.0 : sN / sD, 0.0, 1.0);
  const double t = std::clamp(std::fabs(tN) < eps ? 0.0 : tN / tD, 0.0, 1.0);
  return {norm((p0 + s * d1) - (q0 + t * d2)), s, t};
}

}  // namespace vkm
