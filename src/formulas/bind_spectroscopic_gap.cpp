#include "formulas/spectroscopic_gap.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_spectroscopic_gap(py::module_& m) {
  using G = SpectroscopicGap;
  bound_class<G>(m, "SpectroscopicGap",
                 "The energy gap of Kelvin waves on a core, beside atomic transitions and temperatures.\n\n"
                 "Static functions; the electronvolt is 1.602176634e-19 J. NaN is not rejected.")
      .def_static("kelvin_gap_joule", &G::kelvin_gap_joule, py::arg("hbar"), py::arg("v_swirl"), py::arg("r_c"),
                  py::arg("multiplier") = 1.0,
                  "multiplier hbar v_swirl / r_c, J, for hbar in J s, v_swirl in m/s, r_c in m. ValueError unless all\n"
                  "four are positive.")
      .def_static("kelvin_gap_ev", &G::kelvin_gap_ev, py::arg("hbar"), py::arg("v_swirl"), py::arg("r_c"),
                  py::arg("multiplier") = 1.0, "kelvin_gap_joule in eV.")
      .def_static("joule_to_ev", &G::joule_to_ev, py::arg("E_joule"), "Joule to electronvolt.")
      .def_static("ev_to_joule", &G::ev_to_joule, py::arg("E_ev"), "Electronvolt to joule.")
      .def_static("boltzmann_suppression", &G::boltzmann_suppression, py::arg("gap_joule"), py::arg("temperature_K"),
                  py::arg("k_B") = G::boltzmann,
                  "exp(-gap_joule / (k_B temperature_K)). ValueError unless temperature_K and k_B are positive.")
      .def_static("is_decoupled_from_atomic_transition", &G::is_decoupled_from_atomic_transition,
                  py::arg("transition_ev"), py::arg("gap_ev"), py::arg("safety_factor") = 10.0,
                  "Whether gap_ev >= transition_ev safety_factor. ValueError if an energy is negative or the factor\n"
                  "not positive.")
      .def_static("gap_ratio", &G::gap_ratio, py::arg("transition_ev"), py::arg("gap_ev"),
                  "gap_ev / transition_ev. ValueError if transition_ev is zero.");
}

}  // namespace vkm
