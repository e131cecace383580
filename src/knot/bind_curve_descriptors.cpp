#include "knot/curve_descriptors.hpp"
#include "knot/knot_dynamics.hpp"
#include "knot/knot_registrars.hpp"
#include "knot/loaded_knot.hpp"
#include "knot/self_distance.hpp"

namespace vkm {

namespace {

/// The coefficient arrays of one coordinate as vectors; `pair` names them in the error.
void take_pair(const DoubleArray& a, const DoubleArray& b, const char* pair, std::vector<double>& a_out,
               std::vector<double>& b_out) {
  const std::string text = std::string("fourier_knot_eval: ") + pair + " must be 1D and same length";
  a_out = values_from(a, text.c_str());
  b_out = values_from(b, text.c_str());
  if (a_out.size() != b_out.size()) throw std::invalid_argument(text);
}

py::tuple fourier_knot_eval(const DoubleArray& a_x, const DoubleArray& b_x, const DoubleArray& a_y,
                            const DoubleArray& b_y, const DoubleArray& a_z, const DoubleArray& b_z,
                            const DoubleArray& s) {
  FourierBlock block;
  take_pair(a_x, b_x, "a_x/b_x", block.a_x, block.b_x);
  take_pair(a_y, b_y, "a_y/b_y", block.a_y, block.b_y);
  take_pair(a_z, b_z, "a_z/b_z", block.a_z, block.b_z);
  const std::vector<double> parameters = values_from(s, "fourier_knot_eval: s must be 1D");
  const std::vector<Vec3> points = evaluate_fourier_block(block, parameters, python_poll());
  std::array<std::vector<double>, 3> coordinates;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    coordinates[axis].reserve(points.size());
    for (const Vec3& point : points) coordinates[axis].push_back(point[axis]);
  }
  return py::make_tuple(array_from(coordinates[0]), array_from(coordinates[1]), array_from(coordinates[2]));
}

void register_records(py::module_& m) {
  auto descriptors = bound_class<GeometricDescriptors>(
      m, "GeometricDescriptors", "Geometry of a Fourier curve: the result of describe_fourier_block.");
  descriptors.def_readonly("length", &GeometricDescriptors::length, "Curve length, in the units of the coefficients.")
      .def_readonly("bending_energy", &GeometricDescriptors::bending_energy,
                    "Integral of curvature squared over arc length, 1 / length.")
      .def_readonly("min_self_distance", &GeometricDescriptors::min_self_distance,
                    "Least distance between samples that are not neighbours.")
      .def_readonly("writhe", &GeometricDescriptors::writhe, "compute_writhe of the samples, dimensionless.");
  def_list_readonly(descriptors, "mode_energy", &GeometricDescriptors::mode_energy, "mode_energies of the block.");

  using KnotDynamics::FourierResult;
  auto series =
      bound_class<FourierResult>(m, "FourierResult", "Points and tangents: the result of evaluate_fourier_series.");
  def_list_readonly(series, "positions", &FourierResult::positions, "Points, one a parameter.");
  def_list_readonly(series, "tangents", &FourierResult::tangents, "Derivatives by the parameter, not normalised.");

  auto loaded =
      bound_class<LoadedKnot>(m, "LoadedKnot", "A sampled, centred knot: an entry of the result of load_all_knots.");
  loaded.def_readonly("name", &LoadedKnot::name, "Name derived from the path.");
  def_list_readonly(loaded, "points", &LoadedKnot::points, "Centred samples; the first point is repeated as the last.");
  def_list_readonly(loaded, "curvature", &LoadedKnot::curvature, "compute_curvature of the samples.");
  loaded
      .def(
          "get_points_array", [](const LoadedKnot& self) { return array_from(self.points); },
          "Get points as NumPy array (N,3)")
      .def(
          "get_curvature_array", [](const LoadedKnot& self) { return array_from(self.curvature); },
          "Get curvature as NumPy array (N,)");
}

void register_exact_descriptors(py::module_& m) {
  m.def(
      "curvature_exact",
      [](FourierBlock block, const std::vector<double>& s, double eps) {
        return curvature_exact(block, s, eps, python_poll());
      },
      py::arg("block"), py::arg("s"), py::arg("eps") = 1e-12,
      R"(Compute exact curvature from Fourier coefficients at sample parameters.

|r' x r''| / max(eps, |r'|)^3 at each parameter s (radians), in 1 / length. A stopped point gives a finite value.)");
  m.def(
      "length_exact",
      [](FourierBlock block, std::int64_t nsamples) { return length_exact(block, nsamples, python_poll()); },
      py::arg("block"), py::arg("nsamples") = 4096,
      R"(Compute exact length of Fourier curve by sampling.

Rectangle rule for the integral of |r'| over the period, spectrally accurate. At least 16 samples are taken.)");
  m.def(
      "bending_energy_exact",
      [](FourierBlock block, std::int64_t nsamples, double eps) {
        return bending_energy_exact(block, nsamples, eps, python_poll());
      },
      py::arg("block"), py::arg("nsamples") = 4096, py::arg("eps") = 1e-12,
      R"(Compute bending energy integral of Fourier curve.

Integral of curvature squared over arc length, in 1 / length, by the rectangle rule; the speed is clamped from below at
eps. At least 32 samples are taken.)");
  m.def("mode_energies", &mode_energies, py::arg("block"),
        R"(Compute per-mode energy from Fourier coefficients.

Entry i is the sum of the squared coefficients of row i, in length squared, without a weight by harmonic. Entries
missing in a shorter vector count as 0.)");
  m.def(
      "min_self_distance_sampled",
      [](const std::vector<Vec3>& points, std::int64_t exclude_window) {
        return min_self_distance_sampled(points, exclude_window, python_poll());
      },
      py::arg("points"), py::arg("exclude_window") = 4,
      R"(Compute minimum self-distance of a closed polygonal curve.

points: list of N points. The least distance between vertices whose gap along the closed curve, min(j - i, N - j + i),
is greater than exclude_window. 0 for fewer than 4 points, or when no pair counts. A search over a tree of boxes, with
the bits of the plain loop over all pairs.)");
  m.def(
      "min_self_distance_exactish",
      [](FourierBlock block, std::int64_t nsamples, std::int64_t exclude_window) {
        return min_self_distance_exactish(block, nsamples, exclude_window, python_poll());
      },
      py::arg("block"), py::arg("nsamples") = 2048, py::arg("exclude_window") = 4,
      R"(Estimate minimum self-distance of Fourier curve via sampling.

min_self_distance_sampled of uniform samples of the period, at least 64. Raises ValueError when a coefficient vector is
shorter than a_x, MemoryError for absurd sample counts.)");
  m.def(
      "describe_fourier_block",
      [](FourierBlock block, std::int64_t nsamples, std::int64_t exclude_window) {
        return describe_fourier_block(block, nsamples, exclude_window, python_poll());
      },
      py::arg("block"), py::arg("nsamples") = 2048, py::arg("exclude_window") = 4,
      R"(Compute geometric descriptors (length, bending energy, self-distance, writhe, mode energies) for a Fourier block.

Self-distance and writhe are those of n = max(64, nsamples) uniform samples; length and bending energy are integrated on
a grid of 4 n. Raises ValueError when a coefficient vector is shorter than a_x, MemoryError for absurd sample counts.)");
}

void register_curve_evaluation(py::module_& m) {
  m.def("fourier_knot_eval", &fourier_knot_eval, py::arg("a_x"), py::arg("b_x"), py::arg("a_y"), py::arg("b_y"),
        py::arg("a_z"), py::arg("b_z"), py::arg("s"),
        R"(NumPy-friendly Fourier evaluation returning (x,y,z)

Coefficient arrays (n,), row 0 being harmonic 1, and parameters s (M,) in radians; three arrays (M,). Raises ValueError
when a pair is not one-dimensional of one length, when s is not one-dimensional, or when a pair is shorter than a_x.)");
  m.def(
      "evaluate_fourier_series",
      [](const std::vector<std::array<double, 6>>& rows, const std::vector<double>& t) {
        return KnotDynamics::evaluate_fourier_series(rows, t, python_poll());
      },
      R"(Evaluate a Fourier series for positions and tangents

Rows a_x b_x a_y b_y a_z b_z of harmonic j = 0, 1, ...: row 0 is a true constant term here, and row 1 is harmonic 1. The
second list holds the parameters in radians. Tangents are derivatives by the parameter, not normalised.)");
  m.def(
      "writhe_gauss_curve",
      [](const std::vector<Vec3>& positions, const std::vector<Vec3>& tangents) {
        return KnotDynamics::writhe_gauss_curve(positions, tangents, python_poll());
      },
      R"(Compute writhe via Gauss integral

N positions at uniform parameters of a closed curve and at least N tangents, the derivatives by the parameter (period
2 pi). Pairs nearer than 1e-6 are left out. 0 for no positions. Raises ValueError when there are fewer tangents.)");
  m.def(
      "compute_curvature",
      [](const DoubleArray& points, double eps) {
        return array_from(compute_curvature(points_from(points, points_shape_text), eps));
      },
      py::arg("points"), py::arg("eps") = 1e-8,
      R"(Compute discrete curvature from points.

points: array (N, 3) of a closed curve, the closing point not repeated; array (N,) in 1 / length by central differences,
|d1 x d2| / (|d1|^3 + eps). Zeros for N below 3. Raises ValueError for another shape.)");
  m.def(
      "load_all_knots",
      [](const std::vector<std::string>& paths, std::int64_t nsamples) {
        return load_all_knots(paths, nsamples, python_poll());
      },
      py::arg("paths"), py::arg("nsamples") = 1000,
      R"(Load all knots from a list of .fseries file paths.

The largest block of each file at nsamples parameters from 0 to 2 pi, both ends included, centred on the mean of the
samples. A file that cannot be read or holds no block is skipped. Raises MemoryError for absurd sample counts.)");
}

}  // namespace

void register_curve_descriptors(py::module_& m) {
  register_records(m);
  register_exact_descriptors(m);
  register_curve_evaluation(m);
}

}  // namespace vkm
