#include "knot/knot_registrars.hpp"

namespace vkm {

void register_fourier_helicity(py::module_&) {}

}  // namespace vkm
