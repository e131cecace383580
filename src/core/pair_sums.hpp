#pragma once

/// The loop of every plain sum over pairs: sources one by one, a block of points at a time, one lane a point. Each
/// point adds its sources from the first to the last, so that any vector width has the bits of a double loop.
///
/// A sum is its term, a function of the source's vector e and the offset r from source to point, which is inlined into
/// the loop; a term that leaves a source out says so with `unless`. To be called from a VKM_KERNEL.

#include <cstddef>

#include "core/kernel.hpp"
#include "core/lane_view.hpp"
#include "core/poll.hpp"
#include "core/vec3.hpp"

#if defined(__GNUC__)
#define VKM_TERM __attribute__((always_inline))  // of a lambda, before its body
#else
#define VKM_TERM
#endif

namespace vkm {

/// A vector of one lane. Unlike Vec3's, its arithmetic is inlined at the kernel's vector width; the order is the same.
struct LaneVec3 {
  double x, y, z;
};

VKM_INLINE LaneVec3 operator-(const LaneVec3& a, const LaneVec3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
VKM_INLINE LaneVec3 operator*(const LaneVec3& a, double k) { return {a.x * k, a.y * k, a.z * k}; }
VKM_INLINE double dot(const LaneVec3& a, const LaneVec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
VKM_INLINE LaneVec3 cross(const LaneVec3& a, const LaneVec3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// The term, or what changes no sum, bit by bit: -0.0.
VKM_INLINE LaneVec3 unless(bool left_out, const LaneVec3& term) {
  return {left_out ? -0.0 : term.x, left_out ? -0.0 : term.y, left_out ? -0.0 : term.z};
}

/// Sources as lists of points and of vectors.
struct PointSources {
  const Vec3 *at, *vector;

  VKM_INLINE LaneVec3 place(std::size_t s) const { return {at[s][0], at[s][1], at[s][2]}; }
  VKM_INLINE LaneVec3 element(std::size_t s) const { return {vector[s][0], vector[s][1], vector[s][2]}; }
};

/// Sources coordinate by coordinate.
struct LaneSources {
  LaneView at, vector;

  VKM_INLINE LaneVec3 place(std::size_t s) const { return {at.x[s], at.y[s], at.z[s]}; }
  VKM_INLINE LaneVec3 element(std::size_t s) const { return {vector.x[s], vector.y[s], vector.z[s]}; }
};

/// Adds term(e, r, s, k) of the sources first .. last - 1 to the sums at a block of points; k is the lane.
template <class Sources, class Term>
VKM_INLINE void add_sources(const Sources& sources, std::size_t first, std::size_t last, const LaneView& points,
                            const LaneSpace& sums, const Term& term) {
  const double *x = points.x, *y = points.y, *z = points.z;
  double sum_x[lane_block], sum_y[lane_block], sum_z[lane_block];
  for (std::size_t k = 0; k < lane_block; ++k) {
    sum_x[k] = sums.x[k];
    sum_y[k] = sums.y[k];
    sum_z[k] = sums.z[k];
  }
  for (std::size_t s = first; s < last; ++s) {
    const LaneVec3 p = sources.place(s), e = sources.element(s);
    for (std::size_t k = 0; k < lane_block; ++k) {
      const LaneVec3 added = term(e, LaneVec3{x[k] - p.x, y[k] - p.y, z[k] - p.z}, s, k);
      sum_x[k] += added.x;
      sum_y[k] += added.y;
      sum_z[k] += added.z;
    }
  }
  for (std::size_t k = 0; k < lane_block; ++k) {
    sums.x[k] = sum_x[k];
    sums.y[k] = sum_y[k];
    sums.z[k] = sum_z[k];
  }
}

/// The same for a sum of numbers.
template <class Sources, class Term>
VKM_INLINE void add_sources(const Sources& sources, std::size_t first, std::size_t last, const LaneView& points,
                            double* sums, const Term& term) {
  const double *x = points.x, *y = points.y, *z = points.z;
  double sum[lane_block];
  for (std::size_t k = 0; k < lane_block; ++k) sum[k] = sums[k];
  for (std::size_t s = first; s < last; ++s) {
    const LaneVec3 p = sources.place(s), e = sources.element(s);
    for (std::size_t k = 0; k < lane_block; ++k) {
      sum[k] += term(e, LaneVec3{x[k] - p.x, y[k] - p.y, z[k] - p.z}, s, k);
    }
  }
  for (std::size_t k = 0; k < lane_block; ++k) sums[k] = sum[k];
}

/// Runs kernel(points, sums) on all blocks of points.
template <class Kernel>
Lanes sums_at(const Lanes& points, Heartbeat& heartbeat, const Kernel& kernel) {
  Lanes sums(points.size());
  for (std::size_t block = 0; block < points.blocks(); ++block) {
    kernel(view(points, block * lane_block), space(sums, block * lane_block));
    heartbeat.tick();
  }
  return sums;
}

}  // namespace vkm
