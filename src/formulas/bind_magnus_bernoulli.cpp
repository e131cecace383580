#include "formulas/magnus_bernoulli.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_magnus_bernoulli(py::module_& m) {
  using I = MagnusBernoulliIntegrator;
  bound_class<I>(m, "MagnusBernoulliIntegrator", "Forces of a swirling medium on a vortex segment; SI units.")
      .def(py::init<double, double, double, double>(), py::arg("rho_f"), py::arg("v_swirl"), py::arg("r_c"),
           py::arg("Gamma"),
           "From the density (kg/m^3), swirl speed (m/s), core radius (m) and circulation (m^2/s). Nothing is checked.")
      .def("compute_magnus_force", &I::compute_magnus_force, py::arg("tangent"), py::arg("normal"),
           py::arg("curvature_radius"), py::arg("v_knot"), py::arg("v_bg"),
           "rho_f Gamma (tangent x (v_knot - v_bg) + normal / curvature_radius): the Magnus force a length, and a\n"
           "term of curvature that carries no velocity. A radius of at most 1e-30 m drops that term.")
      .def("compute_swirl_coulomb_accel", &I::compute_swirl_coulomb_accel, py::arg("eval_pos"), py::arg("source_pos"),
           "-(v_swirl^2 / r) exp(-2 r / r_c) along R / r with R = eval_pos - source_pos, m/s^2: a short-range pull\n"
           "toward the source. Zero for r < 1e-30 and where -2 r / r_c < -700.");
}

}  // namespace vkm
