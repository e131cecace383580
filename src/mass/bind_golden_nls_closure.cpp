#include "mass/golden_nls_closure.hpp"
#include "mass/mass_registrars.hpp"

namespace vkm {

void register_golden_nls_closure(py::module_& m) {
  py::enum_<DensityRegime>(m, "DensityRegime", "Which density the fluid of a loop has.")
      .value("EFFECTIVE_FLUID", DensityRegime::EFFECTIVE_FLUID, "7e-7 kg/m^3.")
      .value("CORE_DOMINATED", DensityRegime::CORE_DOMINATED, "3.893435826691869e18 kg/m^3.");

  using G = GoldenNLSClosure;
  constexpr double electron = G::default_target_mass;
  bound_class<G>(m, "GoldenNLSClosure",
                 "Energy of a thin vortex loop closed by the golden ratio, and the loop that has a given mass.\n\n"
                 "E(R) = (ln(8 R / r_c) - phi) rho/2 Gamma^2 R, with r_c = 1.40897017e-15 m, Gamma = 9.683619203e-9 "
                 "m^2/s and the density rho of the regime. With x = R / r_c and S = rho Gamma^2 / (2 c^2) r_c a mass M "
                 "is met at the root of f(x) = (ln(8 x) - phi) x - M / S. SI units. Whatever needs the density raises "
                 "RuntimeError for a regime that is no member.")
      .def(py::init<DensityRegime>(), py::arg("regime") = DensityRegime::CORE_DOMINATED, "A loop in this regime.")
      .def("set_regime", &G::set_regime, py::arg("regime"), "Change the density.")
      .def("get_active_density", &G::get_active_density, "Density of the regime, kg/m^3.")
      .def("calculate_loop_energy", &G::calculate_loop_energy, py::arg("R"),
           "Energy of a loop of radius R in m, J. There is no guard on R.")
      .def("calculate_loop_mass", &G::calculate_loop_mass, py::arg("R"), "Mass E(R) / c^2 of the loop, kg.")
      .def("calculate_screened_mass", &G::calculate_screened_mass, py::arg("bare_mass"), py::arg("double_k"),
           "bare_mass phi^(-double_k).")
      .def(
          "infer_geometric_ratio",
          [](G self, double target_mass, double tolerance, std::int32_t max_iter) {
            return self.infer_geometric_ratio(target_mass, tolerance, max_iter, python_poll());
          },
          py::arg("target_mass") = electron, py::arg("tolerance") = 1e-12, py::arg("max_iter") = 100,
          "The x of a mass in kg by Newton's iteration from x = 1, up to a last step below tolerance.\n\n"
          "RuntimeError if max_iter steps don't reach it. Outside the core-dominated regime a line on the process's "
          "standard error warns.")
      .def(
          "infer_geometric_ratio_safe",
          [](G self, double target_mass, double x0, double x_min, double x_max, double x_tol, double f_tol,
             std::int32_t max_iter) {
            return self.infer_geometric_ratio_safe(target_mass, x0, x_min, x_max, x_tol, f_tol, max_iter,
                                                   python_poll());
          },
          py::arg("target_mass") = electron, py::arg("x0") = 1.0, py::arg("x_min") = 1e-6, py::arg("x_max") = 10.0,
          py::arg("x_tol") = 1e-12, py::arg("f_tol") = 1e-12, py::arg("max_iter") = 100,
          "The x of a mass in kg by Newton's iteration from x0 inside (x_min, x_max), else by bisection.\n\n"
          "A bracket without a change of sign is widened up to 12 times; bisection takes up to 4 max_iter steps, until "
          "|f| < f_tol or half the bracket is below x_tol. ValueError unless 0 < x_min < x_max; RuntimeError for a "
          "residual that is not finite, no bracket, or no convergence.")
      .def("geometric_ratio_residual", &G::geometric_ratio_residual, py::arg("x"), py::arg("target_mass") = electron,
           "f(x) for a mass in kg. ValueError unless x is positive; NaN is not rejected. Outside the core-dominated "
           "regime each evaluation warns with a line on the process's standard error.")
      .def_static("infer_effective_base", &G::infer_effective_base, py::arg("ratio"), py::arg("exponent_n"),
                  "The root ratio^(1 / exponent_n). ValueError unless both are positive.")
      .def_static("predicted_ratio_from_base", &G::predicted_ratio_from_base, py::arg("base"), py::arg("exponent_n"),
                  "The power base^exponent_n. ValueError unless base is positive.")
      .def_static("relative_error", &G::relative_error, py::arg("predicted"), py::arg("observed"),
                  "|predicted - observed| / |observed|. ValueError if observed is 0.");
}

}  // namespace vkm
