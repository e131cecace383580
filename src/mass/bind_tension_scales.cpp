#include "module/binders.hpp"

namespace vkm {

void bind_tension_scales(py::module_&) {}

}  // namespace vkm
