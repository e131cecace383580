#include "spectral/jacobi.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "core/kernel.hpp"
#include "spectral/ascending.hpp"
#include "spectral/pivot_search.hpp"

namespace vkm::spectral {

namespace {

/// (a, b) -> (a c - b s, a s + b c) along two rows.
VKM_KERNEL void rotate_rows(double* a_row, double* b_row, std::size_t n, double c, double s) {
  for (std::size_t k = 0; k < n; ++k) {
    const double a = a_row[k];
    const double b = b_row[k];
    a_row[k] = a * c - b * s;
    b_row[k] = a * s + b * c;
  }
}

void transpose(SquareMatrix& a) {
  for (std::size_t i = 0; i < a.n; ++i) {
    for (std::size_t j = 0; j < i; ++j) std::swap(a(i, j), a(j, i));
  }
}

/// One rotation that makes A(p, q) vanish. `a` holds A transposed, so that its columns lie along the memory, and
/// `vectors` the eigenvectors as rows, if they are kept.
void rotate(SquareMatrix& a, SquareMatrix& vectors, std::size_t p, std::size_t q) {
  const double app = a(p, p);
  const double aqq = a(q, q);
  const double apq = a(q, p);
  const double tau = (aqq - app) / (2.0 * apq);
  const double r = std::sqrt(tau * tau + 1.0);
  const double t = tau >= 0.0 ? 1.0 / (r + tau) : -1.0 / (r - tau);
  const double c = 1.0 / std::sqrt(t * t + 1.0);
  const double s = c * t;

  const std::size_t n = a.n;
  double* column_p = a.values.data() + p * n;
  double* column_q = a.values.data() + q * n;
  rotate_rows(column_p, column_q, n, c, s);
  for (std::size_t k = 0; k < n; ++k) {
    if (k == p || k == q) continue;
    double* mirror = a.values.data() + k * n;
    mirror[p] = column_p[k];
    mirror[q] = column_q[k];
  }
  const double m = 2.0 * s * c * apq;
  a(p, p) = c * c * app - m + s * s * aqq;
  a(q, q) = m + s * s * app + c * c * aqq;
  a(p, q) = 0.0;
  a(q, p) = 0.0;
  if (vectors.n != 0) rotate_rows(vectors.values.data() + p * n, vectors.values.data() + q * n, n, c, s);
}

void diagonalise(SquareMatrix& a, SquareMatrix& vectors, const JacobiOptions& options, const Poll& poll) {
  PivotSearch search(a.values, a.n);
  Heartbeat heartbeat(poll);
  std::size_t work = 0;
  for (std::int64_t rotation = 0; rotation < options.max_sweeps; ++rotation) {
    const PivotSearch::Pivot pivot = search.greatest();
    if (pivot.magnitude < options.tol) return;
    rotate(a, vectors, pivot.p, pivot.q);
    search.update(pivot.p, pivot.q);
    work += a.n + 16;
    if (work < 4096) continue;
    work = 0;
    heartbeat.tick();
  }
}

}  // namespace

SpectralSolveResult jacobi_eigensolve_symmetric(SquareMatrix a, const JacobiOptions& options, const Poll& poll) {
  const std::size_t n = a.n;
  SquareMatrix vectors = options.compute_eigenvectors ? build_identity(n) : SquareMatrix();
  if (n >= 2) {
    transpose(a);
    diagonalise(a, vectors, options, poll);
  }

  std::vector<std::size_t> order(n);
  std::iota(order.begin(), order.end(), std::size_t{0});
  if (options.sort_ascending) {
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t i, std::size_t j) { return ascending(a(i, i), a(j, j)); });
  }
  SpectralSolveResult result;
  result.n = n;
  for (const std::size_t i : order) result.eigenvalues.push_back(a(i, i));
  if (options.compute_eigenvectors) {
    result.eigenvectors.resize(n * n);
    for (std::size_t k = 0; k < n; ++k) {
      for (std::size_t i = 0; i < n; ++i) result.eigenvectors[i * n + k] = vectors(order[k], i);
    }
  }
  return result;
}

}  // namespace vkm::spectral
