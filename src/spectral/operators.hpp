#pragma once

/// One-dimensional operators on a uniform grid u(i) = u_min + i h: second difference, Schroedinger matrix
/// -k d^2/du^2 + V(u), and the transfer kernel exp(-(u - v)^2 / 2 s^2 - p V(v)) with its generator.
///
/// Row 0 and row n - 1 follow the boundary mode: 0 and 1 make them identity rows (Dirichlet), 2 reflects. Potentials
/// must have n entries.

#include <cstdint>
#include <span>

#include "core/poll.hpp"
#include "spectral/dense_matrix.hpp"
#include "spectral/grid.hpp"

namespace vkm {

struct BoundaryOptions {
  std::int32_t mode = 0;               // 0 Dirichlet, 1 Dirichlet with a centre node, 2 reflecting ends
  bool force_center_dirichlet = true;  // in mode 1 only: an identity row at the point nearest u = 0
};

namespace spectral {

/// The centre node of mode 1 is the point with the least |u|, the first on a tie, if that is strictly below h / 2.
/// std::runtime_error for n below 3 or another mode.
SquareMatrix build_second_difference(const Grid1D& grid, const BoundaryOptions& boundary);

/// The second difference times -kinetic_prefactor, identity rows included.
SquareMatrix build_laplacian_schrodinger_kinetic(const Grid1D& grid, const BoundaryOptions& boundary,
                                                 double kinetic_prefactor);

/// The kinetic matrix with the potential on the diagonal, boundary rows included.
SquareMatrix assemble_schrodinger_matrix(const Grid1D& grid, const BoundaryOptions& boundary,
                                         std::span<const double> potential, double kinetic_prefactor);

/// The potential enters by the column alone. Rows with a sum above 0 are divided by it if `normalize_rows`.
SquareMatrix assemble_transfer_kernel(const Grid1D& grid, std::span<const double> potential, double diffusion_scale,
                                      double potential_scale, bool normalize_rows, const Poll& poll);

/// (K - 1) / dt, or K / dt unless `subtract_identity_first`; std::runtime_error for dt = 0.
SquareMatrix generator_from_transfer_kernel(SquareMatrix kernel, double dt, bool subtract_identity_first);

}  // namespace spectral

}  // namespace vkm
