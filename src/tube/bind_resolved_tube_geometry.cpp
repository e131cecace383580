#include "tube/contact_gradient.hpp"
#include "tube/corner.hpp"
#include "tube/edge_lengths.hpp"
#include "tube/resolved_tube.hpp"
#include "tube/segment_distance.hpp"
#include "tube/tube_analysis.hpp"
#include "tube/tube_registrars.hpp"
#include "tube/vertex_radius.hpp"

namespace vkm {

namespace {

using Points = std::vector<Vec3>;

constexpr const char* analyze_doc = R"(Thickness, ropelength and contacts of a closed polygon.

Args:
    points: vertices, N lists of three floats or an (N, 3) array, any unit of length; the closing edge is implied.
    skip_neighbors (int): edges up to this many apart around the loop are not tested against each other.
    contact_tol (float): contacts up to (1 + tol) thickness + tol are active; relative and additive at once.
    equilateral_tol (float): largest relative deviation of an edge length that still counts as equilateral.

Returns: ResolvedTubeMetrics. Raises ValueError below three points and for negative tolerances.
Time is n log n on curves, memory linear in the vertices and contacts.)";

}  // namespace

void register_tube_records(py::module_& m) {
  bound_class<SegmentPair>(m, "SegmentPair", "The closest points of two edges i < j of a polygon.")
      .def(py::init<>())
      .def_readwrite("i", &SegmentPair::i, "First edge.")
      .def_readwrite("j", &SegmentPair::j, "Second edge.")
      .def_readwrite("s", &SegmentPair::s, "Parameter 0..1 on edge i.")
      .def_readwrite("t", &SegmentPair::t, "Parameter 0..1 on edge j.")
      .def_readwrite("distance", &SegmentPair::distance, "Distance of the two points.")
      .def_readwrite("arclength_i", &SegmentPair::arclength_i, "Arc length from vertex 0 to the point on edge i.")
      .def_readwrite("arclength_j", &SegmentPair::arclength_j, "Arc length from vertex 0 to the point on edge j.");

  bound_class<KinkRecord>(m, "KinkRecord", "The radius of a corner of a polygon, from either of its edges.")
      .def(py::init<>())
      .def_readwrite("vertex", &KinkRecord::vertex, "Vertex, reduced modulo n.")
      .def_readwrite("minrad_minus", &KinkRecord::minrad_minus, "Radius from the incoming edge.")
      .def_readwrite("minrad_plus", &KinkRecord::minrad_plus, "Radius from the outgoing edge.")
      .def_readwrite("minrad", &KinkRecord::minrad, "The smaller of the two.")
      .def_readwrite("turning_angle", &KinkRecord::turning_angle, "Exterior angle in radians.");

  auto metrics = bound_class<ResolvedTubeMetrics>(
      m, "ResolvedTubeMetrics", "Thickness, ropelength and contacts of a polygon; lengths in its unit.");
  metrics.def(py::init<>())
      .def_readwrite("length", &ResolvedTubeMetrics::length, "Polygon length.")
      .def_readwrite("minrad", &ResolvedTubeMetrics::minrad, "Least vertex radius.")
      .def_readwrite("min_dcsd", &ResolvedTubeMetrics::min_dcsd,
                     "Least distance of admissible edge pairs, +infinity if there is none.")
      .def_readwrite("half_min_dcsd", &ResolvedTubeMetrics::half_min_dcsd, "Half of min_dcsd.")
      .def_readwrite("thickness_rad", &ResolvedTubeMetrics::thickness_rad, "min(minrad, half_min_dcsd).")
      .def_readwrite("reach_rad", &ResolvedTubeMetrics::reach_rad, "Equal to thickness_rad.")
      .def_readwrite("ropelength_rad", &ResolvedTubeMetrics::ropelength_rad,
                     "length / thickness_rad; 0 when the thickness is not positive and finite.")
      .def_readwrite("ropelength_diam", &ResolvedTubeMetrics::ropelength_diam, "Length over tube diameter.")
      .def_readwrite("edge_length_mean", &ResolvedTubeMetrics::edge_length_mean, "Mean edge length.")
      .def_readwrite("edge_length_rel_std", &ResolvedTubeMetrics::edge_length_rel_std,
                     "Relative standard deviation of the edge lengths (population form).")
      .def_readwrite("edge_length_max_rel_dev", &ResolvedTubeMetrics::edge_length_max_rel_dev,
                     "Largest relative deviation of an edge length from the mean.")
      .def_readwrite("equilateral_ok", &ResolvedTubeMetrics::equilateral_ok,
                     "edge_length_max_rel_dev is within its tolerance.")
      .def_readwrite("lower_bound_ok", &ResolvedTubeMetrics::lower_bound_ok,
                     "The ropelength does not undercut the bound for non-trivial knots.");
  def_list(metrics, "struts", &ResolvedTubeMetrics::struts, "Active edge contacts, list of SegmentPair.");
  def_list(metrics, "kinks", &ResolvedTubeMetrics::kinks, "Active curvature contacts, list of KinkRecord.");
}

