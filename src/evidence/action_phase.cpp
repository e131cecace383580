#include "evidence/action_phase.hpp"

#include <algorithm>
#include <cmath>

#include "core/elementary.hpp"
#include "core/finite.hpp"
#include "evidence/quiet_nan.hpp"

namespace vkm {

double ActionPhaseAPI::mass_shell_hamiltonian(double p, double E0, double c) {
  if (!all_finite({p, E0, c}) || !(E0 > 0.0) || !(c > 0.0)) return quiet_nan;
  return vkm::hypot(p * c, E0);
}

double ActionPhaseAPI::velocity_from_mass_shell(double p, double E0, double c) {
  const double H = mass_shell_hamiltonian(p, E0, c);
  return H > 0.0 ? ((p * c) / H) * c : quiet_nan;
}

double ActionPhaseAPI::gamma_from_mass_shell(double p, double E0, double c) {
  return mass_shell_hamiltonian(p, E0, c) / E0;
}

double ActionPhaseAPI::proper_time_rate(double p, double E0, double c) { return E0 / mass_shell_hamiltonian(p, E0, c); }

double ActionPhaseAPI::internal_phase_rate_at_fixed_momentum(double p, double E0, double c, double Omega0) {
  return std::isfinite(Omega0) ? (E0 * Omega0) / mass_shell_hamiltonian(p, E0, c) : quiet_nan;
}

ActionPhaseResiduals ActionPhaseAPI::action_phase_residuals(double p, double E0, double c, double Omega0, double tol) {
  ActionPhaseResiduals result;
  const double H = mass_shell_hamiltonian(p, E0, c);
  if (!std::isfinite(H) || !std::isfinite(Omega0) || tol < 0.0) return result;

  const double x = c * p;
  result.hamiltonian_consistency = std::fabs(H * H - (E0 * E0 + x * x)) / std::max(1.0, H * H);
  result.velocity_consistency = std::fabs(velocity_from_mass_shell(p, E0, c) - (x / H) * c) / std::max(1.0, c);
  result.gamma_consistency = std::fabs(gamma_from_mass_shell(p, E0, c) - H / E0);
  result.proper_time_consistency = std::fabs(proper_time_rate(p, E0, c) - E0 / H);
  result.phase_rate_consistency =
      std::fabs(internal_phase_rate_at_fixed_momentum(p, E0, c, Omega0) - (E0 * Omega0) / H) /
      std::max(1.0, std::fabs(Omega0));
  result.delta_shape_separability = delta_shape_separability(p, E0, 1.0, c);

  const auto all = {result.hamiltonian_consistency, result.velocity_consistency,   result.gamma_consistency,
                    result.proper_time_consistency, result.phase_rate_consistency, result.delta_shape_separability};
  result.finite = all_finite(all);
  result.within_tolerance = result.finite && tol >= std::max(all);
  result.ok = result.within_tolerance;
  return result;
}

double ActionPhaseAPI::delta_shape_separability(double p, double E0, double dE0_dq, double c) {
  const double H = mass_shell_hamiltonian(p, E0, c);
  if (!(H > 0.0) || !std::isfinite(dE0_dq)) return quiet_nan;
  const double d = (E0 / H) * dE0_dq;
  return std::fabs(d - d);
}

double ActionPhaseAPI::coupled_shape_residual(double p, double E0, double dE0_dq, double c, double f_q, double df_dq,
                                              double eps) {
  const double H = mass_shell_hamiltonian(p, E0, c);
  if (!(H > 0.0) || !all_finite({dE0_dq, f_q, df_dq, eps})) return quiet_nan;
  const double d = (E0 / H) * dE0_dq;
  return std::fabs((p * p * f_q * eps + d) - d);
}

double ActionPhaseAPI::fixed_v_phase_error_factor(double p, double E0, double c) {
  const double H = mass_shell_hamiltonian(p, E0, c);
  const double ratio = H / E0;
  return H > 0.0 && E0 > 0.0 && std::isfinite(ratio) ? ratio * ratio - 1.0 : quiet_nan;
}

}  // namespace vkm
