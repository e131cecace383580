#include "module/binders.hpp"

namespace vkm {

void bind_canonical_constants(py::module_&) {}

}  // namespace vkm
