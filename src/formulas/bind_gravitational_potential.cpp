#include "formulas/gravitational_potential.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_gravitational_potential(py::module_& m) {
  using Points = std::span<const Vec3>;
  const auto gradient = [](Points positions, Points vorticity, double epsilon) {
    return gravitational_potential_gradient(positions, vorticity, epsilon, python_poll());
  };
  constexpr double width = 7e-7;  // m

  m.def("compute_gravitational_potential_gradient", gradient, py::arg("positions"), py::arg("vorticity"),
        py::arg("epsilon") = width,
        R"(-|a_i|^2 / 2 with a_i = sum over j != i of exp(-|p_i - p_j|^2 / (2 epsilon^2)) w_j: Gaussian smoothing.

`positions` and `vorticity` are lists of N vectors, in m and 1/s; `epsilon` in m. Returns a list of N floats. ValueError
if the lists differ in length.)");

  m.def("compute_time_dilation_map_sqrt", &time_dilation_map_sqrt, py::arg("tangents"),
        py::arg("C_e") = canonical::default_v_swirl,
        R"(Clock rates sqrt(1 - q) with q = |t|^2 / C_e^2, a list of one float a tangent.

q is replaced by 0.999999 where it is 1 or more: the rate jumps to 0.001 there and never reaches 0.)");

  m.def(
      "compute_gravitational_potential_direct",
      [](Points positions, Points vorticity, double epsilon) {
        return gravitational_potential_direct(positions, vorticity, epsilon, python_poll());
      },
      py::arg("positions"), py::arg("vorticity"), py::arg("epsilon") = 0.1,
      R"(-1 / (4 pi) sum over j != i of (p_i - p_j) . w_j / (|p_i - p_j|^2 + epsilon^2)^(3/2): Plummer's softening.

`positions` and `vorticity` are lists of N vectors, in m and 1/s; `epsilon` in m. Returns a list of N floats. ValueError
if the lists differ in length.)");

  m.def("compute_time_dilation_map_linear", &time_dilation_map_linear, py::arg("tangents"), py::arg("C_e"),
        "Clock rates 1 - |t|^2 / C_e^2, a list of one float a tangent. There is no floor: negative beyond C_e.");

  m.def("compute_gravitational_potential", gradient, py::arg("positions"), py::arg("vorticity"),
        py::arg("epsilon") = width,
        "compute_gravitational_potential_gradient under its first name; kept for backward compatibility.");

  m.def("compute_time_dilation_map", &time_dilation_map_sqrt, py::arg("tangents"),
        py::arg("C_e") = canonical::default_v_swirl,
        "compute_time_dilation_map_sqrt under its first name; kept for backward compatibility.");
}

}  // namespace vkm
