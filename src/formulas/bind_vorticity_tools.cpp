#include "formulas/vorticity_tools.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_vorticity_tools(py::module_& m) {
  m.def("vorticity_z_2D", &vorticity_z_2D, py::arg("dv_dx"), py::arg("du_dy"), "Compute 2D vorticity: dv/dx - du/dy");
  m.def("local_circulation_density", &vorticity_z_2D, py::arg("dv_dx"), py::arg("du_dy"),
        R"(Local circulation density (vorticity) via Stokes' theorem

The same as vorticity_z_2D.)");
  m.def("solid_body_rotation_vorticity", &solid_body_rotation_vorticity, py::arg("omega"),
        "Vorticity of solid body rotation: 2 * omega");
  m.def("couette_vorticity", &couette_vorticity, py::arg("alpha"), "Vorticity of Couette flow: -alpha");
  m.def(
      "crocco_relation",
      [](const Vec3&, double rho, const Vec3& pressure_gradient) { return crocco_relation(rho, pressure_gradient); },
      py::arg("vorticity"), py::arg("rho"), py::arg("pressure_gradient"),
      R"(Velocity-curl product equals pressure gradient divided by density

The vorticity takes no part.)");
  m.def("compute_vorticity", &planar_vorticity, py::arg("u"), py::arg("v"), py::arg("nx"), py::arg("ny"), py::arg("dx"),
        py::arg("dy"),
        R"(Compute 2D vorticity field

Vorticity tools for 2D flows

dv/dx - du/dy by central differences. `u` and `v` are flat lists, cell (i, j) of nx times ny at j nx + i; `dx` and `dy`
are the spacings. Returns a list of nx ny floats; the rim is 0. ValueError if u or v is shorter than nx ny or an extent
negative.)");
  m.def(
      "rotating_frame_rhs",
      [](const Vec3& velocity, const Vec3&, const Vec3& grad_phi, const Vec3& grad_p, const Vec3& omega, double rho) {
        return rotating_frame_rhs(velocity, grad_phi, grad_p, omega, rho);
      },
      py::arg("velocity"), py::arg("vorticity"), py::arg("grad_phi"), py::arg("grad_p"), py::arg("omega"),
      py::arg("rho"),
      R"(Compute rotating frame momentum RHS

2 velocity x omega - grad_phi - grad_p / rho, m/s^2. The vorticity takes no part.)");
  m.def("crocco_gradient", &crocco_gradient, py::arg("velocity"), py::arg("vorticity"), py::arg("grad_phi"),
        py::arg("grad_p"), py::arg("rho"),
        R"(Compute ∇H from Crocco's theorem

rho (vorticity x velocity) + grad_phi + grad_p / rho; the textbook form has no density in the first term.)");
  m.def("baroclinic_term", &baroclinic_term, py::arg("grad_rho"), py::arg("grad_p"), py::arg("rho"),
        R"(Baroclinic torque term

grad_rho x grad_p / rho^2, 1/s^2.)");
  m.def("compute_vorticity_rhs", &vorticity_rhs, py::arg("omega"), py::arg("grad_u"), py::arg("div_u"),
        py::arg("grad_rho"), py::arg("grad_p"), py::arg("rho"),
        R"(Vorticity transport RHS

grad_u omega - omega div_u + grad_rho x grad_p / rho^2, 1/s^2. Row k of `grad_u` holds the derivatives of component
k.)");
}

}  // namespace vkm
