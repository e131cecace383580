#include "filament/sums/self_velocity.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/finite.hpp"
#include "core/kernel.hpp"
#include "core/lanes.hpp"
#include "core/numbers.hpp"
#include "core/wide.hpp"
#include "filament/sums/biot_savart.hpp"

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

#if VKM_HAS_WIDE

struct WideSums {
  Wide u, v, w;

  VKM_WIDE_INLINE void load(const Lanes& from, std::size_t at) {
    u = load_wide(from.axis(0) + at);
    v = load_wide(from.axis(1) + at);
    w = load_wide(from.axis(2) + at);
  }

  VKM_WIDE_INLINE void store(Lanes& to, std::size_t at) const {
    store_wide(to.axis(0) + at, u);
    store_wide(to.axis(1) + at, v);
    store_wide(to.axis(2) + at, w);
  }
};

struct WidePoints {
  Wide x, y, z;

  VKM_WIDE_INLINE WidePoints(const Filament& f, std::size_t at)
      : x(load_wide(f.x + at)), y(load_wide(f.y + at)), z(load_wide(f.z + at)) {}
};

/// |R| from source s, and the least of it so far.
VKM_WIDE_INLINE Wide wide_distance(const Filament& f, const WidePoints& p, std::size_t s, Wide& least) {
  const Wide rx = p.x - wide(f.x[s]), ry = p.y - wide(f.y[s]), rz = p.z - wide(f.z[s]);
  const Wide n = _mm512_sqrt_pd(rx * rx + ry * ry + rz * rz);
  least = _mm512_min_pd(least, n);
  return n;
}

/// Adds source s with its weights.
VKM_WIDE_INLINE void add_source(const Filament& f, const WidePoints& p, std::size_t s, Wide weight, WideSums& sums) {
  const Wide rx = p.x - wide(f.x[s]), ry = p.y - wide(f.y[s]), rz = p.z - wide(f.z[s]);
  const Wide tx = wide(f.tx[s]), ty = wide(f.ty[s]), tz = wide(f.tz[s]);
  const Wide k = wide(inv_four_pi);
  sums.u += (ty * rz - tz * ry) * k * weight;
  sums.v += (tz * rx - tx * rz) * k * weight;
  sums.w += (tx * ry - ty * rx) * k * weight;
}

template <bool near>
VKM_WIDE_INLINE Wide wide_weight(Wide circulation, Wide n) {
  const Wide cube = n * n * n;
  if constexpr (near) {
    return _mm512_maskz_div_pd(_mm512_cmp_pd_mask(n, wide(point_cutoff), _CMP_GT_OQ), circulation, cube);
  }
  return circulation / cube;
}

using WideTile = double[wide_lanes][wide_lanes];

VKM_WIDE_INLINE Wide two_halves(const double* low, const double* high) {
  return _mm512_insertf64x4(_mm512_castpd256_pd512(_mm256_load_pd(low)), _mm256_load_pd(high), 1);
}

/// out[i][j] = in[j][i]. The first exchange is done by the loads, which leaves the multipliers more room.
VKM_WIDE_INLINE void transpose(const WideTile& in, Wide (&out)[wide_lanes]) {
#pragma GCC unroll 2
  for (std::size_t o = 0; o < wide_lanes; o += 4) {
    const Wide a = two_halves(&in[0][o], &in[2][o]), b = two_halves(&in[1][o], &in[3][o]);
    const Wide c = two_halves(&in[4][o], &in[6][o]), d = two_halves(&in[5][o], &in[7][o]);
    const Wide ab_even = _mm512_unpacklo_pd(a, b), ab_odd = _mm512_unpackhi_pd(a, b);
    const Wide cd_even = _mm512_unpacklo_pd(c, d), cd_odd = _mm512_unpackhi_pd(c, d);
    out[o] = _mm512_shuffle_f64x2(ab_even, cd_even, 0x88);
    out[o + 1] = _mm512_shuffle_f64x2(ab_odd, cd_odd, 0x88);
    out[o + 2] = _mm512_shuffle_f64x2(ab_even, cd_even, 0xdd);
    out[o + 3] = _mm512_shuffle_f64x2(ab_odd, cd_odd, 0xdd);
  }
}

