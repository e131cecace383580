#include "filament/filament_registrars.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_filament_dynamics(py::module_& m) {
  register_curve_sampling(m);
  register_polygonal_gauss(m);
  register_tube_clearance(m);
  register_continuous_reach(m);
  register_regularized_velocity(m);
  register_topology_guard(m);
  register_rigid_motion(m);
}

}  // namespace vkm
