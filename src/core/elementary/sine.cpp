#include "core/elementary/sine.hpp"

#include <cmath>

#include "core/elementary.hpp"
#include "core/elementary/lanes_of.hpp"

namespace vkm {

namespace elementary {

namespace {

/// n! times the sum of (-z)^k / (n + 2 k)!, for 0 <= z < 0.7: sin y / y and cos y of z = y^2.
Pair alternating_series(const Pair& z, double n) {
  double tail = 1.0;  // of terms below 2^-49, for which a double does
  double k = n + 26.0;
  for (; k > n + 16.0; k -= 2.0) tail = 1.0 - z.high / ((k - 1.0) * k) * tail;
  Pair series = {tail, 0.0};
  for (; k > n; k -= 2.0) {
    const Pair less = quotient(product(z, series), {-(k - 1.0) * k, 0.0});
    series = sum({1.0, 0.0}, less);
  }
  return series;
}

}  // namespace

SinCosPair finer_sin_cos(double x) {
  constexpr double quarter = sine_steps / 4;
  constexpr double shift = 0x1.8p52 * quarter;  // rounds to quarters of a turn
  const double shifted = x * steps_per_radian + shift;
  const double multiple = shifted - shift;
  const double first = (x - multiple * sine_step1) - multiple * sine_step2;  // both differences are exact
  const Pair second = exact_sum(first, -multiple * sine_step3);
  const Pair y = ordered_sum(second.high, second.low - multiple * sine_step4);
  const Pair z = product(y, y);
  const Pair s = product(y, alternating_series(z, 1.0));
  const Pair c = alternating_series(z, 0.0);
  switch (std::bit_cast<std::uint64_t>(shifted) & 3) {
    case 0:
      return {s, c};
    case 1:
      return {c, -s};
    case 2:
      return {-s, -c};
    default:
      return {-c, s};
  }
}

}  // namespace elementary

using namespace elementary;

namespace {

Pair pair_of(const LongFloat& x) {
  const double high = to_double(x);
  return {high, to_double(x - long_float(high))};
}

/// sin x and cos x of any finite x, and a bound on their errors relative to 1.
SinCosPair reduced_sin_cos(double x, double& reduction) {
  if (std::fabs(x) <= sine_range) {
    reduction = std::fabs(x) * 0x1p-111;
    return fast_sin_cos(x);
  }
  const Turn turn = reduced_turn(x, sine_steps);
  reduction = 0.0;
  return sin_cos_of_step(turn.step, pair_of(turn.rest));
}

VKM_KERNEL std::size_t sine_lanes(const double* x, std::size_t count, double* values) {
  return try_lanes<try_sine>(x, count, values);
}

VKM_KERNEL std::size_t cosine_lanes(const double* x, std::size_t count, double* values) {
  return try_lanes<try_cosine>(x, count, values);
}

VKM_KERNEL std::size_t sin_cos_lanes(const double* x, std::size_t count, double* sines, double* cosines) {
  std::size_t missed = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const SinCos value = try_sin_cos(x[i]);
    sines[i] = value.sin;
    cosines[i] = value.cos;
    missed += (value.sin != value.sin) | (value.cos != value.cos);
  }
  return missed;
}

VKM_KERNEL std::size_t tangent_lanes(const double* x, std::size_t count, double* values) {
  return try_lanes<try_tan>(x, count, values);
}

/// Sine or cosine of any finite x by the stages that it takes.
double sine_or_cosine(double x, Pair SinCosPair::* part, LongFloat LongSinCos::* long_part) {
  double reduction = 0.0;
  const Pair value = reduced_sin_cos(x, reduction).*part;
  const double near = rounded(value, std::fabs(value.high) * sine_error + reduction);
  if (near == near) return near;
  if (std::fabs(x) <= sine_range) {
    const Pair more = finer_sin_cos(x).*part;
    const double finer = rounded(more, std::fabs(more.high) * finer_sine_error + reduction);
    if (finer == finer) return finer;
  }
  return to_double(long_sin_cos(x).*long_part);
}

/// tan x as the quotient of two pairs, rounded; NaN where it takes more digits.
double tangent_of(const SinCosPair& at, double error, double reduction) {
  const Pair value = quotient(at.sin, at.cos);
  const double relative = 4.0 * error + reduction / std::fabs(at.sin.high) + reduction / std::fabs(at.cos.high);
  return rounded(value, std::fabs(value.high) * relative);
}

/// Returns whether all of them are in the range; if one is not, none is written.
VKM_KERNEL bool single_sine_lanes(const float* x, std::size_t count, float* values) {
  int reached = 1;
  for (std::size_t i = 0; i < count; ++i) reached &= (x[i] <= 1e5F) & (x[i] >= -1e5F) ? 1 : 0;
  if (reached == 0) return false;
  for (std::size_t i = 0; i < count; ++i) values[i] = try_sin(x[i]);
  return true;
}

}  // namespace

double sin(double x) {
  if (std::fabs(x) < 0x1p-26) return x;
  return std::isfinite(x) ? sine_or_cosine(x, &SinCosPair::sin, &LongSinCos::sin) : nan;
}

double cos(double x) { return std::isfinite(x) ? sine_or_cosine(x, &SinCosPair::cos, &LongSinCos::cos) : nan; }

void sin_cos(double x, double& sine, double& cosine) {
  const SinCos value = try_sin_cos(x);
  sine = value.sin == value.sin ? value.sin : sin(x);
  cosine = value.cos == value.cos ? value.cos : cos(x);
}

double tan(double x) {
  if (std::fabs(x) < 0x1p-27) return x;
  if (!std::isfinite(x)) return nan;
  double reduction = 0.0;
  const SinCosPair at = reduced_sin_cos(x, reduction);
  const double near = tangent_of(at, sine_error, reduction);
  if (near == near) return near;
  if (std::fabs(x) <= sine_range) {
    const double finer = tangent_of(finer_sin_cos(x), finer_sine_error, reduction);
    if (finer == finer) return finer;
  }
  const LongSinCos exact = long_sin_cos(x);
  return to_double(exact.sin / exact.cos);
}

float sin(float x) {
  const float near = try_sin(x);
  return near == near ? near : static_cast<float>(sin(static_cast<double>(x)));
}

void sin(std::span<const float> x, std::span<float> result) {
  if (single_sine_lanes(x.data(), x.size(), result.data())) return;
  for (std::size_t i = 0; i < x.size(); ++i) result[i] = sin(x[i]);
}

void sin(std::span<const double> x, std::span<double> result) {
  lanes_of(x, result, sine_lanes, [](double a) { return sin(a); });
}

void cos(std::span<const double> x, std::span<double> result) {
  lanes_of(x, result, cosine_lanes, [](double a) { return cos(a); });
}

void tan(std::span<const double> x, std::span<double> result) {
  lanes_of(x, result, tangent_lanes, [](double a) { return tan(a); });
}

void sin_cos(std::span<const double> x, std::span<double> sines, std::span<double> cosines) {
  constexpr std::size_t block = 512;
  double s[block];
  double c[block];
  for (std::size_t first = 0; first < x.size(); first += block) {
    const std::size_t count = x.size() - first < block ? x.size() - first : block;
    if (sin_cos_lanes(x.data() + first, count, s, c) != 0) {
      for (std::size_t i = 0; i < count; ++i) {
        if (std::isnan(s[i]) || std::isnan(c[i])) sin_cos(x[first + i], s[i], c[i]);
      }
    }
    for (std::size_t i = 0; i < count; ++i) {
      sines[first + i] = s[i];
      cosines[first + i] = c[i];
    }
  }
}

}  // namespace vkm
