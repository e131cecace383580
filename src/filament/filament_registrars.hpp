#pragma once

/// The registrars of which the binders of this room are composed.

#include "module/border.hpp"

namespace vkm {

void register_filament_energies(py::module_& m);

}  // namespace vkm
