#pragma once

/// The velocity of a filament's own points under the point-source Biot-Savart sum.
///
/// Targets and sources are the same points, so the distance of each pair is taken once and serves both ends: the square
/// root and the quotient, which limit the sum, are halved. Each target still adds its sources from the first to the
/// last, and the bits are those of the plain loop. Memory is linear in the number of points.

#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// biot_savart_velocity at each of `points`, with the same bits. Throws std::invalid_argument if there are fewer
/// tangents than points.
std::vector<Vec3> self_velocities(std::span<const Vec3> points, std::span<const Vec3> tangents, double circulation,
                                  Heartbeat& heartbeat);

}  // namespace vkm
