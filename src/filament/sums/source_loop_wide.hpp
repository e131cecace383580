#pragma once

/// What the hand-written sums share: the loop over sources one by one at a few vectors of points (core/wide.hpp), and
/// what is done about sources that are left out because they are near.

#include "core/wide.hpp"

#if VKM_HAS_WIDE

#include <cstddef>
#include <limits>
#include <type_traits>

namespace vkm {

/// A kernel has two forms. The quick one (`near` false) takes no source for near, and says false if one was: what it
/// has summed is of no use then. The careful one (`near` true) leaves near sources out, and says true.
template <class Kernel>
void quick_or_careful(const Kernel& kernel) {
  if (!kernel(std::false_type{})) kernel(std::true_type{});
}

inline constexpr std::size_t most_ahead = 2;    // bound of the terms' `ahead`
inline constexpr std::size_t most_vectors = 4;  // and of their `vectors`

/// The terms of a sum over sources s, at vectors v of eight points each. R is the offset of the points from the source.
template <class T>
concept SourceTerms = requires(const T& terms, std::size_t s, std::size_t v, Wide x, WideVec3 sum) {
  requires T::vectors <= most_vectors;              // how many vectors are summed at once
  requires 1 <= T::ahead&& T::ahead <= most_ahead;  // how many roots are under way
  requires T::near > 0.0;                           // |R| below which a source is left out
  x = terms.square(s, v);                           // R^2, also to be had for the `ahead` after the last source
  x = terms.root(x, v);                             // its root n, for R^2 > 0
  x = terms.divide(x);                              // what else of n is to be divided ahead
  sum += terms.term(s, v, x, x, x);                 // what is added, by n, R^2 and the quotient that was divided ahead
};

/// `only` has a bit a lane.
template <bool some>
VKM_WIDE_INLINE Wide add_where(__mmask8 only, Wide sum, Wide term) {
  return some ? _mm512_mask_add_pd(sum, only, sum, term) : sum + term;
}

/// Only the divider's root is right at 0.
template <bool near, SourceTerms Terms>
VKM_WIDE_INLINE Wide root_of(const Terms& terms, Wide r2, std::size_t v) {
  return near ? _mm512_sqrt_pd(r2) : terms.root(r2, v);
}

/// Adds the terms of the sources 0 .. count - 1 to the sums, in their order. The roots of the next sources are under
/// way while one is summed, so that neither divider nor multipliers wait.
template <bool near, SourceTerms Terms>
VKM_WIDE_INLINE bool add_terms(const Terms& terms, std::size_t count, WideVec3 (&sums)[Terms::vectors]) {
  constexpr std::size_t vectors = Terms::vectors, ahead = Terms::ahead;
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
      const __mmask8 far = near ? _mm512_cmp_pd_mask(n, wide(Terms::near), _CMP_NLT_UQ) : 0xff;
      const WideVec3 term = terms.term(s, v, n, r2, divided);
      sums[v].x = add_where<near>(far, sums[v].x, term.x);
      sums[v].y = add_where<near>(far, sums[v].y, term.y);
      sums[v].z = add_where<near>(far, sums[v].z, term.z);
    }
  }
  return near || _mm512_reduce_min_pd(least) >= 1.01 * Terms::near * Terms::near;
}

}  // namespace vkm

#endif
