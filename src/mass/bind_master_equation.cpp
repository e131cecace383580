#include "mass/master_equation.hpp"
#include "module/binders.hpp"

namespace vkm {

namespace {

void bind_records(py::module_& m) {
  using T = VKMTopologyKernelInput;
  bound_class<T>(m, "VKMTopologyKernelInput", "Weights and measures of the topological kernel; all dimensionless.")
      .def(py::init<>())
      .def_readwrite("alpha_C", &T::alpha_C, "Weight of the crossing term.")
      .def_readwrite("beta_L", &T::beta_L, "Weight of the ropelength term.")
      .def_readwrite("gamma_H", &T::gamma_H, "Weight of the helicity term.")
      .def_readwrite("crossing", &T::crossing, "Crossing measure.")
      .def_readwrite("ropelength", &T::ropelength, "Ropelength measure.")
      .def_readwrite("helicity", &T::helicity, "Helicity measure.")
      .def_readwrite("golden_layer", &T::golden_layer, "Layer k of the golden suppression phi^(-2k).")
      .def_readwrite("phi", &T::phi, "Base of the suppression.");

  using I = VKMMasterEquationInput;
  bound_class<I>(m, "VKMMasterEquationInput", "Input of VKMMasterEquation.evaluate, SI units.")
      .def(py::init<>())
      .def_readwrite("rho_f", &I::rho_f, "Fluid density, kg/m^3.")
      .def_readwrite("v_norm", &I::v_norm, "Swirl speed, m/s.")
      .def_readwrite("r_c", &I::r_c, "Core radius, m.")
      .def_readwrite("lambda_c", &I::lambda_c, "Compton wavelength, m; unless greater than 0 the electron's is taken.")
      .def_readwrite("gate", &I::gate, "Gate exponent n.")
      .def_readwrite("topology", &I::topology, "Input of the topological kernel.")
      .def_readwrite("c", &I::c, "Speed of light, m/s.")
      .def_readwrite("explicit_swirl_clock", &I::explicit_swirl_clock, "A positive value replaces the computed clock.");

  using O = VKMMasterEquationOutput;
  bound_class<O>(m, "VKMMasterEquationOutput", "Every factor of the master equation, SI units.")
      .def(py::init<>())
      .def_readwrite("rho_E", &O::rho_E, "Swirl energy density, J/m^3.")
      .def_readwrite("rho_m", &O::rho_m, "Mass-equivalent density, kg/m^3.")
      .def_readwrite("swirl_clock", &O::swirl_clock, "The clock factor used.")
      .def_readwrite("clock_impedance", &O::clock_impedance, "1 / swirl_clock^2.")
      .def_readwrite("geometric_gate", &O::geometric_gate, "The gate factor.")
      .def_readwrite("topological_kernel", &O::topological_kernel, "The topological kernel.")
      .def_readwrite("bare_mass_scale_kg", &O::bare_mass_scale_kg, "rho_m r_c^3, kg.")
      .def_readwrite("mass_kg", &O::mass_kg, "The mass, kg.");
}

}  // namespace

void bind_master_equation(py::module_& m) {
  using E = VKMMasterEquation;
  bind_records(m);
  bound_class<E>(m, "VKMMasterEquation",
                 "The master mass equation M = (1/2 rho_f v^2 / c^2) r_c^3 (lambda_c / (pi r_c))^n phi^(-2k) "
                 "(alpha_C C + beta_L L + gamma_H H) / S^2.\n\nStatic functions in SI units. NaN is not rejected.")
      .def_static("topological_kernel", &E::topological_kernel, py::arg("input"),
                  "phi^(-2k) (alpha_C crossing + beta_L ropelength + gamma_H helicity) with k the golden layer. "
                  "ValueError unless phi is positive.")
      .def_static("geometric_gate_factor", &E::geometric_gate_factor, py::arg("lambda_c"), py::arg("r_c"),
                  py::arg("gate"),
                  "(lambda_c / (pi r_c))^gate. ValueError unless lambda_c and r_c are positive and gate is not "
                  "negative.")
      .def_static("clock_impedance", &E::clock_impedance, py::arg("swirl_clock"),
                  "1 / swirl_clock^2. ValueError unless the clock is positive.")
      .def_static("weak_swirl_clock_impedance", &E::weak_swirl_clock_impedance, py::arg("v_norm"), py::arg("c"),
                  "1 + v_norm^2 / c^2, the first order of the clock impedance. ValueError unless c is positive.")
      .def_static("geometric_baseline_mass", &E::geometric_baseline_mass, py::arg("rho_m"), py::arg("r_c"),
                  py::arg("lambda_c"), py::arg("L_tot"),
                  "Mass 2 pi^3 rho_m r_c^5 L_tot / lambda_c^2 of a tube of dimensionless length L_tot, kg. ValueError "
                  "if rho_m is negative, or r_c or lambda_c not positive.")
      .def_static("geometric_baseline_mass_from_rho_m", &E::geometric_baseline_mass_from_rho_m, py::arg("rho_m"),
                  py::arg("r_c"), py::arg("lambda_c"), py::arg("L_tot"), "Second name of geometric_baseline_mass.")
      .def_static("geometric_horn_baseline_mass", &E::geometric_horn_baseline_mass, py::arg("rho_horn"), py::arg("r_c"),
                  py::arg("lambda_c"), py::arg("L_tot"),
                  "The expression of geometric_baseline_mass on the horn envelope density, kg. ValueError if rho_horn "
                  "is negative, or r_c or lambda_c not positive.")
      .def_static("evaluate", &E::evaluate, py::arg("input"),
                  "The mass and every factor that leads to it. ValueError, in this order, if rho_f is negative or r_c "
                  "or c not positive, the clock is not positive, gate is negative, or phi is not positive.");
}

}  // namespace vkm
