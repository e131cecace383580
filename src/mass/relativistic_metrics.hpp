#pragma once

/// Helicity and clock rate of a filament under its own Biot-Savart flow.
///
/// With T the tangents of the filament's Frenet frames, the velocity at its points is the point sum of
/// circulation / (4 pi) T_j x d / |d|^3 over the sources farther than 1e-6 (for a body of 1e-15 m no source is), the
/// vorticity is T circulation / (pi r_c^2), and a clock runs at sqrt(1 - |u|^2 / c^2). Circulation in m^2/s.

#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

inline constexpr double default_circulation = 9.683619203e-9;  // m^2/s

struct RelativisticMetrics {
  double helicity = 0.0;                  // mean of velocity . vorticity, in single precision
  std::vector<double> time_dilation_map;  // clock rate at each point
  double core_time_dilation = 1.0;        // mean of the map
};

/// The defaults for an empty filament. `poll` may throw to abandon the work.
RelativisticMetrics relativistic_metrics(std::span<const Vec3> filament, double circulation, const Poll& poll = {});

}  // namespace vkm
