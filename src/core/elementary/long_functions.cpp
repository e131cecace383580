#include "core/elementary/long_functions.hpp"

#include <bit>
#include <cmath>

#include "core/elementary/tables.hpp"

namespace vkm::elementary {

namespace {

__extension__ typedef unsigned __int128 Double64;

/// Sum of first x^k / ((n+1) ... (n+2k)) with alternating signs, square being x^2: a sine or a cosine.
LongFloat alternating_series(LongFloat term, const LongFloat& square, std::uint32_t n) {
  LongFloat sum = term;
  const int start = term.exponent;
  while (!term.is_zero() && term.exponent > start - 260) {
    term = -divided(term * square, (n + 1) * (n + 2));
    sum = sum + term;
    n += 2;
  }
  return sum;
}

/// sin x and cos x for |x| < 1.
LongSinCos series_sin_cos(const LongFloat& x) {
  const LongFloat square = x * x;
  return {alternating_series(x, square, 1), alternating_series(long_float(1.0), square, 0)};
}

/// atan(y / x) for 0 <= y <= x.
LongFloat octant_argument(const LongFloat& y, const LongFloat& x) {
  const LongFloat ratio = y / x;
  if (ratio.exponent < -64) {
    const LongFloat square = ratio * ratio;
    return ratio - ratio * square * (divided(long_float(1.0), 3) - divided(square, 5));
  }
  // From 7 digits in binary: tan(a - start) = (y cos start - x sin start) / (x cos start + y sin start), whose series
  // to the fifth power multiplies the digits by seven.
  const double r = to_double(ratio);
  LongFloat angle = long_float(r / (1.0 + 0.28 * r * r));
  for (int i = 0; i < 2; ++i) {
    const LongSinCos at = series_sin_cos(angle);
    const LongFloat v = (ratio * at.cos - at.sin) / (at.cos + ratio * at.sin);
    const LongFloat square = v * v;
    angle = angle + v * (long_float(1.0) - square * (divided(long_float(1.0), 3) - divided(square, 5)));
  }
  return angle;
}

}  // namespace

LongFloat long_float(const Pair& x) { return long_float(x.high) + long_float(x.low); }

LongFloat long_exp(const LongFloat& x) {
  const double multiple = std::rint(to_double(x) * 1.4426950408889634);
  constexpr int halvings = 16;
  const LongFloat r = scaled(x - long_float(multiple) * long_ln2, -halvings);
  // e^r - 1, so that the squarings keep the digits: (1 + a)^2 - 1 = a (2 + a)
  LongFloat term = r;
  LongFloat sum = r;
  for (std::uint32_t n = 2; !term.is_zero() && term.exponent > r.exponent - 260; ++n) {
    term = divided(term * r, n);
    sum = sum + term;
  }
  for (int i = 0; i < halvings; ++i) sum = sum * (sum + long_float(2.0));
  return scaled(sum + long_float(1.0), static_cast<int>(multiple));
}

LongFloat long_log(const LongFloat& x, const Pair& approximation) {
  // With d the error of the start, 2 (x - e^start) / (x + e^start) = d + O(d^3).
  const LongFloat start = long_float(approximation);
  const LongFloat power = long_exp(start);
  return start + scaled((x - power) / (x + power), 1);
}

Turn reduced_turn(double x, std::uint64_t steps) {
  // x = whole 2^shift. The bits of 1 / (2 pi) from 2^-shift on, times whole, less all full turns.
  constexpr int width = 6;  // 384 bits: 53 are lost to `whole`, and at most 62 to cancellation
  const std::uint64_t bits = std::bit_cast<std::uint64_t>(x);
  const int biased = static_cast<int>(bits >> 52 & 0x7ff);
  const std::uint64_t mantissa = bits & 0xfffffffffffffULL;
  const std::uint64_t whole = biased == 0 ? mantissa : mantissa | 0x10000000000000ULL;
  const int shift = (biased == 0 ? 1 : biased) - 1075;

  const auto word_at = [](int first_bit) {  // 64 bits of 1 / (2 pi) after so many; zeros before the first
    const auto word = [](int i) { return i >= 0 && i < 24 ? turns_per_radian[i] : std::uint64_t{0}; };
    const int index = (first_bit + 6400) / 64 - 100;
    const int rest = (first_bit + 6400) % 64;
    return rest == 0 ? word(index) : word(index) << rest | word(index + 1) >> (64 - rest);
  };
  std::uint64_t fraction[width];
  std::uint64_t carry = 0;
  for (int i = 0; i < width; ++i) {
    const Double64 product = static_cast<Double64>(word_at(shift + 64 * (width - 1 - i))) * whole + carry;
    fraction[i] = static_cast<std::uint64_t>(product);
    carry = static_cast<std::uint64_t>(product >> 64);
  }

  const int step_bits = std::countr_zero(steps);
  std::uint64_t& top = fraction[width - 1];
  const std::uint64_t half = std::uint64_t{1} << (63 - step_bits);
  std::uint64_t step = (top + half) >> (64 - step_bits);  // of a sum modulo one turn
  top -= step << (64 - step_bits);
  bool negative = (top >> 63) != 0;
  if (negative) {
    std::uint64_t one = 1;
    for (std::uint64_t& word : fraction) {
      word = ~word + one;
      one = one != 0 && word == 0 ? 1 : 0;
    }
  }
  LongFloat rest = long_float(fraction, width, 0) * long_two_pi;
  if ((bits >> 63) != 0) {
    negative = !negative;
    step = (steps - step) & (steps - 1);
  }
  rest.negative = negative;
  return {step & (steps - 1), rest};
}

LongSinCos long_sin_cos(double x) {
  if (std::fabs(x) < 0.5) return series_sin_cos(long_float(x));
  const Turn turn = reduced_turn(x, 4);
  const LongSinCos at = series_sin_cos(turn.rest);
  switch (turn.step) {
    case 0:
      return at;
    case 1:
      return {at.cos, -at.sin};
    case 2:
      return {-at.sin, -at.cos};
    default:
      return {-at.cos, at.sin};
  }
}

LongFloat long_argument(const LongFloat& y, const LongFloat& x) {
  LongFloat up = y;
  LongFloat across = x;
  up.negative = false;
  across.negative = false;
  const LongFloat difference = across - up;
  LongFloat angle = difference.negative && !difference.is_zero() ? long_half_pi - octant_argument(across, up)
                                                                 : octant_argument(up, across);
  if (x.negative) angle = long_pi - angle;
  angle.negative = y.negative;
  return angle;
}

}  // namespace vkm::elementary
