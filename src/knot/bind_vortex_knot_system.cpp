#include "knot/knot_registrars.hpp"

namespace vkm {

void register_vortex_knot_system(py::module_&) {}

}  // namespace vkm
