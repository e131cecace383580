#include "mass/canonical_constants.hpp"
#include "module/binders.hpp"

namespace vkm {

namespace {

void bind_values(py::module_& m) {
  using V = VKMCanonicalValues;
  bound_class<V>(m, "VKMCanonicalValues", "Canonical constants and what follows from them, SI units.")
      .def(py::init<>())
      .def_readwrite("c", &V::c, "Speed of light, m/s.")
      .def_readwrite("hbar", &V::hbar, "Reduced Planck constant, J s.")
      .def_readwrite("alpha", &V::alpha, "Fine-structure constant.")
      .def_readwrite("m_e", &V::m_e, "Electron mass, kg.")
      .def_readwrite("e_charge", &V::e_charge, "Elementary charge, C.")
      .def_readwrite("rho_f", &V::rho_f, "Fluid density as given, kg/m^3.")
      .def_readwrite("v_swirl", &V::v_swirl, "Swirl speed as given, m/s.")
      .def_readwrite("omega_c", &V::omega_c, "Compton angular frequency, 1/s.")
      .def_readwrite("r_c", &V::r_c, "Core radius, m.")
      .def_readwrite("gamma_0", &V::gamma_0, "Circulation quantum, m^2/s.")
      .def_readwrite("lambda_c", &V::lambda_c, "Full Compton wavelength, m.")
      .def_readwrite("lambda_bar_c", &V::lambda_bar_c, "Reduced Compton wavelength, m.")
      .def_readwrite("rho_E", &V::rho_E, "Swirl energy density, J/m^3.")
      .def_readwrite("rho_m", &V::rho_m, "Mass-equivalent density, kg/m^3.")
      .def_readwrite("rho_core", &V::rho_core, "Core density closure, kg/m^3.")
      .def_readwrite("rho_horn", &V::rho_horn, "Horn envelope density, kg/m^3.")
      .def_readwrite("eta_0", &V::eta_0, "Speed ratio v_swirl / c.")
      .def_readwrite("geometric_gate", &V::geometric_gate, "Gate ratio lambda_c / (pi r_c).")
      .def_readwrite("swirl_clock", &V::swirl_clock, "Clock factor.")
      .def_readwrite("F_swirl_max", &V::F_swirl_max, "Maximal swirl force, N.")
      .def_readwrite("R_infty_vkm", &V::R_infty_vkm, "Rydberg-like wavenumber, 1/m.");
}

}  // namespace

void bind_canonical_constants(py::module_& m) {
  namespace k = canonical;
  using K = VKMCanonicalConstants;
  bind_values(m);
  bound_class<K>(m, "VKMCanonicalConstants",
                 "Constants of the theory (CODATA 2018 where physical) and the closed-form relations between them.\n\n"
                 "Static functions in SI units. A NaN argument is not rejected and gives NaN.")
      .def_static("speed_of_light", &K::speed_of_light, "Speed of light, 299792458 m/s.")
      .def_static("hbar", &K::hbar, "Reduced Planck constant, J s.")
      .def_static("alpha", &K::alpha, "Fine-structure constant.")
      .def_static("electron_mass", &K::electron_mass, "Electron mass, kg.")
      .def_static("elementary_charge", &K::elementary_charge, "Elementary charge, C.")
      .def_static("epsilon_0", &K::epsilon_0, "Vacuum permittivity, F/m.")
      .def_static("phi", &K::phi, "Golden ratio (1 + sqrt(5)) / 2.")
      .def_static("compton_angular_frequency", &K::compton_angular_frequency, py::arg("m_e") = k::m_e,
                  py::arg("c") = k::c, py::arg("hbar") = k::hbar,
                  "Compton angular frequency m_e c^2 / hbar, 1/s. ValueError unless all are positive.")
      .def_static("reduced_compton_wavelength", &K::reduced_compton_wavelength, py::arg("hbar") = k::hbar,
                  py::arg("m_e") = k::m_e, py::arg("c") = k::c,
                  "Reduced Compton wavelength hbar / (m_e c), m. ValueError unless all are positive.")
      .def_static("full_compton_wavelength", &K::full_compton_wavelength, py::arg("hbar") = k::hbar,
                  py::arg("m_e") = k::m_e, py::arg("c") = k::c,
                  "Compton wavelength 2 pi hbar / (m_e c), m. ValueError unless all are positive.")
      .def_static("core_radius_from_compton_anchor", &K::core_radius_from_compton_anchor, py::arg("v_swirl"),
                  py::arg("omega_c"),
                  "Core radius v_swirl / omega_c, m: the swirl speed anchored to the Compton frequency. ValueError "
                  "unless both are positive.")
      .def_static("circulation_quantum", &K::circulation_quantum, py::arg("r_c"), py::arg("v_swirl"),
                  "Circulation 2 pi r_c v_swirl around the core, m^2/s. ValueError unless both are positive.")
      .def_static("circulation_quantum_from_v_omega", &K::circulation_quantum_from_v_omega, py::arg("v_swirl"),
                  py::arg("omega_c"),
                  "Circulation 2 pi v_swirl^2 / omega_c, m^2/s. Raises nothing: omega_c = 0 gives an infinity or NaN.")
      .def_static("eta0", &K::eta0, py::arg("v_swirl"), py::arg("c") = k::c,
                  "Speed ratio v_swirl / c. ValueError unless c is positive.")
      .def_static("swirl_clock", &K::swirl_clock, py::arg("v_norm"), py::arg("c") = k::c,
                  "Clock factor sqrt(max(1 - v_norm^2 / c^2, 0)) of special relativity; exactly 0 at and above c. "
                  "ValueError unless c is positive.")
      .def_static("swirl_energy_density", &K::swirl_energy_density, py::arg("rho_f"), py::arg("v_norm"),
                  "Kinetic energy density 0.5 rho_f v_norm^2, J/m^3. ValueError if rho_f is negative.")
      .def_static("mass_equivalent_density", &K::mass_equivalent_density, py::arg("rho_E"), py::arg("c") = k::c,
                  "Mass density rho_E / c^2 of an energy density, kg/m^3. ValueError unless c is positive.")
      .def_static("horn_envelope_density", &K::horn_envelope_density, py::arg("m_e"), py::arg("c"), py::arg("v_swirl"),
                  py::arg("r_c"),
                  "Horn envelope density m_e c^2 / (2 pi v_swirl^2 r_c^3), kg/m^3: the expression of "
                  "core_density_closure for a distinct density. ValueError unless all are positive.")
      .def_static("core_density_closure", &K::core_density_closure, py::arg("m_e"), py::arg("c"), py::arg("v_swirl"),
                  py::arg("r_c"),
                  "Core density m_e c^2 / (2 pi v_swirl^2 r_c^3), kg/m^3, that closes the electron's rest energy on "
                  "the core. ValueError unless all are positive.")
      .def_static("geometric_gate", &K::geometric_gate, py::arg("lambda_c"), py::arg("r_c"),
                  "Gate ratio lambda_c / (pi r_c). ValueError unless both are positive.")
      .def_static("f_swirl_max", &K::f_swirl_max, py::arg("hbar"), py::arg("omega_c"), py::arg("r_c"),
                  "Maximal swirl force hbar omega_c / (2 r_c), N. ValueError unless all are positive.")
      .def_static("rydberg_vkm", &K::rydberg_vkm, py::arg("v_swirl"), py::arg("r_c"), py::arg("c") = k::c,
                  "Rydberg-like wavenumber v_swirl^3 / (pi r_c c^3), 1/m. ValueError unless all are positive.")
      .def_static("bare_master_mass_scale", &K::bare_master_mass_scale, py::arg("rho_m"), py::arg("r_c"),
                  "Bare mass scale rho_m r_c^3, kg. ValueError if rho_m is negative or r_c not positive.")
      .def_static("values", &K::values, py::arg("rho_f") = k::default_rho_f, py::arg("v_swirl") = k::default_v_swirl,
                  "All constants, and all that follows from rho_f (kg/m^3) and v_swirl (m/s). ValueError unless "
                  "v_swirl and the core radius it gives are positive and rho_f is not negative.");
}

}  // namespace vkm
