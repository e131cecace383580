#include "filament/filament_registrars.hpp"
#include "filament/grid/periodic_box.hpp"
#include "filament/sums/biot_savart.hpp"
#include "module/binders.hpp"

namespace vkm {

namespace {

/// Namespace of the static kernels in Python.
struct BiotSavart {};

constexpr const char* bad_shape = "Expected array with shape (N,3)";

}  // namespace

void bind_biot_savart(py::module_& m) {
  using Points = std::vector<Vec3>;

  bound_class<BiotSavart>(m, "BiotSavart", "Biot-Savart sums over closed polylines and the helicity pipeline on grids.")
      .def_static(
          "compute_velocity",
          [](const Points& curve, const Points& grid_points, double circulation) {
            return closed_curve_velocity(curve, grid_points, circulation, python_poll());
          },
          py::arg("curve"), py::arg("grid_points"), py::arg("circulation") = 1.0,
          R"(Velocity of a closed vortex polyline at grid points.

Backward compatible with the historical 2-argument call; circulation defaults to 1.0.

u(x) = circulation / (4 pi) sum dl x R / (|R|^3 + 1e-12), R from the midpoint of each of the N segments (Biot-Savart
law). `curve` is a list of N points in m, closed by its last segment; `grid_points` a list of M points; `circulation` in
m^2/s. Returns a list of M velocities in m/s; zeros for fewer than two curve points.)")
      .def_static("compute_vorticity", &compute_vorticity,
                  R"(compute_vorticity(velocity, shape, spacing): central differences on a periodic grid.

The result is minus the textbook curl; the helicity invariants rest on this sign. `velocity` holds nx*ny*nz vectors,
cell (i, j, k) at (i*ny + j)*nz + k; `shape` is (nx, ny, nz). ValueError if the list is too short.)")
      .def_static("extract_interior", &extract_interior,
                  R"(extract_interior(field, shape, margin): cells at least `margin` cells away from every face.

Empty if the margin is half an extent or more. ValueError for a negative margin or a list that is too short.)")
      .def_static("compute_invariants", &compute_invariants,
                  R"(compute_invariants(velocity, vorticity, r_sq): (H_charge, H_mass, a_mu).

H_charge = sum v.w, H_mass = sum |w|^2 r_sq, a_mu = (H_charge / H_mass - 1) / 2. ValueError if the vorticity is shorter
than the velocity, or r_sq shorter than the vorticity.)");

  m.def("biot_savart_velocity", &biot_savart_velocity, py::arg("r"), py::arg("filament_points"),
        py::arg("tangent_vectors"), py::arg("circulation") = 1.0,
        R"(Velocity at a point, induced by the points of a filament.

Sums circulation / (4 pi) t x R / |R|^3 over the points; the tangent vectors carry the element length. Points at a
distance of at most 1e-6 are skipped. ValueError if there are fewer tangents than points.)");

  m.def(
      "biot_savart_velocity_grid",
      [](const DoubleArray& polyline, const DoubleArray& grid, double circulation) {
        const Points curve = points_from(polyline, bad_shape);
        const Lanes points = lanes_from(grid, bad_shape);
        return array_from(closed_curve_velocity(curve, points, circulation, python_poll()));
      },
      py::arg("polyline"), py::arg("grid"), py::arg("circulation") = 1.0,
      R"(Velocity of a closed vortex polyline at grid points, on arrays.

Backward compatible with the historical 2-argument call; circulation defaults to 1.0.

`polyline` has shape (N, 3), `grid` (M, 3), both in m; returns a new array (M, 3) in m/s. The formula is that of
BiotSavart.compute_velocity. ValueError for other shapes.)");

  register_filament_energies(m);
}

}  // namespace vkm
