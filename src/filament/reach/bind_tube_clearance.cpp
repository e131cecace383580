#include "filament/curve_arguments.hpp"
#include "filament/filament_registrars.hpp"
#include "filament/reach/tube_clearance.hpp"

namespace vkm {

namespace {

py::dict clearance_dict(const std::vector<DoubleArray>& curves, double core_radius) {
  const TubeClearance result = tube_clearance(curves_from(curves), core_radius, python_poll());
  py::dict dict;
  dict["clearance"] = result.clearance;
  dict["self_min"] = result.self_min;
  dict["inter_min"] = result.inter_min;
  return dict;
}

constexpr const char* clearance_doc =
    R"(Compute the least distance between edges of closed polygons that are not neighbours.

curves: list of arrays (N, 3), closing vertex not repeated. Edges of one curve are neighbours when their indices differ
by less than 2 along it; with a positive core_radius by less than six core radii in mean edge lengths, at least 2.

Returns a dict: clearance (the smaller of the two that follow), self_min (within a curve of at least 4 points) and
inter_min (between two curves of at least 2 points), each infinity where there is no such pair. Lengths are in the unit
of the points. analyze_resolved_tube_clearance and compute_topology_clearance are one computation.

Raises ValueError "Expected (N,3) array" for another shape.)";

}  // namespace

void register_tube_clearance(py::module_& m) {
  for (const char* name : {"analyze_resolved_tube_clearance", "compute_topology_clearance"}) {
    m.def(name, &clearance_dict, py::arg("curves"), py::arg("core_radius") = 0.0, clearance_doc);
  }
}

}  // namespace vkm
