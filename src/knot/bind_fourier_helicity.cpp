#include "filament/grid/periodic_box.hpp"
#include "filament/sums/biot_savart.hpp"
#include "knot/fourier_helicity.hpp"
#include "knot/knot_registrars.hpp"

namespace vkm {

void register_fourier_helicity(py::module_& m) {
  using Points = std::vector<Vec3>;

  m.def(
      "compute_biot_savart_velocity_grid",
      [](const Points& curve, const Points& grid_points) {
        return closed_curve_velocity(curve, grid_points, 1.0, python_poll());
      },
      py::arg("curve"), py::arg("grid_points"),
      "Velocity of a closed vortex polyline of circulation 1 at grid points, as BiotSavart.compute_velocity.");

  m.def("compute_vorticity_grid", &compute_vorticity, py::arg("velocity"), py::arg("shape"), py::arg("spacing"),
        "Minus the textbook curl on a periodic grid, as BiotSavart.compute_vorticity.");

  m.def("extract_interior_field", &extract_interior, py::arg("field"), py::arg("shape"), py::arg("margin"),
        "Cells at least `margin` cells away from every face, as BiotSavart.extract_interior.");

  m.def("compute_helicity_invariants", &compute_invariants, py::arg("v_sub"), py::arg("w_sub"), py::arg("r_sq"),
        "The tuple (H_charge, H_mass, a_mu), as BiotSavart.compute_invariants.");

  m.def(
      "compute_helicity_from_fourier_block",
      [](FourierBlock block, int grid_size, double spacing, int interior_margin, int nsamples) {
        return compute_helicity_from_fourier_block(block, grid_size, spacing, interior_margin, nsamples, python_poll());
      },
      py::arg("block"), py::arg("grid_size") = 32, py::arg("spacing") = 0.1, py::arg("interior_margin") = 8,
      py::arg("nsamples") = 1000,
      R"(Helicity invariants (H_charge, H_mass, a_mu) of the flow induced by a Fourier curve.

The curve is centred, sampled at `nsamples` parameters (both ends of the period) and given circulation 1; its velocity is
taken on a cube of grid_size^3 points `spacing` apart, and the invariants on the interior that is left when
`interior_margin` cells are cut from every face. An empty interior gives (0, 0, nan).)");
}

}  // namespace vkm
