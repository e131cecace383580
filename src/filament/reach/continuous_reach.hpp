#pragma once

/// The reach of smooth closed curves: the radius of the thickest tube around them that does not touch itself. It is the
/// least of the radius of curvature, half the doubly critical self distance and half the distance of two components
/// (Federer 1959; Litherland, Simon, Durumeric and Rawdon, Thickness of knots, 1999). The curves are the periodic
/// splines through the points of polygons.

#include <cstddef>
#include <span>
#include <vector>

#include "core/poll.hpp"
#include "core/vec3.hpp"
#include "filament/reach/critical_pairs.hpp"
#include "filament/reach/periodic_spline.hpp"
#include "filament/reach/spline_length.hpp"

namespace vkm {

enum class ReachLimiter { curvature = 0, self_dcsd = 1, inter_component = 2, tie = 3, error = 4 };

/// "CURVATURE", "SELF_DCSD", "INTER_COMPONENT", "TIE" or "ERROR".
const char* limiter_name(ReachLimiter limiter);

/// Lengths in the unit of the points. All 0 for no curves.
struct ContinuousReach {
  double curvature_radius = 0.0;
  double self_dcsd = 0.0;
  double self_radius = 0.0;
  double inter_component_distance = 0.0;
  double inter_component_radius = 0.0;
  double reach = 0.0;
  ReachLimiter limiter = ReachLimiter::error;     // which of the three radii decided; a tie within 1e-5
  std::vector<Contact> self_contacts;             // one for each component where a pair was found
  std::vector<Contact> inter_component_contacts;  // one for each pair of components where a pair was found
  double orth_residual = 0.0;                     // the largest among these contacts
  std::size_t component_count = 0;
  std::size_t curvature_intervals_examined = 0;
  std::size_t dcsd_seed_count = 0;
  std::size_t dcsd_refined_count = 0;
  std::size_t dcsd_rejected_count = 0;
  double search_resolution = 0.0;
  double refinement_tolerance = vkm::refinement_tolerance;
  bool search_converged = false;
};

struct SmoothTube {
  ContinuousReach reach;
  SplineLength length;           // sums over the components
  double ropelength_rad = 0.0;   // length / reach
  double ropelength_diam = 0.0;  // length / (2 reach)
  bool converged = false;
};

/// Splines through the points of each curve; the constructor's errors below four points.
std::vector<PeriodicCubicSpline3D> splines_through(std::span<const std::vector<Vec3>> curves);

ContinuousReach continuous_reach(std::span<const PeriodicCubicSpline3D> splines, const Poll& poll = {});

/// Reach and length together. The ropelengths are NaN where the reach is not finite and positive.
SmoothTube analyze_smooth_tube(std::span<const PeriodicCubicSpline3D> splines, double length_abs_tol = 1e-10,
                               double length_rel_tol = 1e-10, const Poll& poll = {});

}  // namespace vkm
