#include "evidence/rotor_participation.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_rotor_participation(py::module_& m) {
  py::enum_<WaveModeClass>(m, "WaveModeClass", "How a core's wave answers to its amplitude.")
      .value("LinearTwist", WaveModeClass::LinearTwist, "A twist wave.")
      .value("QuadraticKelvinBend", WaveModeClass::QuadraticKelvinBend, "A bend of the filament.")
      .value("Unknown", WaveModeClass::Unknown, "Neither, or both.");

  using R = RotorParticipationResult;
  bound_class<R>(m, "RotorParticipationResult", "How much of a medium takes part in a core's rotation.")
      .def_readonly("j_omega_rot", &R::j_omega_rot, "pi r_c^2 rho_horn, kg/m.")
      .def_readonly("phi_dyn_ref", &R::phi_dyn_ref, "rho_ref / (pi rho_horn).")
      .def_readonly("ell_rho_eq_ref", &R::ell_rho_eq_ref, "sqrt(j_omega_rot / rho_ref), m.")
      .def_readonly("c_omega", &R::c_omega, "v_swirl as given, m/s.");

  using API = RotorParticipationAPI;
  bound_class<API>(m, "RotorParticipationAPI", "Participation of a medium in a core's rotation. Nothing here raises.")
      .def_static("j_omega_rot", &API::j_omega_rot, "Of (r, rho): pi r^2 rho; NaN unless both are positive.")
      .def_static("phi_dyn_ref", &API::phi_dyn_ref,
                  "Of (rho_ref, rho_horn): rho_ref / (pi rho_horn); NaN unless both are positive.")
      .def_static("ell_rho_eq_ref", &API::ell_rho_eq_ref, "Of (j, rho): sqrt(j / rho); NaN unless both are positive.")
      .def_static("c_omega_equals_v_swirl", &API::c_omega_equals_v_swirl, "The argument itself.")
      .def_static("evaluate", &API::evaluate, py::arg("r_c") = stored::core_radius,
                  py::arg("rho_horn") = stored::core_density, py::arg("rho_ref") = canonical::default_rho_f,
                  py::arg("v_swirl") = canonical::default_v_swirl,
                  "RotorParticipationResult of a core radius (m), two densities (kg/m^3) and a swirl speed (m/s); NaN\n"
                  "where a formula needs a positive number and has none.")
      .def_static("classify_wave_mode", &API::classify_wave_mode,
                  "WaveModeClass of (linear, quadratic); Unknown unless exactly one holds.");
}

}  // namespace vkm
