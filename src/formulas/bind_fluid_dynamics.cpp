#include "filament/vortex_knot_system.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_fluid_dynamics(py::module_& m) {
  m.def(
      "evolve_positions_euler",
      [](std::vector<Vec3> positions, const std::vector<Vec3>& velocity, double dt) {
        evolve_positions_euler(positions, velocity, dt);
      },
      py::arg("positions"), py::arg("velocity"), py::arg("dt"),
      R"(Move positions by dt times velocity, on the copy that the call makes of the list.

The caller's list stays as it was, and None is returned. ValueError if there are fewer velocities than positions.)");
}

}  // namespace vkm
