#include "spectral/spectrum.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/elementary.hpp"
#include "core/memory.hpp"

namespace vkm::spectral {

double logdet_from_eigenvalues(std::span<const double> eigenvalues, double regularization, const Poll& poll) {
  Heartbeat heartbeat(poll);
  double sum = 0.0;
  for (std::size_t i = 0; i < eigenvalues.size(); ++i) {
    sum += vkm::log(std::fabs(eigenvalues[i]) + regularization);
    heartbeat.tick(i, 4096);
  }
  return sum;
}

std::vector<double> spectral_density_histogram(std::span<const double> eigenvalues, double x_min, double x_max,
                                               std::uint64_t n_bins) {
  if (!(x_min < x_max) || n_bins == 0) {
    throw std::runtime_error("spectral::spectral_density_histogram: invalid histogram range");
  }
  require_memory(n_bins, sizeof(double));
  const double width = (x_max - x_min) / static_cast<double>(n_bins);
  const auto last = static_cast<double>(n_bins - 1);
  std::vector<double> counts(n_bins, 0.0);
  for (const double e : eigenvalues) {
    if (!(x_min <= e && e < x_max)) continue;
    const double place = std::floor((e - x_min) / width);
    const std::size_t bin = place >= last ? n_bins - 1 : (place > 0.0 ? static_cast<std::size_t>(place) : 0);
    counts[bin] += 1.0;
  }
  return counts;
}

std::vector<double> nearest_eigenvalues_to_targets(std::span<const double> eigenvalues, std::span<const double> targets,
                                                   const Poll& poll) {
  if (eigenvalues.empty() && !targets.empty()) {
    throw std::invalid_argument("nearest_eigenvalues_to_targets: eigenvalues must not be empty");
  }
  std::vector<double> nearest;
  nearest.reserve(targets.size());
  constexpr std::size_t part = 16384;
  Heartbeat heartbeat(poll);
  for (const double target : targets) {
    double best = eigenvalues[0];
    for (std::size_t begin = 0; begin < eigenvalues.size(); begin += part) {
      for (const double e : eigenvalues.subspan(begin, std::min(part, eigenvalues.size() - begin))) {
        if (std::fabs(e - target) < std::fabs(best - target)) best = e;
      }
      heartbeat.tick();
    }
    nearest.push_back(best);
  }
  return nearest;
}

SpectralSolveResult solve_with_potential(const Grid1D& grid, const BoundaryOptions& boundary,
                                         std::span<const double> potential, double kinetic_prefactor,
                                         const JacobiOptions& options, const Poll& poll) {
  return jacobi_eigensolve_symmetric(assemble_schrodinger_matrix(grid, boundary, potential, kinetic_prefactor), options,
                                     poll);
}

}  // namespace vkm::spectral
