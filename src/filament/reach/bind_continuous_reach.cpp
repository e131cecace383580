#include "filament/curve_arguments.hpp"
#include "filament/filament_registrars.hpp"
#include "filament/reach/continuous_reach.hpp"

namespace vkm {

namespace {

/// How the doubly critical pairs were searched for.
void put_search(py::dict& dict, const ContinuousReach& reach) {
  dict["curvature_intervals_examined"] = reach.curvature_intervals_examined;
  dict["dcsd_seed_count"] = reach.dcsd_seed_count;
  dict["dcsd_refined_count"] = reach.dcsd_refined_count;
  dict["dcsd_rejected_count"] = reach.dcsd_rejected_count;
  dict["search_resolution"] = reach.search_resolution;
  dict["refinement_tolerance"] = reach.refinement_tolerance;
  dict["search_converged"] = reach.search_converged;
}

py::dict reach_dict(const std::vector<DoubleArray>& curves) {
  const ContinuousReach result = continuous_reach(splines_through(curves_from(curves)), python_poll());
  py::dict dict;
  dict["curvature_radius"] = result.curvature_radius;
  dict["self_dcsd"] = result.self_dcsd;
  dict["self_radius"] = result.self_radius;
  dict["inter_component_distance"] = result.inter_component_distance;
  dict["inter_component_radius"] = result.inter_component_radius;
  dict["reach"] = result.reach;
  dict["limiter"] = limiter_name(result.limiter);
  dict["orth_residual"] = result.orth_residual;
  dict["component_count"] = result.component_count;
  put_search(dict, result);
  return dict;
}

py::dict smooth_tube_dict(const std::vector<DoubleArray>& curves, double length_abs_tol, double length_rel_tol) {
  const SmoothTube tube =
      analyze_smooth_tube(splines_through(curves_from(curves)), length_abs_tol, length_rel_tol, python_poll());
  const ContinuousReach& reach = tube.reach;
  py::dict dict;
  dict["spline_length"] = tube.length.length;
  dict["spline_length_error"] = tube.length.error_estimate;
  dict["curvature_radius"] = reach.curvature_radius;
  dict["self_dcsd"] = reach.self_dcsd;
  dict["self_radius"] = reach.self_radius;
  dict["inter_component_radius"] = reach.inter_component_radius;
  dict["reach"] = reach.reach;
  dict["ropelength_rad"] = tube.ropelength_rad;
  dict["ropelength_diam"] = tube.ropelength_diam;
  dict["orthogonality_residual"] = reach.orth_residual;
  dict["converged"] = tube.converged;
  dict["limiter"] = limiter_name(reach.limiter);
  put_search(dict, reach);
  dict["length_interval_count"] = tube.length.interval_count;
  dict["length_converged"] = tube.length.converged;
  return dict;
}

}  // namespace

void register_continuous_reach(py::module_& m) {
  m.def("compute_continuous_reach", &reach_dict, py::arg("curves"),
        R"(Compute the reach of smooth closed curves: the radius of their thickest embedded tube.

curves: list of arrays (N, 3), N >= 4, each the knots of a periodic cubic spline. The reach is the least of the radius
of curvature, half the doubly critical self distance and half the distance between components.

Returns a dict: curvature_radius, self_dcsd, self_radius, inter_component_distance, inter_component_radius, reach,
limiter ("CURVATURE", "SELF_DCSD", "INTER_COMPONENT", "TIE" within 1e-5, or "ERROR"), orth_residual (largest cosine
between a chord found and its tangents), component_count, curvature_intervals_examined, dcsd_seed_count,
dcsd_refined_count, dcsd_rejected_count, search_resolution (parameter step of the seed scan), refinement_tolerance and
search_converged. Distances are infinity where nothing was found; lengths are in the unit of the points. Without curves
all values are 0 and the limiter is "ERROR".

Raises ValueError "Expected (N,3) array" for another shape and "PeriodicCubicSpline3D requires >= 4 points".)");

  m.def("analyze_smooth_resolved_tube", &smooth_tube_dict, py::arg("curves"), py::arg("length_abs_tol") = 1e-10,
        py::arg("length_rel_tol") = 1e-10,
        R"(Analyze the smooth tube around closed curves: length, reach and ropelength.

curves: list of arrays (N, 3), N >= 4, as for compute_continuous_reach. The length is that of the splines, by adaptive
Gauss-Kronrod integration to the tolerances (1e-10 in place of a tolerance that is not positive).

Returns a dict: spline_length, spline_length_error, curvature_radius, self_dcsd, self_radius, inter_component_radius,
reach, ropelength_rad (length / reach), ropelength_diam (half of it), orthogonality_residual, converged, limiter,
curvature_intervals_examined, dcsd_seed_count, dcsd_refined_count, dcsd_rejected_count, search_resolution,
refinement_tolerance, search_converged, length_interval_count and length_converged. The ropelengths are NaN where the
reach is not finite and positive. Errors as in compute_continuous_reach.)");
}

}  // namespace vkm
