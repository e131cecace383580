#include "filament/filament_registrars.hpp"
#include "knot/knot_registrars.hpp"
#include "mass/mass_registrars.hpp"
#include "module/binders.hpp"

namespace vkm {

/// Curves, then what becomes of them as particles: it stands here because mass is above knot.
void bind_knot(py::module_& m) {
  // Types first: signatures of later registrars name them.
  register_fourier_series(m);
  register_knot_invariants(m);
  register_mass_functional(m);
  register_knot_report_records(m);
  register_particle_model(m);
  register_invariant_builders(m);
  register_particle_prediction(m);
  register_knot_report(m);
  register_ideal_database(m);
  register_catalogue(m);
  register_curve_descriptors(m);
  register_topology_measures(m);
  register_planar_diagram(m);
  register_fourier_helicity(m);
  register_vortex_knot_system(m);
}

}  // namespace vkm
