#pragma once

/// Squared distances of a segment P0 P1 to a leaf of segments Q0 Q1: minima of |w + s u - t v|^2 over the unit square
/// with w = P0 - Q0, u = P1 - P0, v = Q1 - Q0, by clamping the minimum of the quadratic form to the square's edges (the
/// closest-point method of parametric segments; Eberly, Geometric Tools, 1999).
///
/// Choices stand in place of branches, and each clamp is a loop of its own: so compilers run it in lanes.

#include <cmath>
#include <cstddef>

#include "core/kernel.hpp"
#include "core/vec3.hpp"

namespace vkm {

template <std::size_t lanes>
VKM_INLINE void segment_distances2(const Vec3& P0, const Vec3& u, const double* qx, const double* qy, const double* qz,
                                   const double* vx, const double* vy, const double* vz, double* distance2) {
  constexpr double tiny = 1e-30;
  const double px = P0[0], py = P0[1], pz = P0[2];
  const double ux = u[0], uy = u[1], uz = u[2];
  const double a = ux * ux + uy * uy + uz * uz;
  double sN[lanes], sD[lanes], tN[lanes], tD[lanes], s_low[lanes], s_high[lanes];

  // s = sN / sD, moved to an end of its range where it lies outside; parallel segments take s = 0.
  for (std::size_t k = 0; k < lanes; ++k) {
    const double wx = px - qx[k], wy = py - qy[k], wz = pz - qz[k];
    const double b = ux * vx[k] + uy * vy[k] + uz * vz[k];
    const double c = vx[k] * vx[k] + vy[k] * vy[k] + vz[k] * vz[k];
    const double d = ux * wx + uy * wy + uz * wz;
    const double e = vx[k] * wx + vy[k] * wy + vz[k] * wz;
    const double D = a * c - b * b;
    const double s_free = b * e - c * d;
    const double t_free = a * e - b * d;
    const double t_end = e + b;
    const bool start = (D < tiny) | (s_free < 0.0);
    const bool end = s_free > D;
    const double s_inside = end ? D : s_free;
    const double t_inside = end ? t_end : t_free;
    const double t_scale = end ? c : D;
    sN[k] = start ? 0.0 : s_inside;
    tN[k] = start ? e : t_inside;
    tD[k] = start ? c : t_scale;
    sD[k] = D < tiny ? 1.0 : D;
    s_low[k] = -d;
    s_high[k] = -d + b;
  }
  // t likewise; where it is moved, s follows.
  double s_moved[lanes], moved[lanes];
  for (std::size_t k = 0; k < lanes; ++k) {
    const bool low = tN[k] < 0.0;
    const bool high = tN[k] > tD[k];
    s_moved[k] = low ? s_low[k] : s_high[k];
    moved[k] = low | high ? 1.0 : 0.0;
    const double t_inside = high ? tD[k] : tN[k];
    tN[k] = low ? 0.0 : t_inside;
  }
  double clamped[lanes], inner[lanes];
  for (std::size_t k = 0; k < lanes; ++k) {
    const double inside = s_moved[k] > a ? sD[k] : s_moved[k];
    clamped[k] = s_moved[k] < 0.0 ? 0.0 : inside;
  }
  for (std::size_t k = 0; k < lanes; ++k) inner[k] = (s_moved[k] >= 0.0) & (s_moved[k] <= a) ? moved[k] : 0.0;
  for (std::size_t k = 0; k < lanes; ++k) {
    sN[k] = moved[k] != 0.0 ? clamped[k] : sN[k];
    sD[k] = inner[k] != 0.0 ? a : sD[k];
  }
  for (std::size_t k = 0; k < lanes; ++k) {
    const double s_ratio = sN[k] / sD[k];
    const double t_ratio = tN[k] / tD[k];
    const double s = std::abs(sD[k]) < tiny ? 0.0 : s_ratio;
    const double t = std::abs(tD[k]) < tiny ? 0.0 : t_ratio;
    const double x = px - qx[k] + s * ux - t * vx[k];
    const double y = py - qy[k] + s * uy - t * vy[k];
    const double z = pz - qz[k] + s * uz - t * vz[k];
    distance2[k] = x * x + y * y + z * z;
  }
}

}  // namespace vkm
