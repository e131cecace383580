#include "evidence/worldsheet_guards.hpp"

#include "evidence/differ.hpp"

namespace vkm {

std::int32_t WorldsheetGuardsAPI::form_degree_H(std::int32_t degree) { return degree; }

bool WorldsheetGuardsAPI::two_form_degree_guard(std::int32_t sphere_dimension, std::int32_t form_degree_H) {
  return sphere_dimension == form_degree_H;
}

bool WorldsheetGuardsAPI::charge_differs_from_circulation(double q_B, double gamma_0, double abs_tol) {
  return differ(q_B, gamma_0, abs_tol);
}

bool WorldsheetGuardsAPI::b_field_not_identified_with_a_em(bool claimed) { return !claimed; }

bool WorldsheetGuardsAPI::material_velocity_not_a_eff(bool claimed) { return !claimed; }

WorldsheetGuardResult WorldsheetGuardsAPI::evaluate(std::int32_t form_degree_H, double q_B, double gamma_0,
                                                    bool claimed_b_is_a_em, bool claimed_v_is_a_eff) {
  WorldsheetGuardResult result;
  result.form_degree_ok = form_degree_H != 2;
  result.charge_not_gamma0 = charge_differs_from_circulation(q_B, gamma_0);
  result.b_not_a_em = b_field_not_identified_with_a_em(claimed_b_is_a_em);
  result.material_v_not_a_eff = material_velocity_not_a_eff(claimed_v_is_a_eff);
  result.passed = result.form_degree_ok && result.charge_not_gamma0 && result.b_not_a_em && result.material_v_not_a_eff;
  result.message = result.passed ? "worldsheet guards passed" : "worldsheet guard failure";
  return result;
}

std::string_view WorldsheetGuardsAPI::ladder_stage_name(std::int32_t stage) {
  switch (stage) {
    case 0:
      return "mode_census";
    case 1:
      return "closure";
    case 2:
      return "jacobi";
    case 3:
      return "representations";
    case 4:
      return "anomalies";
    case 5:
      return "running";
    case 6:
      return "oos_phenomenology";
    default:
      return "unknown";
  }
}

}  // namespace vkm
