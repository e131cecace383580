#pragma once

/// A polygon's thickness brought up to a target: by Newton steps on its contacts, or by scaling. Where the analysis of
/// the polygon is at hand, it is not found again.

#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "tube/resolved_tube.hpp"
#include "tube/tightening_options.hpp"

namespace vkm {

struct AnalyzedPolygon {
  std::vector<Vec3> points;
  ResolvedTubeMetrics metrics;  ///< of the points, by the options' parameters
};

AnalyzedPolygon analyzed(std::vector<Vec3> points, const TighteningOptions& options, const Poll& poll);

/// Moves a polygon that is below the target thickness up to it, by the strategy of the options.
AnalyzedPolygon corrected(AnalyzedPolygon polygon, double target_thickness, const TighteningOptions& options,
                          const Poll& poll);

std::vector<Vec3> correct_thickness(std::span<const Vec3> points, double target_thickness,
                                    const TighteningOptions& options = {}, const Poll& poll = {});

/// Scales about the centroid to just past the target thickness; never down.
std::vector<Vec3> rescale_to_thickness(std::span<const Vec3> points, double target_thickness,
                                       const TubeAnalysis& analysis = {}, const Poll& poll = {});

/// Largest norm of the three-element groups; not a number if one of them is not.
double largest_displacement(std::span<const double> flat);

}  // namespace vkm
