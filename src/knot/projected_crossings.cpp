#include "knot/projected_crossings.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "core/kernel.hpp"

namespace vkm {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// Sets hit[k] where segment k of a block may cross the segment from (px, py) with e = (ex, ey); true if one does.
VKM_KERNEL bool test_block(const double* x, const double* y, const double* fx, const double* fy, double px, double py,
                           double ex, double ey, std::int64_t* hit) {
  std::int64_t flags[lane_block];
  std::int64_t any = 0;
  for (std::size_t k = 0; k < lane_block; ++k) {
    const double gx = px - x[k];
    const double gy = py - y[k];
    const double denom = fy[k] * ex - fx[k] * ey;
    const double nt = fy[k] * gx - fx[k] * gy;
    const double nu = gx * ey - gy * ex;
    // A product that counts cannot underflow: |denom| >= 1e-12 and t > 1e-12. A quotient is below 1 just where its
    // numerator is the smaller.
    const std::int64_t t_inside = (nt * denom > 0.0) & (std::abs(nt) < std::abs(denom));
    const std::int64_t u_inside = (nu * denom > 0.0) & (std::abs(nu) < std::abs(denom));
    flags[k] = t_inside & u_inside;
    any |= flags[k];
  }
  if (any == 0) return false;
  for (std::size_t k = 0; k < lane_block; ++k) hit[k] = flags[k];
  return true;
}

}  // namespace

CrossingSearch::CrossingSearch(const Lanes& points)
    : points_(points),
      edges_(points.size()),
      block_boxes_(points.blocks(), {infinity, -infinity, infinity, -infinity}) {
  const std::size_t n = points.size();
  Box all{infinity, -infinity, infinity, -infinity};
  const auto grow = [](Box& box, const Box& by) {
    box.low_x = std::min(box.low_x, by.low_x);
    box.high_x = std::max(box.high_x, by.high_x);
    box.low_y = std::min(box.low_y, by.low_y);
    box.high_y = std::max(box.high_y, by.high_y);
  };
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t next = i + 1 == n ? 0 : i + 1;
    const double ex = points.axis(0)[i] - points.axis(0)[next];
    const double ey = points.axis(1)[i] - points.axis(1)[next];
    edges_.set(i, {ex, ey, 0.0});
    longest_edge_ = std::max(longest_edge_, std::abs(ex) + std::abs(ey));
    const Box box = box_of(i);
    grow(block_boxes_[i / lane_block], box);
    grow(all, box);
  }
  diameter_ = (all.high_x - all.low_x) + (all.high_y - all.low_y);
}

CrossingSearch::Box CrossingSearch::box_of(std::size_t i) const {
  const std::size_t next = i + 1 == points_.size() ? 0 : i + 1;
  const auto [low_x, high_x] = std::minmax(points_.axis(0)[i], points_.axis(0)[next]);
  const auto [low_y, high_y] = std::minmax(points_.axis(1)[i], points_.axis(1)[next]);
  return {low_x, high_x, low_y, high_y};
}

/// The gap between the boxes of segment i and another that rounding cannot bridge. The rounded t and u miss the true
/// ones by about 2 (|f| |g| + |e| |f|) ulp / |denom| each, with ulp = 2^-53 and |denom| at least half of
/// parallel_limit while |e| |f| < 1000; the points at t and u then miss each other by that times |e| and |f|.
double CrossingSearch::separation(std::size_t i) const {
  const double e = std::abs(edges_.axis(0)[i]) + std::abs(edges_.axis(1)[i]);
  const double product = e * longest_edge_;
  if (!(product < 1e3)) return infinity;
  return 1.2e-16 * (diameter_ + e + longest_edge_) * (1.0 + 1e13 * product);
}

std::span<const std::size_t> CrossingSearch::candidates(std::size_t i) {
  found_.clear();
  const std::size_t n = points_.size();
  const std::size_t end = i == 0 ? n - 1 : n;
  const std::size_t first = i + 2;
  const double *x = points_.axis(0), *y = points_.axis(1), *fx = edges_.axis(0), *fy = edges_.axis(1);
  const double gap = separation(i);
  const Box box = box_of(i);
  for (std::size_t block = first / lane_block * lane_block; block < end; block += lane_block) {
    const Box& other = block_boxes_[block / lane_block];
    if (other.low_x - box.high_x > gap || box.low_x - other.high_x > gap || other.low_y - box.high_y > gap ||
        box.low_y - other.high_y > gap) {
      continue;
    }
    std::int64_t hit[lane_block];
    if (!test_block(x + block, y + block, fx + block, fy + block, x[i], y[i], fx[i], fy[i], hit)) continue;
    for (std::size_t j = std::max(first, block); j < std::min(end, block + lane_block); ++j) {
      if (hit[j - block] != 0) found_.push_back(j);
    }
  }
  return found_;
}

}  // namespace vkm
