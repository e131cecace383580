#include "module/binders.hpp"

namespace vkm {

void bind_filament_dynamics(py::module_&) {}

}  // namespace vkm
