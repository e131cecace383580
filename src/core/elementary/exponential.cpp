#include "core/elementary/exponential.hpp"

#include <cmath>

#include "core/elementary.hpp"
#include "core/elementary/lanes_of.hpp"

namespace vkm {

namespace elementary {

double rounded(const ScaledPair& x, double error) {
  const int n = x.signed_exponent();
  if (n > 1024) return infinity;
  if (n < -1076) return 0.0;
  const double bound = error * x.fraction.high;
  if (n >= -1020) return std::ldexp(rounded(x.fraction, bound), n);
  if (n > -1024) return nan;
  // Adding 3/2 of 2^52 last places rounds to the last place.
  const double place = std::ldexp(1.0, -1074 - n);
  const double shift = place * 0x1.8p52;
  const Pair sum = exact_sum(shift, x.fraction.high);
  return std::ldexp(rounded(Pair{sum.high, sum.low + x.fraction.low}, bound + place * 0x1p-50) - shift, n);
}

}  // namespace elementary

using namespace elementary;

namespace {

VKM_KERNEL std::size_t exp_lanes(const double* x, std::size_t count, double* values) {
  std::size_t missed = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const double value = try_exp(x[i]);
    values[i] = value;
    missed += value != value;
  }
  return missed;
}

/// e^x f for a factor of at most 1, without overflow before the product overflows.
double exp_times(double x, double factor) {
  if (x <= 700.0) return exp(x) * factor;
  if (x > 1500.0) return factor * infinity;
  return exp(x - 700.0) * factor * exp(700.0);
}

}  // namespace

double exp(double x) {
  const double near = try_exp(x);
  if (near == near) return near;
  if (std::isnan(x)) return x;
  if (x > 710.0) return infinity;
  if (x < -746.0) return 0.0;
  const double edge = rounded(fast_exp({x, 0.0}), exp_error);
  return edge == edge ? edge : to_double(long_exp(long_float(x)));
}

void exp(std::span<const double> x, std::span<double> result) {
  lanes_of(x, result, exp_lanes, [](double a) { return exp(a); });
}

std::complex<double> exp(const std::complex<double>& z) {
  const double x = z.real();
  const double y = z.imag();
  if (y == 0.0) return {exp(x), y};
  if (!std::isfinite(y)) {
    if (x == -infinity) return {0.0, 0.0};
    if (x == infinity) return {infinity, nan};
    return {nan, nan};
  }
  double sine = 0.0;
  double cosine = 0.0;
  sin_cos(y, sine, cosine);
  if (std::isinf(x)) {
    const double size = x > 0.0 ? infinity : 0.0;
    return {std::copysign(size, cosine), std::copysign(size, sine)};
  }
  if (std::isnan(x)) return {nan, nan};
  return {exp_times(x, cosine), exp_times(x, sine)};
}

}  // namespace vkm
