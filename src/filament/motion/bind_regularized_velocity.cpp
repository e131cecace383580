#include "filament/curve_arguments.hpp"
#include "filament/filament_registrars.hpp"
#include "filament/motion/filament_arguments.hpp"

namespace vkm {

namespace {

py::dict velocity_of(const std::vector<py::dict>& filaments, const py::dict& options) {
  return velocity_dict(filament_velocity(filaments_from(filaments), options_from(options), python_poll()));
}

py::dict step_of(const std::vector<py::dict>& filaments, double dt, const py::dict& options) {
  return step_dict(rk4_step(filaments_from(filaments), dt, options_from(options), python_poll()));
}

double cfl_dt(const std::vector<py::dict>& filaments, const py::dict& options, double cfl) {
  return cfl_time_step(filaments_from(filaments), options_from(options), cfl, python_poll());
}

constexpr const char* velocity_doc =
    R"(Compute the velocity of closed vortex filaments by local induction and the Biot-Savart sum of all sources.

filaments: list of dicts with the keys points (array (N, 3) in m, required; a closed polygon), circulation (m^2/s, 1.0),
source (induces, True), ghost (neither moves nor induces, False), id ("") and carrier ("A").
options: dict with the keys lia_only (local induction only, False), a_sim (softening length between different filaments
in m, 0.0), core_delta (the core radius is scaled by exp(core_delta), 0.0), lia_constant (added to the logarithm, 0.25)
and core_radius (m, 0.01).

Returns a dict: velocity, a list of arrays (N, 3) in m/s in the order of the input, zeros for ghosts, and maximum_speed.
compute_filament_velocity and compute_regularized_mutual_velocity are one computation.

The local term is Gamma / (4 pi) (log(2 sqrt(la lb) / a_eff) + C) times the discrete curvature binormal of the edges at
the vertex (Arms and Hama 1965; Schwarz, Phys. Rev. B 31 (1985) 5782), and the sum leaves these two edges out.
Raises KeyError without points and ValueError "Expected (N,3) array" for another shape.)";

}  // namespace

void register_regularized_velocity(py::module_& m) {
  for (const char* name : {"compute_filament_velocity", "compute_regularized_mutual_velocity"}) {
    m.def(name, &velocity_of, py::arg("filaments"), py::arg("options") = py::dict(), velocity_doc);
  }

  m.def("rk4_step", &step_of, py::arg("filaments"), py::arg("dt"), py::arg("options") = py::dict(),
        R"(Advance closed vortex filaments by one classical fourth-order Runge-Kutta step of dt seconds.

filaments and options as in compute_filament_velocity. Returns a dict: filaments, a list of dicts with the keys id,
carrier, points, circulation and ghost, and maximum_stage_speed (m/s, over the four stages). The key source is not
written back: restore it where it was False. The input is left as it is.)");

  m.def("estimate_cfl_dt", &cfl_dt, py::arg("filaments"), py::arg("options") = py::dict(), py::arg("cfl") = 0.5,
        R"(Estimate a time step: that in which the fastest vertex covers cfl of the shortest edge that moves.

filaments and options as in compute_filament_velocity. Returns seconds, at least 1e-6; 1e-6 where nothing moves.)");
}

}  // namespace vkm
