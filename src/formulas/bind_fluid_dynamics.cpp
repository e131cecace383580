#include "module/binders.hpp"

namespace vkm {

void bind_fluid_dynamics(py::module_&) {}

}  // namespace vkm
