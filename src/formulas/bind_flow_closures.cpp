#include "formulas/vortex_profiles.hpp"
#include "mass/mass_registrars.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_flow_closures(py::module_& m) {
  register_golden_nls_closure(m);
  m.def("lamb_oseen_velocity", &lamb_oseen_velocity,
        "(Gamma, r, nu, t): azimuthal velocity (1 - exp(-r^2 / (4 nu t))) Gamma / (2 pi r) of a Lamb-Oseen vortex, "
        "m/s.");
  m.def("lamb_oseen_vorticity", &lamb_oseen_vorticity,
        "(Gamma, r, nu, t): vorticity exp(-r^2 / (4 nu t)) Gamma / (4 pi nu t) of a Lamb-Oseen vortex, 1/s.");
  m.def("hill_streamfunction", &hill_streamfunction,
        "(A, r, z, a): stream function A r (a^2 - r^2 - z^2) inside the sphere of radius a, 0 outside. The power of r "
        "is 1, where textbooks have 2.");
  m.def("hill_vorticity", &hill_vorticity,
        "(A, r, z, a): vorticity A (4 z^2 + r^2 - a^2) inside the sphere of radius a, 0 outside; textbooks have a "
        "multiple of r.");
  m.def("hill_circulation", &hill_circulation, "(A, a): circulation a^3 2 pi A / 3.");
  m.def("hill_velocity", &hill_velocity, "(A, a): velocity A / (5 a).");
}

}  // namespace vkm
