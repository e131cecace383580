#pragma once

/// The mass shell and the internal phase that runs along it.
///
/// p momentum, E0 rest energy, c speed of light, Omega0 internal phase rate at rest, H = sqrt((p c)^2 + E0^2)
/// Hamiltonian, q a shape coordinate. Hamilton's equations of that H give velocity p c^2 / H, gamma H / E0, proper time
/// rate E0 / H and phase rate E0 Omega0 / H. Any consistent units.

namespace vkm {

struct ActionPhaseResiduals {
  double hamiltonian_consistency = 0.0;  ///< of H^2 and E0^2 + (c p)^2
  double velocity_consistency = 0.0;     ///< this and the next four compare a formula with its second writing
  double gamma_consistency = 0.0;
  double proper_time_consistency = 0.0;
  double phase_rate_consistency = 0.0;
  double delta_shape_separability = 0.0;
  bool finite = false;            ///< all six are
  bool within_tolerance = false;  ///< and none exceeds the tolerance
  bool ok = false;
};

/// Each NaN unless p, E0 and c are finite and E0 and c positive.
struct ActionPhaseAPI {
  static double mass_shell_hamiltonian(double p, double E0, double c);
  static double velocity_from_mass_shell(double p, double E0, double c);
  static double gamma_from_mass_shell(double p, double E0, double c);
  static double proper_time_rate(double p, double E0, double c);
  /// NaN unless Omega0 is finite, too.
  static double internal_phase_rate_at_fixed_momentum(double p, double E0, double c, double Omega0);

  /// Not ok and all zero unless H and Omega0 are finite and tol is not negative. But for the first they are tripwires:
  /// 0 as long as nobody changes a formula in one place.
  static ActionPhaseResiduals action_phase_residuals(double p, double E0, double c, double Omega0, double tol = 1e-12);

  /// |d - d| with d = (E0 / H) dE0_dq: 0, or NaN where d is not finite. A separable shape leaves nothing over.
  static double delta_shape_separability(double p, double E0, double dE0_dq, double c);
  /// |(p^2 f_q eps + d) - d|: what a coupling f(q) of strength eps leaves over. `df_dq` must be finite and has no other
  /// effect.
  static double coupled_shape_residual(double p, double E0, double dE0_dq, double c, double f_q, double df_dq,
                                       double eps);
  /// (H / E0)^2 - 1.
  static double fixed_v_phase_error_factor(double p, double E0, double c);
};

}  // namespace vkm
