#include "knot/knot_registrars.hpp"

namespace vkm {

void register_ideal_database(py::module_&) {}

}  // namespace vkm
