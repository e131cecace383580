// The extension's entry, and the index of its interface: the ordered table of binders.

#include "module/binders.hpp"
#include "module/class_guards.hpp"
#include "module/list_bindings.hpp"

namespace vkm {

namespace {

struct Binder {
  const char* name;
  void (*bind)(py::module_&);
};

// The order is behaviour: signatures and defaults of a later binder name types of an earlier one, and overloads of
// one name are tried in the order of registration.
constexpr Binder binders[] = {
    {"ab_initio", bind_ab_initio},
    {"canonical_constants", bind_canonical_constants},
    {"master_equation", bind_master_equation},
    {"chronos_kelvin", bind_chronos_kelvin},
    {"tension_scales", bind_tension_scales},
    {"delay_mode", bind_delay_mode},
    {"atomic_bridge", bind_atomic_bridge},
    {"spectroscopic_gap", bind_spectroscopic_gap},
    {"clock_field", bind_clock_field},
    {"biot_savart", bind_biot_savart},
    {"fluid_dynamics", bind_fluid_dynamics},
    {"field_grids", bind_field_grids},
    {"curl3d", bind_curl3d},
    {"knot", bind_knot},
    {"frenet_helicity", bind_frenet_helicity},
    {"magnus_bernoulli", bind_magnus_bernoulli},
    {"multisector", bind_multisector},
    {"gravitational_potential", bind_gravitational_potential},
    {"hyperbolic_volume", bind_hyperbolic_volume},
    {"radiation_force", bind_radiation_force},
    {"swirl_field", bind_swirl_field},
    {"thermo", bind_thermo},
    {"time_evolution", bind_time_evolution},
    {"flow_closures", bind_flow_closures},
    {"vorticity_tools", bind_vorticity_tools},
    {"vkm_gravity", bind_vkm_gravity},
    {"vkm_mass", bind_vkm_mass},
    {"workbench", bind_workbench},
    {"spectral_operator", bind_spectral_operator},
    {"resolved_tube", bind_resolved_tube},
    {"filament_dynamics", bind_filament_dynamics},
    {"geometry_certificate", bind_geometry_certificate},
    {"gate_certificates", bind_gate_certificates},
    {"operational_spacetime", bind_operational_spacetime},
    {"qss_spectroscopy", bind_qss_spectroscopy},
    {"pipeline_provenance", bind_pipeline_provenance},
    {"core_torsion", bind_core_torsion},
    {"kam_diagnostics", bind_kam_diagnostics},
    {"value_origin", bind_value_origin},
    {"evidence_report", bind_evidence_report},
    {"action_phase", bind_action_phase},
    {"density_ontology", bind_density_ontology},
    {"rotor_participation", bind_rotor_participation},
    {"scaling_audit", bind_scaling_audit},
    {"worldsheet_guards", bind_worldsheet_guards},
    {"ideal_knot_regime", bind_ideal_knot_regime},
    {"transverse_projector", bind_transverse_projector},
    {"spectro_response", bind_spectro_response},
    {"maxwell_kinetic", bind_maxwell_kinetic},
    {"mechanical_falsifier", bind_mechanical_falsifier},
    {"swirl_tonic", bind_swirl_tonic},
};
static_assert(std::size(binders) == 51);

}  // namespace

}  // namespace vkm

PYBIND11_MODULE(_native, m) {
  m.doc() = "VKMcore Bindings";
  for (const auto& binder : vkm::binders) binder.bind(m);
  vkm::bind_list_bindings(m);
  vkm::guard_classes(m);
}
