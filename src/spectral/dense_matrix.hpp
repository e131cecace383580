#pragma once

/// Dense square matrices, row-major in flat vectors, and the products that an eigenvalue problem needs. Vectors must
/// have the matrix's dimension.

#include <cstdint>
#include <span>
#include <vector>

namespace vkm {

struct SquareMatrix {
  std::size_t n = 0;
  std::vector<double> values;  // n x n, row-major

  SquareMatrix() = default;
  /// All zeros; std::bad_alloc for absurd sizes.
  explicit SquareMatrix(std::uint64_t size);

  double& operator()(std::size_t i, std::size_t j) { return values[i * n + j]; }
  double operator()(std::size_t i, std::size_t j) const { return values[i * n + j]; }
  std::span<const double> row(std::size_t i) const { return {values.data() + i * n, n}; }
};

namespace spectral {

SquareMatrix build_identity(std::uint64_t n);

/// The matrix with `shift` added to each diagonal element.
SquareMatrix apply_diagonal_shift(SquareMatrix matrix, double shift);

std::vector<double> matrix_vector_multiply(const SquareMatrix& a, std::span<const double> x);

/// (x . A x) / (x . x), NaN for x = 0.
double rayleigh_quotient(const SquareMatrix& a, std::span<const double> x);

/// x over its Euclidean norm, unchanged where the norm is not above 0.
std::vector<double> normalize_vector(std::vector<double> x);

/// |A x - lambda x|.
double residual_norm(const SquareMatrix& a, std::span<const double> x, double lambda);

double trace_from_diagonal(const SquareMatrix& a);

}  // namespace spectral

}  // namespace vkm
