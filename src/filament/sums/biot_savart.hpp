#pragma once

/// Velocities induced by a vortex filament, by the Biot-Savart law
///
///   u(x) = Gamma / (4 pi)  oint  dl x R / |R|^3,   R = x - y(l),
///
/// as straight sums over the elements of a polyline. Gamma is the circulation in m^2/s, lengths are in m.
/// Two regularisers stand side by side and are not to be unified: the closed-curve form adds 1e-12 to the cube of the
/// distance and skips nothing; the point form skips sources at a distance of at most 1e-6, its own point among them.

#include <span>
#include <vector>

#include "core/lanes.hpp"
#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

inline constexpr double point_cutoff = 1e-6;  // m; the point form skips sources up to here

/// Velocity of a closed polyline at each grid point: the sum over segments of dl x R / (|R|^3 + 1e-12) with R from the
/// segment's midpoint, times circulation / (4 pi). Fewer than two curve points give zeros. The same bits for any number
/// of threads.
Lanes closed_curve_velocity(std::span<const Vec3> curve, const Lanes& grid, double circulation, const Poll& poll = {},
                            int threads = 1);

std::vector<Vec3> closed_curve_velocity(std::span<const Vec3> curve, std::span<const Vec3> grid, double circulation,
                                        const Poll& poll = {});

/// Velocity at `r` of point sources with element vectors `tangents`: the sum of circulation (t x R) / (4 pi |R|^3).
/// Throws std::invalid_argument if there are fewer tangents than points.
Vec3 biot_savart_velocity(const Vec3& r, std::span<const Vec3> filament_points, std::span<const Vec3> tangents,
                          double circulation);

/// The same at each of `targets`, with the same bits.
std::vector<Vec3> biot_savart_velocities(std::span<const Vec3> targets, std::span<const Vec3> filament_points,
                                         std::span<const Vec3> tangents, double circulation, Heartbeat& heartbeat);
std::vector<Vec3> biot_savart_velocities(std::span<const Vec3> targets, std::span<const Vec3> filament_points,
                                         std::span<const Vec3> tangents, double circulation, const Poll& poll,
                                         int threads);

}  // namespace vkm
