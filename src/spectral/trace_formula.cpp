#include "spectral/trace_formula.hpp"

#include <algorithm>
#include <cmath>

#include "core/elementary.hpp"
#include "core/numbers.hpp"

namespace vkm {

namespace {

/// Adds 2 pi, one turn at a time, while the phase lies more than pi below `goal`. The rounding of each addition is part
/// of the result; within a binade all additions are by the same representable stride, so that many of them are made at
/// once with the same bits. (Below 128 they are not: there 2 pi may lie halfway between two strides.)
double unwound(double phase, double goal) {
  while (phase - goal < -pi) {
    const double next = phase + two_pi;
    if (phase >= 128.0) {
      const double stride = next - phase;
      const double end = std::ldexp(1.0, std::ilogb(phase) + 1);
      const double turns = std::floor((std::min(goal - pi, end) - phase) / stride) - 2.0;
      if (turns > 1.0) {
        phase += turns * stride;
        continue;
      }
    }
    phase = next;
  }
  return phase;
}

}  // namespace

std::vector<double> phase_derivative(std::span<const double> t, std::span<const std::complex<double>> xi,
                                     const Poll& poll) {
  const std::size_t n = t.size();
  std::vector<double> derivative(n, 0.0);
  if (n < 3) return derivative;

  std::vector<double> phase(n);
  for (std::size_t i = 0; i < n; ++i) phase[i] = vkm::atan2(xi[i].imag(), xi[i].real());
  Heartbeat heartbeat(poll);
  for (std::size_t i = 1; i < n; ++i) {
    phase[i] = -unwound(-phase[i], -phase[i - 1]);  // down
    phase[i] = unwound(phase[i], phase[i - 1]);     // and up
    if (i % 1024 == 0) heartbeat.tick();
  }

  for (std::size_t i = 1; i + 1 < n; ++i) {
    const double d = t[i + 1] - t[i - 1];
    if (d != 0.0) derivative[i] = -(phase[i + 1] - phase[i - 1]) / d;
  }
  derivative[0] = derivative[1];
  derivative[n - 1] = derivative[n - 2];
  return derivative;
}

}  // namespace vkm
