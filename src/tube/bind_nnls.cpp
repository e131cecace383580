#include "tube/tube_registrars.hpp"

namespace vkm {

void register_nnls(py::module_&) {}

}  // namespace vkm