void register_resolved_tube_geometry(py::module_& m) {
  const auto analyze = [](const Points& points, std::int32_t skip_neighbors, double contact_tol,
                          double equilateral_tol) {
    return analyze_tube(points, {skip_neighbors, contact_tol, equilateral_tol}, python_poll());
  };
  const auto length = [](const Points& points) { return polygon_length(points); };
  const auto least_radius = [](const Points& points) { return global_minrad(points); };
  const auto gradient = [](const Points& points) { return length_gradient(points); };
  const auto lower_bound = [] { return nontrivial_knot_lower_bound_rad; };
  const auto edges_of = [](const Points& points) { return edge_statistics(edge_lengths(points)); };

  bound_class<ResolvedTubeGeometry>(
      m, "ResolvedTubeGeometry",
      "Closed polygons as the centre lines of tubes of constant radius. Points are N lists of three "
      "floats or an (N, 3)\n"
      "array in any unit of length; the closing edge is implied. A flat gradient has 3 N entries, "
      "coordinate `axis` of\n"
      "vertex v at index 3 v + axis. Vertex numbers are taken modulo N.")
      .def_static("length", length, py::arg("points"), "Polygon length; 0 for fewer than two points.")
      .def_static(
          "edge_length_mean", [=](const Points& points) { return edges_of(points).mean; }, py::arg("points"),
          "Mean edge length; 0 for fewer than two points.")
      .def_static(
          "edge_length_relative_std", [=](const Points& points) { return edges_of(points).relative_std; },
          py::arg("points"), "Standard deviation (divisor N) of the edge lengths over their mean.")
      .def_static(
          "edge_length_max_relative_deviation",
          [=](const Points& points) { return edges_of(points).max_relative_deviation; }, py::arg("points"),
          "Largest |l / mean - 1| of the edge lengths l.")
      .def_static(
          "turning_angle", [](const Vec3& a, const Vec3& b, const Vec3& c) { return corner_of(a, b, c).angle; },
          py::arg("a"), py::arg("b"), py::arg("c"),
          "Exterior angle of the corner a b c in radians: 0 straight on, pi for a reversal; 0 for a collapsed\n"
          "edge.")
      .def_static(
          "minrad_at_vertex", [](const Points& points, std::uint64_t i) { return minrad_at_vertex(points, i); },
          py::arg("points"), py::arg("i"),
          "Radius min(l-, l+) / (2 tan(theta / 2)) of the corner at vertex i (Rawdon's MinRad): 0 at a collapsed "
          "edge,\n"
          "+infinity on a straight run.")
      .def_static(
          "kink_at_vertex", [](const Points& points, std::uint64_t i) { return kink_at_vertex(points, i); },
          py::arg("points"), py::arg("i"),
          "KinkRecord of the corner at vertex i. Raises ValueError below three points. A collapsed edge makes the\n"
          "angle 0 and thereby all radii infinite, unlike minrad_at_vertex.")
      .def_static("global_minrad", least_radius, py::arg("points"),
                  "Least minrad_at_vertex; 0 for fewer than three points.")
      .def_static(
          "segment_segment_distance",
          [](const Vec3& p0, const Vec3& p1, const Vec3& q0, const Vec3& q1) {
            const SegmentDistance found = segment_distance(p0, p1, q0, q1);
            return std::make_tuple(found.distance, found.s, found.t);
          },
          py::arg("p0"), py::arg("p1"), py::arg("q0"), py::arg("q1"),
          "(distance, s, t) of the segments p0 p1 and q0 q1: the closest points are p0 + s (p1 - p0), q0 + t (q1 - "
          "q0).")
      .def_static(
          "dcsd_candidates",
          [](const Points& points, std::int32_t skip_neighbors, double distance_tol) {
            return dcsd_candidates(points, skip_neighbors, distance_tol, python_poll());
          },
          py::arg("points"), py::arg("skip_neighbors") = 2, py::arg("distance_tol") = 0.0,
          "List of SegmentPair, by i, then j: the edge pairs more than skip_neighbors apart around the loop whose\n"
          "distance is within 1e-12 of the least distance m, or within (1 + tol) m + tol for a positive tolerance.")
      .def_static("analyze", analyze, py::arg("points"), py::arg("skip_neighbors") = 2, py::arg("contact_tol") = 0.001,
                  py::arg("equilateral_tol") = 0.001, analyze_doc)
      .def_static("length_gradient_flat", gradient, py::arg("points"), "Flat gradient of the length.")
      .def_static(
          "strut_gradient_flat",
          [](const Points& points, const SegmentPair& pair) {
            return strut_gradient(points, pair).flat(points.size());
          },
          py::arg("points"), py::arg("pair"), "Flat gradient of half the distance of the pair at its fixed s and t.")
      .def_static(
          "kink_minrad_plus_gradient_flat",
          [](const Points& points, const KinkRecord& kink) {
            return kink_minrad_plus_gradient(points, kink).flat(points.size());
          },
          py::arg("points"), py::arg("kink"), "Flat gradient of minrad_plus, at the record's turning angle.")
      .def_static(
          "kink_minrad_minus_gradient_flat",
          [](const Points& points, const KinkRecord& kink) {
            return kink_minrad_minus_gradient(points, kink).flat(points.size());
          },
          py::arg("points"), py::arg("kink"), "Flat gradient of minrad_minus, at the record's turning angle.")
      .def_static(
          "kink_minrad_gradient_flat",
          [](const Points& points, const KinkRecord& kink, bool use_analytic, double finite_difference_step) {
            return kink_minrad_gradient(points, kink, {use_analytic, finite_difference_step}).flat(points.size());
          },
          py::arg("points"), py::arg("kink"), py::arg("use_analytic") = true, py::arg("finite_difference_step") = 1e-6,
          "Flat gradient of minrad: the active side's analytic form, ties to the minus side; central differences of\n"
          "step max(|x|, 1) finite_difference_step where that vanishes or is not wanted.")
      .def_static("nontrivial_knot_lower_bound_rad", lower_bound,
                  "(4 + 2 sqrt(2)) pi, a lower bound of length over radius for any non-trivial knot.")
      .def_static(
          "radius_to_diameter_ropelength", [](double ropelength_rad) { return 0.5 * ropelength_rad; },
          py::arg("ropelength_rad"), "Half of the argument.")
      .def_static(
          "diameter_to_radius_ropelength", [](double ropelength_diam) { return 2.0 * ropelength_diam; },
          py::arg("ropelength_diam"), "Twice the argument.");

  m.def("resolved_tube_analyze", analyze, py::arg("points"), py::arg("skip_neighbors") = 2,
        py::arg("contact_tol") = 0.001, py::arg("equilateral_tol") = 0.001, analyze_doc);
  m.def("resolved_tube_length", length, py::arg("points"), "Polygon length; 0 for fewer than two points.");
  m.def("resolved_tube_minrad", least_radius, py::arg("points"), "Least vertex radius; 0 for fewer than three points.");
  m.def("resolved_tube_lower_bound_rad", lower_bound,
        "(4 + 2 sqrt(2)) pi, a lower bound of length over radius for any non-trivial knot.");
  m.def("resolved_tube_length_gradient_flat", gradient, py::arg("points"), "Flat gradient of the length.");
}

}  // namespace vkm
