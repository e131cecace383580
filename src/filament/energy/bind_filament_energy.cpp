#include "filament/energy/cutoff_energy.hpp"
#include "filament/energy/filament_energy.hpp"
#include "filament/filament_registrars.hpp"

namespace vkm {

namespace {

// Bad shapes are run-time errors here, not invalid arguments as elsewhere at the border.

void require_rank(const DoubleArray& array, py::ssize_t rank) {
  if (array.ndim() == rank) return;
  throw std::runtime_error("array has incorrect number of dimensions: " + std::to_string(array.ndim()) + "; expected " +
                           std::to_string(rank));
}

std::vector<Vec3> curve_from(const DoubleArray& points, const std::string& function) {
  require_rank(points, 2);
  if (points.shape(1) != 3) throw std::runtime_error(function + ": points must have shape (N, 3)");
  if (points.shape(0) < 0) throw std::runtime_error(function + ": invalid point count");
  return points_from(points, "");
}

std::vector<double> cutoff_scan(const DoubleArray& points, const DoubleArray& tangents, const DoubleArray& ds_arr,
                                std::span<const double> a_values, const std::string& function) {
  require_rank(points, 2);
  require_rank(tangents, 2);
  require_rank(ds_arr, 1);
  if (points.shape(0) != tangents.shape(0) || points.shape(0) != ds_arr.shape(0)) {
    throw std::runtime_error(function + ": inconsistent N dimensions");
  }
  if (points.shape(1) != 3 || tangents.shape(1) != 3) {
    throw std::runtime_error(function + ": points/tangents must have shape (N, 3)");
  }
  return cutoff_energies(points_from(points, ""), points_from(tangents, ""), values_from(ds_arr, ""), a_values,
                         python_poll());
}

}  // namespace

void register_filament_energies(py::module_& m) {
  m.def(
      "calculate_neumann_self_energy",
      [](const DoubleArray& points, double rc) {
        return calculate_neumann_self_energy(curve_from(points, "calculate_neumann_self_energy"), rc, python_poll());
      },
      py::arg("points"), py::arg("rc"),
      R"(Neumann's double sum of a closed polygon with a softened kernel, in m.

Sum of 2 dl[i] . dl[j] / sqrt(|p[j] - p[i]|^2 + rc^2) over all pairs i < j of edges dl[i] = p[i+1] - p[i], neighbours
included, the diagonal not; no prefactor. `points` has shape (N, 3) in m, the closing point not repeated; `rc` in m. 0
for N below 2. RuntimeError for another shape.)");
  m.def(
      "calculate_core_repulsion",
      [](const DoubleArray& points, double rc) {
        return calculate_core_repulsion(curve_from(points, "calculate_core_repulsion"), rc, python_poll());
      },
      py::arg("points"), py::arg("rc"),
      R"(A wall of the twelfth power between points of a closed polygon that are not neighbours.

Sum of (2 rc / d)^12 over the pairs with 2 rc / d > 0.1, d the distance or 1e-30 m if that is more. `points` has shape
(N, 3) in m, `rc` in m. 0 for N below 3. RuntimeError for another shape.)");
  m.def(
      "calculate_length",
      [](const DoubleArray& points) { return calculate_length(curve_from(points, "calculate_length")); },
      py::arg("points"),
      R"(Length of a closed polygon, the closing edge included.

`points` has shape (N, 3), the closing point not repeated. 0 for N below 2. RuntimeError for another shape.)");
  m.def(
      "calculate_writhe",
      [](const DoubleArray& points, double rc) {
        return calculate_writhe(curve_from(points, "calculate_writhe"), rc, python_poll());
      },
      py::arg("points"), py::arg("rc"),
      R"(Writhe of a closed polygon by the double sum over its edges, softened by rc.

1 / (4 pi) times the sum of 2 (dl[i] x dl[j]) . R / (|R|^2 + rc^2)^(3/2), R = p[j] - p[i], over all pairs i < j
(Calugareanu, Fuller); with this R the sign is the opposite of compute_writhe's. `rc` is no cutoff: with rc = 0
coincident points divide by zero. `points` has shape (N, 3) in m. 0 for N below 2. RuntimeError for another shape.)");
  m.def(
      "calculate_curvature_penalty",
      [](const DoubleArray& points) {
        return calculate_curvature_penalty(curve_from(points, "calculate_curvature_penalty"));
      },
      py::arg("points"),
      R"(Integral of the squared Menger curvature of a closed polygon over arc length, in 1 / m.

The curvature of three points is 2 |a x b| / (|a| |b| |c|), and 0 if one of the lengths is 1e-20 or less. `points` has
shape (N, 3) in m. 0 for N below 2. RuntimeError for another shape.)");
  m.def(
      "calculate_bs_cutoff_energy_scan",
      [](const DoubleArray& points, const DoubleArray& tangents, const DoubleArray& ds_arr,
         const DoubleArray& a_values) {
        require_rank(a_values, 1);
        return array_from(
            cutoff_scan(points, tangents, ds_arr, values_from(a_values, ""), "calculate_bs_cutoff_energy_scan"));
      },
      py::arg("points"), py::arg("tangents"), py::arg("ds_arr"), py::arg("a_values"),
      R"(Biot-Savart energies of a curve for a list of cutoffs, in one pass over the pairs.

E[m] is 1 / (8 pi) times the sum of (t[i] . t[j]) / d ds[i] ds[j] over the ordered pairs at a distance d > a_values[m];
pairs at distance 0 never count. `points` and `tangents` have shape (N, 3), `ds_arr` (N,); `a_values` (M,) must ascend
and is not checked. Returns a new array (M,). RuntimeError for other shapes.)");
  m.def(
      "calculate_bs_cutoff_energy",
      [](const DoubleArray& points, const DoubleArray& tangents, const DoubleArray& ds_arr, double a_cutoff) {
        return cutoff_scan(points, tangents, ds_arr, {&a_cutoff, 1}, "calculate_bs_cutoff_energy")[0];
      },
      py::arg("points"), py::arg("tangents"), py::arg("ds_arr"), py::arg("a_cutoff"),
      R"(Biot-Savart energy of the pairs of curve elements farther apart than a cutoff.

The single entry of calculate_bs_cutoff_energy_scan for [a_cutoff]; exactly 0 if no pair is that far apart. RuntimeError
for other shapes.)");
}

}  // namespace vkm
