#pragma once

/// The edges of a closed polygon with a tree of boxes over runs of consecutive edges, for searches of close pairs.
///
/// Runs along a curve are compact, so the order of the edges serves as the tree's order; a leaf is a run of eight.

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

  std::size_t size() const { return points_.size(); }
  std::size_t leaves() const { return leaves_; }
  const Vec3& start(std::size_t i) const { return points_[i]; }
  const Vec3& end(std::size_t i) const { return points_[i + 1 == points_.size() ? 0 : i + 1]; }
  const Box& leaf_box(std::size_t leaf) const { return boxes_[base_ + leaf]; }
  const Box& box() const { return boxes_[1]; }
  double closed_length() const;

  /// Appends the leaves from `first` on whose boxes come nearer to `box` than the square root of `best`, in ascending
  /// order. Each gap between boxes is taken `slack` shorter.
  void near_leaves(const Box& box, std::size_t first, double best, double slack, std::vector<std::size_t>& out) const;

  /// Midpoints by axis, and edge lengths; filled up with NaN to whole leaves.
  const double* mid(std::size_t axis) const { return mid_[axis].data(); }
  const double* length() const { return length_.data(); }

 private:
  std::span<const Vec3> points_;  // the caller's
  std::size_t leaves_;
  std::size_t base_ = 1;    // leaves stand at base_ + leaf in a binary heap; base_ is a power of two
  std::vector<Box> boxes_;  // node k has the children 2 k and 2 k + 1; the root is 1
  std::vector<double> mid_[3];
  std::vector<double> length_;
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
