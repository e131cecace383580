#pragma once

/// Argument of a point by a table of arc tangents: with c a multiple of 1/64 next to n / d,
/// atan(n / d) = atan c + atan v, v = (n - c d) / (d + c n), |v| < 0.0079.

#include "core/elementary/pair.hpp"
#include "core/elementary/tables.hpp"

namespace vkm::elementary {

/// Bound on the relative error of the pairs below.
inline constexpr double argument_error = 0x1p-65;

/// Angle in (-pi, pi] of the point (x, y), for coordinates of sizes between 2^-400 and 2^400, or y = +0 and x > 0.
VKM_INLINE Pair fast_argument(const Pair& y, const Pair& x) {
  const double y_sense = y.high < 0.0 ? -1.0 : 1.0;
  const double x_sense = x.high < 0.0 ? -1.0 : 1.0;
  const Pair up = {y.high * y_sense, y.low * y_sense};
  const Pair across = {x.high * x_sense, x.low * x_sense};
  const bool steep = up.high > across.high;
  const Pair d = {steep ? up.high : across.high, steep ? up.low : across.low};
  const Pair n = {steep ? across.high : up.high, steep ? across.low : up.low};

  constexpr double shift = 0x1.8p52;
  const double shifted = (n.high / d.high) * atan_steps + shift;
  const double c = (shifted - shift) * (1.0 / atan_steps);
  const Parts& anchor = atan_table[std::bit_cast<std::uint64_t>(shifted) & 127];
  const double dh = head(d.high);
  const double nh = head(n.high);
  // products with c are exact, and so is the first difference
  const Pair top = exact_sum(n.high - c * dh, -(c * (d.high - dh)));
  const Pair rough = ordered_sum(d.high, c * nh);
  const Pair bottom = ordered_sum(rough.high, rough.low + (c * (n.high - nh) + (d.low + c * n.low)));
  const Pair v = quotient({top.high, top.low + (n.low - c * d.low)}, bottom);
  const double z = v.high * v.high;
  const double bend =
      v.high * z * (-1.0 / 3.0 + z * (1.0 / 5.0 + z * (-1.0 / 7.0 + z * (1.0 / 9.0 - z * (1.0 / 11.0)))));
  const Pair sharp = ordered_sum(anchor.head, v.high);
  const Pair octant = ordered_sum(sharp.high, sharp.low + (anchor.rest + (v.low + bend)));

  // quarters pi / 2 plus or minus the octant's angle
  const double sense = steep != (x_sense < 0.0) ? -1.0 : 1.0;
  const double quarters = steep ? 1.0 : (x_sense < 0.0 ? 2.0 : 0.0);
  const Pair whole = ordered_sum(quarters * half_pi.head, sense * octant.high);
  const Pair angle = ordered_sum(whole.high, whole.low + (quarters * half_pi.rest + sense * octant.low));
  return {angle.high * y_sense, angle.low * y_sense};
}

/// Bound on the relative error of the angle below.
inline constexpr double finer_argument_error = 0x1p-92;

/// The same angle from one next to it, of which the error is (y cos - x sin) / (x cos + y sin).
Pair finer_argument(const Pair& y, const Pair& x, double next);

/// sqrt(1 - x^2) for |x| < 1.
VKM_INLINE Pair complement(double x) {
  const Pair less = exact_sum(1.0, -x);
  const Pair more = exact_sum(1.0, x);
  const Pair square_of = product(less, more);
  const double root = __builtin_sqrt(square_of.high);
  const Pair back = square(root);
  return ordered_sum(root, (((square_of.high - back.high) - back.low) + square_of.low) * (0.5 / root));
}

/// asin x where the fast path can tell, else NaN.
VKM_INLINE double try_asin(double x) {
  const Pair angle = fast_argument({x, 0.0}, complement(x));
  const double value = rounded(angle, magnitude(angle.high) * argument_error);
  const bool tiny = magnitude(x) < 0x1p-26;
  return tiny ? x : (magnitude(x) < 1.0 ? value : nan);
}

/// acos x likewise.
VKM_INLINE double try_acos(double x) {
  const Pair angle = fast_argument(complement(x), {x, 0.0});
  const double value = rounded(angle, magnitude(angle.high) * argument_error);
  return magnitude(x) < 1.0 && magnitude(x) > 0x1p-200 ? value : nan;
}

}  // namespace vkm::elementary
