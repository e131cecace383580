#include "module/binders.hpp"
#include "tube/tube_registrars.hpp"

namespace vkm {

void bind_resolved_tube(py::module_& m) {
  register_tube_records(m);
  register_rigidity_records(m);
  register_nnls_record(m);
  register_tightening_records(m);
  register_contact_stress_record(m);
  register_resolved_tube_geometry(m);
  register_tightener(m);
  register_contact_stress_map(m);
  register_nnls(m);
  register_contact_diagnosis(m);
  register_tightening_functions(m);
}

}  // namespace vkm
