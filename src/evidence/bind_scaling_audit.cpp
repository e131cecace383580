#include "evidence/scaling_audit.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_scaling_audit(py::module_& m) {
  py::enum_<PrimitiveSet>(m, "PrimitiveSet", "Sets of primitive quantities.")
      .value("PCal", PrimitiveSet::PCal, "Calibrated.")
      .value("POpen", PrimitiveSet::POpen, "Open: a rescale of the density may change them.")
      .value("PRef", PrimitiveSet::PRef, "Reference values.");

  py::enum_<ScalingClass>(m, "ScalingClass", "How an observable answers to a rescale of the density.")
      .value("A", ScalingClass::A, "Invariant.")
      .value("B", ScalingClass::B, "A normalisation that absorbs the factor.")
      .value("C", ScalingClass::C, "An absolute value, which takes the factor.")
      .value("Q", ScalingClass::Q, "A quantum or its normalisation.")
      .value("X", ScalingClass::X, "Unclassified: nothing may be inferred.");

  using P = PrimitiveSetMembership;
  bound_class<P>(m, "PrimitiveSetMembership", "The sets that a symbol belongs to.")
      .def_readonly("in_p_cal", &P::in_p_cal, "Calibrated.")
      .def_readonly("in_p_open", &P::in_p_open, "Open.")
      .def_readonly("in_p_ref", &P::in_p_ref, "A reference value.")
      .def_readonly("legacy_reference", &P::legacy_reference, "A reference that is kept for old inputs only.");

  using API = ScalingAuditAPI;
  bound_class<API>(m, "ScalingAuditAPI", "What a rescale of the density may change. Nothing here raises.")
      .def_static("scaling_class_name", &API::scaling_class_name, "Letter of a ScalingClass; \"?\" for other values.")
      .def_static("primitive_set_name", &API::primitive_set_name,
                  "\"P_cal\", \"P_open\" or \"P_ref\"; \"?\" for other values.")
      .def_static(
          "classify_symbol", [](const std::string& symbol) { return API::classify_symbol(symbol); },
          "PrimitiveSetMembership of a symbol such as \"rho_f\", case-sensitive; no set for unknown ones.")
      .def_static("rho_ref_legacy", &API::rho_ref_legacy, "The reference density of old inputs, 7e-7 kg/m^3.")
      .def_static("is_legacy_reference_density", &API::is_legacy_reference_density,
                  "Whether a density is exactly rho_ref_legacy().")
      .def_static(
          "classify_observable", [](const std::string& observable) { return API::classify_observable(observable); },
          "ScalingClass of an observable such as \"absolute_mass\", case-sensitive; X for unknown ones.")
      .def_static("class_a_invariant_under_rescale", &API::class_a_invariant_under_rescale,
                  "Always True, a policy: class A does not change under a rescale.")
      .def_static("class_x_blocks_inference", &API::class_x_blocks_inference,
                  "Always True, a policy: nothing may be inferred from class X.");
}

}  // namespace vkm
