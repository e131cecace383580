#include "filament/sums/self_velocity.hpp"

#include <algorithm>
#include <cmath>

#include "core/finite.hpp"
#include "core/numbers.hpp"
#include "core/pair_sums.hpp"
#include "filament/sums/biot_savart.hpp"
#include "filament/sums/fields_wide.hpp"
#include "filament/sums/tile_transpose.hpp"

namespace vkm {

namespace {

/// Points, which are targets and sources alike, with their element vectors, and the sums at them.
struct Filament {
  LaneSources sources;
  LaneSpace sums;
};

/// Adds the sources of the block at `from` to the sums of the block at `to`. The weights circulation / n^3, 0 for a
/// pair that is skipped, are written to g[source][target] if `measure` says so, else read from there.
template <bool measure>
VKM_INLINE void add_block(const Filament& f, std::size_t to, std::size_t from, double circulation, PairTile& g) {
  const auto add = [&g, from, circulation](const LaneVec3& t, const LaneVec3& r, std::size_t s, std::size_t k)
                       VKM_TERM {
                         if constexpr (measure) {
                           const double n = std::sqrt(dot(r, r));
                           const double far_weight = circulation / (n * n * n);
                           g[s - from][k] = n > point_cutoff ? far_weight : 0.0;
                         }
                         return cross(t, r) * inv_four_pi * g[s - from][k];
                       };
  add_sources(f.sources, from, from + lane_block, f.sources.at + to, f.sums + to, add);
}

/// All pairs of the block at `b` with the blocks before it, and with itself. Taken block after block, these columns
/// give every target its sources in order: the earlier ones as the block's own column, the later ones one column each.
VKM_KERNEL void column(const Filament& f, std::size_t b, double circulation) {
  alignas(64) PairTile g;
  alignas(64) PairTile mirrored;
  for (std::size_t a = 0; a < b; a += lane_block) {
    add_block<true>(f, a, b, circulation, g);
    transpose(g, mirrored);
    add_block<false>(f, b, a, circulation, mirrored);
  }
  add_block<true>(f, b, b, circulation, g);
}

}  // namespace

std::vector<Vec3> self_velocities(std::span<const Vec3> points, std::span<const Vec3> tangents, double circulation,
                                  Heartbeat& heartbeat) {
  // The weight 0 of a skipped pair, and the zero tangents of the lanes that fill up the last block, add a zero, which
  // changes no sum: as long as no factor is infinite or NaN.
  const bool skips_add_zero = std::abs(circulation) < 1e200 && all_finite(points) && all_finite(tangents);
  if (!skips_add_zero || tangents.size() < points.size()) {
    return biot_savart_velocities(points, points, tangents, circulation, heartbeat);
  }
  const Lanes at(points);
  const Lanes elements(tangents.first(points.size()));
  if (const std::optional<Lanes> sums = self_velocities_by_tiles(at, elements, circulation, heartbeat)) {
    return sums->vectors();
  }
  Lanes sums(points.size());
  const Filament filament{{view(at), view(elements)}, space(sums)};
  for (std::size_t block = 0; block < at.blocks(); ++block) {
    column(filament, block * lane_block, circulation);
    heartbeat.tick();
  }
  return sums.vectors();
}

}  // namespace vkm
