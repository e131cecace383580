#include "filament/reach/tube_clearance.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/kernel.hpp"
#include "filament/reach/edge_tree.hpp"
#include "filament/reach/segment_distance.hpp"

namespace vkm {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr std::size_t leaf_size = EdgeTree::leaf_size;

/// One edge, and the edges of a leaf by coordinate.
struct Edge {
  double mx, my, mz, length;  // midpoint
  double px, py, pz;          // start
  double ux, uy, uz;          // from start to end
};

struct Leaf {
  const double *mx, *my, *mz, *length;
  const double *px, *py, *pz;
  const double *ux, *uy, *uz;
};

/// The midpoint bound of the squared distances from `edge` to the leaf's edges, -1 where it is of no use; whether one
/// of them leaves its edge in play below `best`. NaN stays in play.
VKM_KERNEL bool bound_leaf(const Edge& edge, const Leaf& leaf, double best, double* bound) {
  for (std::size_t k = 0; k < leaf_size; ++k) {
    const double dx = edge.mx - leaf.mx[k], dy = edge.my - leaf.my[k], dz = edge.mz - leaf.mz[k];
    const double g = std::sqrt(dx * dx + dy * dy + dz * dz) - 0.5 * (edge.length + leaf.length[k]);
    bound[k] = g > 0.0 ? g * g : -1.0;
  }
  std::int64_t in_play = 0;
  for (std::size_t k = 0; k < leaf_size; ++k) in_play |= bound[k] >= best ? 0 : 1;
  return in_play != 0;
}

/// The squared distances from `edge` to the leaf's edges; whether one is below `best`.
VKM_KERNEL bool measure_leaf(const Edge& edge, const Leaf& leaf, double best, double* distance2) {
  segment_distances2<leaf_size>({edge.px, edge.py, edge.pz}, {edge.ux, edge.uy, edge.uz}, leaf.px, leaf.py, leaf.pz,
                                leaf.ux, leaf.uy, leaf.uz, distance2);
  std::int64_t below = 0;
  for (std::size_t k = 0; k < leaf_size; ++k) below |= distance2[k] < best ? 1 : 0;
  return below != 0;
}

/// Searches the pairs of edges row by row, in the order of the plain loop.
class PairSearch {
 public:
  explicit PairSearch(Heartbeat& heartbeat) : heartbeat_(heartbeat) {}

  /// Least squared distance within `a` over pairs at least `window` edges apart; infinity if there are none.
  double within(const EdgeTree& a, std::size_t window) {
    const std::size_t n = a.size();
    if (n < 4 || window > n / 2) return infinity;
    best_ = infinity;
    slack_ = rounding_slack(a.box(), a.box());
    for (std::size_t leaf = 0; leaf < a.leaves(); ++leaf) {
      const std::size_t begin = leaf * leaf_size;
      // The gap the other way round, n - (j - i), is at least the window too: j <= i + n - window.
      collect(a.leaf_box(leaf), a, (begin + window) / leaf_size);
      for (std::size_t i = begin; i < std::min(begin + leaf_size, n); ++i) {
        row(a, i, a, i + window, std::min(n, i + n - window + 1));
      }
    }
    return best_;
  }

  double between(const EdgeTree& a, const EdgeTree& b) {
    best_ = infinity;
    slack_ = rounding_slack(a.box(), b.box());
    for (std::size_t leaf = 0; leaf < a.leaves(); ++leaf) {
      const std::size_t begin = leaf * leaf_size;
      collect(a.leaf_box(leaf), b, 0);
      for (std::size_t i = begin; i < std::min(begin + leaf_size, a.size()); ++i) row(a, i, b, 0, b.size());
    }
    return best_;
  }

  /// Some fifty roundings of the coordinates' range: more than the distances of boxes and of edges lose together.
  static double rounding_slack(const Box& a, const Box& b) {
    double range = 0.0;
    for (std::size_t c = 0; c < 3; ++c) {
      range = std::max(range, std::max(a.high[c], b.high[c]) - std::min(a.low[c], b.low[c]));
    }
    return 1e-14 * range;
  }

 private:
  void collect(const Box& box, const EdgeTree& b, std::size_t first) {
    heartbeat_.tick();
    candidates_.clear();
    b.near_leaves(box, first, best_, slack_, candidates_);
  }

  /// Edge i of `a` against the edges first .. last - 1 of `b` in the collected leaves.
  void row(const EdgeTree& a, std::size_t i, const EdgeTree& b, std::size_t first, std::size_t last) {
    const Leaf at = columns_from(a, i);
    const Edge edge = {*at.mx, *at.my, *at.mz, *at.length, *at.px, *at.py, *at.pz, *at.ux, *at.uy, *at.uz};
    for (const std::size_t place : candidates_) {
      const Leaf leaf = columns_from(b, place * leaf_size);
      double bound[leaf_size], distance2[leaf_size];
      if (!bound_leaf(edge, leaf, best_, bound) || !measure_leaf(edge, leaf, best_, distance2)) continue;
      for (std::size_t k = 0; k < leaf_size; ++k) {
        const std::size_t j = place * leaf_size + k;
        if (j < first || j >= last || bound[k] >= best_) continue;
        best_ = std::min(best_, distance2[k]);
      }
    }
  }

  static Leaf columns_from(const EdgeTree& edges, std::size_t i) {
    return {edges.mid(0) + i,   edges.mid(1) + i,   edges.mid(2) + i,    edges.length() + i,  edges.start(0) + i,
            edges.start(1) + i, edges.start(2) + i, edges.vector(0) + i, edges.vector(1) + i, edges.vector(2) + i};
  }

  Heartbeat& heartbeat_;
  double best_ = infinity;
  double slack_ = 0.0;
  std::vector<std::size_t> candidates_;
};

/// Index gap below which edges of one polygon are neighbours.
std::size_t neighbour_window(const EdgeTree& edges, double core_radius) {
  constexpr std::size_t least = 2;
  const std::size_t n = edges.size();
  if (!(core_radius > 0.0) || n < 2) return least;
  const double mean = edges.closed_length() / static_cast<double>(n);
  const double window = std::ceil(core_radius * 6.0 / std::max(mean, 1e-12));
  if (!(window > static_cast<double>(least))) return least;
  return window < static_cast<double>(n) ? static_cast<std::size_t>(window) : n;
}

}  // namespace

TubeClearance tube_clearance(std::span<const std::vector<Vec3>> curves, double core_radius, const Poll& poll) {
  Heartbeat heartbeat(poll);
  PairSearch search(heartbeat);
  std::vector<EdgeTree> trees(curves.begin(), curves.end());
  TubeClearance result;
  for (const EdgeTree& tree : trees) {
    result.self_min = std::min(result.self_min, std::sqrt(search.within(tree, neighbour_window(tree, core_radius))));
  }
  for (std::size_t a = 0; a < trees.size(); ++a) {
    heartbeat.tick();
    if (trees[a].size() < 2) continue;
    for (std::size_t b = a + 1; b < trees.size(); ++b) {
      if (trees[b].size() < 2) continue;
      const Box &box_a = trees[a].box(), &box_b = trees[b].box();
      const double bound = box_distance2(box_a, box_b, PairSearch::rounding_slack(box_a, box_b));
      if (std::sqrt(bound) > result.inter_min) continue;
      result.inter_min = std::min(result.inter_min, std::sqrt(search.between(trees[a], trees[b])));
    }
  }
  result.clearance = std::min(result.self_min, result.inter_min);
  return result;
}

}  // namespace vkm
