#pragma once

/// The response of a knotted tube to a transverse field: leading part from its ratio of length to diameter, microscopic
/// corrections, and a lower bound on its twist energy. The relations are the theory's own.
///
/// L/D length over diameter of the tube, 8 pi / 3 integral of the transverse projector's trace over the sphere, R0
/// leading response, SL self-linking, Wr writhe, Tw twist.

#include <cstdint>
#include <string>

namespace vkm {

/// Where a value of L/D comes from. Values of different sources must not be mixed.
enum class RopelengthConvention : std::int32_t { HighRes = 0, Halvard = 1, Custom = 2 };

struct TransverseProjectorResult {
  double projector_sphere_integral = 0.0;  ///< 8 pi / 3
  double R0 = 0.0;                         ///< leading response
  double rop_rad = 0.0;                    ///< ropelength by the radius, 2 L/D
  double delta_micro = 0.0;                ///< microscopic corrections
  double R_VKM = 0.0;                      ///< R0 + delta_micro
  double twist_bound_rhs = 0.0;            ///< least twist energy
  bool twist_bound_ok = false;             ///< the energy reaches it
  bool convention_mixed = false;           ///< always false: `evaluate` sees one value of L/D
  std::string message;
};

struct TransverseProjectorAPI {
  /// L/D of the trefoil by the two conventions.
  static double high_res_ld();
  static double halvard_ld();
  static double projector_sphere_integral();
  /// 8 pi / 3 L/D; NaN unless positive.
  static double leading_response_R0(double L_over_D);
  /// 2 L/D; NaN unless positive.
  static double rop_rad_from_ld(double L_over_D);
  /// 4 pi / 3 rop_rad; NaN unless positive.
  static double R0_from_rop_rad(double rop_rad);
  /// Three couplings times their integrals.
  static double delta_micro_plus(double c_kappa, double I_kappa2, double c_Omega, double I_Omega2, double c_C,
                                 double C_contact);
  static double R_VKM(double R0, double delta_micro);
  /// (2 pi)^2 / L (Tw - Tw0)^2: least integral of the squared twist rate over the length L (Cauchy-Schwarz). NaN unless
  /// L is positive and the twists are finite.
  static double twist_energy_bound_rhs(double L, double Tw, double Tw0);
  static bool twist_bound_satisfied(double energy, double L, double Tw, double Tw0);
  /// Custom goes with either.
  static bool conventions_mixed(RopelengthConvention a, RopelengthConvention b);
  /// The convention has no effect.
  static TransverseProjectorResult evaluate(double L_over_D, double c_kappa, double I_kappa2, double c_Omega,
                                            double I_Omega2, double c_C, double C_contact, double SL, double Wr,
                                            RopelengthConvention convention = RopelengthConvention::Custom);
};

}  // namespace vkm
