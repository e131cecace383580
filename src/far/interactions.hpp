#pragma once

/// Which cells of sources a cell of points takes as expansions, and which one by one.
///
/// Two cells whose balls are apart are joined by an expansion of the least order that keeps the remainder's bound below
/// the allowance (taylor.hpp): with S = sum |e| of the sources, x = (r + r') / d and d^2 = R^2 + a^2,
///
///   S / d^2  x^p ((p + 3/2) / (1 - x) + x / (1 - x)^2)  <=  allowance,
///
/// where the order does not pass a limit, and the elements are not quicker to sum one by one. Else the larger of the
/// two is cut. Bounds are attained by single elements in line with a cell's middle, whose velocity is 0, and remainders
/// of different cells cancel: the allowance is that of one pair of cells, and the sum of all pairs stays near it.

#include <cstdint>
#include <vector>

#include "far/cell_tree.hpp"

namespace vkm::far {

struct Criterion {
  double allowance;  // of the velocity's remainder for each pair of cells
  double soft2;      // a^2
  int limit;         // order at most
};

/// A cell of points with a cell of sources.
struct Interaction {
  std::uint32_t points, sources;
  int order;  // 0: one by one
};

/// The interactions of the cells of points in the subtree of `root` with all sources, by cell of points; the
/// expansions of each come first, by descending order. `strength` is S by cell of sources.
std::vector<Interaction> interactions_of(const CellTree& points, std::uint32_t root, const CellTree& sources,
                                         const std::vector<double>& strength, const Criterion& criterion);

}  // namespace vkm::far
