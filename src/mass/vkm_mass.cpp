#include "mass/vkm_mass.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/pair_sums.hpp"
#include "core/polygon_edges.hpp"
#include "core/tasks.hpp"
#include "filament/energy/filament_energy.hpp"
#include "mass/fluid_rows.hpp"

namespace vkm {

namespace {

constexpr double core_line_density = 2.4282113828462446e-11;    // rho_core pi r_c^2, kg / m
constexpr double fluid_energy_scale = 2.6117619251066605e-24;   // rho_f Gamma^2 / (8 pi), J / m
constexpr double speed_of_light_squared = 89875517873681760.0;  // m^2 / s^2

}  // namespace

VkmMass compute_vkm_mass(std::span<const Vec3> points, double chi_spin, const Poll& poll, int threads) {
  const std::size_t n = points.size();
  if (n == 0) return {};
  const Lanes p(points);
  const Lanes d = edges_of(points);
  const PairForm form = fluid_kernel.form_for(moderate(points));
  std::vector<double> rows(p.blocks() * lane_block, 0.0);
  run_tasks(p.blocks(), threads, poll, [&](std::size_t task, Heartbeat& heartbeat) {
    const std::size_t block = task * lane_block;
    add_fluid_rows({view(p), view(d)}, n, view(p, block), view(d, block), rows.data() + block, form);
    heartbeat.tick();
  });
  double total = 0.0;
  for (std::size_t i = 0; i < n; ++i) total += rows[i];
  return {calculate_length(points) * core_line_density,
          chi_spin * chi_spin * fluid_energy_scale * total / speed_of_light_squared};
}

}  // namespace vkm
