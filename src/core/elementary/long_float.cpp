#include "core/elementary/long_float.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace vkm::elementary {

namespace {

__extension__ typedef unsigned __int128 Double64;

using Limbs = std::array<std::uint64_t, 4>;

/// Limbs moved by `bits` places to lower significance.
Limbs shifted_down(const Limbs& limbs, int bits) {
  Limbs result{};
  const int words = bits / 64;
  const int rest = bits % 64;
  for (int i = 0; i + words < 4; ++i) {
    result[i] = limbs[i + words] >> rest;
    if (rest != 0 && i + words + 1 < 4) result[i] |= limbs[i + words + 1] << (64 - rest);
  }
  return result;
}

/// Whether the size of a is below that of b.
bool is_smaller(const LongFloat& a, const LongFloat& b) {
  if (a.is_zero() || b.is_zero()) return a.is_zero() && !b.is_zero();
  if (a.exponent != b.exponent) return a.exponent < b.exponent;
  return std::lexicographical_compare(a.limbs.rbegin(), a.limbs.rend(), b.limbs.rbegin(), b.limbs.rend());
}

/// Adds 2^bit to the fraction (bit 0 is the lowest), after which it may have reached 1.
void add_bit(LongFloat& x, int bit) {
  std::uint64_t carry = std::uint64_t{1} << (bit % 64);
  for (int i = bit / 64; i < 4 && carry != 0; ++i) {
    x.limbs[i] += carry;
    carry = x.limbs[i] < carry ? 1 : 0;
  }
  if (carry != 0) {
    x.limbs[3] = std::uint64_t{1} << 63;
    ++x.exponent;
  }
}

/// The fraction rounded to so many of its highest bits (0 to 255), ties to even.
LongFloat rounded(LongFloat x, int bits) {
  const int dropped = 256 - bits;  // 1 to 256
  const auto bit_at = [&](int i) { return i < 256 && (x.limbs[i / 64] >> (i % 64) & 1) != 0; };
  const bool half = bit_at(dropped - 1);
  bool more = false;
  for (int i = 0; i < (dropped - 1) / 64; ++i) more |= x.limbs[i] != 0;
  if ((dropped - 1) % 64 != 0) more |= x.limbs[(dropped - 1) / 64] << (64 - (dropped - 1) % 64) != 0;
  const bool odd = bit_at(dropped);
  for (int i = 0; i < dropped / 64; ++i) x.limbs[i] = 0;
  if (dropped % 64 != 0) x.limbs[dropped / 64] &= ~std::uint64_t{0} << (dropped % 64);
  if (!half || !(more || odd)) return x;
  if (dropped < 256) {
    add_bit(x, dropped);
  } else {
    x.limbs = {0, 0, 0, std::uint64_t{1} << 63};
    ++x.exponent;
  }
  return x;
}

}  // namespace

LongFloat long_float(const std::uint64_t* limbs, int n, int exponent) {
  LongFloat result;
  int top = n - 1;
  while (top >= 0 && limbs[top] == 0) --top;
  if (top < 0) return result;
  const int zeros = std::countl_zero(limbs[top]);
  for (int i = 0; i < 4; ++i) {
    const int from = top - 3 + i;
    const std::uint64_t word = from >= 0 ? limbs[from] : 0;
    const std::uint64_t below = from >= 1 ? limbs[from - 1] : 0;
    result.limbs[i] = zeros == 0 ? word : word << zeros | below >> (64 - zeros);
  }
  result.exponent = exponent - 64 * (n - 1 - top) - zeros;
  return result;
}

LongFloat long_float(double x) {
  int exponent = 0;
  const double fraction = std::frexp(std::fabs(x), &exponent);
  const std::uint64_t whole = static_cast<std::uint64_t>(std::ldexp(fraction, 64));
  LongFloat result = long_float(&whole, 1, exponent);
  result.negative = std::signbit(x);
  return result;
}

double to_double(const LongFloat& x) {
  const double zero = x.negative ? -0.0 : 0.0;
  if (x.is_zero() || x.exponent < -1074) return zero;
  const double infinity =
      x.negative ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
  if (x.exponent > 1024) return infinity;
  LongFloat near = rounded(x, 200);
  near = rounded(near, std::clamp(near.exponent + 1074, 0, 53));
  if (near.exponent > 1024) return infinity;
  if (near.is_zero()) return zero;
  const double size = std::ldexp(static_cast<double>(near.limbs[3] >> 11), near.exponent - 53);
  return x.negative ? -size : size;
}

