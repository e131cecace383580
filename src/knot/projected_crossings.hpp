#pragma once

/// Pairs of segments of a closed polygon in the plane that may cross, found without a division a pair.
///
/// Segment i runs from A = P[i] to P[i+1], index N read as 0, with e = P[i] - P[i+1]; segment j likewise from C with f.
/// With g = A - C the lines meet at t = n_t / denom of the first and u = n_u / denom of the second, where
/// denom = f.y e.x - f.x e.y, n_t = f.y g.x - f.x g.y, n_u = g.x e.y - g.y e.x. A pair is left out only when the very
/// same rounded numbers put t or u outside (0, 1), or when the segments' boxes lie farther apart than rounding can
/// bridge for |denom| >= 1e-12, so no pair is lost that a test of every pair would take.

#include <cstddef>
#include <span>
#include <vector>

#include "core/lanes.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// Lines whose denom is below this in absolute value are parallel.
inline constexpr double parallel_limit = 1e-12;

class CrossingSearch {
 public:
  /// Planar coordinates of the N points; the third coordinate is not read.
  explicit CrossingSearch(const Lanes& points);

  /// The segments j from i + 2 on that may cross segment i, ascending, the neighbour across the closure left out.
  /// The span is good until the next call.
  std::span<const std::size_t> candidates(std::size_t i);

 private:
  struct Box {
    double low_x, high_x, low_y, high_y;
  };

  Box box_of(std::size_t i) const;
  double separation(std::size_t i) const;

  const Lanes& points_;
  Lanes edges_;
  std::vector<Box> block_boxes_;
  std::vector<std::size_t> found_;
  double longest_edge_ = 0.0;
  double diameter_ = 0.0;  // an upper bound
};

}  // namespace vkm
