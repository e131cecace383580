#include "filament/energy/nonlocal_energy.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/pair_sums.hpp"

namespace vkm {

namespace {

struct PairRule {
  double count;  // points of the closed curve; places are doubles too, so that one vector width serves all
  double neighbours;
  double cutoff;
};

/// The sums of the points of one block, of which `first` is the first, over all partners.
VKM_KERNEL void add_partners(const LaneSources& partners, std::size_t first, const PairRule& rule, double* sums) {
  const double count = rule.count, neighbours = rule.neighbours, cutoff = rule.cutoff;
  const LaneView tangents = partners.vector + first;
  double place[lane_block], tx[lane_block], ty[lane_block], tz[lane_block];
  for (std::size_t k = 0; k < lane_block; ++k) {
    place[k] = static_cast<double>(first + k);
    tx[k] = tangents.x[k];
    ty[k] = tangents.y[k];
    tz[k] = tangents.z[k];
  }
  const auto interaction = [&](const LaneVec3& v, const LaneVec3& r, std::size_t partner, std::size_t k) VKM_TERM {
    const double d = std::sqrt(dot(r, r));
    const double along = std::abs(static_cast<double>(partner) - place[k]);
    const double gap = count - along < along ? count - along : along;
    const double far = d > cutoff ? (tx[k] * v.x + ty[k] * v.y + tz[k] * v.z) / d : 0.0;
    return gap > neighbours ? far : 0.0;
  };
  add_sources(partners, 0, static_cast<std::size_t>(count), partners.at + first, sums, interaction);
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
    double sums[lane_block] = {};
    add_partners({view(at), view(along)}, block * lane_block, rule, sums);
    const std::size_t used = std::min(lane_block, points.size() - block * lane_block);
    for (std::size_t k = 0; k < used; ++k) total += sums[k];
    heartbeat.tick();
  }
  return total;
}

}  // namespace vkm
