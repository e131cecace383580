#include "evidence/swirl_tonic.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_swirl_tonic(py::module_& m) {
  using R = SwirlTonicResult;
  bound_class<R>(m, "SwirlTonicResult", "Circulation and material holonomy of a sampled loop.")
      .def_readonly("circulation", &R::circulation, "Sum of u . dl.")
      .def_readonly("holonomy", &R::holonomy, "Circulation over scale.")
      .def_readonly("material_not_a_eff", &R::material_not_a_eff, "Whether no identification with A_eff is claimed.")
      .def_readonly("passed", &R::passed, "The holonomy is finite and nothing is claimed.")
      .def_readonly("message", &R::message, "The verdict in words.");

  using API = SwirlTonicAPI;
  bound_class<API>(m, "SwirlTonicAPI", "Circulation of a sampled loop. No number raises.")
      .def_static("stokes_circulation", &API::stokes_circulation,
                  "Of six lists (u_x, u_y, u_z, dl_x, dl_y, dl_z): the sum of u . dl. NaN for empty lists and for\n"
                  "lists of different lengths.")
      .def_static("material_holonomy", &API::material_holonomy,
                  "circulation / scale; NaN unless scale > 0 and the circulation is finite.")
      .def_static("material_tonic_not_a_eff", &API::material_tonic_not_a_eff,
                  "The negation of the claim that the material tonic is A_eff.")
      .def_static("evaluate", &API::evaluate,
                  "SwirlTonicResult of the six lists of stokes_circulation, the scale and the claim.");
}

}  // namespace vkm
