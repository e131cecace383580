#include "tube/tube_registrars.hpp"

namespace vkm {

void register_tightener(py::module_&) {}

}  // namespace vkm
