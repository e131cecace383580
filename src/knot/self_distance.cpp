#include "knot/self_distance.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "core/finite.hpp"
#include "core/kernel.hpp"

namespace vkm {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// Points of one leaf of the tree; rows behind its end are NaN, which no comparison counts.
constexpr std::size_t leaf_size = 8;

/// The points of the tree in its order, coordinate by coordinate, with their places along the curve. Places are kept as
/// doubles (exact up to 2^53), so that one vector width serves the whole leaf.
struct Columns {
  std::array<std::vector<double>, 3> coordinate;
  std::vector<double> place;
};

/// Least squared distance below `best` between the points of two leaves (which may be the same) whose gap is greater
/// than `window`, or `best`.
VKM_KERNEL double least_in_leaves(const Columns& columns, std::size_t a, std::size_t b, double count, double window,
                                  double best) {
  const double* x = columns.coordinate[0].data();
  const double* y = columns.coordinate[1].data();
  const double* z = columns.coordinate[2].data();
  const double* place = columns.place.data();
  double least[leaf_size];
  for (std::size_t k = 0; k < leaf_size; ++k) least[k] = best;
  for (std::size_t i = a; i < a + leaf_size; ++i) {
    for (std::size_t k = 0; k < leaf_size; ++k) {
      const double dx = x[i] - x[b + k];
      const double dy = y[i] - y[b + k];
      const double dz = z[i] - z[b + k];
      const double d2 = dx * dx + dy * dy + dz * dz;
      const double step = std::abs(place[i] - place[b + k]);
      const double gap = count - step < step ? count - step : step;
      const double counted = gap > window ? d2 : infinity;
      least[k] = counted < least[k] ? counted : least[k];
    }
  }
  for (std::size_t k = 0; k < leaf_size; ++k) best = least[k] < best ? least[k] : best;
  return best;
}

/// A run of points in the tree's order: its box, and the range of its places along the curve.
struct Node {
  Vec3 low;
  Vec3 high;
  double first_place;
  double last_place;
};

/// A balanced tree of boxes over the finite points, split at the median of the widest axis. The points below a node are
/// consecutive. Children of node n are 2 n + 1 and 2 n + 2; a node of one leaf has none.
class BoxTree {
 public:
  BoxTree(std::span<const Vec3> points, std::int64_t window, const Poll& poll)
      : count_(static_cast<double>(points.size())), window_(static_cast<double>(window)), heartbeat_(poll) {
    order_.reserve(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
      // A point that is not finite has no finite distance to any other.
      const Vec3& p = points[i];
      if (all_finite(p)) order_.push_back(i);
    }
    if (order_.empty()) return;
    leaves_ = (order_.size() + leaf_size - 1) / leaf_size;
    build(points, 0, 0, leaves_);
    fill_columns(points);
  }

  /// Least squared distance of a counted pair below `best`, or `best`.
  double least_below(double best) {
    best_ = best;
    if (leaves_ > 0) search_within(0, 0, leaves_);
    return best_;
  }

 private:
  static std::size_t middle(std::size_t begin, std::size_t end) { return begin + (end - begin + 1) / 2; }

  void build(std::span<const Vec3> points, std::size_t node, std::size_t begin, std::size_t end) {
    const auto first = order_.begin() + static_cast<std::ptrdiff_t>(begin * leaf_size);
    const auto last = order_.begin() + static_cast<std::ptrdiff_t>(std::min(end * leaf_size, order_.size()));
    Node box{{infinity, infinity, infinity}, {-infinity, -infinity, -infinity}, infinity, -infinity};
    for (auto it = first; it != last; ++it) {
      for (std::size_t axis = 0; axis < 3; ++axis) {
        box.low[axis] = std::min(box.low[axis], points[*it][axis]);
        box.high[axis] = std::max(box.high[axis], points[*it][axis]);
      }
      box.first_place = std::min(box.first_place, static_cast<double>(*it));
      box.last_place = std::max(box.last_place, static_cast<double>(*it));
    }
    if (nodes_.size() <= node) nodes_.resize(node + 1);
    nodes_[node] = box;
    if (end - begin == 1) return;
    // Halves first: the width of a box may overflow, half of it does not.
    std::size_t axis = 0;
    for (std::size_t k = 1; k < 3; ++k) {
      if (0.5 * box.high[k] - 0.5 * box.low[k] > 0.5 * box.high[axis] - 0.5 * box.low[axis]) axis = k;
    }
    const std::size_t split = middle(begin, end);
    std::nth_element(first, first + static_cast<std::ptrdiff_t>((split - begin) * leaf_size), last,
                     [&](std::size_t a, std::size_t b) { return points[a][axis] < points[b][axis]; });
    if (end - begin > 512) heartbeat_.tick();
    build(points, 2 * node + 1, begin, split);
    build(points, 2 * node + 2, split, end);
  }

