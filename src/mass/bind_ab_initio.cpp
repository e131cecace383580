#include "module/binders.hpp"

namespace vkm {

void bind_ab_initio(py::module_&) {}

}  // namespace vkm
