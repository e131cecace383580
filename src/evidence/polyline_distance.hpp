#pragma once

#include <span>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// The directed Hausdorff distance from the points of a to the closed polyline b: the largest, over points of a, of the
/// smallest distance to a segment of b, the closing one included. The closest point of a segment has its parameter
/// clamped to 0..1, and is the segment's start where it has no length. Infinite where a point has no distance, because
/// its coordinates are not finite or there are no segments.
double directed_hausdorff_distance(std::span<const Vec3> a, std::span<const Vec3> b, const Poll& poll);

}  // namespace vkm
