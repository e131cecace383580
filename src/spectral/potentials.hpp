#pragma once

/// Potentials on a grid: polynomial with Gaussian wells, wells at target nodes, and sampled densities.

#include <span>
#include <vector>

#include "core/poll.hpp"
#include "spectral/grid.hpp"

namespace vkm {

struct PotentialGaussianWell {
  double center = 0.0;
  double amplitude = -1.0;  // negative for a well, positive for a barrier
  double sigma = 0.1;       // at least 1e-15 is used
};

/// V(u) = constant_shift + harmonic_coeff u^2 + quartic_coeff u^4 + sum of amplitude exp(-(u - center)^2 / 2 sigma^2).
struct PotentialOptions {
  double harmonic_coeff = 0.0;
  double quartic_coeff = 0.0;
  double constant_shift = 0.0;
  std::vector<PotentialGaussianWell> gaussians;
};

namespace spectral {

/// V at the grid points; std::runtime_error for a grid of fewer than 2.
std::vector<double> build_potential_from_options(const Grid1D& grid, const PotentialOptions& options, const Poll& poll);

/// Equal wells at the nodes over the polynomial of `base`, whose own wells are not used.
std::vector<double> build_potential_from_nodes(const Grid1D& grid, std::span<const double> target_nodes,
                                               double well_amplitude, double well_sigma, PotentialOptions base,
                                               const Poll& poll);

/// scale density + constant_shift; for a smooth_strength above 0 then the mean over the window i - r .. i + r, cut at
/// both ends, with r = max(round(smooth_strength), 1).
std::vector<double> build_potential_from_samples(std::span<const double> density, double scale, double constant_shift,
                                                 double smooth_strength, const Poll& poll);

}  // namespace spectral

}  // namespace vkm
