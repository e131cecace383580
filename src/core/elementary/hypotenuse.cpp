#include <algorithm>
#include <cmath>

#include "core/elementary.hpp"
#include "core/elementary/pair.hpp"

namespace vkm {

using namespace elementary;

namespace {

/// sqrt(x^2 + y^2) where the fast path can tell, else NaN.
VKM_INLINE double try_hypot(double x, double y) {
  const double u = magnitude(x);
  const double v = magnitude(y);
  const double large = u > v ? u : v;
  const double small = u > v ? v : u;
  const Pair squares = sum(square(large), square(small));
  const double root = __builtin_sqrt(squares.high);
  const Pair back = square(root);
  const double rest = (((squares.high - back.high) - back.low) + squares.low) * 0.5 / root;
  const double value = rounded({root, rest}, root * 0x1p-96);
  const bool reached = (large <= 0x1p500) & (small >= 0x1p-400);
  return small == 0.0 ? large : (reached ? value : nan);
}

VKM_KERNEL std::size_t hypot_lanes(const double* x, const double* y, std::size_t count, double* values) {
  std::size_t missed = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const double value = try_hypot(x[i], y[i]);
    values[i] = value;
    missed += value != value;
  }
  return missed;
}

}  // namespace

double hypot(double x, double y) {
  if (std::isinf(x) || std::isinf(y)) return infinity;
  const double near = try_hypot(x, y);
  if (near == near) return near;
  if (std::isnan(x) || std::isnan(y)) return nan;
  const double large = std::max(std::fabs(x), std::fabs(y));
  if (std::min(std::fabs(x), std::fabs(y)) < large * 0x1p-60 && large >= 0x1p-900) return large;
  const LongFloat u = long_float(x);
  const LongFloat v = long_float(y);
  return to_double(square_root(u * u + v * v));
}

void hypot(std::span<const double> x, std::span<const double> y, std::span<double> result) {
  constexpr std::size_t block = 512;
  double values[block];
  for (std::size_t first = 0; first < x.size(); first += block) {
    const std::size_t count = std::min(block, x.size() - first);
    if (hypot_lanes(x.data() + first, y.data() + first, count, values) != 0) {
      for (std::size_t i = 0; i < count; ++i) {
        if (std::isnan(values[i])) values[i] = hypot(x[first + i], y[first + i]);
      }
    }
    std::copy(values, values + count, result.begin() + static_cast<std::ptrdiff_t>(first));
  }
}

}  // namespace vkm
