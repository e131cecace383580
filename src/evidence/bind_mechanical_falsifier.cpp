#include "evidence/mechanical_falsifier.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_mechanical_falsifier(py::module_& m) {
  using R = MechanicalFalsifierResult;
  bound_class<R>(m, "MechanicalFalsifierResult", "Outcome of a blind mechanical test.")
      .def_readonly("delta_p_omega", &R::delta_p_omega, "Difference of the pressures.")
      .def_readonly("C_blind", &R::C_blind, "delta_p_omega / (L K^2).")
      .def_readonly("scaling_ok", &R::scaling_ok, "Whether C_blind is finite.")
      .def_readonly("message", &R::message, "The verdict in words.");

  using API = MechanicalFalsifierAPI;
  bound_class<API>(m, "MechanicalFalsifierAPI", "A blind mechanical test. Nothing here raises.")
      .def_static("delta_p_omega", &API::delta_p_omega, "First minus second pressure; NaN unless both are finite.")
      .def_static("C_blind", &API::C_blind,
                  "Of (delta, L, K): delta / (L K^2); NaN unless L > 0, K > 0 and delta is finite.")
      .def_static("blind_scaling_gate", &API::blind_scaling_gate, "True for the exponents (1, 2, 0) alone.")
      .def_static("evaluate", &API::evaluate, "MechanicalFalsifierResult of (pressure, pressure, L, K).");
}

}  // namespace vkm
