#pragma once

/// The loop that the hand-written field sums share: sources one by one, at a few vectors of points (core/wide.hpp).

#include "core/numbers.hpp"
#include "core/wide.hpp"

#if VKM_HAS_WIDE

#include <cstddef>
#include <limits>

#include "filament/sums/magnetostatics.hpp"

namespace vkm {

inline constexpr std::size_t most_ahead = 2;  // bound of the terms' `ahead`

struct WideVec3 {
  Wide x, y, z;
};

template <bool some>
VKM_WIDE_INLINE Wide add_where(__mmask8 kept, Wide sum, Wide term) {
  return some ? _mm512_mask_add_pd(sum, kept, sum, term) : sum + term;
}

/// Only the divider's root is right at 0.
template <bool near, class Terms>
VKM_WIDE_INLINE Wide root_of(const Terms& terms, Wide r2, std::size_t v) {
  return near ? _mm512_sqrt_pd(r2) : terms.root(r2, v);
}

/// Adds the terms of the sources 0 .. count - 1 to the sums at Terms::vectors times eight points. The roots of the next
/// Terms::ahead sources are under way while one is summed, so that neither divider nor multipliers wait. For source s
/// and vector v,
///   terms.square(s, v)                is R^2, also to be had for the `ahead` after the last source,
///   terms.root(r2, v)                 is its root n,
///   terms.divide(n)                   is what else of n is to be divided ahead,
///   terms.term(s, v, n, r2, divided)  is added.
/// Sources nearer than least_distance are left out if `near` is said; else, if there may be one, the result is false
/// and the sums are of no use.
template <bool near, class Terms>
VKM_WIDE_INLINE bool add_terms(const Terms& terms, std::size_t count, WideVec3 (&sums)[Terms::vectors]) {
  constexpr std::size_t vectors = Terms::vectors, ahead = Terms::ahead;
  static_assert(vectors <= 4 && ahead <= most_ahead);
  Wide r2_ahead[ahead][vectors], n_ahead[ahead][vectors], divided_ahead[vectors];
  Wide least = wide(std::numeric_limits<double>::infinity());
#pragma GCC unroll 4
  for (std::size_t v = 0; v < vectors; ++v) {
#pragma GCC unroll 2
    for (std::size_t a = 0; a < ahead; ++a) {
      r2_ahead[a][v] = terms.square(a, v);
      n_ahead[a][v] = root_of<near>(terms, r2_ahead[a][v], v);
    }
    divided_ahead[v] = terms.divide(n_ahead[0][v]);
  }
  for (std::size_t s = 0; s < count; ++s) {
#pragma GCC unroll 4
    for (std::size_t v = 0; v < vectors; ++v) {
      const Wide r2 = r2_ahead[0][v], n = n_ahead[0][v], divided = divided_ahead[v];
#pragma GCC unroll 2
      for (std::size_t a = 1; a < ahead; ++a) {
        r2_ahead[a - 1][v] = r2_ahead[a][v];
        n_ahead[a - 1][v] = n_ahead[a][v];
      }
      r2_ahead[ahead - 1][v] = terms.square(s + ahead, v);
      n_ahead[ahead - 1][v] = root_of<near>(terms, r2_ahead[ahead - 1][v], v);
      divided_ahead[v] = terms.divide(n_ahead[0][v]);
      least = _mm512_min_pd(least, r2);
      const __mmask8 kept = near ? _mm512_cmp_pd_mask(n, wide(least_distance), _CMP_NLT_UQ) : 0xff;
      const WideVec3 term = terms.term(s, v, n, r2, divided);
      sums[v].x = add_where<near>(kept, sums[v].x, term.x);
      sums[v].y = add_where<near>(kept, sums[v].y, term.y);
      sums[v].z = add_where<near>(kept, sums[v].z, term.z);
    }
  }
  return near || _mm512_reduce_min_pd(least) >= 1.01 * least_distance * least_distance;
}

/// A dipole's field, by mr = m.R and per_n = 1 / |R|.
VKM_WIDE_INLINE WideVec3 wide_dipole_field(const WideVec3& m, const WideVec3& r, Wide mr, Wide n, Wide r2, Wide per_n) {
  const Wide once = quotient(mr, n, per_n) * wide(3.0);
  const Wide radial = quotient(quotient(once, n, per_n), n, per_n);
  const Wide q = reciprocal(n * r2, per_n * per_n * per_n);
  const Wide k = wide(inv_four_pi);
  return {(radial * r.x - m.x) * k * q, (radial * r.y - m.y) * k * q, (radial * r.z - m.z) * k * q};
}

}  // namespace vkm

#endif
