#include "evidence/transverse_projector.hpp"

#include "core/finite.hpp"
#include "evidence/quiet_nan.hpp"

namespace vkm {

namespace {

constexpr double eight_thirds_pi = 8.377580409572781;
constexpr double four_thirds_pi = 4.1887902047863905;
constexpr double four_pi_squared = 39.47841760435743;  // (2 pi)^2

}  // namespace

double TransverseProjectorAPI::high_res_ld() { return 16.3714672385; }

double TransverseProjectorAPI::halvard_ld() { return 16.371637; }

double TransverseProjectorAPI::projector_sphere_integral() { return eight_thirds_pi; }

double TransverseProjectorAPI::leading_response_R0(double L_over_D) {
  return L_over_D > 0.0 ? L_over_D * eight_thirds_pi : quiet_nan;
}

double TransverseProjectorAPI::rop_rad_from_ld(double L_over_D) {
  return L_over_D > 0.0 ? L_over_D + L_over_D : quiet_nan;
}

double TransverseProjectorAPI::R0_from_rop_rad(double rop_rad) {
  return rop_rad > 0.0 ? rop_rad * four_thirds_pi : quiet_nan;
}

double TransverseProjectorAPI::delta_micro_plus(double c_kappa, double I_kappa2, double c_Omega, double I_Omega2,
                                                double c_C, double C_contact) {
  return c_kappa * I_kappa2 + c_Omega * I_Omega2 + c_C * C_contact;
}

double TransverseProjectorAPI::R_VKM(double R0, double delta_micro) { return R0 + delta_micro; }

double TransverseProjectorAPI::twist_energy_bound_rhs(double L, double Tw, double Tw0) {
  if (!(L > 0.0) || !all_finite({Tw, Tw0})) return quiet_nan;
  return (four_pi_squared / L) * (Tw - Tw0) * (Tw - Tw0);
}

bool TransverseProjectorAPI::twist_bound_satisfied(double energy, double L, double Tw, double Tw0) {
  const double bound = twist_energy_bound_rhs(L, Tw, Tw0);
  return all_finite({bound, energy}) && bound <= energy + 1e-30;
}

bool TransverseProjectorAPI::conventions_mixed(RopelengthConvention a, RopelengthConvention b) {
  return a != b && a != RopelengthConvention::Custom && b != RopelengthConvention::Custom;
}

TransverseProjectorResult TransverseProjectorAPI::evaluate(double L_over_D, double c_kappa, double I_kappa2,
                                                           double c_Omega, double I_Omega2, double c_C,
                                                           double C_contact, double SL, double Wr,
                                                           RopelengthConvention) {
  TransverseProjectorResult result;
  result.projector_sphere_integral = projector_sphere_integral();
  result.R0 = leading_response_R0(L_over_D);
  result.rop_rad = rop_rad_from_ld(L_over_D);
  result.delta_micro = delta_micro_plus(c_kappa, I_kappa2, c_Omega, I_Omega2, c_C, C_contact);
  result.R_VKM = R_VKM(result.R0, result.delta_micro);
  result.twist_bound_rhs = twist_energy_bound_rhs(L_over_D, SL, Wr);
  result.twist_bound_ok = twist_bound_satisfied(I_Omega2, L_over_D, SL, Wr);
  result.message = result.twist_bound_ok ? "transverse projector evaluate ok" : "twist bound violated";
  return result;
}

}  // namespace vkm
