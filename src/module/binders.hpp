#pragma once

/// The binders, one function each, beside the code that they bind. The order of the calls is in module.cpp.

#include "module/border.hpp"

namespace vkm {

void bind_ab_initio(py::module_& m);
void bind_canonical_constants(py::module_& m);
void bind_master_equation(py::module_& m);
void bind_chronos_kelvin(py::module_& m);
void bind_tension_scales(py::module_& m);
void bind_delay_mode(py::module_& m);
void bind_atomic_bridge(py::module_& m);
void bind_spectroscopic_gap(py::module_& m);
void bind_clock_field(py::module_& m);
void bind_biot_savart(py::module_& m);
void bind_fluid_dynamics(py::module_& m);
void bind_field_grids(py::module_& m);
void bind_curl3d(py::module_& m);
void bind_knot(py::module_& m);
void bind_frenet_helicity(py::module_& m);
void bind_magnus_bernoulli(py::module_& m);
void bind_multisector(py::module_& m);
void bind_gravitational_potential(py::module_& m);
void bind_hyperbolic_volume(py::module_& m);
void bind_radiation_force(py::module_& m);
void bind_swirl_field(py::module_& m);
void bind_thermo(py::module_& m);
void bind_time_evolution(py::module_& m);
void bind_flow_closures(py::module_& m);
void bind_vorticity_tools(py::module_& m);
void bind_vkm_gravity(py::module_& m);
void bind_vkm_mass(py::module_& m);
void bind_workbench(py::module_& m);
void bind_spectral_operator(py::module_& m);
void bind_resolved_tube(py::module_& m);
void bind_filament_dynamics(py::module_& m);
void bind_geometry_certificate(py::module_& m);
void bind_gate_certificates(py::module_& m);
void bind_operational_spacetime(py::module_& m);
void bind_qss_spectroscopy(py::module_& m);
void bind_pipeline_provenance(py::module_& m);
void bind_core_torsion(py::module_& m);
void bind_kam_diagnostics(py::module_& m);
void bind_value_origin(py::module_& m);
void bind_evidence_report(py::module_& m);
void bind_action_phase(py::module_& m);
void bind_density_ontology(py::module_& m);
void bind_rotor_participation(py::module_& m);
void bind_scaling_audit(py::module_& m);
void bind_worldsheet_guards(py::module_& m);
void bind_ideal_knot_regime(py::module_& m);
void bind_transverse_projector(py::module_& m);
void bind_spectro_response(py::module_& m);
void bind_maxwell_kinetic(py::module_& m);
void bind_mechanical_falsifier(py::module_& m);
void bind_swirl_tonic(py::module_& m);

}  // namespace vkm
