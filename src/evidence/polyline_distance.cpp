#include "evidence/polyline_distance.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "core/kernel.hpp"
#include "core/lanes.hpp"

namespace vkm {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// Squared distance of p to the nearest of a block of segments: starts s, and edges d of squared lengths d2. A lane
/// that has no number leaves the minimum alone. The minimum of squares has the root of the minimum, bit by bit.
VKM_KERNEL double nearest_in_block(const double* p, const double* sx, const double* sy, const double* sz,
                                   const double* dx, const double* dy, const double* dz, const double* d2) {
  double squared[lane_block];
  for (std::size_t l = 0; l < lane_block; ++l) {
    const double rx = p[0] - sx[l];
    const double ry = p[1] - sy[l];
    const double rz = p[2] - sz[l];
    const double along = rx * dx[l] + ry * dy[l] + rz * dz[l];
    double t = along / d2[l];
    t = t < 0.0 ? 0.0 : t;
    t = t > 1.0 ? 1.0 : t;
    t = d2[l] > 0.0 ? t : 0.0;
    const double ex = rx - t * dx[l];
    const double ey = ry - t * dy[l];
    const double ez = rz - t * dz[l];
    squared[l] = ex * ex + ey * ey + ez * ez;
  }
  double least = infinity;
  for (std::size_t l = 0; l < lane_block; ++l) least = squared[l] < least ? squared[l] : least;
  return least;
}

/// The segments of a closed polyline. The places that fill up the last block repeat the last segment.
struct Segments {
  explicit Segments(std::span<const Vec3> b)
      : start(padded(b.size())), edge(padded(b.size())), squared_length(padded(b.size())) {
    for (std::size_t k = 0; k < start.size(); ++k) {
      const std::size_t i = std::min(k, b.size() - 1);
      const Vec3 d = b[i + 1 == b.size() ? 0 : i + 1] - b[i];
      start.set(k, b[i]);
      edge.set(k, d);
      squared_length[k] = norm2(d);
    }
  }

  static std::size_t padded(std::size_t count) { return (count + lane_block - 1) / lane_block * lane_block; }

  double nearest(const Vec3& p, std::size_t block) const {
    const std::size_t k = block * lane_block;
    return nearest_in_block(p.data(), start.axis(0) + k, start.axis(1) + k, start.axis(2) + k, edge.axis(0) + k,
                            edge.axis(1) + k, edge.axis(2) + k, squared_length.data() + k);
  }

  Lanes start;
  Lanes edge;
  std::vector<double> squared_length;
};

}  // namespace

double directed_hausdorff_distance(std::span<const Vec3> a, std::span<const Vec3> b, const Poll& poll) {
  if (b.empty()) return infinity;
  Heartbeat heartbeat(poll);
  const Segments segments(b);
  const std::size_t blocks = segments.start.blocks();
  double largest = 0.0;
  std::size_t home = 0;
  // A point that is already closer than the largest distance found cannot raise it. The search starts where the point
  // before was nearest: on curves that run alike nearly all points end there.
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (i % 32 == 0) heartbeat.tick();
    double least = infinity;
    std::size_t nearest = home;
    for (std::size_t turn = 0, block = home; turn < blocks; ++turn) {
      const double squared = segments.nearest(a[i], block);
      if (squared < least) {
        least = squared;
        nearest = block;
        if (least <= largest) break;
      }
      block = block + 1 == blocks ? 0 : block + 1;
    }
    home = nearest;
    largest = std::max(largest, least);
  }
  return std::sqrt(largest);
}

}  // namespace vkm
