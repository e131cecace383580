#include "filament/sums/pair_forms.hpp"

#if VKM_HAS_WIDE

#include <limits>

namespace vkm {

namespace {

constexpr std::size_t vectors = 2;  // at a time: more of them, with the sums at them, do not fit in the registers

template <PairForm form>
VKM_WIDE_INLINE Wide root(Wide x) {
  if constexpr (form == PairForm::added) return square_root(x);
  return _mm512_sqrt_pd(x);
}

/// strength / (sqrt(R^2) R^2), where the strength may be 1.
template <PairForm form, bool unit>
VKM_WIDE_INLINE Wide ratio(Wide strength, Wide b) {
  if constexpr (form == PairForm::divider) return strength / b;
  const Wide y = reciprocal(b);
  return unit ? y : quotient(strength, b, y);
}

/// The sum over sources, cross(e, r) weight(r^2), at two vectors of points. The least r^2 is noted.
template <class Weight>
VKM_WIDE_INLINE void add_sources(const PairRun& run, std::size_t lane, Wide soft2, const Weight& weight, Wide& least,
                                 WideVec3 (&sum)[vectors]) {
  WideVec3 at[vectors];
#pragma GCC unroll 2
  for (std::size_t v = 0; v < vectors; ++v) {
    at[v] = load_wide(run.points, lane + v * wide_lanes);
    sum[v] = load_wide(LaneView{run.sums.x, run.sums.y, run.sums.z}, lane + v * wide_lanes);
  }
  for (std::size_t s = run.first; s < run.last; ++s) {
    const WideVec3 p = wide(run.sources.at[s]), e = wide(run.sources.vector[s]);
#pragma GCC unroll 2
    for (std::size_t v = 0; v < vectors; ++v) {
      const WideVec3 r = at[v] - p;
      const Wide r2 = Weight::softened ? dot(r, r) + soft2 : dot(r, r);
      if constexpr (Weight::positive) least = _mm512_min_pd(least, r2);
      sum[v] += cross(e, r) * weight(r2);
    }
  }
}

/// At all points of the block. False where some r^2 is 0 that should be positive.
template <class Weight>
VKM_WIDE_INLINE bool add_run(const PairRun& run, double soft2, const Weight& weight) {
  Wide least = wide(std::numeric_limits<double>::infinity());
  WideVec3 sums[lane_block / wide_lanes];
  for (std::size_t lane = 0; lane < lane_block; lane += vectors * wide_lanes) {
    WideVec3 sum[vectors];
    add_sources(run, lane, wide(soft2), weight, least, sum);
    for (std::size_t v = 0; v < vectors; ++v) sums[lane / wide_lanes + v] = sum[v];
  }
  if (!(_mm512_reduce_min_pd(least) > 0.0)) return false;
  for (std::size_t v = 0; v < lane_block / wide_lanes; ++v) store_wide(run.sums, v * wide_lanes, sums[v]);
  return true;
}

template <PairForm form>
struct ClosedCurveWeight {
  static constexpr bool softened = false;
  static constexpr bool positive = form == PairForm::added;  // only the divider's root is right at 0
  Wide softening;
  VKM_WIDE_INLINE Wide operator()(Wide r2) const {
    return ratio<form, true>(wide(1.0), r2 * root<form>(r2) + softening);
  }
};

template <PairForm form>
struct InducedWeight {
  static constexpr bool softened = true;
  static constexpr bool positive = true;
  Wide strength;
  VKM_WIDE_INLINE Wide operator()(Wide r2) const { return ratio<form, false>(strength, root<form>(r2) * r2); }
};

template <PairForm form>
VKM_WIDE bool closed_curve(const PairRun& run, double softening) {
  return add_run(run, 0.0, ClosedCurveWeight<form>{wide(softening)});
}

template <PairForm form>
VKM_WIDE bool induced(const PairRun& run, double soft2, double strength) {
  return add_run(run, soft2, InducedWeight<form>{wide(strength)});
}

}  // namespace

bool add_closed_curve_wide(const PairRun& run, double softening, PairForm form) {
  const auto add = form == PairForm::divider ? closed_curve<PairForm::divider>
                   : form == PairForm::mixed ? closed_curve<PairForm::mixed>
                                             : closed_curve<PairForm::added>;
  return add(run, softening);
}

bool add_induced_wide(const PairRun& run, double soft2, double strength, PairForm form) {
  const auto add = form == PairForm::divider ? induced<PairForm::divider>
                   : form == PairForm::mixed ? induced<PairForm::mixed>
                                             : induced<PairForm::added>;
  return add(run, soft2, strength);
}

}  // namespace vkm

#endif
