#pragma once

/// The loop of pair_sums.hpp at eight lanes, and its arithmetic by form (pair_form.hpp).
///
/// The root of the next source is begun before the term of one is finished: a term that waits for its root holds a
/// place in the processor's queue, and that is soon full. A term is made for a form. It says
///
///   sums       WideVec3 or Wide, what it adds;
///   vectors    vectors of points that are summed at once: as many as fit in the registers with the sums at them;
///   square(r)  R^2, with its softening, if any;
///   root(r2)   its root n;
///   bounded    whether `least` is a bound that every R^2 must pass, or the sum is declined: for the forms that need
///              it, and the terms that leave out near sources;
///   operator() (e, r, r2, n, lane): what is added for the source vector e and the offset r of the points at `lane`.

#include "core/pair_form.hpp"
#include "core/pair_sums.hpp"
#include "core/wide.hpp"

#if VKM_HAS_WIDE

#define VKM_WIDE_LAMBDA __attribute__((target("arch=x86-64-v4"), always_inline))  // before its body

#include <limits>
#include <type_traits>

namespace vkm {

/// Roots and quotients of a form other than the plain one.
template <PairForm form>
struct WideForm {
  /// Of x > 0; of x >= 0 where the divider does it.
  VKM_WIDE_INLINE static Wide root(Wide x) {
    if constexpr (form == PairForm::added) return square_root(x);
    return _mm512_sqrt_pd(x);
  }
  VKM_WIDE_INLINE static Wide reciprocal(Wide b) {
    if constexpr (form == PairForm::divider) return wide(1.0) / b;
    return vkm::reciprocal(b);
  }
  VKM_WIDE_INLINE static Wide quotient(Wide a, Wide b) {
    if constexpr (form == PairForm::divider) return a / b;
    return vkm::quotient(a, b, vkm::reciprocal(b));
  }
  /// Whether 0 is no argument of the root.
  static constexpr bool positive = form == PairForm::added;
};

/// Where the sums of points stand.
VKM_WIDE_INLINE void load_sums(const LaneSpace& sums, std::size_t lane, WideVec3& to) {
  to = load_wide(LaneView{sums.x, sums.y, sums.z}, lane);
}
VKM_WIDE_INLINE void load_sums(const double* sums, std::size_t lane, Wide& to) { to = load_wide(sums + lane); }
VKM_WIDE_INLINE void store_sums(const LaneSpace& sums, std::size_t lane, const WideVec3& from) {
  store_wide(sums, lane, from);
}
VKM_WIDE_INLINE void store_sums(double* sums, std::size_t lane, Wide from) { store_wide(sums + lane, from); }

VKM_WIDE_INLINE WideVec3 wide(const LaneVec3& a) { return {wide(a.x), wide(a.y), wide(a.z)}; }

/// Adds the terms of the sources first .. last - 1 to the sums at a block of points. False, and the sums as they were,
/// where the term declines.
template <class Sources, class Sums, class Term>
VKM_WIDE_INLINE bool add_sources_wide(const Sources& sources, std::size_t first, std::size_t last,
                                      const LaneView& points, const Sums& sums, const Term& term) {
  constexpr std::size_t vectors = Term::vectors, all = lane_block / wide_lanes;
  static_assert(all % vectors == 0);
  Wide least = wide(std::numeric_limits<double>::infinity());
  typename Term::sums done[all];
  for (std::size_t begin = 0; begin < all; begin += vectors) {
    WideVec3 at[vectors];
    typename Term::sums sum[vectors];
#pragma GCC unroll 4
    for (std::size_t v = 0; v < vectors; ++v) {
      at[v] = load_wide(points, (begin + v) * wide_lanes);
      load_sums(sums, (begin + v) * wide_lanes, sum[v]);
    }
    WideVec3 r[vectors];
    Wide r2[vectors], n[vectors];
    const auto begin_source = [&](std::size_t s) VKM_WIDE_LAMBDA {
      const WideVec3 p = wide(sources.place(s));
#pragma GCC unroll 4
      for (std::size_t v = 0; v < vectors; ++v) {
        r[v] = at[v] - p;
        r2[v] = term.square(r[v]);
        if constexpr (Term::bounded) least = _mm512_min_pd(least, r2[v]);
        n[v] = term.root(r2[v]);
      }
    };
    if (first < last) begin_source(first);
    for (std::size_t s = first; s < last; ++s) {
      WideVec3 own_r[vectors];
      Wide own_r2[vectors], own_n[vectors];
#pragma GCC unroll 4
      for (std::size_t v = 0; v < vectors; ++v) {
        own_r[v] = r[v];
        own_r2[v] = r2[v];
        own_n[v] = n[v];
      }
      begin_source(s + 1 < last ? s + 1 : s);
      const WideVec3 e = wide(sources.element(s));
#pragma GCC unroll 4
      for (std::size_t v = 0; v < vectors; ++v) {
        sum[v] += term(e, own_r[v], own_r2[v], own_n[v], (begin + v) * wide_lanes);
      }
    }
#pragma GCC unroll 4
    for (std::size_t v = 0; v < vectors; ++v) done[begin + v] = sum[v];
  }
  if (Term::bounded && !(_mm512_reduce_min_pd(least) > Term::least)) return false;
  for (std::size_t v = 0; v < all; ++v) store_sums(sums, v * wide_lanes, done[v]);
  return true;
}

/// Writes term(e, e_j, p - p_j, R^2, n) of a place p and its element e with the sources j from `first` on; reads and
/// writes up to a whole number of eights. The root of the next sources is begun before a term is finished.
template <class Term>
VKM_WIDE_INLINE void fill_terms_wide(const WideVec3& p, const WideVec3& e, const LaneSources& sources,
                                     std::size_t first, std::size_t count, const Term& term, double* terms) {
  WideVec3 r = p - load_wide(sources.at, first);
  Wide r2 = term.square(r), n = term.root(r2);
  for (std::size_t k = 0; k < count; k += wide_lanes) {
    const WideVec3 own_r = r;
    const Wide own_r2 = r2, own_n = n;
    const std::size_t next = k + wide_lanes < count ? k + wide_lanes : k;
    r = p - load_wide(sources.at, first + next);
    r2 = term.square(r);
    n = term.root(r2);
    store_wide(terms + k, term(e, load_wide(sources.vector, first + k), own_r, own_r2, own_n));
  }
}

/// Calls `run` with the form as a constant. For forms other than the plain one.
template <class Run>
auto with_form(PairForm form, const Run& run) {
  switch (form) {
    case PairForm::divider:
      return run(std::integral_constant<PairForm, PairForm::divider>{});
    case PairForm::mixed:
      return run(std::integral_constant<PairForm, PairForm::mixed>{});
    default:
      return run(std::integral_constant<PairForm, PairForm::added>{});
  }
}

}  // namespace vkm

#endif
