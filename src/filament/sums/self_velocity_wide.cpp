#include "filament/sums/fields_wide.hpp"

#if VKM_HAS_WIDE

#include "core/lane_view.hpp"
#include "core/numbers.hpp"
#include "filament/sums/biot_savart.hpp"
#include "filament/sums/source_loop_wide.hpp"

namespace vkm {

namespace {

/// Points, which are targets and sources alike, and their element vectors.
struct Filament {
  LaneView at, element;
};

/// |R| from source s, and the least of it so far.
VKM_WIDE_INLINE Wide distance(const Filament& f, const WideVec3& p, std::size_t s, Wide& least) {
  const WideVec3 r = p - spread_wide(f.at, s);
  const Wide n = _mm512_sqrt_pd(dot(r, r));
  least = _mm512_min_pd(least, n);
  return n;
}

/// circulation / n^3; 0 for a near source.
template <bool near>
VKM_WIDE_INLINE Wide weight_of(Wide circulation, Wide n) {
  const Wide cube = n * n * n;
  if constexpr (near) {
    return _mm512_maskz_div_pd(_mm512_cmp_pd_mask(n, wide(point_cutoff), _CMP_GT_OQ), circulation, cube);
  }
  return circulation / cube;
}

/// Adds source s with its weights.
VKM_WIDE_INLINE void add_source(const Filament& f, const WideVec3& p, std::size_t s, Wide weight, WideVec3& sum) {
  const WideVec3 r = p - spread_wide(f.at, s);
  sum += cross(spread_wide(f.element, s), r) * wide(inv_four_pi) * weight;
}

using Tile = double[wide_lanes][wide_lanes];

VKM_WIDE_INLINE Wide two_halves(const double* low, const double* high) {
  return _mm512_insertf64x4(_mm512_castpd256_pd512(_mm256_load_pd(low)), _mm256_load_pd(high), 1);
}

/// out[i][j] = in[j][i]. The first exchange is done by the loads, which leaves the multipliers more room.
VKM_WIDE_INLINE void transpose(const Tile& in, Wide (&out)[wide_lanes]) {
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
VKM_WIDE_INLINE void weigh_source(const Filament& f, const WideVec3& p, std::size_t s, std::size_t next,
                                  Wide circulation, Wide& n, Wide& least, double* weights, WideVec3& sum) {
  const Wide weight = weight_of<near>(circulation, n);
  n = distance(f, p, next, least);
  store_wide(weights, weight);
  add_source(f, p, s, weight, sum);
}

/// The column of eight targets at `b`, in tiles of eight sources. The earlier targets take their sums from `before` to
/// `after`. While the weights of one tile are measured those of the tile before it are used the other way round, so
/// that neither divider nor multipliers wait. A point's own source does not count as near here.
template <bool near>
VKM_WIDE bool add_column(const Filament& f, std::size_t b, double circulation, const LaneView& before,
                         const LaneSpace& after) {
  const WideVec3 own = load_wide(f.at, b);
  const Wide strength = wide(circulation);
  Wide least = wide(1.0), mirrored[wide_lanes] = {};
  alignas(64) Tile weights;
  WideVec3 sum = load_wide(before, b);
  Wide even = distance(f, own, 0, least), odd = distance(f, own, 1, least);  // sources to come
  if (b > 0) {
#pragma GCC unroll 8
    for (std::size_t s = 0; s < wide_lanes; s += 2) {
      const std::size_t next = s + 2 < wide_lanes ? s + 2 : b > wide_lanes ? wide_lanes : 0;
      weigh_source<near>(f, own, s, next, strength, even, least, weights[s], sum);
      weigh_source<near>(f, own, s + 1, next + 1, strength, odd, least, weights[s + 1], sum);
    }
    transpose(weights, mirrored);
    for (std::size_t a = wide_lanes; a < b; a += wide_lanes) {
      const std::size_t last = a - wide_lanes;
      const std::size_t further = a + wide_lanes < b ? a + wide_lanes : a;
      const WideVec3 points = load_wide(f.at, last);
      WideVec3 earlier = load_wide(before, last);
#pragma GCC unroll 8
      for (std::size_t s = 0; s < wide_lanes; s += 2) {
        const std::size_t next = s + 2 < wide_lanes ? a + s + 2 : further;
        weigh_source<near>(f, own, a + s, next, strength, even, least, weights[s], sum);
        add_source(f, points, b + s, mirrored[s], earlier);
        weigh_source<near>(f, own, a + s + 1, next + 1, strength, odd, least, weights[s + 1], sum);
        add_source(f, points, b + s + 1, mirrored[s + 1], earlier);
      }
      store_wide(after, last, earlier);
      transpose(weights, mirrored);
    }
  }
  const std::size_t last = b > 0 ? b - wide_lanes : 0;
  const WideVec3 points = load_wide(f.at, last);
  Wide ignored = least;
  WideVec3 earlier = load_wide(before, last);
#pragma GCC unroll 8
  for (std::size_t s = 0; s < wide_lanes; ++s) {  // each point is near itself
    add_source(f, own, b + s, weight_of<true>(strength, distance(f, own, b + s, ignored)), sum);
    add_source(f, points, b + s, mirrored[s], earlier);
  }
  if (b > 0) store_wide(after, last, earlier);
  store_wide(after, b, sum);
  return near || b == 0 || _mm512_reduce_min_pd(least) > point_cutoff;
}

}  // namespace

std::optional<Lanes> self_velocities_by_tiles(const Lanes& points, const Lanes& tangents, double circulation,
                                              Heartbeat& heartbeat) {
  if (!has_wide()) return std::nullopt;
  const Filament filament{view(points), view(tangents)};
  Lanes sums(points.size()), later(points.size());
  for (std::size_t b = 0; b < points.size(); b += wide_lanes) {
    quick_or_careful([&](auto near) { return add_column<near>(filament, b, circulation, view(sums), space(later)); });
    std::swap(sums, later);
    heartbeat.tick();
  }
  return sums;
}

}  // namespace vkm

#endif
