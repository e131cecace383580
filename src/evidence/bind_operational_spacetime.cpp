#include "evidence/operational_spacetime.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_operational_spacetime(py::module_& m) {
  using R = RadarInterval;
  bound_class<R>(m, "RadarInterval", "Radar time and distance of an event.")
      .def_readonly("emission_time", &R::emission_time, "As given.")
      .def_readonly("reception_time", &R::reception_time, "As given.")
      .def_readonly("radar_time", &R::radar_time, "Mean of the two times; NaN unless causal.")
      .def_readonly("radar_distance", &R::radar_distance, "c / 2 times their difference; NaN unless causal.")
      .def_readonly("causal", &R::causal, "Whether the signal comes back no earlier than it left.");

  using L = LorentzMapResult;
  auto map = bound_class<L>(m, "LorentzMapResult", "An event as a moving observer sees it.");
  def_list_readonly(map, "transformed_event", &L::transformed_event, "[t, x, y, z].");
  map.def_readonly("gamma", &L::gamma, "Lorentz factor.")
      .def_readonly("invariant_residual", &L::invariant_residual, "Relative change of the interval to the origin.");

  using API = OperationalSpacetimeAPI;
  bound_class<API>(m, "OperationalSpacetimeAPI",
                   "Radar times and Lorentz boosts of events [t, x, y, z], in any consistent units. No number raises.")
      .def_static("radar_interval", &API::radar_interval, py::arg("emission_time"), py::arg("reception_time"),
                  py::arg("c") = 1.0,
                  "RadarInterval of the times at which a signal leaves and comes back. Not causal, with NaN results,\n"
                  "if it comes back earlier, c is not positive or a time is not finite.")
      .def_static("lorentz_boost_x", &API::lorentz_boost_x, py::arg("event"), py::arg("velocity"), py::arg("c") = 1.0,
                  "lorentz_boost along x: velocity is one float.")
      .def_static("lorentz_boost", &API::lorentz_boost, py::arg("event"), py::arg("velocity"), py::arg("c") = 1.0,
                  "LorentzMapResult of an event (four floats) for an observer of that velocity (three floats). Every\n"
                  "number is NaN unless c > 0, the speed is below c and all components are finite.")
      .def_static("minkowski_interval2", &API::minkowski_interval2, py::arg("event_a"), py::arg("event_b"),
                  py::arg("c") = 1.0, "c^2 dt^2 - |dx|^2 of two events, four floats each.");
}

}  // namespace vkm
