#include "spectral/operators.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/elementary.hpp"
#include "core/kernel.hpp"

namespace vkm::spectral {

namespace {

constexpr double least_width = 1e-15;

void set_identity_row(SquareMatrix& matrix, std::size_t i) {
  std::fill_n(matrix.values.begin() + static_cast<std::ptrdiff_t>(i * matrix.n), matrix.n, 0.0);
  matrix(i, i) = 1.0;
}

void set_center_node(SquareMatrix& matrix, const Grid1D& grid) {
  const std::vector<double> u = build_uniform_grid(grid);
  std::size_t center = 0;
  for (std::size_t i = 1; i < u.size(); ++i) {
    if (std::fabs(u[i]) < std::fabs(u[center])) center = i;
  }
  if (std::fabs(u[center]) < 0.5 * grid.spacing()) set_identity_row(matrix, center);
}

}  // namespace

SquareMatrix build_second_difference(const Grid1D& grid, const BoundaryOptions& boundary) {
  if (grid.n < 3) throw std::runtime_error("spectral::build_second_difference: grid.n must be >= 3");
  if (boundary.mode < 0 || boundary.mode > 2) {
    throw std::runtime_error("spectral::build_second_difference: unsupported boundary mode");
  }
  SquareMatrix matrix(grid.n);
  const double h = grid.spacing();
  const double w = 1.0 / (h * h);
  const std::size_t last = matrix.n - 1;
  for (std::size_t i = 1; i < last; ++i) {
    matrix(i, i - 1) = w;
    matrix(i, i) = -2.0 * w;
    matrix(i, i + 1) = w;
  }
  if (boundary.mode == 2) {
    matrix(0, 0) = -2.0 * w;
    matrix(0, 1) = 2.0 * w;
    matrix(last, last - 1) = 2.0 * w;
    matrix(last, last) = -2.0 * w;
  } else {
    matrix(0, 0) = 1.0;
    matrix(last, last) = 1.0;
  }
  if (boundary.mode == 1 && boundary.force_center_dirichlet) set_center_node(matrix, grid);
  return matrix;
}

SquareMatrix build_laplacian_schrodinger_kinetic(const Grid1D& grid, const BoundaryOptions& boundary,
                                                 double kinetic_prefactor) {
  SquareMatrix matrix = build_second_difference(grid, boundary);
  for (double& value : matrix.values) value *= -kinetic_prefactor;
  return matrix;
}

SquareMatrix assemble_schrodinger_matrix(const Grid1D& grid, const BoundaryOptions& boundary,
                                         std::span<const double> potential, double kinetic_prefactor) {
  SquareMatrix matrix = build_laplacian_schrodinger_kinetic(grid, boundary, kinetic_prefactor);
  for (std::size_t i = 0; i < matrix.n; ++i) matrix(i, i) += potential[i];
  return matrix;
}

namespace {

VKM_KERNEL void transfer_exponents(const double* u, const double* potential, double at, double width2,
                                   double potential_scale, std::size_t n, double* exponents) {
  for (std::size_t j = 0; j < n; ++j) {
    const double d = at - u[j];
    exponents[j] = -0.5 * (d * d) / width2 - potential_scale * potential[j];
  }
}

}  // namespace

SquareMatrix assemble_transfer_kernel(const Grid1D& grid, std::span<const double> potential, double diffusion_scale,
                                      double potential_scale, bool normalize_rows, const Poll& poll) {
  const std::vector<double> u = build_uniform_grid(grid);
  const double s = std::max(diffusion_scale, least_width);
  SquareMatrix kernel(grid.n);
  Heartbeat heartbeat(poll);
  for (std::size_t i = 0; i < kernel.n; ++i) {
    double sum = 0.0;
    const std::span<double> row(&kernel(i, 0), kernel.n);
    transfer_exponents(u.data(), potential.data(), u[i], s * s, potential_scale, kernel.n, row.data());
    vkm::exp(row, row);
    for (const double value : row) sum += value;
    if (normalize_rows && sum > 0.0) {
      for (std::size_t j = 0; j < kernel.n; ++j) kernel(i, j) /= sum;
    }
    heartbeat.tick();
  }
  return kernel;
}

SquareMatrix generator_from_transfer_kernel(SquareMatrix kernel, double dt, bool subtract_identity_first) {
  if (dt == 0.0) throw std::runtime_error("spectral::generator_from_transfer_kernel: dt must be nonzero");
  if (subtract_identity_first) {
    for (std::size_t i = 0; i < kernel.n; ++i) kernel(i, i) -= 1.0;
  }
  for (double& value : kernel.values) value /= dt;
  return kernel;
}

}  // namespace vkm::spectral
