#include "knot/knot_registrars.hpp"

namespace vkm {

void register_catalogue(py::module_&) {}

}  // namespace vkm
