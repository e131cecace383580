#pragma once

/// Magnetostatic twins of the filament velocities, in units with mu_0 = 1: the field of an open wire, its vector
/// potential, and the field of point dipoles. Sources nearer than 1e-12 to a field point are left out.

#include <span>
#include <vector>

#include "core/lanes.hpp"
#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

inline constexpr double least_distance = 1e-12;  // sources nearer than this to a field point are left out

/// Field of an open wire of N - 1 segments: the sum of dl x R * current / (4 pi |R|^3), R from the segment's midpoint
/// (Biot-Savart). Fewer than two wire points give zeros.
Lanes wire_field(std::span<const Vec3> wire, const Lanes& points, double current, const Poll& poll = {});

/// Vector potential of an open polyline: current / (4 pi) times the sum of dl / |R|.
Lanes vector_potential(std::span<const Vec3> polyline, const Lanes& points, double current, const Poll& poll = {});

/// Field of a dipole `m` at the origin, seen from `r`: (3 (m.r) / |r|^3 r - m) / (4 pi |r|^3). The radial term is one
/// power of |r| weaker than the textbook's 3 (m.r) / |r|^2, and is meant to be.
Vec3 dipole_field(const Vec3& r, const Vec3& m);

/// The sum of the fields of dipoles `moments` at `positions`, as many as the shorter of the two lists has.
Lanes dipole_field_sum(std::span<const Vec3> positions, std::span<const Vec3> moments, const Lanes& points,
                       const Poll& poll = {});

}  // namespace vkm
