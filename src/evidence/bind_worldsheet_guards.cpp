#include "evidence/worldsheet_guards.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_worldsheet_guards(py::module_& m) {
  using R = WorldsheetGuardResult;
  bound_class<R>(m, "WorldsheetGuardResult", "The worldsheet guards, each on its own and together.")
      .def_readonly("form_degree_ok", &R::form_degree_ok, "The degree is not 2.")
      .def_readonly("charge_not_gamma0", &R::charge_not_gamma0, "The charge is not the circulation quantum.")
      .def_readonly("b_not_a_em", &R::b_not_a_em, "Nobody claims that B is A_em.")
      .def_readonly("material_v_not_a_eff", &R::material_v_not_a_eff, "Nobody claims that the velocity is A_eff.")
      .def_readonly("passed", &R::passed, "All four.")
      .def_readonly("message", &R::message, "The verdict in words.");

  using API = WorldsheetGuardsAPI;
  bound_class<API>(m, "WorldsheetGuardsAPI", "Guards of the worldsheet coupling. No number raises.")
      .def_static("form_degree_H", &API::form_degree_H, "The degree as given.")
      .def_static("two_form_degree_guard", &API::two_form_degree_guard, py::arg("sphere_dimension") = 2,
                  py::arg("form_degree_H"),
                  "Whether the two integers are equal. evaluate tests the degree in the opposite sense.")
      .def_static("charge_differs_from_circulation", &API::charge_differs_from_circulation, py::arg("q_B"),
                  py::arg("gamma_0"), py::arg("abs_tol") = 0.0,
                  "Whether the two are more than abs_tol apart, or one is not finite.")
      .def_static("b_field_not_identified_with_a_em", &API::b_field_not_identified_with_a_em,
                  "The negation of the claim that B is A_em.")
      .def_static("material_velocity_not_a_eff", &API::material_velocity_not_a_eff,
                  "The negation of the claim that the material velocity is A_eff.")
      .def_static("evaluate", &API::evaluate, py::arg("form_degree_H"), py::arg("q_B"), py::arg("gamma_0"),
                  py::arg("claimed_b_is_a_em"), py::arg("claimed_v_is_a_eff"),
                  "WorldsheetGuardResult: the degree is not 2, the charge is not the circulation, nothing is claimed.")
      .def_static("ladder_stage_name", &API::ladder_stage_name,
                  "Name of the stages 0 (\"mode_census\") to 6 (\"oos_phenomenology\"); \"unknown\" for others.");
}

}  // namespace vkm
