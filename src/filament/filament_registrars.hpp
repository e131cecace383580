#pragma once

/// The registrars of this room, one a concept, of which binders are composed.

#include "module/border.hpp"

namespace vkm {

void register_filament_energies(py::module_& m);
void register_topology_measures(py::module_& m);

// of bind_filament_dynamics, in its order
void register_curve_sampling(py::module_& m);
void register_polygonal_gauss(py::module_& m);
void register_tube_clearance(py::module_& m);
void register_continuous_reach(py::module_& m);
void register_regularized_velocity(py::module_& m);
void register_topology_guard(py::module_& m);
void register_rigid_motion(py::module_& m);

}  // namespace vkm
