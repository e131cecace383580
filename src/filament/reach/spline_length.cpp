#include "filament/reach/spline_length.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace vkm {

namespace {

/// Positive abscissae of the Kronrod rule from the outside in; those with odd index, and 0, are the Gauss abscissae.
constexpr std::array<double, 7> abscissa = {0.991455371120812639206854697526329, 0.949107912342758524526189684047851,
                                            0.864864423359769072789712788640926, 0.741531185599394439863864773280788,
                                            0.586087235467691130294144838258730, 0.405845151377397166906606412076961,
                                            0.207784955007898467600689403773245};
constexpr std::array<double, 8> kronrod_weight = {
    0.022935322010529224963732008058970, 0.063092092629978553290700663189204, 0.104790010322250183839876322541518,
    0.140653259715525918745189590510238, 0.169004726639267902826583426598550, 0.190350578064785409913256402421014,
    0.204432940075298892414161999234649, 0.209482141084727828012999174891714};
constexpr std::array<double, 4> gauss_weight = {
    0.129484966168869693270611432679082, 0.279705391489276667901467771423780, 0.381830050505118944950369775488975,
    0.417959183673469387755102040816327};

}  // namespace

LengthInterval gauss_kronrod_length(const PeriodicCubicSpline3D& spline, double a, double b) {
  const double center = 0.5 * (a + b);
  const double half = 0.5 * (b - a);
  const double middle = spline.speed(center);
  double kronrod = kronrod_weight[7] * middle;
  double gauss = gauss_weight[3] * middle;
  for (std::size_t k = 0; k < 7; ++k) {
    const double offset = half * abscissa[k];
    const double sum = spline.speed(center - offset) + spline.speed(center + offset);
    kronrod += kronrod_weight[k] * sum;
    if (k % 2 == 1) gauss += gauss_weight[k / 2] * sum;
  }
  kronrod *= half;
  gauss *= half;
  return {a, b, kronrod, std::abs(kronrod - gauss)};
}

SplineLength adaptive_length(const PeriodicCubicSpline3D& spline, double abs_tol, double rel_tol, const Poll& poll) {
  constexpr std::size_t most_intervals = 200000;
  SplineLength result;
  const double L = spline.L();
  if (spline.n() < 4 || !(L > 0.0)) return result;
  if (!(abs_tol > 0.0)) abs_tol = 1e-10;
  if (!(rel_tol > 0.0)) rel_tol = 1e-10;

  Heartbeat heartbeat(poll);
  std::vector<LengthInterval> stack;
  stack.reserve(spline.n() + 64);
  for (std::size_t i = 0; i < spline.n(); ++i) {
    stack.push_back(gauss_kronrod_length(spline, spline.s()[i], spline.s()[i + 1]));
    if (i % 32 == 0) heartbeat.tick();
  }
  const auto add = [&](const LengthInterval& interval) {
    result.length += interval.integral;
    result.error_estimate += interval.error;
    ++result.interval_count;
  };

  std::size_t splits = 0;
  while (!stack.empty()) {
    if (stack.size() + result.interval_count > most_intervals || splits > 64 * spline.n()) {
      for (const LengthInterval& interval : stack) add(interval);
      return result;
    }
    const LengthInterval top = stack.back();
    stack.pop_back();
    const double width = top.b - top.a;
    if (width * abs_tol / L + std::max(1e-30, std::abs(top.integral)) * rel_tol >= top.error || width < L * 1e-15) {
      add(top);
      continue;
    }
    const double middle = (top.a + top.b) * 0.5;
    stack.push_back(gauss_kronrod_length(spline, top.a, middle));
    stack.push_back(gauss_kronrod_length(spline, middle, top.b));
    if (++splits % 16 == 0) heartbeat.tick();
  }
  result.converged = std::max(1e-30, std::abs(result.length)) * rel_tol + abs_tol >= result.error_estimate;
  return result;
}

}  // namespace vkm
