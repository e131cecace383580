#include "formulas/swirl_field.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_swirl_field(py::module_& m) {
  m.def(
      "compute_swirl_field",
      [](std::int32_t res, double time) { return swirl_field(res, static_cast<float>(time), python_poll()); },
      py::arg("res"), py::arg("time"),
      R"(Compute 2D swirl force field at a given resolution and time.

A list of res^2 pairs, point (x, y) = (j / res - 1/2, i / res - 1/2) at index i res + j: ((-A y - B x) m,
(-A x + B y) m) with r2 = r^2 = x^2 + y^2 + 1e-5, A = 0.1 / r2, B = 0.25 / r, m = 1 + 0.03 sin(10 r - 6 time). Single
precision throughout. A negative res gives res^2 zero pairs; MemoryError for absurd sizes.)");
}

}  // namespace vkm
