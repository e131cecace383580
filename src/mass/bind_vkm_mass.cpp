#include "mass/vkm_mass.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_vkm_mass(py::module_& m) {
  m.def(
      "compute_vkm_mass",
      [](const std::vector<Vec3>& points, double chi_spin) {
        const VkmMass mass = compute_vkm_mass(points, chi_spin, python_poll());
        return std::pair(mass.m_core_kg, mass.m_fluid_kg);
      },
      py::arg("points"), py::arg("chi_spin"),
      R"(points: list of [x,y,z] (closed curve by convention).
chi_spin: spin factor (e.g. 2 for fermion).

Returns (m_core_kg, m_fluid_kg) of N points in m, the closing point not repeated. The core is the length times
rho_core pi r_c^2; the fluid is chi_spin^2 rho_f Gamma^2 / (8 pi c^2) times the sum of d[i] . d[j] /
sqrt(|p[i] - p[j]|^2 + r_c^2) over all ordered pairs of edges d, i = j included (Rosenhead and Moore's regularised
filament). An empty list gives (0, 0).)");
}

}  // namespace vkm
