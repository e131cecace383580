#pragma once

/// Elementary functions to 200 bits and more, by Taylor series and Newton's iteration: a microsecond or two a call.

#include "core/elementary/long_float.hpp"

namespace vkm::elementary {

/// A number as the sum of a double and a correction below half a unit in its last place.
struct Pair {
  double high;
  double low;
};

LongFloat long_float(const Pair& x);

/// e^x for |x| < 2^20.
LongFloat long_exp(const LongFloat& x);

/// ln x for x > 0 from an approximation with an error below 2^-60.
LongFloat long_log(const LongFloat& x, const Pair& approximation);

struct LongSinCos {
  LongFloat sin, cos;
};

/// x / (2 pi) less the nearest multiple of 1 / steps, and that multiple, modulo `steps`, a power of two.
struct Turn {
  std::uint64_t step;
  LongFloat rest;  // in radians
};

/// Reduction of a finite x by a stored 1 / (2 pi), to 2^-250 of the rest however near a multiple x is.
Turn reduced_turn(double x, std::uint64_t steps);

/// sin x and cos x of any finite x.
LongSinCos long_sin_cos(double x);

/// Angle in [-pi, pi] of the point (x, y) other than the origin.
LongFloat long_argument(const LongFloat& y, const LongFloat& x);

}  // namespace vkm::elementary
