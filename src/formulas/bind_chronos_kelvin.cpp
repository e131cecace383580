#include "formulas/chronos_kelvin.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_chronos_kelvin(py::module_& m) {
  using K = ChronosKelvinTransport;
  bound_class<K>(m, "ChronosKelvinTransport",
                 "Transport of the swirl clock along the Kelvin invariant R^2 omega of an inviscid fluid.\n\n"
                 "Static functions; R and r_c in m, rates in 1/s, c in m/s. ValueError unless R, r_c and c are\n"
                 "positive. NaN is not rejected.")
      .def_static("kelvin_invariant", &K::kelvin_invariant, py::arg("R"), py::arg("omega"), "R^2 omega, m^2/s.")
      .def_static("omega_from_invariant", &K::omega_from_invariant, py::arg("invariant"), py::arg("R"),
                  "invariant / R^2, rad/s.")
      .def_static("omega_from_swirl_clock", &K::omega_from_swirl_clock, py::arg("S_t"), py::arg("r_c"),
                  py::arg("c") = canonical::c,
                  "sqrt(1 - S_t^2) c / r_c, rad/s: the rate at which a core's clock runs at S_t. ValueError unless\n"
                  "0 <= S_t <= 1.")
      .def_static("vorticity_from_swirl_clock", &K::vorticity_from_swirl_clock, py::arg("S_t"), py::arg("r_c"),
                  py::arg("c") = canonical::c, "Twice omega_from_swirl_clock, 1/s.")
      .def_static("swirl_clock_from_omega", &K::swirl_clock_from_omega, py::arg("omega"), py::arg("r_c"),
                  py::arg("c") = canonical::c,
                  "sqrt(max(1 - (omega r_c)^2 / (4 c^2), 0)), where omega is a vorticity in 1/s: the inverse of\n"
                  "vorticity_from_swirl_clock. 0 beyond the light limit.")
      .def_static("chronos_kelvin_invariant", &K::chronos_kelvin_invariant, py::arg("R"), py::arg("S_t"),
                  py::arg("r_c"), py::arg("c") = canonical::c, "vorticity_from_swirl_clock(S_t, r_c, c) R^2, m^2/s.")
      .def_static("clock_radius_derivative", &K::clock_radius_derivative, py::arg("S_t"), py::arg("R"),
                  py::arg("dR_dt"),
                  "dS/dt = 2 (1 - S_t^2) / S_t (dR/dt) / R, 1/s, at a constant invariant. ValueError unless S_t and R\n"
                  "are positive.")
      .def_static("radius_from_clock_invariant", &K::radius_from_clock_invariant, py::arg("invariant"), py::arg("S_t"),
                  py::arg("r_c"), py::arg("c") = canonical::c,
                  "sqrt(invariant / vorticity_from_swirl_clock(S_t, r_c, c)), m; NaN for a negative invariant.\n"
                  "ValueError at S_t = 1, where the vorticity is zero.");
}

}  // namespace vkm
