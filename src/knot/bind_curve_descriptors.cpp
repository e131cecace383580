#include "knot/knot_registrars.hpp"

namespace vkm {

void register_curve_descriptors(py::module_&) {}

}  // namespace vkm
