#include "module/binders.hpp"

namespace vkm {

void bind_time_evolution(py::module_&) {}

}  // namespace vkm
