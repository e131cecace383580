#pragma once

/// Near pairs of edges of a closed polygon, found without visiting all pairs and with the bits of the all-pairs loop.
///
/// Eight consecutive edges form a leaf, eight consecutive boxes a box of the level above: an implicit tree of axis-
/// aligned boxes in the order of the curve. A leaf of edges descends the tree once, testing the eight children of a
/// node side by side, and each of its edges then tests the edges of the leaves that remain.
///
/// A pair is skipped only where the gap of two boxes, less a slack for rounding, exceeds the limit: whatever
/// parameters the distance routine picks, its two points lie on the edges, so its result cannot be below the gap.
/// Distances themselves come from the one formula (segment_distance.hpp), one pair a lane where many are due. Pairs
/// with a coordinate that is not a number or infinite have a distance that is not a number, and are never found.
///
/// Time is n log n and memory 14 doubles an edge on curves; edges that are long against the body (random chords)
/// overlap in their boxes and cost up to all pairs, eight at a time.

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "tube/resolved_tube.hpp"

namespace vkm {

class EdgePairSearch {
 public:
  static constexpr std::size_t width = 8;

  /// Admissible are the pairs more than max(skip_neighbors, 0) edges apart, both ways around the loop.
  EdgePairSearch(std::span<const Vec3> points, std::int32_t skip_neighbors);

  struct Found {
    double least;                    ///< distance of the nearest admissible pair, +infinity if there is none
    std::vector<SegmentPair> pairs;  ///< all at a distance up to keep(least), by i, then j
  };

  /// One pass finds both: it keeps the pairs up to keep(least so far) and drops the outdated. `keep` must not decrease
  /// with its argument, but where it is negative or not a number: then nothing is kept. Threads share the work by runs
  /// of leaves; what each keeps in excess is dropped at the end.
  Found near_pairs(const std::function<double(double)>& keep, const Poll& poll, int threads = 1) const;

  /// Eight boxes, or the eight edges of a leaf, lane by lane.
  struct alignas(64) Boxes {
    double low[3][width];
    double high[3][width];
  };
  struct alignas(64) Edges {
    double start[3][width];
    double end[3][width];
  };

 private:
  struct Scan;

  void scan_leaf(std::size_t leaf, Scan& scan) const;

  std::span<const Vec3> points_;
  std::uint64_t skip_ = 0;
  double slack_ = 0.0;                      ///< rounding of a gap, length
  std::vector<Edges> edges_;                ///< one a leaf
  std::vector<std::vector<Boxes>> levels_;  ///< [0]: boxes of edges; [k + 1]: of the entries of level k; last: one
  std::vector<double> arclength_;           ///< from vertex 0 to vertex k
};

}  // namespace vkm
