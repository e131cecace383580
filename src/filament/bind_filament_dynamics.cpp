#include <cstdint>
#include <optional>
#include <string>

#include "filament/motion/curve_sampling.hpp"
#include "filament/motion/filament_step.hpp"
#include "filament/motion/regularized_velocity.hpp"
#include "filament/motion/rigid_motion.hpp"
#include "filament/reach/continuous_reach.hpp"
#include "filament/reach/topology_guard.hpp"
#include "filament/reach/tube_clearance.hpp"
#include "filament/topology/polygonal_gauss.hpp"
#include "module/binders.hpp"

namespace vkm {

namespace {

constexpr const char* shape_text = "Expected (N,3) array";

using Curves = std::vector<std::vector<Vec3>>;

Curves curves_from(const std::vector<DoubleArray>& arrays) {
  Curves curves;
  curves.reserve(arrays.size());
  for (const DoubleArray& array : arrays) curves.push_back(points_from(array, shape_text));
  return curves;
}

/// The rows of a curve to sample: another rank is told from another width.
std::vector<Vec3> polyline_from(const DoubleArray& array) {
  if (array.ndim() != 2) {
    throw std::invalid_argument("array has incorrect number of dimensions: " + std::to_string(array.ndim()) +
                                "; expected 2");
  }
  return points_from(array, shape_text);
}

py::array_t<double> resample(const DoubleArray& points, std::uint32_t n) {
  return array_from(resample_closed_curve(polyline_from(points), n));
}

py::array_t<double> sample_circle_array(std::uint32_t n, double R, double z) {
  return array_from(sample_circle(n, R, z));
}

py::array_t<double> sampled(const DoubleArray& array, std::uint32_t n, bool arclength_uniform) {
  const std::vector<Vec3> points = polyline_from(array);
  return array_from(arclength_uniform && points.size() != n ? resample_closed_curve(points, n) : points);
}

py::dict gauss_dict(const PolygonalGaussResult& result) {
  py::dict dict;
  dict["signed_integral"] = result.signed_integral;
  dict["absolute_integral"] = result.absolute_integral;
  dict["linking_integer_audit"] = result.linking_integer_audit;
  return dict;
}

py::dict polygonal_gauss(const DoubleArray& curve_a, const std::optional<DoubleArray>& curve_b, bool same_curve) {
  const std::vector<Vec3> a = points_from(curve_a, shape_text);
  if (same_curve || !curve_b) return gauss_dict(polygonal_gauss_self(a, python_poll()));
  const std::vector<Vec3> b = points_from(*curve_b, shape_text);
  return gauss_dict(polygonal_gauss_pair(a, b, python_poll()));
}

py::dict clearance_dict(const std::vector<DoubleArray>& curves, double core_radius) {
  const TubeClearance result = tube_clearance(curves_from(curves), core_radius, python_poll());
  py::dict dict;
  dict["clearance"] = result.clearance;
  dict["self_min"] = result.self_min;
  dict["inter_min"] = result.inter_min;
  return dict;
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
  dict["curvature_intervals_examined"] = result.curvature_intervals_examined;
  dict["dcsd_seed_count"] = result.dcsd_seed_count;
  dict["dcsd_refined_count"] = result.dcsd_refined_count;
  dict["dcsd_rejected_count"] = result.dcsd_rejected_count;
  dict["search_resolution"] = result.search_resolution;
  dict["refinement_tolerance"] = result.refinement_tolerance;
  dict["search_converged"] = result.search_converged;
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
  dict["curvature_intervals_examined"] = reach.curvature_intervals_examined;
  dict["dcsd_seed_count"] = reach.dcsd_seed_count;
  dict["dcsd_refined_count"] = reach.dcsd_refined_count;
  dict["dcsd_rejected_count"] = reach.dcsd_rejected_count;
  dict["search_resolution"] = reach.search_resolution;
  dict["refinement_tolerance"] = reach.refinement_tolerance;
  dict["search_converged"] = reach.search_converged;
  dict["length_interval_count"] = tube.length.interval_count;
  dict["length_converged"] = tube.length.converged;
  return dict;
}

/// Overwrites `value` where the dict has the key; the binding layer's cast error for another type.
template <class Value>
void read_key(const py::dict& dict, const char* key, Value& value) {
  if (dict.contains(key)) value = dict[key].cast<Value>();
}

std::vector<Filament> filaments_from(const std::vector<py::dict>& dicts) {
  std::vector<Filament> filaments;
  filaments.reserve(dicts.size());
  for (const py::dict& dict : dicts) {
    Filament& filament = filaments.emplace_back();
    read_key(dict, "id", filament.id);
    read_key(dict, "carrier", filament.carrier);
    filament.points = points_from(dict["points"].cast<DoubleArray>(), shape_text);
    read_key(dict, "circulation", filament.circulation);
    read_key(dict, "source", filament.source);
    read_key(dict, "ghost", filament.ghost);
  }
  return filaments;
}

FilamentOptions options_from(const py::dict& dict) {
  FilamentOptions options;
  read_key(dict, "lia_only", options.lia_only);
  read_key(dict, "a_sim", options.a_sim);
  read_key(dict, "core_delta", options.core_delta);
  read_key(dict, "lia_constant", options.lia_constant);
  read_key(dict, "core_radius", options.core_radius);
  return options;
}

py::dict velocity_dict(const std::vector<py::dict>& filaments, const py::dict& options) {
  const FilamentVelocity result = filament_velocity(filaments_from(filaments), options_from(options), python_poll());
  py::list velocity;
  for (const std::vector<Vec3>& field : result.velocity) velocity.append(array_from(field));
  py::dict dict;
  dict["velocity"] = velocity;
  dict["maximum_speed"] = result.maximum_speed;
  return dict;
}

py::dict step_dict(const std::vector<py::dict>& filaments, double dt, const py::dict& options) {
  const FilamentStep step = rk4_step(filaments_from(filaments), dt, options_from(options), python_poll());
  py::list moved;
  for (const Filament& filament : step.filaments) {
    py::dict dict;
    dict["id"] = filament.id;
    dict["carrier"] = filament.carrier;
    dict["points"] = array_from(filament.points);
    dict["circulation"] = filament.circulation;
    dict["ghost"] = filament.ghost;
    moved.append(dict);
  }
  py::dict dict;
  dict["filaments"] = moved;
  dict["maximum_stage_speed"] = step.maximum_stage_speed;
  return dict;
}

double cfl_dt(const std::vector<py::dict>& filaments, const py::dict& options, double cfl) {
  return cfl_time_step(filaments_from(filaments), options_from(options), cfl, python_poll());
}

py::dict guard_dict(const std::vector<DoubleArray>& before, const std::vector<DoubleArray>& after,
                    double contact_threshold, double max_displacement, double core_radius) {
  const TopologyGuard guard = guard_topology_step(curves_from(before), curves_from(after), contact_threshold,
                                                  max_displacement, core_radius, python_poll());
  py::dict dict;
  dict["contact"] = guard.contact;
  dict["warn_only"] = guard.warn_only;
  dict["safe_dt_fraction"] = guard.safe_dt_fraction;
  dict["clearance_before"] = guard.clearance_before;
  dict["clearance_after"] = guard.clearance_after;
  dict["message"] = guard.message;
  return dict;
}

std::vector<double> weights_from(const py::object& weights) {
  return weights.is_none() ? std::vector<double>{} : weights.cast<std::vector<double>>();
}

py::dict frame_dict(const DoubleArray& points, const py::object& weights) {
  const IntrinsicFrame frame = intrinsic_frame(points_from(points, shape_text), weights_from(weights));
  py::dict dict;
  dict["centroid"] = frame.centroid;
  dict["axis_x"] = frame.axis_x;
  dict["axis_y"] = frame.axis_y;
  dict["axis_z"] = frame.axis_z;
  dict["eigenvalues"] = frame.eigenvalues;
  return dict;
}

py::dict motion_dict(const DoubleArray& points, const DoubleArray& velocity, const py::object& weights) {
  const std::vector<Vec3> at = points_from(points, shape_text);
  const RigidMotion motion = rigid_motion(at, points_from(velocity, shape_text), weights_from(weights));
  py::dict dict;
  dict["centroid"] = motion.centroid;
  dict["translation"] = motion.translation;
  dict["omega"] = motion.omega;
  dict["translation_field"] = array_from(motion.translation_field);
  dict["rotation_field"] = array_from(motion.rotation_field);
  dict["deformation_field"] = array_from(motion.deformation_field);
  dict["reconstruction_relative_error"] = motion.reconstruction_relative_error;
  dict["deformation_relative_norm"] = motion.deformation_relative_norm;
  return dict;
}

constexpr const char* clearance_doc =
    R"(Compute the least distance between edges of closed polygons that are not neighbours.

curves: list of arrays (N, 3), closing vertex not repeated. Edges of one curve are neighbours when their indices differ
by less than 2 along it; with a positive core_radius by less than six core radii in mean edge lengths, at least 2.

Returns a dict: clearance (the smaller of the two that follow), self_min (within a curve of at least 4 points) and
inter_min (between two curves of at least 2 points), each infinity where there is no such pair. Lengths are in the unit
of the points. analyze_resolved_tube_clearance and compute_topology_clearance are one computation.

Raises ValueError "Expected (N,3) array" for another shape.)";

constexpr const char* velocity_doc =
    R"(Compute the velocity of closed vortex filaments by local induction and the Biot-Savart sum of all sources.

filaments: list of dicts with the keys points (array (N, 3) in m, required; a closed polygon), circulation (m^2/s, 1.0),
source (induces, True), ghost (neither moves nor induces, False), id ("") and carrier ("A").
options: dict with the keys lia_only (local induction only, False), a_sim (softening length between different filaments
in m, 0.0), core_delta (the core radius is scaled by exp(core_delta), 0.0), lia_constant (added to the logarithm, 0.25)
and core_radius (m, 0.01).

Returns a dict: velocity, a list of arrays (N, 3) in m/s in the order of the input, zeros for ghosts, and maximum_speed.
compute_filament_velocity and compute_regularized_mutual_velocity are one computation.

The local term is Gamma / (4 pi) (log(2 sqrt(la lb) / a_eff) + C) times the discrete curvature binormal of the edges at
the vertex (Arms and Hama 1965; Schwarz, Phys. Rev. B 31 (1985) 5782), and the sum leaves these two edges out.
Raises KeyError without points and ValueError "Expected (N,3) array" for another shape.)";

}  // namespace

