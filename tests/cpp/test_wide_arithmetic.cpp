// The arithmetic by multiply-adds against the machine's divider, bit by bit: a hundred million random operands of every
// exponent, and those whose results lie as near as can be to the midpoint of two doubles.

#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

#include "check.hpp"
#include "core/wide.hpp"

#if VKM_HAS_WIDE

namespace {

using namespace vkm;
using namespace vkm::test;

__extension__ using Unsigned128 = unsigned __int128;

constexpr std::size_t random_operands = 100'000'000;
constexpr int mantissa_bits = 52;
constexpr std::uint64_t hidden_bit = std::uint64_t{1} << mantissa_bits;

/// Exponents for which neither the result nor a remainder on the way leaves the range of normal numbers: a remainder
/// of a is a multiple of 2^-106 a.
struct Exponents {
  int least, greatest;
};
constexpr Exponents of_divisors = {-1022, 1021};
constexpr Exponents of_radicands = {-960, 1022};
constexpr Exponents of_dividends = {-440, 440}, of_their_divisors = {-500, 500};

/// Eight generators side by side (the finalizer of SplitMix64 on a counter).
class Random {
 public:
  explicit Random(std::uint64_t seed) {
    for (std::size_t k = 0; k < wide_lanes; ++k) counter_[k] = seed + k;
  }

  VKM_WIDE_INLINE __m512i bits() {
    __m512i x = _mm512_load_si512(counter_);
    x = _mm512_add_epi64(x, _mm512_set1_epi64(wide_lanes));
    _mm512_store_si512(counter_, x);
    x = _mm512_mullo_epi64(x, _mm512_set1_epi64(static_cast<long long>(0x9e3779b97f4a7c15)));
    x = _mm512_mullo_epi64(_mm512_xor_si512(x, _mm512_srli_epi64(x, 30)),
                           _mm512_set1_epi64(static_cast<long long>(0xbf58476d1ce4e5b9)));
    x = _mm512_mullo_epi64(_mm512_xor_si512(x, _mm512_srli_epi64(x, 27)),
                           _mm512_set1_epi64(static_cast<long long>(0x94d049bb133111eb)));
    return _mm512_xor_si512(x, _mm512_srli_epi64(x, 31));
  }

  /// Positive numbers, all mantissas and exponents alike.
  VKM_WIDE_INLINE Wide numbers(Exponents range) {
    const __m512i choice = _mm512_srli_epi64(bits(), 40);
    const __m512i exponent = _mm512_add_epi64(
        _mm512_srli_epi64(_mm512_mullo_epi64(choice, _mm512_set1_epi64(range.greatest - range.least + 1)), 24),
        _mm512_set1_epi64(1023 + range.least));
    return _mm512_castsi512_pd(
        _mm512_or_si512(_mm512_slli_epi64(exponent, mantissa_bits), _mm512_srli_epi64(bits(), 64 - mantissa_bits)));
  }

