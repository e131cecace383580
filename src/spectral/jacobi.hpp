#pragma once

/// Classical Jacobi eigensolver for dense symmetric matrices: each step rotates away the off-diagonal element of
/// greatest magnitude.

#include <cstdint>
#include <vector>

#include "core/poll.hpp"
#include "spectral/dense_matrix.hpp"

namespace vkm {

struct SpectralSolveResult {
  std::vector<double> eigenvalues;
  std::vector<double> eigenvectors;  // n x n row-major, column k belongs to eigenvalue k; empty if not asked for
  std::size_t n = 0;
};

struct JacobiOptions {
  bool compute_eigenvectors = true;
  std::int64_t max_sweeps = 100;  // limit of single rotations, whatever n: not of sweeps over all pairs
  double tol = 1e-12;             // stops below this greatest off-diagonal magnitude; must be positive
  bool sort_ascending = true;     // NaN last, equal eigenvalues in the order of the diagonal
};

namespace spectral {

/// Pivots are the strictly greatest |A(p, q)| with p < q, the first of equals in the order of rows. They are found
/// from a kept maximum a row, which gives the same pivots as a search through the whole triangle.
/// A is not checked for symmetry: columns enter the rotations, the upper triangle the search. Boundary rows make the
/// operators of operators.hpp slightly asymmetric; each rotation mirrors the rows and columns that it touches.
SpectralSolveResult jacobi_eigensolve_symmetric(SquareMatrix a, const JacobiOptions& options, const Poll& poll);

}  // namespace spectral

}  // namespace vkm
