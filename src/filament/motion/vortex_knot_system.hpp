#pragma once

/// The simple filament simulator: one closed filament of points with their element vectors and a circulation, stepped
/// by explicit Euler under the point-source Biot-Savart sum. No core model and no guard.

#include <cstdint>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// Element vectors of a closed loop: half of the difference of the neighbours, not normalised.
std::vector<Vec3> central_tangents(std::span<const Vec3> positions);

/// (2, 3) torus knot, cos(2t)(cos 3t + 2), sin(2t)(cos 3t + 2), sin 3t at `resolution` parameters, none repeated.
std::vector<Vec3> trefoil_curve(int resolution, const Poll& poll = {});

/// cos(3t)(cos 2t + 2), sin(3t)(cos 2t + 2), sin 4t.
std::vector<Vec3> figure8_curve(int resolution, const Poll& poll = {});

struct VortexKnotSystem {
  std::vector<Vec3> positions;  // m, a closed loop
  std::vector<Vec3> tangents;   // element vectors, m
  double circulation = 1.0;     // m^2/s
};

/// The same filament started from a state that the caller supplies, tangents included.
struct TimeEvolution : VortexKnotSystem {};

/// Puts the filament on new positions, with their central tangents.
void set_positions(VortexKnotSystem& system, std::vector<Vec3> positions);

/// Steps the filament `steps` times: all velocities from the old positions, then positions += dt velocity, then new
/// tangents. An exception of the poll leaves it as it was. Throws std::invalid_argument if there are fewer tangents
/// than positions.
void evolve(VortexKnotSystem& system, double dt, std::uint64_t steps, const Poll& poll = {});

/// positions[i] + (dt gamma) tangents[i], in which the tangents play the velocity. Throws std::invalid_argument if
/// there are fewer tangents than positions.
std::vector<Vec3> advance_along_tangents(std::span<const Vec3> positions, std::span<const Vec3> tangents, double dt,
                                         double gamma);

/// positions[i] += dt velocity[i]. Throws std::invalid_argument if there are fewer velocities than positions.
void evolve_positions_euler(std::span<Vec3> positions, std::span<const Vec3> velocity, double dt);

}  // namespace vkm
