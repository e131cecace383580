#pragma once

/// Planar diagrams of a closed polygon in space, and an estimate of its crossing number, both from projections along
/// seeded random directions. Threads share the directions; results are the same for any number of them.
///
/// A code has a row of four labels a crossing: the arc entering on the under strand, the arc entering on the over
/// strand, the arc leaving on the under strand, the arc leaving on the over strand. The labels 1 to 2C number the arcs
/// between passages along the curve; each stands in the code exactly twice.

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

using PlanarDiagram = std::vector<std::array<int, 4>>;

/// The code with the most crossings among `tries` projections; of several the first. Crossings at a vertex, at an angle
/// of less than `min_angle_deg`, or with depths that differ by less than `depth_tol` are not taken.
/// std::invalid_argument for fewer than four points, std::runtime_error if no projection shows a crossing.
PlanarDiagram pd_from_curve(std::span<const Vec3> points, int tries = 40, int seed = 12345, double min_angle_deg = 1.0,
                            double depth_tol = 1e-6, const Poll& poll = {}, int threads = 1);

/// The least number of proper crossings over `directions` projections of the closed polygon, at most N^2; N^2 without
/// any direction.
std::int64_t estimate_crossing_number(std::span<const Vec3> points, int directions = 24, int seed = 12345,
                                      const Poll& poll = {}, int threads = 1);

}  // namespace vkm
