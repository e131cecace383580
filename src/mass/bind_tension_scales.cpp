#include "mass/tension_scales.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_tension_scales(py::module_& m) {
  using S = VKMTensionScales;
  bound_class<S>(m, "VKMTensionScales",
                 "Closed-form force, coupling and spring scales on the canonical constants.\n\n"
                 "Static functions in SI units. NaN is not rejected.")
      .def_static("F_swirl_max", &S::F_swirl_max, py::arg("hbar"), py::arg("omega_c"), py::arg("r_c"),
                  "Maximal swirl force hbar omega_c / (2 r_c), N. ValueError unless all are positive.")
      .def_static("F_gr_max", &S::F_gr_max, py::arg("c"), py::arg("G"),
                  "Maximal force c^4 / (4 G) of general relativity, N. ValueError unless both are positive.")
      .def_static("gravitational_fine_structure", &S::gravitational_fine_structure, py::arg("G"), py::arg("m_e"),
                  py::arg("hbar"), py::arg("c"),
                  "Gravitational coupling G m_e^2 / (hbar c). ValueError unless all are positive.")
      .def_static("tension_ratio_from_couplings", &S::tension_ratio_from_couplings, py::arg("alpha_g"),
                  py::arg("alpha"),
                  "Ratio 4 alpha_g / alpha of the swirl to the gravitational force scale. ValueError unless alpha is "
                  "positive.")
      .def_static("coulomb_force_at_core", &S::coulomb_force_at_core, py::arg("e_charge"), py::arg("epsilon_0"),
                  py::arg("r_c"),
                  "Coulomb force e_charge^2 / (4 pi epsilon_0 r_c^2) of two charges at r_c, N. ValueError unless "
                  "epsilon_0 and r_c are positive.")
      .def_static("electron_spring_constant", &S::electron_spring_constant, py::arg("F_swirl_max"), py::arg("r_c"),
                  py::arg("n") = 2.0, "Spring constant F_swirl_max / (n r_c), N/m. ValueError unless all are positive.")
      .def_static("electron_spring_frequency", &S::electron_spring_frequency, py::arg("F_swirl_max"), py::arg("r_c"),
                  py::arg("m_e"), py::arg("n") = 2.0,
                  "Angular frequency sqrt(k / m_e) of the electron on its spring, 1/s. ValueError unless all are "
                  "positive; m_e is tested first.")
      .def_static("electron_spring_energy", &S::electron_spring_energy, py::arg("F_swirl_max"), py::arg("r_c"),
                  py::arg("n") = 2.0,
                  "Energy k r_c^2 / 2 of the spring drawn out to r_c, J. ValueError unless all are positive.")
      .def_static("rydberg_from_vkm", &S::rydberg_from_vkm, py::arg("v_swirl"), py::arg("r_c"), py::arg("c"),
                  "Rydberg-like wavenumber v_swirl^3 / (pi r_c c^3), 1/m. ValueError unless all are positive.")
      .def_static("swirl_impedance", &S::swirl_impedance, py::arg("P_K"), py::arg("v_K"),
                  "Impedance P_K / v_K of a pressure in Pa and a speed in m/s. ValueError unless v_K is positive.")
      .def_static("dimensionless_stiffness_ratio", &S::dimensionless_stiffness_ratio, py::arg("P_K"), py::arg("V_K"),
                  py::arg("hbar"), py::arg("omega"),
                  "Energy ratio P_K V_K / (hbar omega). ValueError if V_K is negative, or hbar or omega not positive.");
}

}  // namespace vkm
