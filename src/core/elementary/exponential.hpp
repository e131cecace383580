#pragma once

/// e^x by a table of 128 powers: x = k ln 2 / 128 + r, e^x = 2^(k / 128) (1 + r + r^2 / 2 + ...), |r| < 0.0028.

#include <cstdint>

#include "core/elementary/pair.hpp"
#include "core/elementary/tables.hpp"

namespace vkm::elementary {

/// Bound on the relative error of the pairs below.
inline constexpr double exp_error = 0x1p-67;

/// fraction 2^exponent, with a fraction between 0.99 and 2.
struct ScaledPair {
  Pair fraction;
  std::uint64_t exponent;  // modulo 4096

  int signed_exponent() const { return static_cast<int>((exponent + 2048) & 4095) - 2048; }
};

/// e^(x.high + x.low) for |x.high| < 800.
VKM_INLINE ScaledPair fast_exp(const Pair& x) {
  constexpr double shift = 0x1.8p52;
  const double shifted = x.high * steps_per_unit + shift;
  const double multiple = shifted - shift;
  const std::uint64_t step = std::bit_cast<std::uint64_t>(shifted);
  const Pair first = exact_sum(x.high - multiple * exp_step1, -multiple * exp_step2);  // the first difference is exact
  const Pair r = exact_sum(first.high, first.low + x.low);
  const double rh = head(r.high);
  const double rl = (r.high - rh) + r.low;
  const double z = r.high * r.high;
  const double bend =
      z * (0.5 + r.high * (1.0 / 6.0 + r.high * (1.0 / 24.0 + r.high * (1.0 / 120.0 + r.high * (1.0 / 720.0))))) +
      r.high * r.low;
  const Parts& t = exp_table[step & (exp_steps - 1)];
  const Pair main = ordered_sum(t.head, t.head * rh);
  const double rest = main.low + (t.rest + (t.head * rl + t.rest * r.high) + (t.head + t.rest) * bend);
  return {ordered_sum(main.high, rest), (step / exp_steps) & 4095};
}

/// Bound on the relative error of the pair below.
inline constexpr double finer_exp_error = 0x1p-75;

/// e^(x.high + x.low) for |x.high| < 800 to more digits: the square as a pair, too.
ScaledPair finer_exp(const Pair& x);

/// The nearest double, or NaN where it takes more digits. Subnormal results are rounded to the last place they have.
double rounded(const ScaledPair& x, double error);

/// e^x where the fast path can tell, else NaN; 0 and infinity far out.
VKM_INLINE double try_exp(double x) {
  const ScaledPair value = fast_exp({x, 0.0});
  const double fraction = rounded(value.fraction, exp_error * value.fraction.high);
  const double power = std::bit_cast<double>(std::bit_cast<std::uint64_t>(fraction) + (value.exponent << 52));
  const double near = (magnitude(x) <= 708.0) & (fraction == fraction) ? power : nan;
  const double below = x < -746.0 ? 0.0 : near;
  return x > 710.0 ? infinity : below;
}

}  // namespace vkm::elementary
