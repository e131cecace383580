#include "formulas/clock_field.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_clock_field(py::module_& m) {
  using R = ClockSectorConstraints;
  bound_class<R>(m, "ClockSectorConstraints", "What the couplings c1 and c3 say about tensor waves.")
      .def(py::init<>())
      .def_readwrite("c13", &R::c13, "c1 + c3.")
      .def_readwrite("tensor_speed", &R::tensor_speed, "Tensor speed in units of the speed of light.")
      .def_readwrite("tensor_speed_fractional_offset", &R::tensor_speed_fractional_offset,
                     "Tensor speed over the speed of light, less one.")
      .def_readwrite("gw170817_ok", &R::gw170817_ok, "Whether the offset lies inside the tolerance.");

  using F = ClockFieldEFT;
  bound_class<F>(m, "ClockFieldEFT",
                 "Effective field theory of a unit timelike clock field (Einstein-aether theory).\n\n"
                 "Static functions. NaN is not rejected.")
      .def_static("c13", &F::c13, py::arg("c1"), py::arg("c3"), "c1 + c3.")
      .def_static("tensor_speed", &F::tensor_speed, py::arg("c13"), py::arg("c") = canonical::c,
                  "c / sqrt(1 - c13), in the unit of c (m/s). ValueError unless c and 1 - c13 are positive.")
      .def_static("tensor_speed_fractional_offset", &F::tensor_speed_fractional_offset, py::arg("c13"),
                  "1 / sqrt(1 - c13) - 1. ValueError unless 1 - c13 is positive.")
      .def_static("satisfies_gw170817", &F::satisfies_gw170817, py::arg("c13"), py::arg("tolerance") = 1e-15,
                  "Whether |tensor_speed_fractional_offset(c13)| <= tolerance (bound of the merger GW170817).\n"
                  "ValueError if tolerance is negative or 1 - c13 not positive.")
      .def_static("constraints", &F::constraints, py::arg("c1"), py::arg("c3"), py::arg("tolerance") = 1e-15,
                  "ClockSectorConstraints of the couplings; its tensor_speed is dimensionless. ValueError unless\n"
                  "1 - c13 is positive and tolerance not negative.")
      .def_static("poisson_source", &F::poisson_source, py::arg("rho_matter"), py::arg("G_eff"),
                  "4 pi G_eff rho_matter, 1/s^2 for kg/m^3 and m^3/(kg s^2). ValueError if G_eff is negative.")
      .def_static("effective_gravity_from_potential_gradient", &F::effective_gravity_from_potential_gradient,
                  py::arg("grad_chi"), "-grad_chi, one component.")
      .def_static("unit_timelike_from_gradient_minkowski", &F::unit_timelike_from_gradient_minkowski,
                  py::arg("grad_chi"),
                  "grad_chi / sqrt(g0^2 - g1^2 - g2^2 - g3^2), a list of four. ValueError unless the gradient is\n"
                  "timelike.");
}

}  // namespace vkm
