#pragma once

/// Corrections of polygons whose analysis is at hand: what a caller knows is not found again.

#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "tube/resolved_tube.hpp"
#include "tube/tightener.hpp"

namespace vkm {

struct AnalyzedPolygon {
  std::vector<Vec3> points;
  ResolvedTubeMetrics metrics;  ///< of the points, by the options' parameters
};

AnalyzedPolygon analyzed(std::vector<Vec3> points, const TighteningOptions& options, const Poll& poll);

/// ResolvedTubeTightener::correct_thickness.
AnalyzedPolygon corrected(AnalyzedPolygon polygon, double target_thickness, const TighteningOptions& options,
                          const Poll& poll);

/// Largest norm of the three-element groups; not a number if one of them is not.
double largest_displacement(std::span<const double> flat);

}  // namespace vkm
