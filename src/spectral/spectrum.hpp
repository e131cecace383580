#pragma once

/// Measures of a spectrum, and operators anchored to nodes or to a trace density with their spectra.

#include <cstdint>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "spectral/jacobi.hpp"
#include "spectral/operators.hpp"
#include "spectral/potentials.hpp"

namespace vkm::spectral {

/// The sum of ln(|e| + regularization), a log-determinant of magnitudes.
double logdet_from_eigenvalues(std::span<const double> eigenvalues, double regularization, const Poll& poll = {});

/// Counts of the eigenvalues in x_min <= e < x_max, in bins of equal width; std::runtime_error unless x_min < x_max
/// and n_bins > 0.
std::vector<double> spectral_density_histogram(std::span<const double> eigenvalues, double x_min, double x_max,
                                               std::uint64_t n_bins);

/// For each target the eigenvalue nearest to it, the first on a tie; std::invalid_argument if there is none.
std::vector<double> nearest_eigenvalues_to_targets(std::span<const double> eigenvalues, std::span<const double> targets,
                                                   const Poll& poll = {});

/// Spectrum of the Schroedinger matrix with this potential, which must have grid.n entries.
SpectralSolveResult solve_with_potential(const Grid1D& grid, const BoundaryOptions& boundary,
                                         std::span<const double> potential, double kinetic_prefactor,
                                         const JacobiOptions& options, const Poll& poll);

}  // namespace vkm::spectral
