#include "core/elementary/arctangent.hpp"

#include <algorithm>
#include <cmath>

#include "core/elementary.hpp"
#include "core/elementary/lanes_of.hpp"
#include "core/elementary/sine.hpp"

namespace vkm {

namespace elementary {

Pair finer_argument(const Pair& y, const Pair& x, double next) {
  const SinCosPair at = finer_sin_cos(next);
  const double across = sum(product(y, at.cos), -product(x, at.sin)).high;
  const double along = x.high * at.cos.high + y.high * at.sin.high;
  return ordered_sum(next, across / along);
}

}  // namespace elementary

using namespace elementary;

namespace {

VKM_KERNEL std::size_t asin_lanes(const double* x, std::size_t count, double* values) {
  return try_lanes<try_asin>(x, count, values);
}

VKM_KERNEL std::size_t acos_lanes(const double* x, std::size_t count, double* values) {
  return try_lanes<try_acos>(x, count, values);
}

/// sqrt(1 - x^2) of a number of size at most 1.
LongFloat long_complement(double x) {
  return square_root((long_float(1.0) - long_float(x)) * (long_float(1.0) + long_float(x)));
}

/// The angle of (x, y) where two stages can tell, else NaN.
double angle_of(const Pair& y, const Pair& x) {
  const Pair angle = fast_argument(y, x);
  const double near = rounded(angle, std::fabs(angle.high) * argument_error);
  if (near == near) return near;
  const Pair finer = finer_argument(y, x, angle.high);
  return rounded(finer, std::fabs(finer.high) * finer_argument_error);
}

/// Infinities and zeros of atan2 replaced by numbers in the same directions.
double direction(double x, bool far) {
  if (far) return std::copysign(std::isinf(x) ? 1.0 : 0.0, x);
  return x;
}

}  // namespace

double atan2(double y, double x) {
  if (std::isnan(x) || std::isnan(y)) return nan;
  const bool far = std::isinf(x) || std::isinf(y);
  const double v = direction(y, far);
  const double u = direction(x, far);
  if (v == 0.0) return std::signbit(u) ? std::copysign(half_pi.head * 2.0, y) : v;
  if (u == 0.0) return std::copysign(half_pi.head, y);
  const double least = std::min(std::fabs(u), std::fabs(v));
  const double greatest = std::max(std::fabs(u), std::fabs(v));
  if (least >= 0x1p-400 && greatest <= 0x1p400) {
    const double near = angle_of({v, 0.0}, {u, 0.0});
    if (near == near) return near;
  }
  return to_double(long_argument(long_float(v), long_float(u)));
}

double asin(double x) {
  if (std::fabs(x) < 0x1p-26) return x;
  if (!(std::fabs(x) <= 1.0)) return nan;
  const double near = std::fabs(x) < 1.0 ? angle_of({x, 0.0}, complement(x)) : nan;
  if (near == near) return near;
  return to_double(long_argument(long_float(x), long_complement(x)));
}

double acos(double x) {
  if (!(std::fabs(x) <= 1.0)) return nan;
  if (x == 1.0) return 0.0;
  const bool inside = std::fabs(x) < 1.0 && std::fabs(x) > 0x1p-200;
  const double near = inside ? angle_of(complement(x), {x, 0.0}) : nan;
  if (near == near) return near;
  return to_double(long_argument(long_complement(x), long_float(x)));
}

void asin(std::span<const double> x, std::span<double> result) {
  lanes_of(x, result, asin_lanes, [](double a) { return asin(a); });
}

void acos(std::span<const double> x, std::span<double> result) {
  lanes_of(x, result, acos_lanes, [](double a) { return acos(a); });
}

}  // namespace vkm
