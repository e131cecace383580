#pragma once

/// Torsion of a vortex core: the inertial mass of its torsional energy, and how far a core matrix is from isotropic.
///
/// E0 torsional energy, I dimensionless inertia factor, c_T torsional wave speed, M a symmetric 3 x 3 core matrix. SI
/// units. The relations are the theory's own, and none of the results is an empirical claim.

#include <array>
#include <string>

#include "evidence/check_kind.hpp"

namespace vkm {

struct TorsionMassResult {
  double mass = 0.0;                  ///< kg
  double dimensional_residual = 0.0;  ///< relative deviation of c_T^2 mass from the energy
  std::string convention;             ///< formula of the mass
  bool ok = false;
};

struct AnisotropyResiduals {
  double chi_hat = 0.0;        ///< c_T^2 tr M / (3 E0)
  double delta_aniso = 0.0;    ///< norm of the deviator over the mean of the diagonal
  double normalization = 0.0;  ///< 3 E0
  bool ok = false;
  std::string epistemic_status{check_kind_export_string(CheckKind::OpenResearchGate)};
};

struct CoreTorsionAPI {
  /// E0 I / c_T^2. NaN and not ok unless E0 and I are at least 0, c_T is positive and all are finite.
  static TorsionMassResult torsion_inertial_mass(double E0, double I, double c_T);
  /// Twice that, an older convention.
  static TorsionMassResult torsion_inertial_mass_legacy_factor2(double E0, double I, double c_T);

  /// All zero and not ok unless E0 and c_T are positive and M is finite; delta_aniso is NaN for an M that is not
  /// symmetric.
  static AnisotropyResiduals anisotropy_residuals(const std::array<double, 9>& M_row_major, double E0, double c_T);
};

}  // namespace vkm
