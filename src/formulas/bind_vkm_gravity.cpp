#include "formulas/vkm_gravity.hpp"
#include "module/binders.hpp"

namespace vkm {

namespace {

std::vector<Vec3> field_from(const DoubleArray& array) {
  return points_from(array, "Expected array with shape (N, 3)");
}

std::vector<double> radii_from(const DoubleArray& array) {
  return values_from(array, "Expected 1D array with shape (N,)");
}

}  // namespace

void bind_vkm_gravity(py::module_& m) {
  using G = VKMGravity;
  bound_class<G>(m, "VKMGravity",
                 "Gravity-like effects of a swirling medium, sample by sample.\n\n"
                 "Static functions. Fields are arrays of shape (N, 3), radii of shape (N,); ValueError for other\n"
                 "shapes. Results are lists of N floats. NaN is not rejected.")
      .def_static(
          "compute_beltrami_shear",
          [](const DoubleArray& B_field, const DoubleArray& Curl_B) {
            return G::compute_beltrami_shear(field_from(B_field), field_from(Curl_B));
          },
          py::arg("B_field"), py::arg("Curl_B"),
          "|B x curl B|, zero for a Beltrami field. ValueError if the sizes differ.")
      .def_static(
          "compute_gravity_dilation",
          [](const DoubleArray& B_field, double omega_drive, double, double B_saturation) {
            return G::compute_gravity_dilation(field_from(B_field), omega_drive, B_saturation);
          },
          py::arg("B_field"), py::arg("omega_drive"), py::arg("v_swirl"), py::arg("B_saturation"),
          "1 - (|B| / B_saturation) log10(omega_drive), clamped to 0 and 1; without the second term unless\n"
          "omega_drive > 0. v_swirl takes no part. ValueError unless B_saturation is positive.")
      .def_static(
          "compute_helicity_density",
          [](const DoubleArray& A_field, const DoubleArray& B_field) {
            return G::compute_helicity_density(field_from(A_field), field_from(B_field));
          },
          py::arg("A_field"), py::arg("B_field"), "A . B. ValueError if the sizes differ.")
      .def_static(
          "compute_swirl_clock",
          [](const DoubleArray& v_swirl_field, double v_swirl) {
            return G::compute_swirl_clock(field_from(v_swirl_field), v_swirl);
          },
          py::arg("v_swirl_field"), py::arg("v_swirl"), "sqrt(max(1 - |v|^2 / v_swirl^2, 0)).")
      .def_static(
          "compute_swirl_coulomb_potential",
          [](const DoubleArray& radii, double Lambda, double r_c) {
            return G::compute_swirl_coulomb_potential(radii_from(radii), Lambda, r_c);
          },
          py::arg("radii"), py::arg("Lambda"), py::arg("r_c"),
          "-Lambda / sqrt(r^2 + r_c^2): Plummer's softening. ValueError unless r_c is positive.")
      .def_static(
          "compute_swirl_coulomb_force",
          [](const DoubleArray& radii, double Lambda, double r_c) {
            return G::compute_swirl_coulomb_force(radii_from(radii), Lambda, r_c);
          },
          py::arg("radii"), py::arg("Lambda"), py::arg("r_c"),
          "-Lambda r / (r^2 + r_c^2)^(3/2), and 0 where the denominator is 0. ValueError unless r_c is positive.")
      .def_static(
          "compute_swirl_energy_density",
          [](const DoubleArray& v_field, double rho_f) {
            return G::compute_swirl_energy_density(field_from(v_field), rho_f);
          },
          py::arg("v_field"), py::arg("rho_f"), "rho_f |v|^2 / 2, J/m^3 for m/s and kg/m^3.")
      .def_static("compute_G_swirl", &G::compute_G_swirl, py::arg("v_swirl"), py::arg("t_p"), py::arg("F_max"),
                  py::arg("r_c"), py::arg("c") = canonical::c,
                  "c^5 v_swirl t_p^2 / (2 F_max r_c^2), one float in m^3/(kg s^2) for SI units. ValueError unless\n"
                  "F_max and r_c are positive.");
}

}  // namespace vkm
