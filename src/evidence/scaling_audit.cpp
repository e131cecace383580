#include "evidence/scaling_audit.hpp"

namespace vkm {

namespace {

constexpr PrimitiveSetMembership calibrated{.in_p_cal = true};
constexpr PrimitiveSetMembership open{.in_p_open = true};
constexpr PrimitiveSetMembership reference{.in_p_ref = true, .legacy_reference = true};

struct Symbol {
  std::string_view text;
  PrimitiveSetMembership membership;
};

constexpr Symbol symbols[] = {
    {"v_swirl", calibrated}, {"omega_c", calibrated},  {"\xCF\x89_c", calibrated},  // Greek omega
    {"rho_sub", open},       {"rho_eff", open},        {"rho_f", open},
    {"rho_ref", reference},  {"RHO_FLUID", reference}, {"RHO_FLUID_CANON", reference},
};

struct Observable {
  std::string_view text;
  ScalingClass scaling;
};

constexpr Observable observables[] = {
    {"dimensionless", ScalingClass::A},
    {"acceleration", ScalingClass::A},
    {"euler_balance", ScalingClass::A},
    {"c_T_squared", ScalingClass::A},
    {"field_norm", ScalingClass::B},
    {"absorbed_normalization", ScalingClass::B},
    {"absolute_energy", ScalingClass::C},
    {"absolute_force", ScalingClass::C},
    {"absolute_mass", ScalingClass::C},
    {"absolute_pressure", ScalingClass::C},
    {"impedance", ScalingClass::C},
    {"action_quantum", ScalingClass::Q},
    {"quantum_normalization", ScalingClass::Q},
};

constexpr double legacy_reference_density = 7e-7;  // kg/m^3

}  // namespace

std::string_view ScalingAuditAPI::scaling_class_name(ScalingClass scaling) {
  switch (scaling) {
    case ScalingClass::A:
      return "A";
    case ScalingClass::B:
      return "B";
    case ScalingClass::C:
      return "C";
    case ScalingClass::Q:
      return "Q";
    case ScalingClass::X:
      return "X";
  }
  return "?";
}

std::string_view ScalingAuditAPI::primitive_set_name(PrimitiveSet set) {
  switch (set) {
    case PrimitiveSet::PCal:
      return "P_cal";
    case PrimitiveSet::POpen:
      return "P_open";
    case PrimitiveSet::PRef:
      return "P_ref";
  }
  return "?";
}

PrimitiveSetMembership ScalingAuditAPI::classify_symbol(std::string_view symbol) {
  for (const Symbol& known : symbols) {
    if (symbol == known.text) return known.membership;
  }
  return {};
}

double ScalingAuditAPI::rho_ref_legacy() { return legacy_reference_density; }

bool ScalingAuditAPI::is_legacy_reference_density(double rho) { return rho == legacy_reference_density; }

ScalingClass ScalingAuditAPI::classify_observable(std::string_view observable) {
  for (const Observable& known : observables) {
    if (observable == known.text) return known.scaling;
  }
  return ScalingClass::X;
}

bool ScalingAuditAPI::class_a_invariant_under_rescale() { return true; }

bool ScalingAuditAPI::class_x_blocks_inference() { return true; }

}  // namespace vkm
