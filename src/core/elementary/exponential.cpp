#include "core/elementary/exponential.hpp"

#include <cmath>

#include "core/elementary.hpp"
#include "core/elementary/lanes_of.hpp"

namespace vkm {

namespace elementary {

ScaledPair finer_exp(const Pair& x) {
  const double multiple = std::rint(x.high * steps_per_unit);
  const Pair rest = product({multiple, 0.0}, {-exp_step2, 0.0});
  const Pair r = sum(sum({x.high - multiple * exp_step1, 0.0}, rest), {x.low, 0.0});  // the difference is exact
  const double z = r.high * r.high;
  const double cubic =
      r.high * z *
      (1.0 / 6.0 + r.high * (1.0 / 24.0 + r.high * (1.0 / 120.0 + r.high * (1.0 / 720.0 + r.high * (1.0 / 5040.0)))));
  const Pair r2 = product(r, r);
  const Pair growth = sum(r, sum({0.5 * r2.high, 0.5 * r2.low}, {cubic, 0.0}));
  const std::int64_t step = static_cast<std::int64_t>(multiple);
  const Parts& t = exp_table[static_cast<std::uint64_t>(step) & (exp_steps - 1)];
  const Pair power = ordered_sum(t.head, t.rest);
  return {sum(power, product(power, growth)), static_cast<std::uint64_t>(step >> std::countr_zero(exp_steps)) & 4095};
}

double rounded(const ScaledPair& x, double error) {
  const int n = x.signed_exponent();
  if (n > 1024) return infinity;
  if (n < -1076) return 0.0;
  const double bound = error * x.fraction.high;
  if (n >= -1021) return std::ldexp(rounded(x.fraction, bound), n);
  if (n == -1022) return nan;  // on both sides of the least normal number
  // Adding 2^52 last places rounds to the last place, and leaves the number's bits below it.
  const double place = std::bit_cast<double>(static_cast<std::uint64_t>(1023 - 1074 - n) << 52);
  const double shift = place * 0x1p52;
  const Pair sum = exact_sum(shift, x.fraction.high);
  const double near = rounded(Pair{sum.high, sum.low + x.fraction.low}, bound + place * 0x1p-50);
  return near == near ? std::bit_cast<double>(std::bit_cast<std::uint64_t>(near) - std::bit_cast<std::uint64_t>(shift))
                      : nan;
}

}  // namespace elementary

using namespace elementary;

namespace {

VKM_KERNEL std::size_t exp_lanes(const double* x, std::size_t count, double* values) {
  return try_lanes<try_exp>(x, count, values);
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
  if (near == near || std::isnan(x)) return near;
  if (std::fabs(x) > 708.0) {
    const double edge = rounded(fast_exp({x, 0.0}), exp_error);
    if (edge == edge) return edge;
  }
  const double finer = rounded(finer_exp({x, 0.0}), finer_exp_error);
  return finer == finer ? finer : to_double(long_exp(long_float(x)));
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
