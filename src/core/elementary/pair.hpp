#pragma once

/// Sums and products of doubles with their rounding errors, by heads: the highest 26 bits of a double, cut off by a
/// mask. Products of heads are exact, so that no fused multiply-add is needed, and straight-line code vectorises.
///
/// The elementary functions below are correctly rounded: a fast path gives the result as a Pair with a bound on its
/// error, `rounded` tells whether every number within the bound rounds alike, and the rest goes to LongFloat. The
/// result is then the one nearest the true value, whatever the machine, the vector width or the path.

#include <bit>
#include <cstdint>
#include <limits>

#include "core/elementary/long_functions.hpp"
#include "core/kernel.hpp"

namespace vkm::elementary {

inline constexpr double nan = std::numeric_limits<double>::quiet_NaN();
inline constexpr double infinity = std::numeric_limits<double>::infinity();

VKM_INLINE double magnitude(double x) {
  return std::bit_cast<double>(std::bit_cast<std::uint64_t>(x) & 0x7fffffffffffffffULL);
}

/// The highest 26 bits of x; x - head(x) has 27.
VKM_INLINE double head(double x) {
  return std::bit_cast<double>(std::bit_cast<std::uint64_t>(x) & 0xfffffffff8000000ULL);
}

/// a + b with its rounding error.
VKM_INLINE Pair exact_sum(double a, double b) {
  const double sum = a + b;
  const double part = sum - a;
  return {sum, (a - (sum - part)) + (b - part)};
}

/// The same where a is 0 or at least as large as b.
VKM_INLINE Pair ordered_sum(double a, double b) {
  const double sum = a + b;
  return {sum, b - (sum - a)};
}

/// a b with its rounding error, to 2^-106 of the product.
VKM_INLINE Pair product(double a, double b) {
  const double value = a * b;
  const double ah = head(a);
  const double bh = head(b);
  const double al = a - ah;
  const double bl = b - bh;
  return {value, (((ah * bh - value) + ah * bl) + al * bh) + al * bl};
}

/// a^2 likewise.
VKM_INLINE Pair square(double a) {
  const double value = a * a;
  const double ah = head(a);
  const double al = a - ah;
  return {value, ((ah * ah - value) + 2.0 * (ah * al)) + al * al};
}

VKM_INLINE Pair product(const Pair& a, const Pair& b) {
  const Pair p = product(a.high, b.high);
  return ordered_sum(p.high, p.low + (a.high * b.low + a.low * b.high));
}

VKM_INLINE Pair operator-(const Pair& a) { return {-a.high, -a.low}; }

VKM_INLINE Pair sum(const Pair& a, const Pair& b) {
  const Pair s = exact_sum(a.high, b.high);
  return ordered_sum(s.high, s.low + (a.low + b.low));
}

/// n / d, to about 2^-100; the low part of d is below its last place.
VKM_INLINE Pair quotient(const Pair& n, const Pair& d) {
  const double inverse = 1.0 / d.high;
  const double first = n.high * inverse;
  const Pair back = product(first, d.high);
  const double rest = ((n.high - back.high) - back.low) + (n.low - first * d.low);
  return ordered_sum(first, rest * inverse);
}

/// The number to which all within `error` of x round, or NaN where there is none such.
VKM_INLINE double rounded(const Pair& x, double error) {
  const double above = x.high + (x.low + error);
  const double below = x.high + (x.low - error);
  return above == below ? above : nan;
}

}  // namespace vkm::elementary
