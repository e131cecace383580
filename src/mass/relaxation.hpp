#pragma once

/// Damped relaxation of closed filaments towards an untangled, compact body of the size of the electron.
///
/// The dynamics is a device, not physics: every point is drawn to its two neighbours (weight 25) and to the mean of
/// all points (weight 15), and pushed off from points nearer than 0.2 (mass/repulsion.hpp). All forces of a sweep see
/// the old positions. Afterwards the body is scaled about its mean so that its farthest point lies at the classical
/// electron radius; this is where dimensionless coordinates become metres.

#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// Classical electron radius in m, the length unit of the relaxed body.
inline constexpr double electron_radius = 2.81794034e-15;

/// The filaments after `iterations` sweeps with the given time step, and rescaled. A count below 1 only rescales.
/// No points at all come back as they are. `poll` may throw to abandon the work.
std::vector<std::vector<Vec3>> relaxed(const std::vector<std::vector<Vec3>>& filaments, int iterations, double timestep,
                                       const Poll& poll = {});

}  // namespace vkm
