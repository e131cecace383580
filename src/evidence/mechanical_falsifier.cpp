#include "evidence/mechanical_falsifier.hpp"

#include <cmath>

#include "core/finite.hpp"
#include "evidence/quiet_nan.hpp"

namespace vkm {

double MechanicalFalsifierAPI::delta_p_omega(double p_a, double p_b) {
  return all_finite({p_a, p_b}) ? p_a - p_b : quiet_nan;
}

double MechanicalFalsifierAPI::C_blind(double delta, double L, double K) {
  return L > 0.0 && K > 0.0 && std::isfinite(delta) ? delta / (L * K * K) : quiet_nan;
}

bool MechanicalFalsifierAPI::blind_scaling_gate(std::int32_t first, std::int32_t second, std::int32_t third) {
  return first == 1 && second == 2 && third == 0;
}

MechanicalFalsifierResult MechanicalFalsifierAPI::evaluate(double p_a, double p_b, double L, double K) {
  MechanicalFalsifierResult result;
  result.delta_p_omega = delta_p_omega(p_a, p_b);
  result.C_blind = C_blind(result.delta_p_omega, L, K);
  result.scaling_ok = std::isfinite(result.C_blind);
  result.message = result.scaling_ok ? "blind mechanical falsifier ok" : "blind mechanical falsifier failure";
  return result;
}

}  // namespace vkm
