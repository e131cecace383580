#include "module/binders.hpp"

namespace vkm {

void bind_curl3d(py::module_&) {}

}  // namespace vkm
