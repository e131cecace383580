#pragma once

/// A binary tree of cells over points: each cell holds a run of the points in the tree's order, and the ball about the
/// middle of their box. A cell of more than `leaf` points is cut across the longest side of its box, in the middle, or
/// at the median where the middle would leave nearly all points on one side: the depth stays logarithmic.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "core/vec3.hpp"

namespace vkm::far {

struct Cell {
  std::uint32_t begin, end;     // points in the tree's order
  std::uint32_t right;          // the second child; the first one is the next cell. 0 for a leaf
  std::uint32_t after;          // the first cell behind this one's descendants
  Vec3 centre;
  double radius;

  std::size_t size() const { return end - begin; }
  bool is_leaf() const { return right == 0; }
};

struct CellTree {
  std::vector<Cell> cells;           // parents before children; the root is the first. Empty without points
  std::vector<std::uint32_t> order;  // the index of each point of the tree
};

/// At most 2^32 - 1 points, which must be finite.
CellTree cell_tree(std::span<const Vec3> points, std::size_t leaf);

/// The least set of cells that hold all points, and at most `size` each unless they are leaves.
std::vector<std::uint32_t> cut(const CellTree& tree, std::size_t size);

}  // namespace vkm::far
