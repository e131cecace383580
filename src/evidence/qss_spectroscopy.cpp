#include "evidence/qss_spectroscopy.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "core/elementary.hpp"
#include "core/memory.hpp"
#include "evidence/quiet_nan.hpp"

namespace vkm {

namespace {

std::string open_research_gate() { return std::string(check_kind_export_string(CheckKind::OpenResearchGate)); }

/// Place i of n from `low` to `high`.
double grid_value(std::int64_t i, std::int64_t n, double low, double high) {
  return n == 1 ? low : static_cast<double>(i) * (high - low) / static_cast<double>(n - 1) + low;
}

}  // namespace

QSSSpectrumResult QSSSpectroscopyAPI::eigen_2x2(std::span<const double> m) {
  QSSSpectrumResult result;
  if (m.size() != 4) {
    result.eigen_residual = result.eigenvalue_magnitude_ratio = result.conditioning = quiet_nan;
    result.epistemic_status = open_research_gate();
    return result;
  }
  const double t = m[0] + m[3];
  const double det = m[3] * m[0] - m[2] * m[1];
  const double disc = t * t - 4.0 * det;
  if (disc >= 0.0) {
    const double s = std::sqrt(disc);
    result.eigenvalues = {{(t + s) / 2.0, 0.0}, {(t - s) / 2.0, 0.0}};
  } else {
    const double w = std::sqrt(-disc);
    result.eigenvalues = {{t / 2.0, w / 2.0}, {t / 2.0, -w / 2.0}};
  }

  const auto residual = [t, det](const std::complex<double>& z) {
    const double x = z.real();
    const double y = z.imag();
    return vkm::hypot(x * x - y * y - x * t + det, 2.0 * x * y - y * t);
  };
  const auto modulus = [](const std::complex<double>& z) { return vkm::hypot(z.real(), z.imag()); };
  const auto& z = result.eigenvalues;
  result.eigen_residual = std::max(residual(z[0]), residual(z[1]));
  const double low = std::min(modulus(z[0]), modulus(z[1]));
  const double high = std::max(modulus(z[0]), modulus(z[1]));
  const double ratio = low > 0.0 ? high / low : std::numeric_limits<double>::infinity();
  result.eigenvalue_magnitude_ratio = ratio;
  result.conditioning = ratio;
  return result;
}

QSSPseudospectrumResult QSSSpectroscopyAPI::pseudospectrum_diag_2x2(double a00, double a11, double real_min,
                                                                    double real_max, std::int64_t n_real,
                                                                    double imag_min, double imag_max,
                                                                    std::int64_t n_imag, const Poll& poll) {
  QSSPseudospectrumResult result;
  if (n_real < 1 || n_imag < 1 || !(real_max >= real_min) || !(imag_max >= imag_min)) {
    result.max_resolvent_norm = quiet_nan;
    result.epistemic_status = open_research_gate();
    return result;
  }
  const auto columns = static_cast<std::size_t>(n_imag);
  const auto rows = static_cast<std::size_t>(n_real);
  const std::size_t count = rows > SIZE_MAX / columns ? SIZE_MAX : rows * columns;
  require_memory(count, sizeof(QSSPseudospectrumSample));
  result.samples.reserve(count);

  Heartbeat heartbeat(poll);
  constexpr std::size_t block = 256;
  std::array<double, block> y, gap0, gap1, distance0, distance1;
  for (std::int64_t i = 0; i < n_real; ++i) {
    const double x = grid_value(i, n_real, real_min, real_max);
    gap0.fill(x - a00);
    gap1.fill(x - a11);
    for (std::int64_t first = 0; first < n_imag; first += block) {
      const auto used = static_cast<std::size_t>(std::min<std::int64_t>(block, n_imag - first));
      for (std::size_t k = 0; k < used; ++k) {
        y[k] = grid_value(first + static_cast<std::int64_t>(k), n_imag, imag_min, imag_max);
      }
      vkm::hypot({gap0.data(), used}, {y.data(), used}, distance0);
      vkm::hypot({gap1.data(), used}, {y.data(), used}, distance1);
      for (std::size_t k = 0; k < used; ++k) {
        const double norm = 1.0 / std::max(1e-30, std::min(distance0[k], distance1[k]));
        result.samples.push_back({x, y[k], norm});
        if (norm > result.max_resolvent_norm) result.max_resolvent_norm = norm;
      }
      heartbeat.tick();
    }
  }
  return result;
}

}  // namespace vkm
