#include "module/binders.hpp"

namespace vkm {

void bind_biot_savart(py::module_&) {}

}  // namespace vkm
