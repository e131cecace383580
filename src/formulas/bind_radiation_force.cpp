#include "formulas/radiation_force.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_radiation_force(py::module_& m) {
  m.def("radiation_force", &radiation_force,
        R"(radiation_force(a, b, c, d, e): (d / e) (c / e) (2 a b / 3e8) / (1 - (c / e)^2).

The speed of light in it is the rounded 3e8 m/s. Nothing is guarded: an infinity or NaN at c = e.)");
  m.def("van_der_pol_dx", &van_der_pol_dx, "van_der_pol_dx(x, y): dx/dt = y of van der Pol's oscillator.");
  m.def("van_der_pol_dy", &van_der_pol_dy,
        "van_der_pol_dy(x, y, mu): dy/dt = mu (1 - x^2) y - x of van der Pol's oscillator.");
}

}  // namespace vkm
