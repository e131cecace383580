#pragma once

/// The edges of a closed polygon with a tree of boxes over runs of consecutive edges, for searches of close pairs.
///
/// Runs along a curve are compact, so the order of the edges serves as the tree's order; a leaf is a run of eight.

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "core/vec3.hpp"

namespace vkm {

struct Box {
  Vec3 low;
  Vec3 high;
};

class EdgeTree {
 public:
  static constexpr std::size_t leaf_size = 8;

  explicit EdgeTree(std::span<const Vec3> points);

  std::size_t size() const { return size_; }
  std::size_t leaves() const { return leaves_; }
  const Box& leaf_box(std::size_t leaf) const { return boxes_[base_ + leaf]; }
  const Box& box() const { return boxes_[1]; }
  double closed_length() const;

  /// Appends the leaves from `first` on whose boxes come nearer to `box` than the square root of `best`, in ascending
  /// order. Each gap between boxes is taken `slack` shorter.
  void near_leaves(const Box& box, std::size_t first, double best, double slack, std::vector<std::size_t>& out) const;

  /// Midpoints, starts and vectors from start to end by axis, and lengths; filled up with NaN to whole leaves.
  const double* mid(std::size_t axis) const { return columns_[axis].data(); }
  const double* start(std::size_t axis) const { return columns_[3 + axis].data(); }
  const double* vector(std::size_t axis) const { return columns_[6 + axis].data(); }
  const double* length() const { return columns_[9].data(); }

 private:
  std::size_t size_;
  std::size_t leaves_;
  std::size_t base_ = 1;    // leaves stand at base_ + leaf in a binary heap; base_ is a power of two
  std::vector<Box> boxes_;  // node k has the children 2 k and 2 k + 1; the root is 1
  std::array<std::vector<double>, 10> columns_;
};

/// A lower bound of the squared distance of points of the two boxes, each axis's gap taken `slack` shorter.
inline double box_distance2(const Box& a, const Box& b, double slack) {
  Vec3 gap;
  for (std::size_t c = 0; c < 3; ++c) {
    const double below = a.low[c] - b.high[c], above = b.low[c] - a.high[c];
    const double widest = (below > above ? below : above) - slack;
    gap[c] = widest > 0.0 ? widest : 0.0;
  }
  return norm2(gap);
}

}  // namespace vkm
