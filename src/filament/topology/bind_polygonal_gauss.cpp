#include <optional>

#include "filament/curve_arguments.hpp"
#include "filament/filament_registrars.hpp"
#include "filament/topology/polygonal_gauss.hpp"

namespace vkm {

namespace {

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

}  // namespace

void register_polygonal_gauss(py::module_& m) {
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
}

}  // namespace vkm
