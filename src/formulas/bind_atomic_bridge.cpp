#include "formulas/atomic_bridge.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_atomic_bridge(py::module_& m) {
  using A = AtomicBridgeModel;
  bound_class<A>(m, "AtomicBridgeModel",
                 "From the scales of the swirling medium to those of the atom.\n\n"
                 "Static functions in SI units: lengths in m, speeds in m/s, energies in J, circulations in m^2/s.\n"
                 "NaN is not rejected.")
      .def_static("eta0", &A::eta0, py::arg("v_swirl"), py::arg("c") = canonical::c,
                  "v_swirl / c. ValueError unless c is positive.")
      .def_static("bohr_radius_vkm", &A::bohr_radius_vkm, py::arg("r_c"), py::arg("alpha"),
                  "2 r_c / alpha^2, m. ValueError unless both are positive.")
      .def_static("rydberg_energy", &A::rydberg_energy, py::arg("hbar"), py::arg("reduced_mass"), py::arg("a0"),
                  "hbar^2 / (2 reduced_mass a0^2), J. ValueError unless all are positive.")
      .def_static("lambda_vkm", &A::lambda_vkm, py::arg("rho_core"), py::arg("v_swirl"), py::arg("r_c"),
                  "4 pi rho_core v_swirl^2 r_c^4, J m. ValueError unless all are positive.")
      .def_static("soft_core_potential", &A::soft_core_potential, py::arg("r"), py::arg("Lambda"), py::arg("r_c"),
                  "-Lambda / sqrt(r^2 + r_c^2), J: Plummer's softening of the Coulomb potential. ValueError unless\n"
                  "r_c is positive.")
      .def_static("soft_core_force", &A::soft_core_force, py::arg("r"), py::arg("Lambda"), py::arg("r_c"),
                  "-Lambda r / (r^2 + r_c^2)^(3/2), N, odd in r. ValueError unless r_c is positive.")
      .def_static("clock_branch_factor", &A::clock_branch_factor, py::arg("sigma"), py::arg("eta0"), py::arg("gamma"),
                  "1 + sigma eta0 gamma.")
      .def_static("scalar_clock_potential_linear", &A::scalar_clock_potential_linear, py::arg("sigma"), py::arg("E_R"),
                  py::arg("eta0"), py::arg("gamma"), "-2 sigma E_R eta0 gamma, J.")
      .def_static("orbit_coupling_energy", &A::orbit_coupling_energy, py::arg("sigma"), py::arg("E_R"), py::arg("eta0"),
                  py::arg("anticommutator_value"), "E_R eta0 sigma anticommutator_value / 2, J.")
      .def_static("frozen_linear_interaction", &A::frozen_linear_interaction, py::arg("sigma"), py::arg("E_R"),
                  py::arg("eta0"), py::arg("gamma"), py::arg("anticommutator_value"),
                  "scalar_clock_potential_linear plus orbit_coupling_energy, J.")
      .def_static("pauli_barrier_scale", &A::pauli_barrier_scale, py::arg("rho_f"), py::arg("Gamma0"), py::arg("L"),
                  py::arg("a_cut"), py::arg("shape_factor") = 1.0,
                  "rho_f Gamma0^2 / (4 pi) (L / a_cut) shape_factor. ValueError if rho_f or shape_factor is negative,\n"
                  "or one of the others not positive.")
      .def_static("omega_z_from_displacement_gradient", &A::omega_z_from_displacement_gradient, py::arg("Omega"),
                  py::arg("dxi_dz"), "2 Omega dxi_dz, 1/s.")
      .def_static("u_theta_uniform_vorticity", &A::u_theta_uniform_vorticity, py::arg("r"), py::arg("omega_z"),
                  "r omega_z / 2, m/s: solid-body rotation.")
      .def_static("gamma_from_uniform_vorticity", &A::gamma_from_uniform_vorticity, py::arg("r"), py::arg("omega_z"),
                  py::arg("Gamma0"),
                  "pi r^2 omega_z / Gamma0: circulation in quanta. ValueError unless Gamma0 is positive.")
      .def_static("helical_packet_gamma", &A::helical_packet_gamma, py::arg("r"), py::arg("phi"), py::arg("z"),
                  py::arg("t"), py::arg("A_gamma"), py::arg("w_r"), py::arg("w_z"), py::arg("v"), py::arg("m"),
                  py::arg("k"), py::arg("omega"),
                  "A_gamma exp(-r^2 / (2 w_r^2)) exp(-(z - v t)^2 / (2 w_z^2)) cos(m phi + k z - omega t), m an\n"
                  "integer: a Gaussian packet with a helical phase. ValueError unless w_r and w_z are positive.");
}

}  // namespace vkm
