#pragma once

#include "module/border.hpp"

namespace vkm {

/// Registers `list_bindings`. Called after every binder, so that it sees their names.
void bind_list_bindings(py::module_& m);

}  // namespace vkm
