#include "filament/reach/edge_tree.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "core/finite.hpp"

namespace vkm {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr Box empty_box = {{infinity, infinity, infinity}, {-infinity, -infinity, -infinity}};

void include(Box& box, const Box& other) {
  for (std::size_t c = 0; c < 3; ++c) {
    box.low[c] = std::min(box.low[c], other.low[c]);
    box.high[c] = std::max(box.high[c], other.high[c]);
  }
}

}  // namespace

EdgeTree::EdgeTree(std::span<const Vec3> points)
    : size_(points.size()), leaves_((points.size() + leaf_size - 1) / leaf_size) {
  base_ = std::bit_ceil(std::max<std::size_t>(leaves_, 1));
  boxes_.assign(2 * base_, empty_box);
  for (auto& column : columns_) column.assign(leaves_ * leaf_size, std::numeric_limits<double>::quiet_NaN());
  for (std::size_t i = 0; i < size_; ++i) {
    const Vec3 &p = points[i], &q = points[i + 1 == size_ ? 0 : i + 1];
    const Vec3 mid = 0.5 * (p + q), vector = q - p;
    for (std::size_t c = 0; c < 3; ++c) {
      columns_[c][i] = mid[c];
      columns_[3 + c][i] = p[c];
      columns_[6 + c][i] = vector[c];
    }
    columns_[9][i] = norm(vector);
    // The distance from an edge with an end that is not finite is NaN: it stays outside all boxes.
    if (!all_finite(p) || !all_finite(q)) continue;
    Box& leaf = boxes_[base_ + i / leaf_size];
    include(leaf, {p, p});
    include(leaf, {q, q});
  }
  for (std::size_t k = base_ - 1; k > 0; --k) {
    include(boxes_[k], boxes_[2 * k]);
    include(boxes_[k], boxes_[2 * k + 1]);
  }
}

double EdgeTree::closed_length() const {
  double sum = 0.0;
  for (std::size_t i = 0; i < size_; ++i) sum += length()[i];
  return sum;
}

void EdgeTree::near_leaves(const Box& box, std::size_t first, double best, double slack,
                           std::vector<std::size_t>& out) const {
  // Depth first, left before right, without a stack of its own: from node k the next one to the right is the first
  // right sibling on the way up.
  std::size_t k = 1;
  std::size_t span = base_;  // leaves below k
  for (;;) {
    const std::size_t begin = k * span - base_;  // first leaf below k
    const bool pruned = begin + span <= first || begin >= leaves_ || box_distance2(box, boxes_[k], slack) >= best;
    if (!pruned && span > 1) {
      k *= 2;
      span /= 2;
      continue;
    }
    if (!pruned) out.push_back(begin);
    while (k & 1) {
      k /= 2;
      span *= 2;
    }
    if (k == 0) return;
    ++k;
  }
}

}  // namespace vkm
