#pragma once

/// The least distance between samples of a closed curve that are not neighbours along it.
///
/// Over all pairs i < j whose gap along the closed curve, min(j - i, N - (j - i)), is greater than a window. The search
/// walks a tree of bounding boxes and skips pairs of boxes that lie farther apart than the best pair found, or whose
/// every pair lies within the window; the result has the bits of the plain loop over all pairs. Memory is linear in the
/// number of points. A pair with a distance that is NaN never counts.

#include <cstdint>
#include <span>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

/// The least Euclidean distance among the counted pairs; +infinity when no pair counts or none has a finite distance.
double least_self_distance(std::span<const Vec3> points, std::int64_t exclude_window, const Poll& poll = {});

/// The least Euclidean distance among the counted pairs, in the units of the points. 0 for fewer than four points, and
/// 0, not infinity, when no pair has a finite distance or no pair counts.
double min_self_distance_sampled(std::span<const Vec3> points, std::int64_t exclude_window = 4, const Poll& poll = {});

}  // namespace vkm
