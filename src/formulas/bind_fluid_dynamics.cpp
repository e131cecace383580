#include "filament/motion/vortex_knot_system.hpp"
#include "formulas/flow_fields.hpp"
#include "formulas/fluid_dynamics.hpp"
#include "mass/canonical_constants.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_fluid_dynamics(py::module_& m) {
  m.def("compute_pressure_field", &bernoulli_pressure, py::arg("velocity_magnitude"), py::arg("rho_ae"),
        py::arg("P_infinity"),
        "P_infinity - rho_ae v^2 / 2 (Bernoulli), a list of one pressure in Pa a speed in m/s; rho_ae in kg/m^3.");
  m.def("compute_velocity_magnitude", &velocity_magnitude, py::arg("velocity"), "|v|, a list of one float a vector.");
  m.def(
      "evolve_positions_euler",
      [](std::vector<Vec3> positions, const std::vector<Vec3>& velocity, double dt) {
        evolve_positions_euler(positions, velocity, dt);
      },
      py::arg("positions"), py::arg("velocity"), py::arg("dt"),
      R"(Move positions by dt times velocity, on the copy that the call makes of the list.

The caller's list stays as it was, and None is returned. ValueError if there are fewer velocities than positions.)");
  m.def("compute_vorticity", &vorticity_from_gradient, py::arg("grad"),
        "Curl of a velocity, 1/s: row i of the 3 by 3 matrix `grad` holds the derivatives of component i.");

  m.def("swirl_clock_rate", &local_rotation_rate, py::arg("dv_dx"), py::arg("du_dy"),
        "Legacy alias for local_rotation_rate = 0.5 * (dv/dx - du/dy). Not the Canon Swirl-Clock factor.");
  m.def("local_rotation_rate", &local_rotation_rate, py::arg("dv_dx"), py::arg("du_dy"),
        "(dv/dx - du/dy) / 2, rad/s: the angular velocity of a fluid element about z, half its vorticity.");
  m.def("swirl_clock_factor_from_speed", &swirl_clock_factor_from_speed, py::arg("v_norm"), py::arg("c") = canonical::c,
        "sqrt(max(1 - v_norm^2 / c^2, 0)), both in m/s: exactly 0 from c on.");
  m.def("vorticity_from_curvature", &vorticity_from_curvature, py::arg("V"), py::arg("R"),
        "V / R, 1/s: what a speed V along streamlines of radius R adds to the vorticity.");
  m.def("vortex_pressure_drop", &vortex_pressure_drop, py::arg("rho"), py::arg("c"),
        "rho c^2 / 2, Pa: the drop to the centre of a vortex with rim speed c (Bernoulli).");
  m.def("vortex_transverse_pressure_diff", &vortex_transverse_pressure_diff, py::arg("rho"), py::arg("c"),
        "rho c^2 / 4, Pa: half of vortex_pressure_drop.");
  m.def("swirl_energy", &swirl_energy, py::arg("rho"), py::arg("omega"),
        "Legacy helper 0.5 * rho * omega^2. Prefer swirl_energy_density_from_speed or swirl_tension_energy_density.");
  m.def("swirl_energy_density_from_speed", &swirl_energy_density_from_speed, py::arg("rho"), py::arg("v_norm"),
        "rho v_norm^2 / 2, J/m^3.");
  m.def("swirl_tension_energy_density", &swirl_tension_energy_density, py::arg("rho"), py::arg("omega"), py::arg("ell"),
        "rho (ell omega)^2 / 2, J/m^3: a rotation omega in 1/s felt over the length ell in m.");
  m.def("kairos_energy_trigger", &kairos_energy_trigger, py::arg("rho"), py::arg("omega"), py::arg("Ce"),
        "Whether rho omega^2 / 2 > rho Ce^2 / 2; False at equality.");
  m.def("compute_helicity", &helicity_integral, py::arg("velocity"), py::arg("vorticity"), py::arg("dV"),
        R"(compute_helicity with three arguments: dV times the sum of v . w over the samples, m^4/s^2.

In double precision; with two arguments it is another function, a mean in single precision. ValueError if the lists
differ in length.)");
  m.def("potential_vorticity", &potential_vorticity, py::arg("fa"), py::arg("zeta_r"), py::arg("h"),
        "(fa + zeta_r) / h, 1/(m s): planetary and relative vorticity over the depth of a shallow layer (Rossby).");
  m.def("is_incompressible", &is_incompressible, py::arg("dudx"), py::arg("dvdy"), py::arg("dwdz"),
        "Whether |dudx[0] + dvdy[1] + dwdz[2]| < 1e-8 1/s; other entries are not read.");
  m.def("circulation_surface_integral", &circulation_surface_integral, py::arg("omega_field"), py::arg("dA_field"),
        R"(Sum of omega . dA over the samples, m^2/s: the circulation around a surface (Stokes).

ValueError if the lists differ in length.)");
  m.def("enstrophy", &enstrophy, py::arg("omega_squared"), py::arg("ds_area"),
        "Sum of omega^2 dS over the samples, m^2/s^2. ValueError if the lists differ in length.");
  m.def("compute_bernoulli_pressure", &bernoulli_pressure, py::arg("velocity_magnitude"),
        py::arg("rho") = canonical::default_rho_f, py::arg("p_inf") = 0.0,
        "p_inf - rho v^2 / 2, a list of one pressure in Pa a speed; rho is the canonical fluid density by default.");
  m.def("pressure_gradient", &pressure_gradient, py::arg("pressure_field"), py::arg("dx") = 1.0, py::arg("dy") = 1.0,
        R"(The negated gradient of a pressure field, Pa/m: the direction of the force.

`pressure_field` is a list of rows p[i][j], i along x with the spacing dx, j along y with dy. Central differences
inside, one-sided ones on the first and last row and column. Returns rows of 3-lists, the third component 0. ValueError
for rows of different lengths, and for a single row or column.)");
  m.def("laplacian_phi", &laplacian_phi, py::arg("d2phidx2"), py::arg("d2phidy2"), py::arg("d2phidz2"),
        "Sum of the three second derivatives.");
  m.def(
      "grad_phi", [](const Vec3& phi_grad) { return phi_grad; }, py::arg("phi_grad"), "The gradient that it is given.");
  m.def("bernoulli_pressure_potential", &bernoulli_pressure_potential, py::arg("velocity_squared"), py::arg("V"),
        "velocity_squared / 2 - V, m^2/s^2.");
  m.def("compute_kinetic_energy", &kinetic_energy, py::arg("velocity"), py::arg("rho_ae"),
        "rho_ae / 2 times the sum of |v|^2 over the samples, J/m^3; times the volume of a cell it is the energy.");
  m.def("rossby_number", &rossby_number, py::arg("U"), py::arg("omega"), py::arg("d"),
        "U / (2 omega d): inertia over Coriolis force.");
  m.def("ekman_number", &ekman_number, py::arg("nu"), py::arg("omega"), py::arg("H"),
        "nu / (omega H^2): viscosity over Coriolis force.");
  m.def("cylinder_mass", &cylinder_mass, py::arg("rho"), py::arg("R"), py::arg("H"), "pi rho R^2 H, kg.");
  m.def("cylinder_inertia", &cylinder_inertia, py::arg("mass"), py::arg("R"),
        "mass R^2 / 2, kg m^2: about the cylinder's axis.");
  m.def("torque", &torque, py::arg("inertia"), py::arg("alpha"), "inertia alpha, N m for kg m^2 and rad/s^2.");
}

}  // namespace vkm
