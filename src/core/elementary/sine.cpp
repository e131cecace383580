#include "core/elementary/sine.hpp"

#include <cmath>

#include "core/elementary.hpp"
#include "core/elementary/lanes_of.hpp"

namespace vkm {

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
  std::size_t missed = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const double value = try_sin_cos(x[i]).sin;
    values[i] = value;
    missed += value != value;
  }
  return missed;
}

VKM_KERNEL std::size_t cosine_lanes(const double* x, std::size_t count, double* values) {
  std::size_t missed = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const double value = try_sin_cos(x[i]).cos;
    values[i] = value;
    missed += value != value;
  }
  return missed;
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
  if (!std::isfinite(x)) return nan;
  double reduction = 0.0;
  const Pair value = reduced_sin_cos(x, reduction).sin;
  const double near = rounded(value, std::fabs(value.high) * sine_error + reduction);
  return near == near ? near : to_double(long_sin_cos(x).sin);
}

double cos(double x) {
  if (!std::isfinite(x)) return nan;
  double reduction = 0.0;
  const Pair value = reduced_sin_cos(x, reduction).cos;
  const double near = rounded(value, std::fabs(value.high) * sine_error + reduction);
  return near == near ? near : to_double(long_sin_cos(x).cos);
}

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
  const Pair value = quotient(at.sin, at.cos);
  const double relative = 4.0 * sine_error + reduction / std::fabs(at.sin.high) + reduction / std::fabs(at.cos.high);
  const double near = rounded(value, std::fabs(value.high) * relative);
  if (near == near) return near;
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
