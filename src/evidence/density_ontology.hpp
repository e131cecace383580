#pragma once

/// Four density symbols that must not be mistaken for each other, and the energy densities that may be built on them.

#include <cstdint>
#include <string>
#include <string_view>

namespace vkm {

/// Substrate and effective density, kg/m^3; rotational inertia and line mass, kg/m.
enum class DensitySymbol : std::int32_t { RhoSub = 0, RhoEff = 1, JOmega = 2, MuL = 3 };

/// Energy densities, J/m^3 where they are legal.
enum class EnergyDensityForm : std::int32_t {
  HalfRhoEffDtASquared = 0,          ///< 1/2 rho_eff |d_t A|^2, A a displacement in m
  HalfJOmegaOmegaSquared = 1,        ///< 1/2 J_omega |omega|^2
  HalfRhoFOmegaSquaredNoLength = 2,  ///< 1/2 rho_f |omega|^2, which lacks a length^2
  Unknown = 3,
};

struct DimensionalCheckResult {
  bool allowed = false;
  std::string reason;
};

struct DensityOntologyAPI {
  /// "unknown" for values outside the enumeration.
  static std::string_view symbol_name(DensitySymbol symbol);
  /// Empty for values outside the enumeration.
  static std::string_view symbol_unit(DensitySymbol symbol);

  /// True where they are more than abs_tol apart, or one of them is not finite.
  static bool rho_sub_differs_from_rho_f(double rho_sub, double rho_f, double abs_tol = 0.0);
  static bool j_omega_differs_from_mu_l(double j_omega, double mu_l, double abs_tol = 0.0);

  /// A policy and no test, always true: rho_f is the effective density under its old name.
  static bool rho_f_aliases_rho_eff();

  static DimensionalCheckResult validate_energy_density_form(EnergyDensityForm form);

  /// A policy and no test, always true: J_omega is not rho_f length^2 unless a bridge derives the length.
  static bool reject_j_omega_equals_rho_f_ell2_without_bridge(double j_omega, double rho_f, double ell2);
};

}  // namespace vkm
