#include "evidence/transverse_projector.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_transverse_projector(py::module_& m) {
  py::enum_<RopelengthConvention>(m, "RopelengthConvention", "Where a ratio of length to diameter comes from.")
      .value("HighRes", RopelengthConvention::HighRes, "high_res_ld.")
      .value("Halvard", RopelengthConvention::Halvard, "halvard_ld.")
      .value("Custom", RopelengthConvention::Custom, "The caller's own.");

  using R = TransverseProjectorResult;
  bound_class<R>(m, "TransverseProjectorResult", "Response of a knotted tube to a transverse field.")
      .def_readonly("projector_sphere_integral", &R::projector_sphere_integral, "8 pi / 3.")
      .def_readonly("R0", &R::R0, "Leading response, 8 pi / 3 L/D.")
      .def_readonly("rop_rad", &R::rop_rad, "Ropelength by the radius, 2 L/D.")
      .def_readonly("delta_micro", &R::delta_micro, "Microscopic corrections.")
      .def_readonly("R_VKM", &R::R_VKM, "R0 + delta_micro.")
      .def_readonly("twist_bound_rhs", &R::twist_bound_rhs, "Least twist energy.")
      .def_readonly("twist_bound_ok", &R::twist_bound_ok, "Whether I_Omega2 reaches it.")
      .def_readonly("convention_mixed", &R::convention_mixed, "Always False: one ratio is of one convention.")
      .def_readonly("message", &R::message, "The verdict in words.");

  using API = TransverseProjectorAPI;
  bound_class<API>(m, "TransverseProjectorAPI",
                   "Response of a knotted tube to a transverse field. Nothing here raises.")
      .def_static("high_res_ld", &API::high_res_ld, "L/D of the HighRes convention.")
      .def_static("halvard_ld", &API::halvard_ld, "L/D of the Halvard convention.")
      .def_static("projector_sphere_integral", &API::projector_sphere_integral, "8 pi / 3.")
      .def_static("leading_response_R0", &API::leading_response_R0, "8 pi / 3 L/D; NaN unless L/D > 0.")
      .def_static("rop_rad_from_ld", &API::rop_rad_from_ld, "2 L/D; NaN unless L/D > 0.")
      .def_static("R0_from_rop_rad", &API::R0_from_rop_rad, "4 pi / 3 times the argument; NaN unless that is positive.")
      .def_static("delta_micro_plus", &API::delta_micro_plus, "Of (a, b, c, d, e, f): a b + c d + e f.")
      .def_static("R_VKM", &API::R_VKM, "Of (R0, delta): their sum.")
      .def_static("twist_energy_bound_rhs", &API::twist_energy_bound_rhs,
                  "Of (L, Tw, Tw0): 4 pi^2 / L (Tw - Tw0)^2; NaN unless L > 0 and both twists are finite.")
      .def_static("twist_bound_satisfied", &API::twist_bound_satisfied,
                  "Of (energy, L, Tw, Tw0): whether the bound is at most energy + 1e-30 and both are finite.")
      .def_static("conventions_mixed", &API::conventions_mixed,
                  "Whether two RopelengthConvention differ; Custom goes with either.")
      .def_static("evaluate", &API::evaluate, py::arg("L_over_D"), py::arg("c_kappa"), py::arg("I_kappa2"),
                  py::arg("c_Omega"), py::arg("I_Omega2"), py::arg("c_C"), py::arg("C_contact"), py::arg("SL"),
                  py::arg("Wr"), py::arg("convention") = RopelengthConvention::Custom,
                  "TransverseProjectorResult of a ratio of length to diameter, three couplings with their integrals,\n"
                  "the self-linking and the writhe. The bound takes SL, Wr for the twists and I_Omega2 for the\n"
                  "energy; the convention has no effect.");
}

}  // namespace vkm