 private:
  alignas(64) std::uint64_t counter_[wide_lanes];
};

VKM_WIDE_INLINE unsigned lanes_that_differ(Wide a, Wide b) {
  return _mm512_cmpneq_epi64_mask(_mm512_castpd_si512(a), _mm512_castpd_si512(b));
}

/// 1 / b within the relative error that `reciprocal` wants of an approximation at the most.
VKM_WIDE_INLINE Wide spoilt_reciprocal(Wide b, Wide zero_to_one) {
  return (wide(1.0) / b) * (wide(1.0) + (zero_to_one - wide(0.5)) * wide(2.0 * 0x1p-28));
}

VKM_WIDE_INLINE bool reciprocals_differ(Wide b, Wide zero_to_one) {
  const Wide expected = wide(1.0) / b;
  return (lanes_that_differ(reciprocal(b), expected) |
          lanes_that_differ(reciprocal(b, spoilt_reciprocal(b, zero_to_one)), expected)) != 0;
}

VKM_WIDE_INLINE bool quotients_differ(Wide a, Wide b) {
  return lanes_that_differ(quotient(a, b, wide(1.0) / b), a / b) != 0;
}

VKM_WIDE_INLINE bool roots_differ(Wide x) { return lanes_that_differ(square_root(x), _mm512_sqrt_pd(x)) != 0; }

struct Differences {
  std::size_t reciprocals = 0, quotients = 0, roots = 0;
};

VKM_WIDE Differences differences_of_random_operands() {
  Random random(1);
  Differences found;
  for (std::size_t i = 0; i < random_operands; i += wide_lanes) {
    found.reciprocals += reciprocals_differ(random.numbers(of_divisors), random.numbers({-3, -1})) ? 1 : 0;
    found.quotients += quotients_differ(random.numbers(of_dividends), random.numbers(of_their_divisors)) ? 1 : 0;
    found.roots += roots_differ(random.numbers(of_radicands)) ? 1 : 0;
  }
  return found;
}

void random_operands_agree() {
  const Differences found = differences_of_random_operands();
  check_equal(found.reciprocals, 0U, "eights of reciprocals");
  check_equal(found.quotients, 0U, "eights of quotients");
  check_equal(found.roots, 0U, "eights of roots");
}

VKM_WIDE void check_reciprocal(double b) {
  const double expected = 1.0 / b;
  double ours[wide_lanes];
  store_wide(ours, reciprocal(wide(b)));
  check_equal(ours[0], expected, "reciprocal");
  for (const double place : {0.0, 0.5, 1.0}) {
    store_wide(ours, reciprocal(wide(b), spoilt_reciprocal(wide(b), wide(place))));
    check_equal(ours[0], expected, "reciprocal of an approximation");
  }
}

VKM_WIDE void check_quotient(double a, double b) {
  double ours[wide_lanes];
  store_wide(ours, quotient(wide(a), wide(b), wide(1.0 / b)));
  check_equal(ours[0], a / b, "quotient");
}

VKM_WIDE void check_root(double x) {
  double ours[wide_lanes];
  store_wide(ours, square_root(wide(x)));
  check_equal(ours[0], std::sqrt(x), "root of " + shown(x));
}

/// 1 / (2 - j 2^-52) = 1/2 + j 2^-54 + j^2 2^-107 + ..: for odd j just above a midpoint. Even j, and 1 + j 2^-52, are
/// as near to a double.
void reciprocals_near_midpoints() {
  for (std::uint64_t j = 0; j < 200'000; ++j) {
    const double step = static_cast<double>(j) * 0x1p-52;
    check_reciprocal(2.0 - step);
    check_reciprocal(1.0 + step);
  }
  for (int exponent = of_divisors.least; exponent <= of_divisors.greatest; ++exponent) {
    for (int j = 0; j < 50; ++j) {
      check_reciprocal(std::ldexp(1.0 + j * 0x1p-52, exponent));
      check_reciprocal(std::ldexp(1.0 - (j + 1) * 0x1p-53, exponent + 1));
    }
  }
}

/// The inverse of an odd number modulo 2^64, by Newton's iteration.
std::uint64_t inverse(std::uint64_t odd) {
  std::uint64_t y = odd;
  for (int i = 0; i < 5; ++i) y *= 2 - odd * y;
  return y;
}

/// a / b with a 2^54 + r = b q for an odd q of 54 bits and a small r: a quotient r / b units of 2^-54 away from the
/// midpoint q of two doubles.
void quotients_near_midpoints() {
  std::uint64_t state = 1;
  std::size_t tried = 0;
  for (int i = 0; i < 400'000; ++i) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    const std::uint64_t b = hidden_bit | (state >> 12) | 1;
    for (const std::int64_t r : {-3, -1, 1, 3}) {
      const std::uint64_t q = inverse(b) * static_cast<std::uint64_t>(r) & (4 * hidden_bit - 1);
      if (q < 2 * hidden_bit) continue;
      const auto a = static_cast<std::uint64_t>((Unsigned128{b} * q - static_cast<Unsigned128>(r)) >> 54);
      if (a >= 2 * hidden_bit) continue;
      const int exponent = static_cast<int>(i % 881) - 440;
      check_quotient(std::ldexp(static_cast<double>(a), exponent - 52), std::ldexp(static_cast<double>(b), -52));
      ++tried;
    }
  }
  check(tried > 400'000, "too few quotients near a midpoint");
}

/// The odd m below 2^bits with m^2 = c modulo 2^(bits + 1), for c = 1 modulo 8: a bit more at each step.
std::uint64_t root_modulo(std::uint64_t c, int bits) {
  std::uint64_t m = 1;
  for (int k = 3; k <= bits; ++k) {
    if (((m * m - c) >> k & 1) != 0) m += std::uint64_t{1} << (k - 1);
  }
  return m & ((std::uint64_t{1} << bits) - 1);
}

/// The x in [1, 4) whose roots differ from a midpoint m 2^-53 by d 2^-106 / (2 m 2^-53): m^2 + d is then a multiple of
/// 2^54 for x below 2, of 2^55 above, which leaves few d and m.
void roots_near_midpoints() {
  std::size_t tried = 0;
  for (std::int64_t d = 7 - 8 * 20'000; d < 8 * 20'000; d += 8) {
    for (const int shift : {54, 55}) {
      const std::uint64_t half = std::uint64_t{1} << (shift - 1);
      const std::uint64_t root = root_modulo(static_cast<std::uint64_t>(-d), shift - 1);
      for (const std::uint64_t m0 : {root, half - root, half + root, 2 * half - root}) {
        const std::uint64_t m = m0 & (4 * hidden_bit - 1);
        const Unsigned128 square = Unsigned128{m} * m + static_cast<Unsigned128>(static_cast<__int128_t>(d));
        const auto x = static_cast<std::uint64_t>(square >> shift);
        if (m < 2 * hidden_bit || (square & ((Unsigned128{1} << shift) - 1)) != 0) continue;
        if (x < hidden_bit || x >= 2 * hidden_bit) continue;
        check_root(std::ldexp(static_cast<double>(x), shift - 54 - 52));
        ++tried;
      }
    }
  }
  check(tried > 10'000, "too few roots near a midpoint");
}

/// The two that an error analysis leaves open, 1 + 2^-52 and 4 - 2^-51, and their neighbours, at every exponent.
void roots_at_the_ends_of_the_range_of_mantissas() {
  for (int exponent = of_radicands.least; exponent <= of_radicands.greatest; ++exponent) {
    for (int j = 0; j < 50; ++j) {
      check_root(std::ldexp(1.0 + j * 0x1p-52, exponent));
      check_root(std::ldexp(2.0 - (j + 1) * 0x1p-52, exponent));
    }
  }
}

}  // namespace

int main() {
  if (!has_wide()) {
    std::puts("no vectors of eight doubles on this machine");
    return 0;
  }
  return run({{"random operands", random_operands_agree},
              {"reciprocals near midpoints", reciprocals_near_midpoints},
              {"quotients near midpoints", quotients_near_midpoints},
              {"roots near midpoints", roots_near_midpoints},
              {"roots at the ends of the range of mantissas", roots_at_the_ends_of_the_range_of_mantissas}});
}

#else

int main() {
  std::puts("no vectors of eight doubles in this build");
  return 0;
}

#endif
