#include "filament/motion/vortex_knot_system.hpp"
#include "knot/knot_registrars.hpp"
#include "knot/named_knot.hpp"

namespace vkm {

void register_vortex_knot_system(py::module_& m) {
  bound_class<VortexKnotSystem, std::shared_ptr<VortexKnotSystem>>(
      m, "VortexKnotSystem", "A closed vortex filament evolved by explicit Euler under the Biot-Savart law.")
      .def(py::init([](double circulation) {
             auto system = std::make_shared<VortexKnotSystem>();
             system->circulation = circulation;
             return system;
           }),
           py::arg("circulation") = 1.0, "An empty system with a circulation in m^2/s.")
      .def(
          "initialize_trefoil_knot",
          [](VortexKnotSystem& self, int resolution) {
            const Changing changing(&self, "initialize_trefoil_knot");
            set_positions(self, trefoil_curve(resolution, python_poll()));
          },
          py::arg("resolution") = 400,
          "Put the filament on the torus-knot trefoil (cos 2t (cos 3t + 2), sin 2t (cos 3t + 2), sin 3t).")
      .def(
          "initialize_figure8_knot",
          [](VortexKnotSystem& self, int resolution) {
            const Changing changing(&self, "initialize_figure8_knot");
            set_positions(self, figure8_curve(resolution, python_poll()));
          },
          py::arg("resolution") = 400,
          "Put the filament on the figure-eight knot (cos 3t (cos 2t + 2), sin 3t (cos 2t + 2), sin 4t).")
      .def(
          "initialize_knot_from_name",
          [](VortexKnotSystem& self, const std::string& knot_id, int resolution) {
            const Changing changing(&self, "initialize_knot_from_name");
            set_positions(self, sample_named_knot(knot_id, resolution, python_poll()));
          },
          py::arg("knot_id"), py::arg("resolution") = 1000,
          R"(Put the filament on a knot of the catalogue, as "3_1", or of a .fseries file found on disk.

The curve is centred and sampled at both ends of its period: the last point repeats the first. RuntimeError if the knot
cannot be found or read; the system then keeps its state.)")
      .def(
          "evolve",
          [](VortexKnotSystem& self, double dt, std::uint64_t steps) {
            const Changing changing(&self, "evolve");
            evolve(self, dt, steps, python_poll());
          },
          py::arg("dt"), py::arg("steps"),
          R"(Take `steps` Euler steps of `dt` seconds under the filament's own Biot-Savart velocity.

An interrupted call leaves the state as it was. RuntimeError from within another call that changes the same system (in a
signal's handler, or another thread).)")
      .def(
          "get_positions", [](const VortexKnotSystem& self) { return self.positions; }, "Positions in m, a new list.")
      .def(
          "get_tangents", [](const VortexKnotSystem& self) { return self.tangents; },
          "Element vectors in m: half of the difference of the neighbours. A new list.");
}

}  // namespace vkm
