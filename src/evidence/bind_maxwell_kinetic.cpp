#include "evidence/maxwell_kinetic.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_maxwell_kinetic(py::module_& m) {
  using R = MaxwellKineticResult;
  bound_class<R>(m, "MaxwellKineticResult", "Whether a kinetic relaxation channel is active.")
      .def_readonly("coupling_nonzero", &R::coupling_nonzero, "Coupling is not 0; NaN counts as not 0.")
      .def_readonly("drive_above_gap", &R::drive_above_gap, "Drive >= gap.")
      .def_readonly("lifetime_observable", &R::lifetime_observable, "Lifetime >= its threshold.")
      .def_readonly("three_gate_ok", &R::three_gate_ok, "All three, of finite numbers.")
      .def_readonly("tau_inv", &R::tau_inv, "Collision rate.")
      .def_readonly("message", &R::message, "The verdict in words.");

  using API = MaxwellKineticAPI;
  bound_class<API>(m, "MaxwellKineticAPI", "Activation of a kinetic relaxation channel. Nothing here raises.")
      .def_static("three_gate_condition", &API::three_gate_condition,
                  "Of (coupling, drive, gap, lifetime threshold, lifetime): all finite, the coupling not 0, drive >=\n"
                  "gap and lifetime >= threshold.")
      .def_static("collision_rate_inv", &API::collision_rate_inv,
                  "Product of three factors, such as density, cross section and speed; NaN unless all are finite.")
      .def_static("evaluate", &API::evaluate,
                  "MaxwellKineticResult of (coupling, drive, gap, lifetime threshold, lifetime) and the three factors\n"
                  "of the collision rate.");
}

}  // namespace vkm
