#include "far/near_sums.hpp"

#include <algorithm>

#include "far/eight.hpp"

namespace vkm::far {

namespace {

/// Points of so many vectors of eight, and their sums. Two side by side keep the multipliers busy while each root waits
/// for its own steps.
template <std::size_t vectors>
struct NearBlock {
  Eight x[vectors], y[vectors], z[vectors], one[vectors], two[vectors], u[vectors], v[vectors], w[vectors];
};

/// reciprocal_root of several numbers, step by step.
template <int steps, std::size_t vectors>
VKM_INLINE void reciprocal_roots(const Eight (&x)[vectors], Eight (&y)[vectors]) {
  Eight half[vectors];
#pragma GCC unroll 2
  for (std::size_t k = 0; k < vectors; ++k) {
    reciprocal_root<0>(x[k], y[k]);
    half[k] = 0.5 * x[k];
  }
#pragma GCC unroll 4
  for (int step = 0; step < steps; ++step) {
    Eight square[vectors];
#pragma GCC unroll 2
    for (std::size_t k = 0; k < vectors; ++k) square[k] = y[k] * y[k];
#pragma GCC unroll 2
    for (std::size_t k = 0; k < vectors; ++k) square[k] = 1.5 - half[k] * square[k];
#pragma GCC unroll 2
    for (std::size_t k = 0; k < vectors; ++k) y[k] *= square[k];
  }
}

/// Zeroes x where an integer is 0, by integer arithmetic: GCC 12 takes comparisons of such vectors apart.
VKM_INLINE void keep_where_not_zero(const Eight& integer, Eight& x) {
  EightBits bits, kept;
  std::memcpy(&bits, &integer, sizeof bits);
  std::memcpy(&kept, &x, sizeof kept);
  bits <<= 1;  // without the sign
  kept &= -((bits | -bits) >> 63);
  std::memcpy(&x, &kept, sizeof kept);
}

template <int steps, bool leave_out, std::size_t vectors>
VKM_INLINE void add_run(const NearSources& sources, const NearRun& run, double soft2, NearBlock<vectors>& to) {
  Eight u[vectors], v[vectors], w[vectors];
#pragma GCC unroll 2
  for (std::size_t k = 0; k < vectors; ++k) u[k] = to.u[k], v[k] = to.v[k], w[k] = to.w[k];
  for (std::size_t s = run.first; s < run.last; ++s) {
    const double px = sources.at.x[s], py = sources.at.y[s], pz = sources.at.z[s];
    Eight rx[vectors], ry[vectors], rz[vectors], r2[vectors], root[vectors];
#pragma GCC unroll 2
    for (std::size_t k = 0; k < vectors; ++k) {
      rx[k] = to.x[k] - px, ry[k] = to.y[k] - py, rz[k] = to.z[k] - pz;
      r2[k] = rx[k] * rx[k] + ry[k] * ry[k] + rz[k] * rz[k] + soft2;
    }
    reciprocal_roots<steps>(r2, root);
    const double ex = sources.element.x[s], ey = sources.element.y[s], ez = sources.element.z[s];
#pragma GCC unroll 2
    for (std::size_t k = 0; k < vectors; ++k) {
      if constexpr (leave_out) {
        keep_where_not_zero((to.one[k] - sources.number[s]) * (to.two[k] - sources.number[s]), root[k]);
      }
      const Eight weight = root[k] * root[k] * root[k];
      u[k] += (ey * rz[k] - ez * ry[k]) * weight;
      v[k] += (ez * rx[k] - ex * rz[k]) * weight;
      w[k] += (ex * ry[k] - ey * rx[k]) * weight;
    }
  }
#pragma GCC unroll 2
  for (std::size_t k = 0; k < vectors; ++k) to.u[k] = u[k], to.v[k] = v[k], to.w[k] = w[k];
}

template <int steps, std::size_t vectors>
VKM_INLINE void add_runs(const NearSources& sources, std::span<const NearRun> runs, double soft2,
                         const NearPoints& points, std::size_t first, std::size_t end) {
  NearBlock<vectors> block;
  for (std::size_t k = 0; k < vectors; ++k) {
    const std::size_t p = first + k * eight;
    load(points.at.x + p, block.x[k]), load(points.at.y + p, block.y[k]), load(points.at.z + p, block.z[k]);
    load(points.sums.x + p, block.u[k]), load(points.sums.y + p, block.v[k]), load(points.sums.z + p, block.w[k]);
    load(points.first_left_out + p, block.one[k]), load(points.second_left_out + p, block.two[k]);
  }
  for (const NearRun& run : runs) {
    if (run.leave_out) {
      add_run<steps, true>(sources, run, soft2, block);
    } else {
      add_run<steps, false>(sources, run, soft2, block);
    }
  }
  for (std::size_t k = 0; k < vectors * eight; ++k) {
    if (first + k >= end) break;
    points.sums.x[first + k] = block.u[k / eight][k % eight];
    points.sums.y[first + k] = block.v[k / eight][k % eight];
    points.sums.z[first + k] = block.w[k / eight][k % eight];
  }
}

template <int steps>
VKM_KERNEL void add_all(const NearSources& sources, std::span<const NearRun> runs, double soft2,
                        const NearPoints& points, std::size_t begin, std::size_t end) {
  std::size_t p = begin;
  for (; p + eight < end; p += 2 * eight) add_runs<steps, 2>(sources, runs, soft2, points, p, end);
  if (p < end) add_runs<steps, 1>(sources, runs, soft2, points, p, end);
}

}  // namespace

void add_near(const NearSources& sources, std::span<const NearRun> runs, const NearRule& rule, const NearPoints& points,
              std::size_t begin, std::size_t end) {
  const auto add = rule.steps <= 2 ? add_all<2> : rule.steps == 3 ? add_all<3> : add_all<4>;
  add(sources, runs, rule.soft2, points, begin, end);
}

}  // namespace vkm::far
