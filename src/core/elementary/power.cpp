#include <cmath>

#include "core/elementary.hpp"
#include "core/elementary/exponential.hpp"
#include "core/elementary/lanes_of.hpp"
#include "core/elementary/logarithm.hpp"

namespace vkm {

using namespace elementary;

namespace {

constexpr double few_error = 0x1p-96;  // of a product of at most sixteen pairs

/// x^n for 1 <= n <= 16, by squarings.
Pair whole_power(double x, unsigned n) {
  Pair square = {x, 0.0};
  Pair result = {1.0, 0.0};
  bool empty = true;
  for (; n != 0; n >>= 1) {
    if ((n & 1) != 0) result = empty ? square : product(result, square);
    if ((n & 1) != 0) empty = false;
    if (n > 1) square = product(square, square);
  }
  return result;
}

/// x^(3/2).
VKM_INLINE Pair three_halves_power(double x) {
  const double root = __builtin_sqrt(x);
  const Pair back = square(root);
  const Pair whole = ordered_sum(root, ((x - back.high) - back.low) * 0.5 / root);
  const Pair p = product(x, whole.high);
  return ordered_sum(p.high, p.low + x * whole.low);
}

VKM_INLINE double try_three_halves_power(double x) {
  const Pair value = three_halves_power(x);
  const double near = rounded(value, value.high * few_error);
  return (x >= 0x1p-400) & (x <= 0x1p400) ? near : nan;
}

VKM_KERNEL std::size_t three_halves_lanes(const double* x, std::size_t count, double* values) {
  std::size_t missed = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const double value = try_three_halves_power(x[i]);
    values[i] = value;
    missed += value != value;
  }
  return missed;
}

/// The powers that are products of few factors, else NaN; for 2^-60 <= x <= 2^60.
double simple_power(double x, double y) {
  if (y == 1.5) return try_three_halves_power(x);
  if (!(y >= 1.0 && y <= 16.0) || y != std::floor(y)) return nan;
  const Pair value = whole_power(x, static_cast<unsigned>(y));
  return rounded(value, value.high * few_error);
}

/// x^y for 0 < x < infinity other than 1 and a finite y other than 0.
double positive_power(double x, double y) {
  if (x >= 0x1p-60 && x <= 0x1p60) {
    const double simple = simple_power(x, y);
    if (simple == simple) return simple;
  }
  const Pair logarithm = x < 0x1p-1022 ? finer_log(x * 0x1p54, -54.0) : finer_log(x);
  const double size = logarithm.high * y;
  if (size > 710.0) return infinity;
  if (size < -746.0) return 0.0;
  if (std::fabs(size) < 0x1p-60) return 1.0;
  const Pair natural = product(logarithm, {y, 0.0});
  const double near = rounded(fast_exp(natural), exp_error + std::fabs(size) * finer_log_error);
  if (near == near) return near;
  return to_double(long_exp(long_float(y) * long_log(long_float(x), logarithm)));
}

}  // namespace

double pow(double x, double y) {
  if (y == 0.0 || x == 1.0) return 1.0;
  if (std::isnan(x) || std::isnan(y)) return nan;
  const double size = std::fabs(x);
  if (std::isinf(y)) {
    if (size == 1.0) return 1.0;
    return (size > 1.0) == (y > 0.0) ? infinity : 0.0;
  }
  const bool whole = y == std::floor(y);
  const bool odd = whole && std::fabs(std::fmod(y, 2.0)) == 1.0;
  const double sign = std::signbit(x) && odd ? -1.0 : 1.0;
  if (x == 0.0 || std::isinf(x)) return sign * ((x == 0.0) == (y > 0.0) ? 0.0 : infinity);
  if (x < 0.0 && !whole) return nan;
  return sign * (size == 1.0 ? 1.0 : positive_power(size, y));
}

void pow(std::span<const double> x, double y, std::span<double> result) {
  if (y == 1.5) {
    lanes_of(x, result, three_halves_lanes, [](double a) { return pow(a, 1.5); });
    return;
  }
  for (std::size_t i = 0; i < x.size(); ++i) result[i] = pow(x[i], y);
}

}  // namespace vkm
