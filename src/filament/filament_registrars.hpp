#pragma once

/// The registrars of this room, one a concept, of which binders are composed.

#include "module/border.hpp"

namespace vkm {

void register_filament_energies(py::module_& m);
void register_topology_measures(py::module_& m);

}  // namespace vkm
