#include "filament/motion/vortex_knot_system.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_time_evolution(py::module_& m) {
  bound_class<TimeEvolution>(m, "TimeEvolution", "A closed vortex filament evolved from a given state.")
      .def(py::init([](std::vector<Vec3> initial_positions, std::vector<Vec3> initial_tangents, double gamma) {
             return TimeEvolution{{std::move(initial_positions), std::move(initial_tangents), gamma}};
           }),
           py::arg("initial_positions"), py::arg("initial_tangents"), py::arg("gamma") = 1.0,
           R"(Start from positions (m), their element vectors (m) and a circulation gamma (m^2/s).

The tangents stay as given until the first step.)")
      .def(
          "evolve",
          [](TimeEvolution& self, double dt, int steps) {
            const Changing changing(&self, "evolve");
            // A negative count is widened like any other and asks for some 1.8e19 steps.
            evolve(self, dt, static_cast<std::uint64_t>(static_cast<std::int64_t>(steps)), python_poll());
          },
          py::arg("dt"), py::arg("steps"),
          R"(Take `steps` Euler steps of `dt` seconds under the filament's own Biot-Savart velocity.

An interrupted call leaves the state as it was. RuntimeError from within another step of the same object (in a signal's
handler, or another thread). ValueError if there are fewer tangents than positions.)")
      .def(
          "get_positions", [](const TimeEvolution& self) { return self.positions; }, "Positions in m, a new list.")
      .def(
          "get_tangents", [](const TimeEvolution& self) { return self.tangents; }, "Element vectors in m, a new list.");
}

}  // namespace vkm
