#include "module/binders.hpp"

namespace vkm {

void bind_hyperbolic_volume(py::module_& m) {
  m.def(
      "hyperbolic_volume_from_pd",
      [](const std::vector<std::array<int, 4>>& pd) {
        py::list rows;
        for (const auto& [a, b, c, d] : pd) {
          py::list row;
          for (const int label : {a, b, c, d}) row.append(label);
          rows.append(row);
        }
        // Looked up at each call: a caller may install or replace the module at any time.
        const py::module_ solver = py::module_::import("vkm_hypvol_no_deps");
        const py::object volume = solver.attr("hyperbolic_volume_from_pd")(rows, py::arg("verbose") = false);
        return volume.cast<double>();
      },
      py::arg("pd"),
      R"(Hyperbolic volume from PD (delegates to Python if no native solver).

`pd` is a list of rows of four labels, as pd_from_curve returns it. The work is done by the Python module
vkm_hypvol_no_deps, which the user supplies: its hyperbolic_volume_from_pd(pd, verbose=False) must return a number.
ImportError where the module is missing; whatever it raises comes through; RuntimeError if its result is no number.)");
}

}  // namespace vkm
