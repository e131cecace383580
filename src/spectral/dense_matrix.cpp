#include "spectral/dense_matrix.hpp"

#include <cmath>
#include <limits>

#include "core/memory.hpp"

namespace vkm {

SquareMatrix::SquareMatrix(std::uint64_t size) : n(size) {
  require_memory(n, sizeof(double));
  require_memory(n, n * sizeof(double));
  values.assign(n * n, 0.0);
}

namespace spectral {

namespace {

double inner_product(std::span<const double> a, std::span<const double> b) {
  double sum = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * b[i];
  return sum;
}

}  // namespace

SquareMatrix build_identity(std::uint64_t n) {
  SquareMatrix identity(n);
  for (std::size_t i = 0; i < identity.n; ++i) identity(i, i) = 1.0;
  return identity;
}

SquareMatrix apply_diagonal_shift(SquareMatrix matrix, double shift) {
  for (std::size_t i = 0; i < matrix.n; ++i) matrix(i, i) += shift;
  return matrix;
}

std::vector<double> matrix_vector_multiply(const SquareMatrix& a, std::span<const double> x) {
  std::vector<double> y(a.n);
  for (std::size_t i = 0; i < a.n; ++i) y[i] = inner_product(a.row(i), x);
  return y;
}

double rayleigh_quotient(const SquareMatrix& a, std::span<const double> x) {
  const double square = inner_product(x, x);
  if (square == 0.0) return std::numeric_limits<double>::quiet_NaN();
  return inner_product(x, matrix_vector_multiply(a, x)) / square;
}

std::vector<double> normalize_vector(std::vector<double> x) {
  const double norm = std::sqrt(inner_product(x, x));
  if (norm > 0.0) {
    for (double& value : x) value /= norm;
  }
  return x;
}

double residual_norm(const SquareMatrix& a, std::span<const double> x, double lambda) {
  std::vector<double> residual = matrix_vector_multiply(a, x);
  for (std::size_t i = 0; i < residual.size(); ++i) residual[i] -= lambda * x[i];
  return std::sqrt(inner_product(residual, residual));
}

double trace_from_diagonal(const SquareMatrix& a) {
  double trace = 0.0;
  for (std::size_t i = 0; i < a.n; ++i) trace += a(i, i);
  return trace;
}

}  // namespace spectral

}  // namespace vkm
