#pragma once

/// ln x by a table of 128 intervals: x = 2^e m, m c = 1 + z with a stored c near 1 / m, |z| < 2^-7, and
/// ln x = e ln 2 - ln c + ln(1 + z). Next to 1, c = 1, and nothing cancels.

#include <cstdint>

#include "core/elementary/pair.hpp"
#include "core/elementary/tables.hpp"

namespace vkm::elementary {

/// Bounds on the relative errors of the pairs below.
inline constexpr double log_error = 0x1p-66;
inline constexpr double finer_log_error = 0x1p-74;

/// x = 2^e m: what of the logarithm the table gives, and the z that is left.
struct LogReduction {
  Pair table;
  Pair z;
};

/// Of 2^exponent x, for a positive normal x.
VKM_INLINE LogReduction log_reduction(double x, double exponent = 0.0) {
  constexpr std::uint64_t first = 0x3fe6000000000000ULL;  // 0.6875
  constexpr std::uint64_t bias = 2048;
  const std::uint64_t bits = std::bit_cast<std::uint64_t>(x);
  const std::uint64_t offset = bits - first;
  const LogRow& row = log_table[(offset >> 45) & (log_steps - 1)];
  const std::uint64_t biased = (offset + (bias << 52)) >> 52;  // e + 2048, modulo 4096
  const double m = std::bit_cast<double>(bits - (offset & 0xfff0000000000000ULL));
  const double e = (std::bit_cast<double>(biased | 0x4330000000000000ULL) - (0x1p52 + 2048.0)) + exponent;
  const double mh = head(m);
  const Pair z = ordered_sum(row.factor * mh - 1.0, row.factor * (m - mh));  // both products are exact
  return {{e * ln2_head + row.head, e * ln2_rest + row.rest}, z};            // the first sum is exact
}

/// Sum of (-1)^(n + 1) z^(n - 3) / n from n = 3 to 11.
VKM_INLINE double log_series(double z) {
  const double w = z * z;
  const double a = 1.0 / 3.0 - z * (1.0 / 4.0);
  const double b = 1.0 / 5.0 - z * (1.0 / 6.0);
  const double c = 1.0 / 7.0 - z * (1.0 / 8.0);
  const double d = (1.0 / 9.0 - z * (1.0 / 10.0)) + w * (1.0 / 11.0);
  return a + w * (b + w * (c + w * d));
}

/// ln x for a positive normal x.
VKM_INLINE Pair fast_log(double x, double exponent = 0.0) {
  const LogReduction at = log_reduction(x, exponent);
  const double z = at.z.high;
  const double zh = head(z);
  const double zl = z - zh;
  const double half_square = 0.5 * (zh * zh);      // exact
  const double half_rest = 0.5 * (zl * (z + zh));  // of z^2 / 2
  const Pair first = ordered_sum(at.table.high, z);
  const Pair second = ordered_sum(first.high, -half_square);
  const double cubic = z * (z * z) * log_series(z);
  const double low = (first.low + second.low) + ((cubic - half_rest) + (at.table.low + at.z.low * (1.0 - z)));
  return ordered_sum(second.high, low);
}

/// ln x to more digits: the cubic term as a pair, too.
VKM_INLINE Pair finer_log(double x, double exponent = 0.0) {
  const LogReduction at = log_reduction(x, exponent);
  const Pair z = at.z;
  const Pair z2 = product(z, z);
  constexpr Pair third = {0x1.5555555555555p-2, 0x1.5555555555555p-56};
  const double w = z.high;
  const double quartic =
      -1.0 / 4.0 +
      w * ((1.0 / 5.0 +
            w * (-1.0 / 6.0 +
                 w * (1.0 / 7.0 + w * (-1.0 / 8.0 + w * (1.0 / 9.0 + w * (-1.0 / 10.0 + w * (1.0 / 11.0))))))));
  const Pair cubic = product(product(z2, z), third);
  const Pair tail = sum(cubic, {z2.high * z2.high * quartic, 0.0});
  const Pair series = sum(z, sum({-0.5 * z2.high, -0.5 * z2.low}, tail));
  return sum(at.table, series);
}

/// ln x where the fast path can tell, else NaN.
VKM_INLINE double try_log(double x) {
  const Pair value = fast_log(x);
  const bool reached = (x >= 0x1p-1022) & (x < infinity);
  const double near = rounded(value, magnitude(value.high) * log_error);
  return reached ? near : nan;
}

}  // namespace vkm::elementary
