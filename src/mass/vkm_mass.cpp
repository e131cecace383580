#include "mass/vkm_mass.hpp"

#include <algorithm>
#include <cmath>

#include "core/pair_sums.hpp"
#include "core/polygon_edges.hpp"
#include "filament/energy/filament_energy.hpp"

namespace vkm {

namespace {

constexpr double core_line_density = 2.4282113828462446e-11;    // rho_core pi r_c^2, kg / m
constexpr double core_radius_squared = 1.985196939949829e-30;   // r_c^2, m^2
constexpr double fluid_energy_scale = 2.6117619251066605e-24;   // rho_f Gamma^2 / (8 pi), J / m
constexpr double speed_of_light_squared = 89875517873681760.0;  // m^2 / s^2

/// The sums over all points of one block of points, of whose edge vectors `edge` is the view.
VKM_KERNEL void add_mass_rows(const LaneSources& filament, std::size_t n, const LaneView& points, const LaneView& edge,
                              double* sums) {
  add_sources(filament, 0, n, points, sums,
              [&edge](const LaneVec3& d, const LaneVec3& r, std::size_t, std::size_t k) VKM_TERM {
                const double along = edge.x[k] * d.x + edge.y[k] * d.y + edge.z[k] * d.z;
                return along / std::sqrt(dot(r, r) + core_radius_squared);
              });
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
    double rows[lane_block] = {};
    add_mass_rows({view(p), view(d)}, n, view(p, block), view(d, block), rows);
    for (std::size_t k = 0; k < std::min(lane_block, n - block); ++k) total += rows[k];
    heartbeat.tick();
  }
  return {calculate_length(points) * core_line_density,
          chi_spin * chi_spin * fluid_energy_scale * total / speed_of_light_squared};
}

}  // namespace vkm
