#pragma once

/// Guards of the worldsheet coupling: the degree of its forms, and identifications that the theory forbids. q_B charge
/// of the two-form field, gamma_0 circulation quantum.

#include <cstdint>
#include <string>
#include <string_view>

namespace vkm {

struct WorldsheetGuardResult {
  bool form_degree_ok = false;
  bool charge_not_gamma0 = false;
  bool b_not_a_em = false;
  bool material_v_not_a_eff = false;
  bool passed = false;  ///< all four
  std::string message;
};

struct WorldsheetGuardsAPI {
  /// The degree as given.
  static std::int32_t form_degree_H(std::int32_t degree);
  /// Whether the two are equal. `evaluate` tests the degree in the opposite sense; both are meant.
  static bool two_form_degree_guard(std::int32_t sphere_dimension, std::int32_t form_degree_H);
  /// True where they are more than abs_tol apart, or one of them is not finite.
  static bool charge_differs_from_circulation(double q_B, double gamma_0, double abs_tol = 0.0);
  static bool b_field_not_identified_with_a_em(bool claimed);
  static bool material_velocity_not_a_eff(bool claimed);
  /// form_degree_ok: the field strength H is not of degree 2.
  static WorldsheetGuardResult evaluate(std::int32_t form_degree_H, double q_B, double gamma_0, bool claimed_b_is_a_em,
                                        bool claimed_v_is_a_eff);
  /// Stages 0 to 6, from "mode_census" to "oos_phenomenology"; "unknown" for others.
  static std::string_view ladder_stage_name(std::int32_t stage);
};

}  // namespace vkm
