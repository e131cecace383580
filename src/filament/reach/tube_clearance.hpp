#pragma once

/// Clearance of closed polygons: the least distance of two edges that are not neighbours, within a polygon and between
/// polygons. Half of it is the radius of the thickest tube that the set can carry, as far as the polygons tell.
///
/// Infinity stands for "no such pair". Pairs that involve a point that is not finite never count.

#include <limits>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"

namespace vkm {

struct TubeClearance {
  double clearance = std::numeric_limits<double>::infinity();  // min(self_min, inter_min)
  double self_min = std::numeric_limits<double>::infinity();
  double inter_min = std::numeric_limits<double>::infinity();
};

/// Edges of one polygon whose indices differ by less than a window along it are neighbours. The window is 2; with a
/// positive `core_radius` it is the number of mean edge lengths in six core radii, at least 2. Polygons of fewer than
/// four points have no self distance, and those of fewer than two points no distance to others.
///
/// The result has the bits of the plain loop over all pairs of edges, taken in order with the midpoint bound; boxes
/// over runs of edges only skip pairs that cannot change it.
TubeClearance tube_clearance(std::span<const std::vector<Vec3>> curves, double core_radius = 0.0,
                             const Poll& poll = {});

}  // namespace vkm
