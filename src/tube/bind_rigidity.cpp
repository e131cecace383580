#include "tube/tube_registrars.hpp"

namespace vkm {

void register_rigidity(py::module_&) {}

}  // namespace vkm
