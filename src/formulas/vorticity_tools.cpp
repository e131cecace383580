#include "formulas/vorticity_tools.hpp"

#include <algorithm>

#include "core/kernel.hpp"
#include "formulas/guards.hpp"

namespace vkm {

namespace {

VKM_KERNEL void planar_vorticity_row(const double* u_below, const double* u_above, const double* v, std::size_t nx,
                                     double two_dx, double two_dy, double* out) {
  for (std::size_t i = 1; i + 1 < nx; ++i) {
    out[i] = (v[i + 1] - v[i - 1]) / two_dx - (u_above[i] - u_below[i]) / two_dy;
  }
}

}  // namespace

std::vector<double> planar_vorticity(std::span<const double> u, std::span<const double> v, std::int64_t nx,
                                     std::int64_t ny, double dx, double dy) {
  reject_if(0 > nx || 0 > ny, "compute_vorticity: nx and ny must not be negative.");
  const auto columns = static_cast<std::size_t>(nx);
  const auto rows = static_cast<std::size_t>(ny);
  reject_if(columns != 0 && rows > std::min(u.size(), v.size()) / columns,
            "compute_vorticity: u and v must hold at least nx * ny values.");
  std::vector<double> vorticity(columns * rows);
  if (columns < 3) return vorticity;
  for (std::size_t j = 1; j + 1 < rows; ++j) {
    const std::size_t row = j * columns;
    planar_vorticity_row(u.data() + row - columns, u.data() + row + columns, v.data() + row, columns, dx + dx, dy + dy,
                         vorticity.data() + row);
  }
  return vorticity;
}

}  // namespace vkm
