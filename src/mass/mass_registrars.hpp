#pragma once

/// The registrars of this room, of which binders are composed: those of bind_knot in the order that their signatures
/// need, and that of bind_flow_closures.

#include "module/border.hpp"

namespace vkm {

void register_knot_invariants(py::module_& m);
void register_mass_functional(py::module_& m);
void register_knot_report_records(py::module_& m);
void register_particle_model(py::module_& m);
void register_invariant_builders(py::module_& m);
void register_particle_prediction(py::module_& m);
void register_knot_report(py::module_& m);

void register_golden_nls_closure(py::module_& m);

}  // namespace vkm
