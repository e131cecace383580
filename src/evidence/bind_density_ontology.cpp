#include "evidence/density_ontology.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_density_ontology(py::module_& m) {
  py::enum_<DensitySymbol>(m, "DensitySymbol", "Density symbols that must not be mistaken for each other.")
      .value("RhoSub", DensitySymbol::RhoSub, "Substrate density, kg/m^3.")
      .value("RhoEff", DensitySymbol::RhoEff, "Effective density, kg/m^3.")
      .value("JOmega", DensitySymbol::JOmega, "Rotational inertia, kg/m.")
      .value("MuL", DensitySymbol::MuL, "Line mass, kg/m.");

  py::enum_<EnergyDensityForm>(m, "EnergyDensityForm", "Energy densities that somebody may propose.")
      .value("HalfRhoEffDtASquared", EnergyDensityForm::HalfRhoEffDtASquared, "1/2 rho_eff |d_t A|^2, A in m.")
      .value("HalfJOmegaOmegaSquared", EnergyDensityForm::HalfJOmegaOmegaSquared, "1/2 J_omega |omega|^2.")
      .value("HalfRhoFOmegaSquaredNoLength", EnergyDensityForm::HalfRhoFOmegaSquaredNoLength,
             "1/2 rho_f |omega|^2, which lacks a length^2.")
      .value("Unknown", EnergyDensityForm::Unknown);

  bound_class<DimensionalCheckResult>(m, "DimensionalCheckResult", "Whether a formula has the right dimension.")
      .def_readonly("allowed", &DimensionalCheckResult::allowed, "It has.")
      .def_readonly("reason", &DimensionalCheckResult::reason, "Why, or why not.");

  using API = DensityOntologyAPI;
  bound_class<API>(m, "DensityOntologyAPI", "Density symbols and the energy densities on them. Nothing here raises.")
      .def_static("symbol_name", &API::symbol_name, "Symbol of a DensitySymbol; \"unknown\" for other values.")
      .def_static("symbol_unit", &API::symbol_unit, "Unit of a DensitySymbol; empty for other values.")
      .def_static("rho_sub_differs_from_rho_f", &API::rho_sub_differs_from_rho_f, py::arg("rho_sub"), py::arg("rho_f"),
                  py::arg("abs_tol") = 0.0,
                  "Whether two densities are more than abs_tol apart; True if one is not finite.")
      .def_static("j_omega_differs_from_mu_l", &API::j_omega_differs_from_mu_l, py::arg("j_omega"), py::arg("mu_l"),
                  py::arg("abs_tol") = 0.0,
                  "Whether two line densities are more than abs_tol apart; True if one is not finite.")
      .def_static("rho_f_aliases_rho_eff", &API::rho_f_aliases_rho_eff,
                  "Always True, a policy: rho_f is the effective density under its old name.")
      .def_static("validate_energy_density_form", &API::validate_energy_density_form,
                  "DimensionalCheckResult of an EnergyDensityForm.")
      .def_static("reject_j_omega_equals_rho_f_ell2_without_bridge",
                  &API::reject_j_omega_equals_rho_f_ell2_without_bridge, py::arg("j_omega"), py::arg("rho_f"),
                  py::arg("ell2"),
                  "Always True, a policy: J_omega is not rho_f length^2 unless a bridge derives the length.");
}

}  // namespace vkm
