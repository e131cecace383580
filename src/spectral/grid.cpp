#include "spectral/grid.hpp"

#include <stdexcept>

#include "core/memory.hpp"

namespace vkm::spectral {

std::vector<double> build_uniform_grid(const Grid1D& grid) {
  if (grid.n < 2) throw std::runtime_error("spectral::build_uniform_grid: grid.n must be >= 2");
  require_memory(grid.n, sizeof(double));
  const double h = grid.spacing();
  std::vector<double> points(grid.n);
  for (std::size_t i = 0; i < points.size(); ++i) points[i] = grid.u_min + static_cast<double>(i) * h;
  return points;
}

}  // namespace vkm::spectral
