#include "tube/edge_pair_search.hpp"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cmath>
#include <limits>

#include "core/finite.hpp"
#include "core/kernel.hpp"
#include "core/memory.hpp"
#include "core/tasks.hpp"
#include "tube/segment_distance.hpp"

namespace vkm {

namespace {

constexpr std::size_t width = EdgePairSearch::width;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr unsigned all_lanes = (1u << width) - 1;
constexpr std::int64_t lane_bit[width] = {1, 2, 4, 8, 16, 32, 64, 128};
/// From this many pairs of one edge and one leaf on, their distances are computed side by side.
constexpr int least_lanes = 3;

struct Box {
  Vec3 low = {infinity, infinity, infinity};
  Vec3 high = {-infinity, -infinity, -infinity};
};

VKM_INLINE Box lane_of(const EdgePairSearch::Boxes& boxes, std::size_t lane) {
  Box box;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    box.low[axis] = boxes.low[axis][lane];
    box.high[axis] = boxes.high[axis][lane];
  }
  return box;
}

VKM_INLINE Box widened(Box box, double slack) {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    box.low[axis] -= slack;
    box.high[axis] += slack;
  }
  return box;
}

/// Lanes whose box may hold a point within the square root of `limit2` of `box`. A lane is dropped by a true
/// comparison, so that lanes without a number stay.
VKM_INLINE unsigned near_lanes(const EdgePairSearch::Boxes& boxes, const Box& box, double limit2) {
  std::int64_t far[width];
  for (std::size_t lane = 0; lane < width; ++lane) {
    double gap2 = 0.0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const double above = box.low[axis] - boxes.high[axis][lane];
      const double below = boxes.low[axis][lane] - box.high[axis];
      double gap = above > below ? above : below;
      gap = gap > 0.0 ? gap : 0.0;
      gap2 += gap * gap;
    }
    far[lane] = gap2 > limit2 ? lane_bit[lane] : 0;
  }
  std::int64_t dropped = 0;
  for (std::size_t lane = 0; lane < width; ++lane) dropped |= far[lane];
  return all_lanes & ~static_cast<unsigned>(dropped);
}

struct LaneDistances {
  double distance[width];
  double s[width];
  double t[width];
};

