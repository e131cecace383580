#include "core/elementary/logarithm.hpp"

#include <cmath>

#include "core/elementary.hpp"
#include "core/elementary/lanes_of.hpp"

namespace vkm {

using namespace elementary;

namespace {

VKM_KERNEL std::size_t log_lanes(const double* x, std::size_t count, double* values) {
  return try_lanes<try_log>(x, count, values);
}

/// The logarithm of what is no positive finite number.
double improper_log(double x) {
  if (x == 0.0) return -infinity;
  return x > 0.0 ? x : nan;
}

/// ln x of a positive finite x, subnormals included.
Pair any_log(double x) { return x < 0x1p-1022 ? fast_log(x * 0x1p54, -54.0) : fast_log(x); }
Pair any_finer_log(double x) { return x < 0x1p-1022 ? finer_log(x * 0x1p54, -54.0) : finer_log(x); }

}  // namespace

double log(double x) {
  const double near = try_log(x);
  if (near == near) return near;
  if (!(x > 0.0 && x < infinity)) return improper_log(x);
  const Pair value = any_log(x);
  const double other = rounded(value, std::fabs(value.high) * log_error);
  if (other == other) return other;
  const Pair finer = any_finer_log(x);
  const double found = rounded(finer, std::fabs(finer.high) * finer_log_error);
  return found == found ? found : to_double(long_log(long_float(x), finer));
}

double log10(double x) {
  if (!(x > 0.0 && x < infinity)) return improper_log(x);
  if (x == 1.0) return 0.0;
  const Pair natural = any_log(x);
  const Pair value = product(natural, {log10_e.head, log10_e.rest});
  const double near = rounded(value, std::fabs(value.high) * (2.0 * log_error));
  return near == near ? near : to_double(long_log(long_float(x), natural) / long_ln10);
}

void log(std::span<const double> x, std::span<double> result) {
  lanes_of(x, result, log_lanes, [](double a) { return log(a); });
}

}  // namespace vkm
