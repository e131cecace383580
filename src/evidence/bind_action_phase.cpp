#include "evidence/action_phase.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_action_phase(py::module_& m) {
  using R = ActionPhaseResiduals;
  bound_class<R>(m, "ActionPhaseResiduals", "Consistency of the mass-shell formulas at one momentum.")
      .def_readonly("hamiltonian_consistency", &R::hamiltonian_consistency,
                    "|H^2 - (E0^2 + (c p)^2)| relative to max(1, H^2).")
      .def_readonly("velocity_consistency", &R::velocity_consistency, "Tripwire of the velocity's formula.")
      .def_readonly("gamma_consistency", &R::gamma_consistency, "Tripwire of gamma's formula.")
      .def_readonly("proper_time_consistency", &R::proper_time_consistency, "Tripwire of the proper time rate.")
      .def_readonly("phase_rate_consistency", &R::phase_rate_consistency, "Tripwire of the phase rate.")
      .def_readonly("delta_shape_separability", &R::delta_shape_separability, "Tripwire of the shape's separability.")
      .def_readonly("finite", &R::finite, "Whether all six are finite.")
      .def_readonly("within_tolerance", &R::within_tolerance, "Whether the largest is at most the tolerance.")
      .def_readonly("ok", &R::ok, "The same.");

  using API = ActionPhaseAPI;
  const py::arg p("p"), E0("E0"), c("c"), Omega0("Omega0"), dE0_dq("dE0_dq");
  bound_class<API>(m, "ActionPhaseAPI",
                   "The mass shell H = sqrt((p c)^2 + E0^2) and the internal phase on it, in any consistent units.\n"
                   "Nothing here raises: results are NaN unless p, E0 and c are finite and E0 and c positive.")
      .def_static("mass_shell_hamiltonian", &API::mass_shell_hamiltonian, p, E0, c, "H, by hypot.")
      .def_static("velocity_from_mass_shell", &API::velocity_from_mass_shell, p, E0, c, "dH/dp = p c^2 / H.")
      .def_static("gamma_from_mass_shell", &API::gamma_from_mass_shell, p, E0, c, "H / E0.")
      .def_static("proper_time_rate", &API::proper_time_rate, p, E0, c, "dH/dE0 = E0 / H.")
      .def_static("internal_phase_rate_at_fixed_momentum", &API::internal_phase_rate_at_fixed_momentum, p, E0, c,
                  Omega0, "E0 Omega0 / H; NaN unless Omega0 is finite, too.")
      .def_static("action_phase_residuals", &API::action_phase_residuals, p, E0, c, Omega0, py::arg("tol") = 1e-12,
                  "ActionPhaseResiduals. All zero and not ok unless H and Omega0 are finite and tol is not negative.")
      .def_static("delta_shape_separability", &API::delta_shape_separability, p, E0, dE0_dq, c,
                  "|d - d| with d = (E0 / H) dE0_dq; NaN unless dE0_dq is finite, too.")
      .def_static("coupled_shape_residual", &API::coupled_shape_residual, p, E0, dE0_dq, c, py::arg("f_q"),
                  py::arg("df_dq"), py::arg("eps"),
                  "|(p^2 f_q eps + d) - d| with d = (E0 / H) dE0_dq; NaN unless the other four are finite, too.")
      .def_static("fixed_v_phase_error_factor", &API::fixed_v_phase_error_factor, p, E0, c, "(H / E0)^2 - 1.");
}

}  // namespace vkm
