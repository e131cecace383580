#include "spectral/trace_formula.hpp"

#include <cmath>

#include "core/numbers.hpp"

namespace vkm {

std::vector<double> phase_derivative(std::span<const double> t, std::span<const std::complex<double>> xi,
                                     const Poll& poll) {
  const std::size_t n = t.size();
  std::vector<double> derivative(n, 0.0);
  if (n < 3) return derivative;

  std::vector<double> phase(n);
  for (std::size_t i = 0; i < n; ++i) phase[i] = std::atan2(xi[i].imag(), xi[i].real());
  // A phase that winds k times takes k steps of 2 pi for each later sample; the rounding of each step is part of it.
  Heartbeat heartbeat(poll);
  std::size_t steps = 0;
  for (std::size_t i = 1; i < n; ++i) {
    for (; phase[i] - phase[i - 1] > pi; ++steps) phase[i] -= two_pi;
    for (; phase[i] - phase[i - 1] < -pi; ++steps) phase[i] += two_pi;
    if (steps < 4096) continue;
    steps = 0;
    heartbeat.tick();
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
