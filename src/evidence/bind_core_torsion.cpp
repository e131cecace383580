#include "evidence/core_torsion.hpp"
#include "evidence/link_field_gate.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_core_torsion(py::module_& m) {
  using T = TorsionMassResult;
  bound_class<T>(m, "TorsionMassResult", "Inertial mass of a core's torsional energy.")
      .def_readonly("mass", &T::mass, "Mass, kg; NaN for bad input.")
      .def_readonly("dimensional_residual", &T::dimensional_residual, "Deviation of c_T^2 mass from the energy.")
      .def_readonly("convention", &T::convention, "Formula of the mass.")
      .def_readonly("ok", &T::ok, "Whether the input was valid.");

  using A = AnisotropyResiduals;
  bound_class<A>(m, "AnisotropyResiduals", "How far a core matrix is from isotropic.")
      .def_readonly("chi_hat", &A::chi_hat, "c_T^2 tr M / (3 E0).")
      .def_readonly("delta_aniso", &A::delta_aniso, "Norm of the deviator over the mean of the diagonal.")
      .def_readonly("normalization", &A::normalization, "3 E0.")
      .def_readonly("ok", &A::ok, "Whether both residuals are finite.")
      .def_readonly("epistemic_status", &A::epistemic_status, "Always \"OPEN_RESEARCH_GATE\".");

  bound_class<CoreTorsionAPI>(m, "CoreTorsionAPI", "Torsional mass and anisotropy of a core. Nothing here raises.")
      .def_static("torsion_inertial_mass", &CoreTorsionAPI::torsion_inertial_mass, py::arg("E0"), py::arg("I"),
                  py::arg("c_T"),
                  "TorsionMassResult of E0 I / c_T^2: energy in J, dimensionless factor, wave speed in m/s. NaN and\n"
                  "not ok unless E0 >= 0, I >= 0, c_T > 0 and all are finite.")
      .def_static("torsion_inertial_mass_legacy_factor2", &CoreTorsionAPI::torsion_inertial_mass_legacy_factor2,
                  py::arg("E0"), py::arg("I"), py::arg("c_T"), "The same with twice the mass, an older convention.")
      .def_static("anisotropy_residuals", &CoreTorsionAPI::anisotropy_residuals, py::arg("M_row_major"), py::arg("E0"),
                  py::arg("c_T"),
                  "AnisotropyResiduals of a symmetric 3 x 3 matrix, nine floats row by row. All zero and not ok\n"
                  "unless E0 > 0, c_T > 0 and M is finite; delta_aniso is NaN for a matrix that is not symmetric.");

  py::enum_<LinkGateFailure>(m, "LinkGateFailure", "The first step of the link field gate that fails.")
      .value("None_", LinkGateFailure::None, "None.")
      .value("E", LinkGateFailure::E, "rho_star is not positive.")
      .value("T", LinkGateFailure::T, "Gamma_star is not positive.")
      .value("N", LinkGateFailure::N, "r_star is not positive.")
      .value("M", LinkGateFailure::M, "The phase residual is above its tolerance.");

  using L = LinkFieldGateResult;
  bound_class<L>(m, "LinkFieldGateResult", "Admissibility of the parameters of a link field.")
      .def_readonly("passed", &L::passed, "Whether all four steps hold.")
      .def_readonly("failure", &L::failure, "LinkGateFailure: the first step that fails.")
      .def_readonly("rho_star", &L::rho_star, "Density as given, kg/m^3.")
      .def_readonly("Gamma_star", &L::Gamma_star, "Circulation as given, m^2/s.")
      .def_readonly("r_star", &L::r_star, "Length as given, m.")
      .def_readonly("phase_residual", &L::phase_residual, "Phase residual as given.")
      .def_readonly("epistemic_status", &L::epistemic_status, "Always \"OPEN_RESEARCH_GATE\".");

  bound_class<LinkFieldGateAPI>(m, "LinkFieldGateAPI", "Gate on the parameters of a link field. Nothing here raises.")
      .def_static("failure_name", &LinkFieldGateAPI::failure_name,
                  "\"None\", \"E\", \"T\", \"N\" or \"M\"; \"None\" for other values.")
      .def_static("evaluate", &LinkFieldGateAPI::evaluate, py::arg("rho_star"), py::arg("Gamma_star"),
                  py::arg("r_star"), py::arg("phase_residual"), py::arg("tol") = 1e-6,
                  "LinkFieldGateResult. In this order: E, T, N if rho_star, Gamma_star, r_star is not positive, M\n"
                  "unless |phase_residual| <= tol. A NaN fails the step that tests it.");
}

}  // namespace vkm
