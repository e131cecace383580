#pragma once

/// The registrars of which bind_resolved_tube is composed, one a concept.

#include "module/border.hpp"

namespace vkm {

void register_resolved_tube_geometry(py::module_& m);
void register_rigidity(py::module_& m);
void register_nnls(py::module_& m);
void register_tightener(py::module_& m);

}  // namespace vkm