  void fill_columns(std::span<const Vec3> points) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      columns_.coordinate[axis].assign(leaves_ * leaf_size, std::numeric_limits<double>::quiet_NaN());
      for (std::size_t k = 0; k < order_.size(); ++k) columns_.coordinate[axis][k] = points[order_[k]][axis];
    }
    columns_.place.assign(leaves_ * leaf_size, 0.0);
    for (std::size_t k = 0; k < order_.size(); ++k) columns_.place[k] = static_cast<double>(order_[k]);
  }

  /// No pair of points of the two boxes has a smaller squared distance as the leaves compute it: differences, squares
  /// and sums are rounded monotonically, and stand in the same order here.
  static double least_distance2(const Node& a, const Node& b) {
    Vec3 gap{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
      gap[axis] = std::max(0.0, std::max(a.low[axis] - b.high[axis], b.low[axis] - a.high[axis]));
    }
    return norm2(gap);
  }

  /// True when every pair of places of the two nodes has a gap within the window.
  bool within_window(const Node& a, const Node& b) const {
    const double most = std::max(a.last_place - b.first_place, b.last_place - a.first_place);
    const double least = std::max(0.0, std::max(a.first_place - b.last_place, b.first_place - a.last_place));
    return most <= window_ || count_ - least <= window_;
  }

  void search_leaves(std::size_t a, std::size_t b) {
    if (++visits_ % 512 == 0) heartbeat_.tick();
    best_ = least_in_leaves(columns_, a * leaf_size, b * leaf_size, count_, window_, best_);
  }

  void search_within(std::size_t node, std::size_t begin, std::size_t end) {
    if (within_window(nodes_[node], nodes_[node])) return;
    if (end - begin == 1) return search_leaves(begin, begin);
    const std::size_t split = middle(begin, end);
    search_within(2 * node + 1, begin, split);
    search_within(2 * node + 2, split, end);
    search_between(2 * node + 1, begin, split, 2 * node + 2, split, end);
  }

  void search_between(std::size_t a, std::size_t a_begin, std::size_t a_end, std::size_t b, std::size_t b_begin,
                      std::size_t b_end) {
    if (least_distance2(nodes_[a], nodes_[b]) >= best_ || within_window(nodes_[a], nodes_[b])) return;
    const std::size_t a_leaves = a_end - a_begin;
    const std::size_t b_leaves = b_end - b_begin;
    if (a_leaves == 1 && b_leaves == 1) return search_leaves(a_begin, b_begin);
    if (a_leaves >= b_leaves) {
      const std::size_t split = middle(a_begin, a_end);
      search_between(2 * a + 1, a_begin, split, b, b_begin, b_end);
      search_between(2 * a + 2, split, a_end, b, b_begin, b_end);
    } else {
      const std::size_t split = middle(b_begin, b_end);
      search_between(a, a_begin, a_end, 2 * b + 1, b_begin, split);
      search_between(a, a_begin, a_end, 2 * b + 2, split, b_end);
    }
  }

  double count_;
  double window_;
  double best_ = infinity;
  Heartbeat heartbeat_;
  std::size_t visits_ = 0;
  std::size_t leaves_ = 0;
  std::vector<std::size_t> order_;
  std::vector<Node> nodes_;
  Columns columns_;
};

/// Least squared distance of the pairs with the smallest gap that counts: on a smooth curve a bound near the result.
double least_at_gap(std::span<const Vec3> points, std::size_t gap) {
  double best = infinity;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const std::size_t j = i + gap < points.size() ? i + gap : i + gap - points.size();
    const double d2 = norm2(points[i] - points[j]);
    if (d2 < best) best = d2;
  }
  return best;
}

}  // namespace

double least_self_distance(std::span<const Vec3> points, std::int64_t exclude_window, const Poll& poll) {
  const auto count = static_cast<std::int64_t>(points.size());
  const std::int64_t window = std::max<std::int64_t>(exclude_window, 0);  // no pair has a gap below 1
  if (window >= count / 2) return infinity;
  const double seed = least_at_gap(points, static_cast<std::size_t>(window) + 1);
  return std::sqrt(BoxTree(points, window, poll).least_below(seed));
}

double min_self_distance_sampled(std::span<const Vec3> points, std::int64_t exclude_window, const Poll& poll) {
  if (points.size() < 4) return 0.0;
  const double least = least_self_distance(points, exclude_window, poll);
  return least < infinity ? least : 0.0;
}

}  // namespace vkm
