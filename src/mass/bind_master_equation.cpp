#include "module/binders.hpp"

namespace vkm {

void bind_master_equation(py::module_&) {}

}  // namespace vkm
