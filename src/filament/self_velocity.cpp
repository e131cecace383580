#include "filament/self_velocity.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/finite.hpp"
#include "core/kernel.hpp"
#include "core/lanes.hpp"
#include "core/numbers.hpp"
#include "filament/biot_savart.hpp"

namespace vkm {

namespace {

using Tile = double[lane_block][lane_block];

/// The filament coordinate by coordinate, and the sums of its points.
struct Filament {
  const double* x;
  const double* y;
  const double* z;
  const double* tx;
  const double* ty;
  const double* tz;
  double* u;
  double* v;
  double* w;
};

#if defined(__GNUC__) && !defined(__clang__)
using Four = double __attribute__((vector_size(32)));
using Choice = long long __attribute__((vector_size(32)));

VKM_INLINE void load(const double* from, Four& values) { std::memcpy(&values, from, sizeof values); }
VKM_INLINE void store(const Four& values, double* to) { std::memcpy(to, &values, sizeof values); }
#endif

/// out[i][j] = in[j][i].
VKM_INLINE void transpose(const Tile& in, Tile& out) {
#if defined(__GNUC__) && !defined(__clang__)
  for (std::size_t i = 0; i < lane_block; i += 4) {
    for (std::size_t j = 0; j < lane_block; j += 4) {
      Four a, b, c, d;
      load(&in[j][i], a);
      load(&in[j + 1][i], b);
      load(&in[j + 2][i], c);
      load(&in[j + 3][i], d);
      const Four ab_even = __builtin_shuffle(a, b, Choice{0, 4, 2, 6});
      const Four ab_odd = __builtin_shuffle(a, b, Choice{1, 5, 3, 7});
      const Four cd_even = __builtin_shuffle(c, d, Choice{0, 4, 2, 6});
      const Four cd_odd = __builtin_shuffle(c, d, Choice{1, 5, 3, 7});
      store(__builtin_shuffle(ab_even, cd_even, Choice{0, 1, 4, 5}), &out[i][j]);
      store(__builtin_shuffle(ab_odd, cd_odd, Choice{0, 1, 4, 5}), &out[i + 1][j]);
      store(__builtin_shuffle(ab_even, cd_even, Choice{2, 3, 6, 7}), &out[i + 2][j]);
      store(__builtin_shuffle(ab_odd, cd_odd, Choice{2, 3, 6, 7}), &out[i + 3][j]);
    }
  }
#else
  for (std::size_t i = 0; i < lane_block; ++i) {
    for (std::size_t j = 0; j < lane_block; ++j) out[i][j] = in[j][i];
  }
#endif
}

/// Adds the sources of the block at `from` to the sums of the block at `to`. The weights circulation / n^3, 0 for a
/// pair that is skipped, are written to g[source][target] if `measure` says so, else read from there.
template <bool measure>
VKM_INLINE void add_block(const Filament& f, std::size_t to, std::size_t from, double circulation, Tile& g) {
  const double* x = f.x + to;
  const double* y = f.y + to;
  const double* z = f.z + to;
  double sum_x[lane_block], sum_y[lane_block], sum_z[lane_block];
  for (std::size_t k = 0; k < lane_block; ++k) {
    sum_x[k] = f.u[to + k];
    sum_y[k] = f.v[to + k];
    sum_z[k] = f.w[to + k];
  }
  for (std::size_t s = 0; s < lane_block; ++s) {
    const double px = f.x[from + s], py = f.y[from + s], pz = f.z[from + s];
    const double tx = f.tx[from + s], ty = f.ty[from + s], tz = f.tz[from + s];
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double rx = x[k] - px;
      const double ry = y[k] - py;
      const double rz = z[k] - pz;
      if constexpr (measure) {
        const double n = std::sqrt(rx * rx + ry * ry + rz * rz);
        const double far_weight = circulation / (n * n * n);
        g[s][k] = n > point_cutoff ? far_weight : 0.0;
      }
      const double weight = g[s][k];
      sum_x[k] += (ty * rz - tz * ry) * inv_four_pi * weight;
      sum_y[k] += (tz * rx - tx * rz) * inv_four_pi * weight;
      sum_z[k] += (tx * ry - ty * rx) * inv_four_pi * weight;
    }
  }
  for (std::size_t k = 0; k < lane_block; ++k) {
    f.u[to + k] = sum_x[k];
    f.v[to + k] = sum_y[k];
    f.w[to + k] = sum_z[k];
  }
}

/// All pairs of the block at `b` with the blocks before it, and with itself. Taken block after block, these columns
/// give every target its sources in order: the earlier ones as the block's own column, the later ones one column each.
VKM_KERNEL void column(const Filament& f, std::size_t b, double circulation) {
  alignas(64) Tile g;
  alignas(64) Tile mirrored;
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
  Lanes sums(points.size());
  const Filament filament{at.axis(0),       at.axis(1),   at.axis(2),   elements.axis(0), elements.axis(1),
                          elements.axis(2), sums.axis(0), sums.axis(1), sums.axis(2)};
  for (std::size_t block = 0; block < at.blocks(); ++block) {
    column(filament, block * lane_block, circulation);
    heartbeat.tick();
  }
  std::vector<Vec3> velocity(points.size());
  for (std::size_t i = 0; i < velocity.size(); ++i) velocity[i] = sums[i];
  return velocity;
}

}  // namespace vkm