/// Adds source s to the sums of the eight targets, and notes its weights. The root of the source that is two ahead is
/// begun in its place.
template <bool near>
VKM_WIDE_INLINE void weigh_source(const Filament& f, const WidePoints& p, std::size_t s, std::size_t next,
                                  Wide circulation, Wide& n, Wide& least, double* weights, WideSums& sums) {
  const Wide weight = wide_weight<near>(circulation, n);
  n = wide_distance(f, p, next, least);
  store_wide(weights, weight);
  add_source(f, p, s, weight, sums);
}

/// The column of eight targets at `b`, in tiles of eight sources. The earlier targets take their sums from `before` to
/// `after`. While the weights of one tile are measured those of the tile before it are used the other way round, so
/// that neither divider nor multipliers wait. Unless told that sources may be near, returns false if one is; then
/// `after` is of no use.
template <bool near>
VKM_WIDE bool wide_column(const Filament& f, std::size_t b, double circulation, const Lanes& before, Lanes& after) {
  const WidePoints own(f, b);
  const Wide strength = wide(circulation);
  Wide least = wide(1.0), mirrored[wide_lanes] = {};
  WideSums sums, earlier;
  alignas(64) WideTile weights;
  sums.load(before, b);
  Wide even = wide_distance(f, own, 0, least), odd = wide_distance(f, own, 1, least);  // sources to come
  if (b > 0) {
#pragma GCC unroll 8
    for (std::size_t s = 0; s < wide_lanes; s += 2) {
      const std::size_t next = s + 2 < wide_lanes ? s + 2 : b > wide_lanes ? wide_lanes : 0;
      weigh_source<near>(f, own, s, next, strength, even, least, weights[s], sums);
      weigh_source<near>(f, own, s + 1, next + 1, strength, odd, least, weights[s + 1], sums);
    }
    transpose(weights, mirrored);
    for (std::size_t a = wide_lanes; a < b; a += wide_lanes) {
      const std::size_t last = a - wide_lanes;
      const std::size_t further = a + wide_lanes < b ? a + wide_lanes : a;
      const WidePoints points(f, last);
      earlier.load(before, last);
#pragma GCC unroll 8
      for (std::size_t s = 0; s < wide_lanes; s += 2) {
        const std::size_t next = s + 2 < wide_lanes ? a + s + 2 : further;
        weigh_source<near>(f, own, a + s, next, strength, even, least, weights[s], sums);
        add_source(f, points, b + s, mirrored[s], earlier);
        weigh_source<near>(f, own, a + s + 1, next + 1, strength, odd, least, weights[s + 1], sums);
        add_source(f, points, b + s + 1, mirrored[s + 1], earlier);
      }
      earlier.store(after, last);
      transpose(weights, mirrored);
    }
  }
  const std::size_t last = b > 0 ? b - wide_lanes : 0;
  const WidePoints points(f, last);
  Wide ignored = least;
  earlier.load(before, last);
#pragma GCC unroll 8
  for (std::size_t s = 0; s < wide_lanes; ++s) {  // each point is near itself
    add_source(f, own, b + s, wide_weight<true>(strength, wide_distance(f, own, b + s, ignored)), sums);
    add_source(f, points, b + s, mirrored[s], earlier);
  }
  if (b > 0) earlier.store(after, last);
  sums.store(after, b);
  return near || b == 0 || _mm512_reduce_min_pd(least) > point_cutoff;
}

#endif

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
#if VKM_HAS_WIDE
  if (has_wide()) {
    Lanes later(points.size());
    for (std::size_t b = 0; b < points.size(); b += wide_lanes) {
      if (!wide_column<false>(filament, b, circulation, sums, later)) {
        wide_column<true>(filament, b, circulation, sums, later);
      }
      std::swap(sums, later);
      heartbeat.tick();
    }
    return sums.vectors();
  }
#endif
  for (std::size_t block = 0; block < at.blocks(); ++block) {
    column(filament, block * lane_block, circulation);
    heartbeat.tick();
  }
  return sums.vectors();
}

}  // namespace vkm
