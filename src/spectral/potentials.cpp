#include "spectral/potentials.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/elementary.hpp"

namespace vkm::spectral {

namespace {

constexpr double least_sigma = 1e-15;

/// Means over windows of 2 radius + 1 samples, each summed from its left end.
std::vector<double> moving_average(std::span<const double> values, std::size_t radius, const Poll& poll) {
  const std::size_t n = values.size();
  std::vector<double> means(n);
  Heartbeat heartbeat(poll);
  std::size_t added = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t first = i > radius ? i - radius : 0;
    const std::size_t end = radius < n - i ? i + radius + 1 : n;
    double sum = 0.0;
    for (std::size_t k = first; k < end; ++k) sum += values[k];
    means[i] = sum / static_cast<double>(end - first);
    added += end - first;
    if (added < 8192) continue;
    added = 0;
    heartbeat.tick();
  }
  return means;
}

}  // namespace

std::vector<double> build_potential_from_options(const Grid1D& grid, const PotentialOptions& options,
                                                 const Poll& poll) {
  const std::vector<double> points = build_uniform_grid(grid);
  std::vector<double> potential(points.size());
  Heartbeat heartbeat(poll);
  std::size_t wells = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double u = points[i];
    const double square = u * u;
    double v = options.constant_shift;
    v += options.harmonic_coeff * square;
    v += options.quartic_coeff * (square * square);
    for (const PotentialGaussianWell& well : options.gaussians) {
      const double s = std::max(well.sigma, least_sigma);
      const double d = u - well.center;
      v += well.amplitude * vkm::exp(-0.5 * (d * d) / (s * s));
    }
    potential[i] = v;
    wells += options.gaussians.size() + 1;
    if (wells < 1024) continue;
    wells = 0;
    heartbeat.tick();
  }
  return potential;
}

std::vector<double> build_potential_from_nodes(const Grid1D& grid, std::span<const double> target_nodes,
                                               double well_amplitude, double well_sigma, PotentialOptions base,
                                               const Poll& poll) {
  base.gaussians.clear();
  for (const double node : target_nodes) base.gaussians.push_back({node, well_amplitude, well_sigma});
  return build_potential_from_options(grid, base, poll);
}

std::vector<double> build_potential_from_samples(std::span<const double> density, double scale, double constant_shift,
                                                 double smooth_strength, const Poll& poll) {
  std::vector<double> potential(density.size());
  for (std::size_t i = 0; i < density.size(); ++i) potential[i] = scale * density[i] + constant_shift;
  if (!(smooth_strength > 0.0)) return potential;
  const double radius = std::max(std::round(smooth_strength), 1.0);
  const auto whole = static_cast<double>(potential.size());
  return moving_average(potential, static_cast<std::size_t>(std::min(radius, whole)), poll);
}

}  // namespace vkm::spectral
