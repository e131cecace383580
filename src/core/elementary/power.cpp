#include "core/elementary/power.hpp"

#include <cmath>

#include "core/elementary.hpp"
#include "core/elementary/exponential.hpp"
#include "core/elementary/lanes_of.hpp"
#include "core/elementary/logarithm.hpp"

namespace vkm {

using namespace elementary;

namespace {

VKM_KERNEL std::size_t three_halves_lanes(const double* x, std::size_t count, double* values) {
  return try_lanes<try_three_halves_power>(x, count, values);
}

/// The powers that are products of few factors, else NaN.
double simple_power(double x, double y) {
  if (y == 1.5) return try_three_halves_power(x);
  if (y == 2.0) return try_whole_power<2>(x);
  if (y == 3.0) return try_whole_power<3>(x);
  if (y == 4.0) return try_whole_power<4>(x);
  if (y == 5.0) return try_whole_power<5>(x);
  if (y == 12.0) return try_whole_power<12>(x);
  return nan;
}

/// x^y for 0 < x < infinity other than 1 and a finite y other than 0.
double positive_power(double x, double y) {
  const double simple = simple_power(x, y);
  if (simple == simple) return simple;
  const Pair logarithm = x < 0x1p-1022 ? finer_log(x * 0x1p54, -54.0) : finer_log(x);
  const double size = logarithm.high * y;
  if (size > 710.0) return infinity;
  if (size < -746.0) return 0.0;
  if (std::fabs(size) < 0x1p-60) return 1.0;
  const Pair natural = product(logarithm, {y, 0.0});
  const double near = rounded(fast_exp(natural), exp_error + std::fabs(size) * finer_log_error);
  if (near == near) return near;
  const double finer = rounded(finer_exp(natural), finer_exp_error + std::fabs(size) * finer_log_error);
  if (finer == finer) return finer;
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
