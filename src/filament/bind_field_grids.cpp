#include "module/binders.hpp"

namespace vkm {

void bind_field_grids(py::module_&) {}

}  // namespace vkm
