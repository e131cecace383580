#include "filament/curve_arguments.hpp"
#include "filament/filament_registrars.hpp"
#include "filament/motion/rigid_motion.hpp"

namespace vkm {

namespace {

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

}  // namespace

void register_rigid_motion(py::module_& m) {
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