LongFloat scaled(const LongFloat& x, int n) {
  LongFloat result = x;
  result.exponent += n;
  return result;
}

LongFloat operator-(const LongFloat& x) {
  LongFloat result = x;
  result.negative = !x.negative;
  return result;
}

LongFloat operator+(const LongFloat& a, const LongFloat& b) {
  if (is_smaller(a, b)) return b + a;
  if (b.is_zero()) return a;
  const int gap = a.exponent - b.exponent;
  if (gap > 255) return a;
  const Limbs low = shifted_down(b.limbs, gap);
  std::array<std::uint64_t, 5> sum{};
  if (a.negative == b.negative) {
    Double64 carry = 0;
    for (int i = 0; i < 4; ++i) {
      carry += static_cast<Double64>(a.limbs[i]) + low[i];
      sum[i] = static_cast<std::uint64_t>(carry);
      carry >>= 64;
    }
    sum[4] = static_cast<std::uint64_t>(carry);
  } else {
    std::uint64_t borrow = 0;
    for (int i = 0; i < 4; ++i) {
      const Double64 take = static_cast<Double64>(low[i]) + borrow;
      borrow = a.limbs[i] < take ? 1 : 0;
      sum[i] = static_cast<std::uint64_t>(a.limbs[i] - take);
    }
  }
  LongFloat result = long_float(sum.data(), 5, a.exponent + 64);
  result.negative = a.negative;
  return result;
}

LongFloat operator-(const LongFloat& a, const LongFloat& b) { return a + -b; }

LongFloat operator*(const LongFloat& a, const LongFloat& b) {
  std::array<std::uint64_t, 8> product{};
  for (int i = 0; i < 4; ++i) {
    std::uint64_t carry = 0;
    for (int j = 0; j < 4; ++j) {
      const Double64 sum = static_cast<Double64>(a.limbs[i]) * b.limbs[j] + product[i + j] + carry;
      product[i + j] = static_cast<std::uint64_t>(sum);
      carry = static_cast<std::uint64_t>(sum >> 64);
    }
    product[i + 4] = carry;
  }
  LongFloat result = long_float(product.data(), 8, a.exponent + b.exponent);
  result.negative = a.negative != b.negative;
  return result;
}

LongFloat divided(const LongFloat& x, std::uint32_t n) {
  std::array<std::uint64_t, 5> quotient{};
  std::uint64_t rest = 0;  // below 2^32
  for (int i = 4; i >= 0; --i) {
    const std::uint64_t word = i > 0 ? x.limbs[i - 1] : 0;
    const std::uint64_t high = rest << 32 | word >> 32;
    const std::uint64_t low = high % n << 32 | (word & 0xffffffffU);
    quotient[i] = high / n << 32 | low / n;
    rest = low % n;
  }
  LongFloat result = long_float(quotient.data(), 5, x.exponent);
  result.negative = x.negative;
  return result;
}

LongFloat operator/(const LongFloat& a, const LongFloat& b) {
  // Newton's iteration for 1 / b with b scaled to [1/2, 1), from 53 bits; the last step corrects the quotient.
  const LongFloat divisor = scaled(b, -b.exponent);
  LongFloat inverse = long_float(1.0 / to_double(divisor));
  const LongFloat one = long_float(1.0);
  for (int i = 0; i < 2; ++i) inverse = inverse + inverse * (one - divisor * inverse);
  const LongFloat quotient = a * inverse;
  return scaled(quotient + inverse * (a - divisor * quotient), -b.exponent);
}

LongFloat square_root(const LongFloat& x) {
  if (x.is_zero()) return x;
  // Newton's iteration for 1 / sqrt(x) with x scaled to [1/4, 1); the last step corrects the root.
  const int half = (x.exponent + 1) >> 1;
  const LongFloat square = scaled(x, -2 * half);
  LongFloat inverse = long_float(1.0 / std::sqrt(to_double(square)));
  const LongFloat one = long_float(1.0);
  for (int i = 0; i < 2; ++i) {
    inverse = inverse + scaled(inverse * (one - square * (inverse * inverse)), -1);
  }
  const LongFloat root = square * inverse;
  return scaled(root + scaled(inverse * (square - root * root), -1), half);
}

}  // namespace vkm::elementary
