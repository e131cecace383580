#include "spectral/grid.hpp"

#include <stdexcept>

#include "core/memory.hpp"

namespace vkm::spectral {

std::vector<double> build_uniform_grid(const Grid1D& grid, const Poll& poll) {
  if (grid.n < 2) throw std::runtime_error("spectral::build_uniform_grid: grid.n must be >= 2");
  require_memory(grid.n, sizeof(double));
  const double h = grid.spacing();
  std::vector<double> points;
  points.reserve(grid.n);
  Heartbeat heartbeat(poll);
  for (std::size_t i = 0; i < grid.n; ++i) {
    points.push_back(grid.u_min + static_cast<double>(i) * h);
    heartbeat.tick(i, 16384);
  }
  return points;
}

}  // namespace vkm::spectral
