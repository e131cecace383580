#pragma once

/// Sine and cosine by a table of 512 angles a turn: sin(a + y) = S + C y + S (cos y - 1) + C (sin y - y), |y| < 0.0062.

#include <cstdint>

#include "core/elementary/pair.hpp"
#include "core/elementary/tables.hpp"

namespace vkm::elementary {

/// Greatest |x| of the fast reduction.
inline constexpr double sine_range = 1e8;
/// Bound on the relative error of the pairs below.
inline constexpr double sine_error = 0x1p-65;

struct SinCosPair {
  Pair sin, cos;
};

/// sin and cos of 2 pi step / sine_steps + y.
VKM_INLINE SinCosPair sin_cos_of_step(std::uint64_t step, const Pair& y) {
  const Parts& s = sine_table[step & (sine_steps - 1)];
  const Parts& c = sine_table[(step + sine_steps / 4) & (sine_steps - 1)];
  const double sine = s.head + s.rest;
  const double cosine = c.head + c.rest;
  const double yh = head(y.high);
  const double yl = (y.high - yh) + y.low;
  const double z = y.high * y.high;
  // cos y - 1, and sin y - y
  const double versed = z * (-0.5 + z * (1.0 / 24.0 + z * (-1.0 / 720.0 + z * (1.0 / 40320.0)))) - y.high * y.low;
  const double cubic = y.high * z * (-1.0 / 6.0 + z * (1.0 / 120.0 + z * (-1.0 / 5040.0)));
  const Pair up = ordered_sum(s.head, c.head * yh);
  const Pair across = ordered_sum(c.head, -s.head * yh);
  const double up_rest = up.low + ((s.rest + (c.head * yl + c.rest * y.high)) + (sine * versed + cosine * cubic));
  const double across_rest =
      across.low + ((c.rest - (s.head * yl + s.rest * y.high)) + (cosine * versed - sine * cubic));
  return {ordered_sum(up.high, up_rest), ordered_sum(across.high, across_rest)};
}

/// sin x and cos x for |x| <= sine_range, to sine_error of themselves and 2^-111 |x|.
VKM_INLINE SinCosPair fast_sin_cos(double x) {
  constexpr double shift = 0x1.8p52;  // adding it rounds to an integer, which then stands in the low bits
  const double shifted = x * steps_per_radian + shift;
  const double multiple = shifted - shift;
  const double first = (x - multiple * sine_step1) - multiple * sine_step2;  // both differences are exact
  const Pair second = exact_sum(first, -multiple * sine_step3);
  const Pair y = ordered_sum(second.high, second.low - multiple * sine_step4);
  return sin_cos_of_step(std::bit_cast<std::uint64_t>(shifted), y);
}

/// Bound on the relative error of the pairs below.
inline constexpr double finer_sine_error = 0x1p-94;

/// The same by Taylor series in pairs, to finer_sine_error of themselves and 2^-111 |x|.
SinCosPair finer_sin_cos(double x);

/// sin x and cos x where the fast path can tell, else NaN.
struct SinCos {
  double sin;
  double cos;
};

VKM_INLINE SinCos try_sin_cos(double x) {
  const SinCosPair at = fast_sin_cos(x);
  const double reduction = magnitude(x) * 0x1p-111;
  const double s = rounded(at.sin, magnitude(at.sin.high) * sine_error + reduction);
  const double c = rounded(at.cos, magnitude(at.cos.high) * sine_error + reduction);
  const bool tiny = magnitude(x) < 0x1p-26;  // x and 1 are nearest, and -0 keeps its sign
  const bool reached = magnitude(x) <= sine_range;
  return {tiny ? x : (reached ? s : nan), reached ? c : nan};
}

VKM_INLINE double try_sine(double x) { return try_sin_cos(x).sin; }
VKM_INLINE double try_cosine(double x) { return try_sin_cos(x).cos; }

/// tan x likewise.
VKM_INLINE double try_tan(double x) {
  const SinCosPair at = fast_sin_cos(x);
  const Pair value = quotient(at.sin, at.cos);
  const double reduction = magnitude(x) * 0x1p-110;  // of the lesser of sine and cosine, for either may be small
  const double s = magnitude(at.sin.high);
  const double c = magnitude(at.cos.high);
  const double error = magnitude(value.high) * (4.0 * sine_error + reduction / (s < c ? s : c));
  const double near = rounded(value, error);
  return magnitude(x) < 0x1p-27 ? x : (magnitude(x) <= sine_range ? near : nan);
}

/// Sum of (-z)^k / (2 k + 5)! from k = 0 to 6, of the sine's Taylor series.
VKM_INLINE double sine_series(double z) {
  double series = -1.0 / 1307674368000.0 + z * (1.0 / 355687428096000.0);
  series = 1.0 / 6227020800.0 + z * series;
  series = -1.0 / 39916800.0 + z * series;
  series = 1.0 / 362880.0 + z * series;
  series = -1.0 / 5040.0 + z * series;
  series = 1.0 / 120.0 + z * series;
  return series;
}

/// Sine in single precision for |x| <= 1e5, by pi in two pieces and a Taylor series in double precision; else NaN.
VKM_INLINE float try_sin(float x) {
  constexpr double pi_head = 0x1.921fb54400000p+1;  // 33 bits: products with a multiple of 15 are exact
  constexpr double pi_rest = 0x1.0b4611a626331p-33;
  constexpr double shift = 0x1.8p52;
  const double wide = static_cast<double>(x);
  const double shifted = wide * 0x1.45f306dc9c883p-2 + shift;
  const double multiple = shifted - shift;
  const double y = (wide - multiple * pi_head) - multiple * pi_rest;
  const double z = y * y;
  const double series = -1.0 / 6.0 + z * sine_series(z);
  const double sine = y + y * (z * series);
  const std::uint64_t sign = std::bit_cast<std::uint64_t>(shifted) << 63;
  const double value = std::bit_cast<double>(std::bit_cast<std::uint64_t>(sine) ^ sign);
  return magnitude(wide) <= 1e5 ? static_cast<float>(value) : std::numeric_limits<float>::quiet_NaN();
}

}  // namespace vkm::elementary