void bind_filament_dynamics(py::module_& m) {
  m.def("resample_closed_curve", &resample, py::arg("points"), py::arg("n"),
        R"(Resample a closed polygon at n equal steps of its length, by linear interpolation.

points: array (N, 3), closing vertex not repeated; the closing edge counts. Returns an array (n, 3) that begins at
points[0] and ends one step short of it; zeros if there are fewer than two points or the length is 0.

Raises ValueError "Expected (N,3) array" for another width, and for another rank.)");

  m.def("sample_curve", &sampled, py::arg("points"), py::arg("n"), py::arg("arclength_uniform") = true,
        R"(Sample a closed polygon: n points at equal steps of its length, as resample_closed_curve does.

With arclength_uniform=False, or when points has n rows already, the points come back as they are.)");

  m.def("sample_circle", &sample_circle_array, py::arg("n"), py::arg("R") = 1.0, py::arg("z") = 0.0,
        R"(Sample a circle of radius R about the z axis, at height z: array (n, 3), counterclockwise from (R, 0, z).)");

  m.def("compute_polygonal_gauss", &polygonal_gauss, py::arg("curve_a"), py::arg("curve_b") = py::none(),
        py::arg("same_curve") = true,
        R"(Compute the exact Gauss integral of closed polygons, with its integer audit.

curve_a: array (N, 3); curve_b: array (M, 3) or None. The closing vertex is not repeated. With same_curve true (the
default) or without curve_b the result is the self integral of curve_a, and curve_b is ignored; with same_curve=False it
is the linking integral of the two.

Returns a dict: signed_integral (writhe, or linking number), absolute_integral (the same over absolute values) and
linking_integer_audit (the nearest integer to signed_integral, halves away from zero). All 0 below 3 points.

Each pair of edges contributes its solid angle in closed form (Klenin and Langowski, Biopolymers 54 (2000) 307).
Raises ValueError "Expected (N,3) array" for another shape.)");

  for (const char* name : {"analyze_resolved_tube_clearance", "compute_topology_clearance"}) {
    m.def(name, &clearance_dict, py::arg("curves"), py::arg("core_radius") = 0.0, clearance_doc);
  }

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

  for (const char* name : {"compute_filament_velocity", "compute_regularized_mutual_velocity"}) {
    m.def(name, &velocity_dict, py::arg("filaments"), py::arg("options") = py::dict(), velocity_doc);
  }

  m.def("rk4_step", &step_dict, py::arg("filaments"), py::arg("dt"), py::arg("options") = py::dict(),
        R"(Advance closed vortex filaments by one classical fourth-order Runge-Kutta step of dt seconds.

filaments and options as in compute_filament_velocity. Returns a dict: filaments, a list of dicts with the keys id,
carrier, points, circulation and ghost, and maximum_stage_speed (m/s, over the four stages). The key source is not
written back: restore it where it was False. The input is left as it is.)");

  m.def("estimate_cfl_dt", &cfl_dt, py::arg("filaments"), py::arg("options") = py::dict(), py::arg("cfl") = 0.5,
        R"(Estimate a time step: that in which the fastest vertex covers cfl of the shortest edge that moves.

filaments and options as in compute_filament_velocity. Returns seconds, at least 1e-6; 1e-6 where nothing moves.)");

  m.def("guard_topology_step", &guard_dict, py::arg("before"), py::arg("after"), py::arg("contact_threshold"),
        py::arg("max_displacement"), py::arg("core_radius") = 0.0,
        R"(Check that strands of closed polygons stay apart on the way of a step.

before, after: lists of arrays (N, 3). A contact is a clearance (compute_topology_clearance with core_radius) below
contact_threshold, at the start, at the end, or in between along straight lines. max_displacement bounds how far a
vertex moves; where it rules out a contact, the positions in between are not looked at.

Returns a dict: contact, warn_only (False), safe_dt_fraction (part of the step that is safe: 1 without contact, 0 for a
contact at the start or the end), clearance_before, clearance_after and message.
Raises ValueError "Expected (N,3) array" for another shape.)");

  m.def("compute_intrinsic_frame", &frame_dict, py::arg("points"), py::arg("weights") = py::none(),
        R"(Compute the centroid and the principal axes of points.

points: array (N, 3); weights: list of N floats, or None for ones; a list of another length is ignored.

Returns a dict: centroid, axis_x (largest spread), axis_y, axis_z (normal of the best-fit plane) and eigenvalues (of the
covariance, ascending), each a list of three floats. The axes are right-handed.
Raises ValueError "Expected (N,3) array" for another shape.)");

  m.def("compute_rigid_motion", &motion_dict, py::arg("points"), py::arg("velocity"), py::arg("weights") = py::none(),
        R"(Split a velocity field on points into translation, rotation and deformation.

points, velocity: arrays (N, 3), of which the common rows count; weights: list of floats, or None for ones. The centroid
uses weights when there is one for each point, the motion when there are at least as many as common rows.

Returns a dict: centroid, translation, omega (lists of three floats), translation_field, rotation_field,
deformation_field (arrays (n, 3)), reconstruction_relative_error and deformation_relative_norm. omega solves
I omega = L for the inertia tensor and angular momentum about the centroid; 0 where I is singular.
Raises ValueError "Expected (N,3) array" for another shape.)");
}

}  // namespace vkm