/// segment_distance of one edge of usable length with the eight edges of a leaf: the same operations on the taken
/// side of each branch, and selection in its place.
VKM_INLINE void lane_distances(const Vec3& p0, const Vec3& p1, const EdgePairSearch::Edges& edges, LaneDistances& out) {
  constexpr double eps = 1e-14;
  const Vec3 d1 = p1 - p0;
  const double a = dot(d1, d1);
  for (std::size_t lane = 0; lane < width; ++lane) {
    const double qx = edges.start[0][lane];
    const double qy = edges.start[1][lane];
    const double qz = edges.start[2][lane];
    const double dx = edges.end[0][lane] - qx;
    const double dy = edges.end[1][lane] - qy;
    const double dz = edges.end[2][lane] - qz;
    const double rx = p0[0] - qx;
    const double ry = p0[1] - qy;
    const double rz = p0[2] - qz;
    const double e = dx * dx + dy * dy + dz * dz;
    const double f = dx * rx + dy * ry + dz * rz;
    const double c = d1[0] * rx + d1[1] * ry + d1[2] * rz;
    const double b = d1[0] * dx + d1[1] * dy + d1[2] * dz;
    const double D = a * e - b * b;

    // One comparison a selection: the vectoriser takes no combined conditions.
    const double free_s = b * f - c * e;
    const double free_t = a * f - b * c;
    double sN = free_s > D ? D : free_s;
    double tN = free_s > D ? f + b : free_t;
    double tD = free_s > D ? e : D;
    sN = free_s < 0.0 ? 0.0 : sN;
    tN = free_s < 0.0 ? f : tN;
    tD = free_s < 0.0 ? e : tD;
    sN = D < eps ? 0.0 : sN;
    double sD = D < eps ? 1.0 : D;
    tN = D < eps ? f : tN;
    tD = D < eps ? e : tD;

    const double m = tN < 0.0 ? -c : b - c;
    double clamped_sN = m > a ? sD : m;
    double clamped_sD = m > a ? sD : a;
    clamped_sN = m < 0.0 ? 0.0 : clamped_sN;
    clamped_sD = m < 0.0 ? sD : clamped_sD;
    const double end_t = tN < 0.0 ? 0.0 : tD;
    const double over = tN < 0.0 ? 1.0 : tN - tD;  // above 0 where t is clamped, for tN > tD has tN - tD > 0
    sN = over > 0.0 ? clamped_sN : sN;
    sD = over > 0.0 ? clamped_sD : sD;
    tN = over > 0.0 ? end_t : tN;

    sN = e <= eps ? -c : sN;
    sD = e <= eps ? a : sD;
    const double s_quotient = sN / sD;
    const double t_quotient = tN / tD;
    double s = std::fabs(sN) < eps ? 0.0 : s_quotient;
    double t = std::fabs(tN) < eps ? 0.0 : t_quotient;
    s = e <= eps ? s_quotient : s;
    t = e <= eps ? 0.0 : t;
    s = s < 0.0 ? 0.0 : s;
    t = t < 0.0 ? 0.0 : t;
    s = s > 1.0 ? 1.0 : s;
    t = t > 1.0 ? 1.0 : t;

    const double wx = (p0[0] + s * d1[0]) - (qx + t * dx);
    const double wy = (p0[1] + s * d1[1]) - (qy + t * dy);
    const double wz = (p0[2] + s * d1[2]) - (qz + t * dz);
    out.distance[lane] = std::sqrt(wx * wx + wy * wy + wz * wz);
    out.s[lane] = s;
    out.t[lane] = t;
  }
}

}  // namespace

/// One pass over the leaves.
struct EdgePairSearch::Scan {
  const std::function<double(double)>& keep_up_to;
  double least = infinity;
  double keep = keep_up_to(infinity);
  double reach2 = infinity;  ///< square of the largest distance that matters, and its rounding
  std::vector<SegmentPair> pairs = {};
  std::size_t crowded = 1024;            ///< so many pairs call for a look at the outdated
  std::vector<std::size_t> leaves = {};  ///< that the current leaf may be near to, ascending

  VKM_INLINE void meet(std::size_t i, std::size_t j, double distance, double s, double t) {
    if (distance < least) lower(distance);
    if (distance <= keep) add({i, j, s, t, distance, 0.0, 0.0});
  }

  void lower(double distance) {
    least = distance;
    keep = keep_up_to(least);
    const double reach = std::max(least, keep);  // `keep` second: it may be no number
    reach2 = reach * reach * (1.0 + 1e-13);
  }

  void add(const SegmentPair& pair) {
    if (pairs.size() >= crowded) {
      drop_outdated();
      crowded = std::max(crowded, 2 * pairs.size());
      require_memory(crowded, sizeof(SegmentPair));
    }
    pairs.push_back(pair);
  }

  void drop_outdated() {
    std::erase_if(pairs, [this](const SegmentPair& pair) { return !(pair.distance <= keep); });
  }
};

