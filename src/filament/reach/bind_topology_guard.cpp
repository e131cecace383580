#include "filament/curve_arguments.hpp"
#include "filament/filament_registrars.hpp"
#include "filament/reach/topology_guard.hpp"

namespace vkm {

namespace {

py::dict guard_dict(const std::vector<DoubleArray>& before, const std::vector<DoubleArray>& after,
                    double contact_threshold, double max_displacement, double core_radius) {
  const TopologyGuard guard = guard_topology_step(curves_from(before), curves_from(after), contact_threshold,
                                                  max_displacement, core_radius, python_poll());
  py::dict dict;
  dict["contact"] = guard.contact;
  dict["warn_only"] = guard.warn_only;
  dict["safe_dt_fraction"] = guard.safe_dt_fraction;
  dict["clearance_before"] = guard.clearance_before;
  dict["clearance_after"] = guard.clearance_after;
  dict["message"] = guard.message;
  return dict;
}

}  // namespace

void register_topology_guard(py::module_& m) {
  m.def("guard_topology_step", &guard_dict, py::arg("before"), py::arg("after"), py::arg("contact_threshold"),
        py::arg("max_displacement"), py::arg("core_radius") = 0.0,
        R"(Check that strands of closed polygons stay apart on the way of a step.

before, after: lists of arrays (N, 3). A contact is a clearance (compute_topology_clearance with core_radius) below
contact_threshold, at the start, at the end, or in between along straight lines. max_displacement bounds how far a
vertex moves; where it rules out a contact, the positions in between are not looked at.

Returns a dict: contact, warn_only (False), safe_dt_fraction (part of the step that is safe: 1 without contact, 0 for a
contact at the start or the end), clearance_before, clearance_after and message.
Raises ValueError "Expected (N,3) array" for another shape.)");
}

}  // namespace vkm
