#include "evidence/spectro_response.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_spectro_response(py::module_& m) {
  using R = SpectroResponseResult;
  bound_class<R>(m, "SpectroResponseResult", "A transition and its linear response.")
      .def_readonly("delta_E", &R::delta_E, "Transition energy, J.")
      .def_readonly("nu", &R::nu, "delta_E / h, Hz.")
      .def_readonly("delta_nu", &R::delta_nu, "Linear response, Hz.")
      .def_readonly("double_count_with_xi_k", &R::double_count_with_xi_k, "Whether xi_K holds the response already.")
      .def_readonly("passed", &R::passed, "The response is finite and counted once.")
      .def_readonly("message", &R::message, "The verdict in words.");

  using API = SpectroResponseAPI;
  bound_class<API>(m, "SpectroResponseAPI", "Transition energies and line shifts. No number raises.")
      .def_static("configuration_transition_energy", &API::configuration_transition_energy,
                  "First minus second energy, J; NaN unless both are finite.")
      .def_static("transition_frequency", &API::transition_frequency,
                  "Of (delta_E, h): delta_E / h; NaN unless h > 0 and delta_E is finite.")
      .def_static("linear_response_delta_nu", &API::linear_response_delta_nu,
                  "Of (h, list, list): the lists' dot product over h. NaN unless h > 0 and the lists are of one\n"
                  "length; 0 for empty lists.")
      .def_static("rejects_double_count_with_xi_k", &API::rejects_double_count_with_xi_k,
                  "The argument: a response that xi_K holds already is rejected.")
      .def_static("evaluate", &API::evaluate,
                  "SpectroResponseResult of (energy, energy, h, list, list, whether xi_K holds the response already).");
}

}  // namespace vkm
