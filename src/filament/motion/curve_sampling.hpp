#pragma once

/// Evenly spaced points on closed polygons, and on a circle.
///
/// A polygon's closing edge, from the last point to the first, counts; the closing point is not repeated.

#include <cstddef>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// `count` points at equal steps of the polygon's length, by linear interpolation, from points[0] on. Points at the
/// origin if there are fewer than two points or the length is not positive.
std::vector<Vec3> resample_closed_curve(std::span<const Vec3> points, std::size_t count, const Poll& poll = {});

/// The points (R cos t, R sin t, z) at t = 2 pi i / count. R and z in the same unit of length.
std::vector<Vec3> sample_circle(std::size_t count, double R = 1.0, double z = 0.0, const Poll& poll = {});

}  // namespace vkm
