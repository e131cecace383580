#include "knot/knot_registrars.hpp"
#include "knot/planar_diagram.hpp"

namespace vkm {

void register_planar_diagram(py::module_& m) {
  m.def(
      "estimate_crossing_number",
      [](const std::vector<Vec3>& r, int directions, int seed) {
        return estimate_crossing_number(r, directions, seed, python_poll());
      },
      py::arg("r"), py::arg("directions") = 24, py::arg("seed") = 12345,
      R"(Estimate crossing number from projections

r: list of N points of a closed polygon. The least number of proper crossings over seeded random projections: an upper
bound of the crossing number. N^2 if `directions` is 0 or less.)");
  m.def(
      "pd_from_curve",
      [](const DoubleArray& P3, int tries, int seed, double min_angle_deg, double depth_tol) {
        return pd_from_curve(points_from(P3, points_shape_text), tries, seed, min_angle_deg, depth_tol, python_poll());
      },
      py::arg("P3"), py::arg("tries") = 40, py::arg("seed") = 12345, py::arg("min_angle_deg") = 1.0,
      py::arg("depth_tol") = 1e-6,
      R"(
Compute a PD code from a closed 3D polygonal curve.

P3: array (N, 3), the closing point not repeated. Of `tries` seeded random projections the one that shows the most
crossings is taken. Returns a list of rows of four labels, one a crossing: the arcs entering on the under and the over
strand, then those leaving on the under and the over strand, numbered 1 to 2C along the curve. Left out are crossings
flatter than `min_angle_deg` degrees and those whose depths differ by less than `depth_tol`, in the units of P3.
Raises ValueError for another shape or fewer than 4 points, RuntimeError if no projection shows a crossing.)");
}

}  // namespace vkm
