#pragma once

/// The registrars of which bind_resolved_tube is composed, in the order of the names in the module: records,
/// classes, functions.

#include "module/border.hpp"

namespace vkm {

/// Namespaces of static functions in Python.
struct ResolvedTubeGeometry {};
struct ResolvedTubeTightener {};
struct ContactStressMap {};

void register_tube_records(py::module_& m);
void register_rigidity_records(py::module_& m);
void register_nnls_record(py::module_& m);
void register_tightening_records(py::module_& m);
void register_contact_stress_record(py::module_& m);
void register_resolved_tube_geometry(py::module_& m);
void register_tightener(py::module_& m);
void register_contact_stress_map(py::module_& m);
void register_nnls(py::module_& m);
void register_contact_diagnosis(py::module_& m);
void register_tightening_functions(py::module_& m);

}  // namespace vkm
