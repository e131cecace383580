#include "spectral/multisector.hpp"

#include <cmath>
#include <limits>
#include <stdexcept>

#include "core/elementary.hpp"
#include "core/memory.hpp"
#include "core/numbers.hpp"
#include "spectral/node_analysis.hpp"

namespace vkm {

namespace {

using Complex = std::complex<double>;

constexpr double too_few_minima = 1e300;  // finite, so that any optimiser can compare it

LogPrefactor log_completion(const MultisectorConfig& config) {
  return [mode = config.completion_mode, alpha = config.alpha, beta = config.beta](double t) {
    const Complex c = completion_factor({0.5, t}, mode, alpha, beta);
    return Complex(vkm::log(vkm::abs(c)), vkm::atan2(c.imag(), c.real()));
  };
}

/// Mismatch of the deepest minima of y, nothing for too few of them.
std::optional<double> node_mismatch(std::span<const double> t, std::span<const double> y, const TargetNodes& targets,
                                    const Poll& poll) {
  const std::vector<double> minima = strongest_minima_t(t, y, targets.t.size(), poll);
  if (minima.size() < targets.t.size()) return std::nullopt;
  double sum = 0.0;
  for (std::size_t k = 0; k < targets.t.size(); ++k) {
    const double weight = targets.weights.empty() ? 1.0 : targets.weights[k];
    const double distance = minima[k] - targets.t[k];
    sum += weight * (distance * distance);
  }
  return sum;
}

/// |e^z|, as the hypotenuse of its parts.
void exponential_sizes(std::span<const double> real, std::span<const double> imaginary, std::span<double> sizes) {
  std::vector<double> sines(real.size());
  std::vector<double> cosines(real.size());
  vkm::exp(real, sizes);
  vkm::sin_cos(imaginary, sines, cosines);
  for (std::size_t i = 0; i < real.size(); ++i) {
    // Where a part overflows or has no value, exp of a complex number knows better.
    const bool plain = real[i] <= 700.0 && std::isfinite(imaginary[i]);
    const Complex phi =
        plain ? Complex(sizes[i] * cosines[i], sizes[i] * sines[i]) : vkm::exp(Complex(real[i], imaginary[i]));
    cosines[i] = phi.real();
    sines[i] = phi.imag();
  }
  vkm::hypot(cosines, sines, sizes);
}

std::vector<double> single_abs(std::span<const double> t, const Sectors& sectors, const MultisectorConfig& config,
                               const Poll& poll) {
  return evaluate_multisector_abs(t, sectors, {&config.truncation_M, 1}, config, poll);
}

}  // namespace

Complex completion_factor(Complex s, std::int32_t mode, double alpha, double beta) {
  if (mode == 0) return {1.0, 0.0};
  if (mode == 1) return vkm::exp(Complex(alpha * s.real() + beta, alpha * s.imag()));
  throw std::runtime_error("Unknown completion_mode in multisector completion factor");
}

std::vector<Complex> evaluate_multisector(std::span<const double> t, const Sectors& sectors,
                                          const MultisectorConfig& config, const Poll& poll) {
  std::vector<Complex> values(t.size());
  log_cycle_products(
      sectors, config.ell_trefoil, {&config.truncation_M, 1}, t, log_completion(config),
      [&](std::size_t, std::size_t first, std::span<const double> real, std::span<const double> imaginary) {
        for (std::size_t i = 0; i < real.size(); ++i) values[first + i] = vkm::exp(Complex(real[i], imaginary[i]));
      },
      poll);
  return values;
}

std::vector<double> evaluate_multisector_abs(std::span<const double> t, const Sectors& sectors,
                                             std::span<const std::uint64_t> truncations,
                                             const MultisectorConfig& config, const Poll& poll) {
  if (t.empty() || truncations.empty()) return {};
  require_memory(t.size(), truncations.size() * sizeof(double));
  std::vector<double> values(truncations.size() * t.size());
  log_cycle_products(
      sectors, config.ell_trefoil, truncations, t, log_completion(config),
      [&](std::size_t row, std::size_t first, std::span<const double> real, std::span<const double> imaginary) {
        double* out = values.data() + row * t.size() + first;
        exponential_sizes(real, imaginary, {out, real.size()});
      },
      poll);
  return values;
}

double objective_near_nodes(std::span<const double> t, const Sectors& sectors, const MultisectorConfig& config,
                            const TargetNodes& targets, const Poll& poll) {
  return node_mismatch(t, single_abs(t, sectors, config, poll), targets, poll).value_or(too_few_minima);
}

SuppressedObjective objective_suppressed(std::span<const double> t, const Sectors& sectors,
                                         const MultisectorConfig& config, const TargetNodes& targets,
                                         const SuppressionOptions& options, const Poll& poll) {
  const std::vector<double> y = single_abs(t, sectors, config, poll);
  SuppressedObjective objective;
  const std::optional<double> mismatch = node_mismatch(t, y, targets, poll);
  if (!mismatch) {
    objective.total = too_few_minima;
    return objective;
  }
  objective.mismatch = *mismatch;
  objective.extra_penalty = extra_minima_penalty(t, y, {targets.t, options.target_halfwidth}, options.sigma_extra,
                                                 options.penalize_all_extra_minima, poll);
  for (const double weight : sectors.weights) objective.reg_penalty += (weight - 1.0) * (weight - 1.0);
  objective.total =
      options.lambda_extra * objective.extra_penalty + objective.mismatch + options.lambda_reg * objective.reg_penalty;
  return objective;
}

PhaseInvariants phase_invariants(std::span<const double> thetas) {
  if (thetas.size() < 3) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    return {nan, nan, nan};
  }
  double sum = std::fmod(thetas[1] + thetas[0] + thetas[2], two_pi);
  if (sum < 0.0) sum += two_pi;
  return {thetas[0] - thetas[1], thetas[1] - thetas[2], sum};
}

}  // namespace vkm