EdgePairSearch::EdgePairSearch(std::span<const Vec3> points, std::int32_t skip_neighbors)
    : points_(points), skip_(static_cast<std::uint64_t>(std::max(skip_neighbors, 0))) {
  const std::size_t n = points.size();
  const std::size_t leaves = (n + width - 1) / width;
  edges_.resize(leaves);
  std::vector<Boxes> boxes(leaves);
  arclength_.resize(n);
  double magnitude = 0.0;
  double arc = 0.0;
  for (std::size_t leaf = 0; leaf < leaves; ++leaf) {
    for (std::size_t lane = 0; lane < width; ++lane) {
      const std::size_t k = leaf * width + lane;
      Box box;
      Vec3 start = {0.0, 0.0, 0.0};
      Vec3 end = start;
      if (k < n) {
        start = points[k];
        end = points[k + 1 == n ? 0 : k + 1];
        arclength_[k] = arc;
        arc += norm(start - end);
        if (all_finite(start) && all_finite(end)) {
          for (std::size_t axis = 0; axis < 3; ++axis) {
            box.low[axis] = std::min(start[axis], end[axis]);
            box.high[axis] = std::max(start[axis], end[axis]);
            magnitude = std::max({magnitude, std::fabs(box.low[axis]), std::fabs(box.high[axis])});
          }
        }
      }
      for (std::size_t axis = 0; axis < 3; ++axis) {
        edges_[leaf].start[axis][lane] = start[axis];
        edges_[leaf].end[axis][lane] = end[axis];
        boxes[leaf].low[axis][lane] = box.low[axis];
        boxes[leaf].high[axis][lane] = box.high[axis];
      }
    }
  }
  // A computed point of an edge is off by at most 8 units in the last place of the coordinates; the constant keeps
  // the squares of gaps that survive out of the subnormal range.
  slack_ = 4e-15 * magnitude + 1e-140;

  levels_.push_back(std::move(boxes));
  while (levels_.back().size() > 1) {
    const std::vector<Boxes>& lower = levels_.back();
    std::vector<Boxes> upper((lower.size() + width - 1) / width);
    for (std::size_t k = 0; k < upper.size() * width; ++k) {
      for (std::size_t axis = 0; axis < 3; ++axis) {
        double low = infinity;
        double high = -infinity;
        if (k < lower.size()) {
          for (std::size_t lane = 0; lane < width; ++lane) {
            low = std::min(low, lower[k].low[axis][lane]);
            high = std::max(high, lower[k].high[axis][lane]);
          }
        }
        upper[k / width].low[axis][k % width] = low;
        upper[k / width].high[axis][k % width] = high;
      }
    }
    levels_.push_back(std::move(upper));
  }
}

EdgePairSearch::Found EdgePairSearch::near_pairs(const std::function<double(double)>& keep, const Poll& poll,
                                                 int threads) const {
  const std::size_t n = points_.size();
  const std::size_t leaves = n > 2 * skip_ + 1 ? edges_.size() : 0;
  const std::size_t run = threads > 1 ? 32 : std::max<std::size_t>(leaves, 1);
  const std::size_t tasks = (leaves + run - 1) / run;
  std::vector<std::vector<SegmentPair>> kept(tasks);
  std::atomic<double> least = infinity;  // of all threads so far
  run_tasks(tasks, threads, poll, [&](std::size_t task, Heartbeat& heartbeat) {
    Scan scan{keep};
    const double known = least;
    if (known < infinity) scan.lower(known);
    for (std::size_t leaf = task * run; leaf < std::min(leaves, (task + 1) * run); ++leaf) {
      if (leaf % 16 == 0 || scan.leaves.size() > 64) heartbeat.tick();
      if (scan.least == 0.0 && !(scan.keep >= 0.0)) break;
      scan_leaf(leaf, scan);
    }
    for (double before = least; scan.least < before && !least.compare_exchange_weak(before, scan.least);) {
    }
    kept[task] = std::move(scan.pairs);
  });
  Scan all{keep};
  if (least < infinity) all.lower(least);
  for (std::vector<SegmentPair>& pairs : kept) {
    if (all.pairs.empty()) {
      all.pairs = std::move(pairs);
    } else {
      all.pairs.insert(all.pairs.end(), pairs.begin(), pairs.end());
    }
    pairs = {};
    all.drop_outdated();
  }
  const auto arclength = [&](std::size_t k, double parameter) {
    return arclength_[k] + norm(points_[k] - points_[k + 1 == n ? 0 : k + 1]) * parameter;
  };
  for (SegmentPair& pair : all.pairs) {
    pair.arclength_i = arclength(pair.i, pair.s);
    pair.arclength_j = arclength(pair.j, pair.t);
  }
  return {least, std::move(all.pairs)};
}

