#include "tube/tube_registrars.hpp"

namespace vkm {

void register_resolved_tube_geometry(py::module_&) {}

}  // namespace vkm
