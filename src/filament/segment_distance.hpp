#pragma once

/// Squared distance of two segments P0 P1 and Q0 Q1: the minimum of |w + s u - t v|^2 over the unit square, by clamping
/// the minimum of the quadratic form to the square's edges (the closest-point method of parametric segments; Eberly,
/// Geometric Tools, 1999).

#include <cmath>

#include "core/vec3.hpp"

namespace vkm {

inline double segment_distance2(const Vec3& P0, const Vec3& P1, const Vec3& Q0, const Vec3& Q1) {
  constexpr double parallel = 1e-30;
  const Vec3 u = P1 - P0, v = Q1 - Q0, w = P0 - Q0;
  const double a = dot(u, u), b = dot(u, v), c = dot(v, v), d = dot(u, w), e = dot(v, w);
  const double D = a * c - b * b;
  double sN, sD = D, tN, tD = D;
  if (D < parallel) {
    sN = 0.0;
    sD = 1.0;
    tN = e;
    tD = c;
  } else {
    sN = b * e - c * d;
    tN = a * e - b * d;
    if (sN < 0.0) {
      sN = 0.0;
      tN = e;
      tD = c;
    } else if (sN > D) {
      sN = D;
      tN = e + b;
      tD = c;
    }
  }
  const auto clamp_s = [&](double numerator) {
    if (numerator < 0.0) {
      sN = 0.0;
    } else if (numerator > a) {
      sN = sD;
    } else {
      sN = numerator;
      sD = a;
    }
  };
  if (tN < 0.0) {
    tN = 0.0;
    clamp_s(-d);
  } else if (tN > tD) {
    tN = tD;
    clamp_s(-d + b);
  }
  const double sc = std::abs(sD) < parallel ? 0.0 : sN / sD;
  const double tc = std::abs(tD) < parallel ? 0.0 : tN / tD;
  return norm2(w + sc * u - tc * v);
}

}  // namespace vkm
