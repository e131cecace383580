#pragma once

/// Floating-point numbers of 256 bits with an exponent that does not overflow: the last resort of the elementary
/// functions, for the few arguments whose result lies too near a rounding boundary for two doubles to tell.
///
/// Operations truncate; each errs by less than 2^-253 of its result.

#include <array>
#include <cstdint>

namespace vkm::elementary {

/// (-1)^negative fraction 2^exponent, with a fraction in [1/2, 1) of 256 bits, lowest limb first; all limbs 0 for 0.
struct LongFloat {
  bool negative = false;
  int exponent = 0;
  std::array<std::uint64_t, 4> limbs{};

  bool is_zero() const { return limbs[3] == 0; }
};

/// Exact value of a finite number.
LongFloat long_float(double x);

/// The number that a fraction of so many bits stands for, highest limb last: limbs 2^exponent / 2^(64 n), normalised.
LongFloat long_float(const std::uint64_t* limbs, int n, int exponent);

/// Nearest double, ties to even, subnormals and infinities included. Whatever is within 2^-200 of a tie counts as the
/// tie: only exact results come so near.
double to_double(const LongFloat& x);

/// x 2^n.
LongFloat scaled(const LongFloat& x, int n);

LongFloat operator-(const LongFloat& x);
LongFloat operator+(const LongFloat& a, const LongFloat& b);
LongFloat operator-(const LongFloat& a, const LongFloat& b);
LongFloat operator*(const LongFloat& a, const LongFloat& b);
LongFloat operator/(const LongFloat& a, const LongFloat& b);

/// x / n for 0 < n < 2^32.
LongFloat divided(const LongFloat& x, std::uint32_t n);

/// Root of x >= 0.
LongFloat square_root(const LongFloat& x);

}  // namespace vkm::elementary
