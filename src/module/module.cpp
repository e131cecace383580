// The extension's entry, and the index of its interface: the ordered table of binders.

#include "module/binders.hpp"
#include "module/list_bindings.hpp"

namespace vkm {

namespace {

struct Binder {
  const char* name;
  void (*bind)(py::module_&);
};

/// Stands in the table for a binder of which nothing exists yet.
void pending(py::module_&) {}

// The order is behaviour: signatures and defaults of a later binder name types of an earlier one, and overloads of
// one name are tried in the order of registration.
constexpr Binder binders[] = {
    {"ab_initio", bind_ab_initio},
    {"canonical_constants", bind_canonical_constants},
    {"master_equation", bind_master_equation},
    {"chronos_kelvin", pending},
    {"tension_scales", bind_tension_scales},
    {"delay_mode", pending},
    {"atomic_bridge", pending},
    {"spectroscopic_gap", pending},
    {"clock_field", pending},
    {"biot_savart", bind_biot_savart},
    {"fluid_dynamics", bind_fluid_dynamics},
    {"field_grids", bind_field_grids},
    {"curl3d", bind_curl3d},
    {"knot", bind_knot},
    {"frenet_helicity", bind_frenet_helicity},
    {"magnus_bernoulli", pending},
    {"multisector", bind_multisector},
    {"gravitational_potential", pending},
    {"hyperbolic_volume", bind_hyperbolic_volume},
    {"radiation_force", pending},
    {"swirl_field", pending},
    {"thermo", pending},
    {"time_evolution", bind_time_evolution},
    {"flow_closures", bind_flow_closures},
    {"vorticity_tools", pending},
    {"vkm_gravity", pending},
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
}
