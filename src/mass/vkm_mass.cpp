#include "mass/vkm_mass.hpp"

#include <algorithm>
#include <cmath>

#include "core/kernel.hpp"
#include "core/polygon_edges.hpp"
#include "filament/energy/filament_energy.hpp"

namespace vkm {

namespace {

constexpr double core_line_density = 2.4282113828462446e-11;    // rho_core pi r_c^2, kg / m
constexpr double core_radius_squared = 1.985196939949829e-30;   // r_c^2, m^2
constexpr double fluid_energy_scale = 2.6117619251066605e-24;   // rho_f Gamma^2 / (8 pi), J / m
constexpr double speed_of_light_squared = 89875517873681760.0;  // m^2 / s^2

/// The sums over j of one block of points i, each in the order of j.
VKM_KERNEL void add_mass_rows(const double* x, const double* y, const double* z, const double* dx, const double* dy,
                              const double* dz, std::size_t n, std::size_t block, double* sums) {
  double sum[lane_block] = {};
  for (std::size_t j = 0; j < n; ++j) {
    const double px = x[j], py = y[j], pz = z[j];
    const double ex = dx[j], ey = dy[j], ez = dz[j];
    for (std::size_t k = 0; k < lane_block; ++k) {
      const double rx = x[block + k] - px;
      const double ry = y[block + k] - py;
      const double rz = z[block + k] - pz;
      const double along = dx[block + k] * ex + dy[block + k] * ey + dz[block + k] * ez;
      sum[k] += along / std::sqrt(rx * rx + ry * ry + rz * rz + core_radius_squared);
    }
  }
  for (std::size_t k = 0; k < lane_block; ++k) sums[k] = sum[k];
}

}  // namespace

VkmMass compute_vkm_mass(std::span<const Vec3> points, double chi_spin, const Poll& poll) {
  const std::size_t n = points.size();
  if (n == 0) return {};
  const Lanes p(points);
  const Lanes d = edges_of(points);
  Heartbeat heartbeat(poll);
  double total = 0.0;
  for (std::size_t block = 0; block < n; block += lane_block) {
    double rows[lane_block];
    add_mass_rows(p.axis(0), p.axis(1), p.axis(2), d.axis(0), d.axis(1), d.axis(2), n, block, rows);
    for (std::size_t k = 0; k < std::min(lane_block, n - block); ++k) total += rows[k];
    heartbeat.tick();
  }
  return {calculate_length(points) * core_line_density,
          chi_spin * chi_spin * fluid_energy_scale * total / speed_of_light_squared};
}

}  // namespace vkm
