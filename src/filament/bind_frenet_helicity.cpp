#include "module/binders.hpp"

namespace vkm {

void bind_frenet_helicity(py::module_&) {}

}  // namespace vkm
