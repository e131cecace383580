#include "filament/energy/nonlocal_energy.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/kernel.hpp"
#include "core/lanes.hpp"

namespace vkm {

namespace {

struct PairRule {
  double count;  // points of the closed curve; places are doubles too, so that one vector width serves all
  double neighbours;
  double cutoff;
};

/// The sums of the points of one block over all partners.
VKM_KERNEL void add_partners(const Lanes& points, const Lanes& tangents, std::size_t block, const PairRule& rule,
                             double* sums) {
  const std::size_t first = block * lane_block;
  double x[lane_block], y[lane_block], z[lane_block], tx[lane_block], ty[lane_block], tz[lane_block];
  double place[lane_block], sum[lane_block];
  for (std::size_t k = 0; k < lane_block; ++k) {
    x[k] = points.axis(0)[first + k];
    y[k] = points.axis(1)[first + k];
    z[k] = points.axis(2)[first + k];
    tx[k] = tangents.axis(0)[first + k];
    ty[k] = tangents.axis(1)[first + k];
    tz[k] = tangents.axis(2)[first + k];
    place[k] = static_cast<double>(first + k);
    sum[k] = 0.0;
  }
  const double count = rule.count, neighbours = rule.neighbours, cutoff = rule.cutoff;
  const double* px = points.axis(0);
  const double* py = points.axis(1);
  const double* pz = points.axis(2);
  const double* ux = tangents.axis(0);
  const double* uy = tangents.axis(1);
  const double* uz = tangents.axis(2);
  const std::size_t n = points.size();
  for (std::size_t j = 0; j < n; ++j) {
    const double at = static_cast<double>(j);
    const double jx = px[j], jy = py[j], jz = pz[j], vx = ux[j], vy = uy[j], vz = uz[j];
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double rx = jx - x[k];
      const double ry = jy - y[k];
      const double rz = jz - z[k];
      const double d = std::sqrt(rx * rx + ry * ry + rz * rz);
      const double along = std::abs(at - place[k]);
      const double gap = count - along < along ? count - along : along;
      const double term = (tx[k] * vx + ty[k] * vy + tz[k] * vz) / d;
      const double far = d > cutoff ? term : 0.0;
      sum[k] += gap > neighbours ? far : 0.0;
    }
  }
  for (std::size_t k = 0; k < lane_block; ++k) sums[k] = sum[k];
}

}  // namespace

double nonlocal_pair_sum(std::span<const Vec3> points, std::span<const Vec3> tangents, std::int64_t neighbours,
                         double cutoff, const Poll& poll) {
  if (tangents.size() != points.size()) throw std::invalid_argument("nonlocal_pair_sum: one tangent a point is needed");
  const Lanes at(points);
  const Lanes along(tangents);
  const PairRule rule{static_cast<double>(points.size()), static_cast<double>(neighbours), cutoff > 0.0 ? cutoff : 0.0};
  Heartbeat heartbeat(poll);
  double total = 0.0;
  for (std::size_t block = 0; block < at.blocks(); ++block) {
    double sums[lane_block];
    add_partners(at, along, block, rule, sums);
    const std::size_t used = std::min(lane_block, points.size() - block * lane_block);
    for (std::size_t k = 0; k < used; ++k) total += sums[k];
    heartbeat.tick();
  }
  return total;
}

}  // namespace vkm