/// Meets all pairs of an edge i of the leaf and an admissible later edge j that the boxes leave.
VKM_KERNEL void EdgePairSearch::scan_leaf(std::size_t leaf, Scan& scan) const {
  // Descend to the leaves at or after this one, in their order.
  const std::size_t n = points_.size();
  scan.leaves.clear();
  if (levels_.size() == 1) {
    scan.leaves.push_back(0);
  } else {
    const Box box = widened(lane_of(levels_[1][leaf / width], leaf % width), slack_);
    const std::size_t top = levels_.size() - 1;
    std::size_t node[16];
    unsigned left[16];
    const auto enter = [&](std::size_t level, std::size_t index) __attribute__((always_inline)) {
      node[level] = index;
      unsigned lanes = near_lanes(levels_[level][index], box, scan.reach2);
      const std::size_t first = leaf >> (3 * (level - 1));  // the child that holds this leaf
      if (index * width < first) lanes &= all_lanes << std::min(first - index * width, width);
      const std::size_t count = levels_[level - 1].size() - index * width;
      if (count < width) lanes &= (1u << count) - 1;
      left[level] = lanes & all_lanes;
    };
    std::size_t level = top;
    enter(top, 0);
    while (true) {
      if (left[level] == 0) {
        if (level == top) break;
        ++level;
        continue;
      }
      const auto lane = static_cast<std::size_t>(std::countr_zero(left[level]));
      left[level] &= left[level] - 1;
      const std::size_t child = node[level] * width + lane;
      if (level == 1) {
        scan.leaves.push_back(child);
      } else {
        --level;
        enter(level, child);
      }
    }
  }

  for (std::size_t lane_i = 0; lane_i < width; ++lane_i) {
    const std::size_t i = leaf * width + lane_i;
    const std::size_t first = i + skip_ + 1;
    const std::size_t last = std::min(n - 1, i + n - skip_ - 1);
    if (i >= n || first > last) break;
    const Box own = lane_of(levels_[0][leaf], lane_i);
    if (own.low[0] > own.high[0]) continue;  // not all coordinates are finite
    const Box box = widened(own, slack_);
    const Vec3& p0 = points_[i];
    const Vec3& p1 = points_[i + 1 == n ? 0 : i + 1];
    const bool usable = norm2(p1 - p0) > 1e-14;
    for (const std::size_t other : scan.leaves) {
      const std::size_t base = other * width;
      if (base + width <= first) continue;
      if (base > last) break;
      unsigned lanes = near_lanes(levels_[0][other], box, scan.reach2);
      if (first > base) lanes &= all_lanes << (first - base);
      if (last < base + width - 1) lanes &= all_lanes >> (base + width - 1 - last);
      lanes &= all_lanes;
      if (lanes == 0) continue;
      if (usable && std::popcount(lanes) >= least_lanes) {
        LaneDistances found;
        lane_distances(p0, p1, edges_[other], found);
        for (; lanes != 0; lanes &= lanes - 1) {
          const auto lane = static_cast<std::size_t>(std::countr_zero(lanes));
          scan.meet(i, base + lane, found.distance[lane], found.s[lane], found.t[lane]);
        }
      } else {
        for (; lanes != 0; lanes &= lanes - 1) {
          const std::size_t j = base + static_cast<std::size_t>(std::countr_zero(lanes));
          const SegmentDistance found = segment_distance(p0, p1, points_[j], points_[j + 1 == n ? 0 : j + 1]);
          scan.meet(i, j, found.distance, found.s, found.t);
        }
      }
    }
  }
}

}  // namespace vkm
