#pragma once

/// Powers that are products of few factors: x^n by squarings and x^(3/2), as pairs of doubles.

#include "core/elementary/pair.hpp"

namespace vkm::elementary {

/// Bound on the relative error of the pairs below.
inline constexpr double product_error = 0x1p-96;

/// x^N for N >= 1.
template <unsigned N>
VKM_INLINE Pair whole_power(double x) {
  if constexpr (N == 1) {
    return {x, 0.0};
  } else if constexpr (N == 2) {
    return square(x);
  } else if constexpr (N % 2 == 0) {
    const Pair half = whole_power<N / 2>(x);
    return product(half, half);
  } else {
    return product(whole_power<N - 1>(x), {x, 0.0});
  }
}

/// x^N for 2^-60 <= x <= 2^60 and N <= 16 where the fast path can tell, else NaN.
template <unsigned N>
VKM_INLINE double try_whole_power(double x) {
  const Pair value = whole_power<N>(x);
  const double near = rounded(value, value.high * product_error);
  return (x >= 0x1p-60) & (x <= 0x1p60) ? near : nan;
}

/// x^(3/2) for 2^-400 <= x <= 2^400 likewise.
VKM_INLINE double try_three_halves_power(double x) {
  const double root = __builtin_sqrt(x);
  const Pair back = square(root);
  const double rest = ((x - back.high) - back.low) * 0.5 / root;
  const Pair main = product(x, root);
  const double near = rounded(ordered_sum(main.high, main.low + x * rest), main.high * product_error);
  return (x >= 0x1p-400) & (x <= 0x1p400) ? near : nan;
}

}  // namespace vkm::elementary
