#include "module/binders.hpp"
#include "tube/tube_registrars.hpp"

namespace vkm {

void bind_resolved_tube(py::module_& m) {
  // Types first: signatures and default arguments of later registrars name them.
  register_resolved_tube_geometry(m);
  register_rigidity(m);
  register_nnls(m);
  register_tightener(m);
}

}  // namespace vkm
