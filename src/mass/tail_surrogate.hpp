#pragma once

/// Surrogate for the energy of the flow outside a particle's core.
///
/// Shells of a linear ladder of radii surround every vertex; on each, the Biot-Savart field of all filaments is
/// sampled at equal angles in the plane normal to the filament, without the segments next to the vertex:
///   E = sum over vertices and shells of mean(|u|^2) * 1/2 rho_f * A ds,
/// with A the area of the annulus, ds the segment's length, rho_f = 7e-7 kg/m^3 and the circulation
/// 9.683619203e-9 m^2/s. Lengths in m, energies in J.

#include <cstdint>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

struct TailApproxConfig {
  bool enabled = false;
  std::int32_t radial_samples = 8;    // shells; at least 1 is taken
  std::int32_t azimuth_samples = 8;   // samples a shell; at least 1 is taken
  double r_min_factor = 1.25;         // inner radius in core radii; at least 1.01 is taken
  double r_max_factor = 8.0;          // outer radius in core radii; at least 1.1 inner radii are taken
  double exclusion_ds_factor = 3.0;   // length left out on either side of a vertex, in mean segment lengths
  bool use_log_shell_weight = false;  // carried along; shells are always weighted by their area
};

/// The energy in J; 0 unless enabled. `poll` may throw to abandon the work.
double tail_surrogate_energy(const std::vector<std::vector<Vec3>>& filaments, const TailApproxConfig& config,
                             const Poll& poll = {}, int threads = 1);

}  // namespace vkm
