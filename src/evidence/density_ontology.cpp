#include "evidence/density_ontology.hpp"

#include "evidence/differ.hpp"

namespace vkm {

std::string_view DensityOntologyAPI::symbol_name(DensitySymbol symbol) {
  switch (symbol) {
    case DensitySymbol::RhoSub:
      return "rho_sub";
    case DensitySymbol::RhoEff:
      return "rho_eff";
    case DensitySymbol::JOmega:
      return "J_omega";
    case DensitySymbol::MuL:
      return "mu_l";
  }
  return "unknown";
}

std::string_view DensityOntologyAPI::symbol_unit(DensitySymbol symbol) {
  switch (symbol) {
    case DensitySymbol::RhoSub:
    case DensitySymbol::RhoEff:
      return "kg/m^3";
    case DensitySymbol::JOmega:
    case DensitySymbol::MuL:
      return "kg/m";
  }
  return "";
}

bool DensityOntologyAPI::rho_sub_differs_from_rho_f(double rho_sub, double rho_f, double abs_tol) {
  return differ(rho_sub, rho_f, abs_tol);
}

bool DensityOntologyAPI::j_omega_differs_from_mu_l(double j_omega, double mu_l, double abs_tol) {
  return differ(j_omega, mu_l, abs_tol);
}

bool DensityOntologyAPI::rho_f_aliases_rho_eff() { return true; }

DimensionalCheckResult DensityOntologyAPI::validate_energy_density_form(EnergyDensityForm form) {
  switch (form) {
    case EnergyDensityForm::HalfRhoEffDtASquared:
      return {true, "u_disp = 1/2 rho_eff |d_t A|^2 with [A]=m is dimensionally valid"};
    case EnergyDensityForm::HalfJOmegaOmegaSquared:
      return {true, "u_rot = 1/2 J_omega |omega|^2 is dimensionally valid"};
    case EnergyDensityForm::HalfRhoFOmegaSquaredNoLength:
      return {false, "forbidden: 1/2 rho_f |omega|^2 without derived length^2"};
    case EnergyDensityForm::Unknown:
      break;
  }
  return {false, "unknown energy-density form"};
}

bool DensityOntologyAPI::reject_j_omega_equals_rho_f_ell2_without_bridge(double, double, double) { return true; }

}  // namespace vkm
