#include "evidence/ideal_knot_regime.hpp"
#include "module/binders.hpp"

namespace vkm {

void bind_ideal_knot_regime(py::module_& m) {
  py::enum_<KnotRegime>(m, "KnotRegime", "Shape of a knot's tube.")
      .value("Compact", KnotRegime::Compact, "Curvature or separation is of the order of the core.")
      .value("Slender", KnotRegime::Slender, "The core is thin.")
      .value("Indeterminate", KnotRegime::Indeterminate, "Cannot be judged.");

  using R = IdealKnotRegimeResult;
  bound_class<R>(m, "IdealKnotRegimeResult", "The regime of a knot's tube.")
      .def_readonly("epsilon_kappa", &R::epsilon_kappa, "a_core kappa_max.")
      .def_readonly("epsilon_sep", &R::epsilon_sep, "a_core / d_sep.")
      .def_readonly("regime", &R::regime, "KnotRegime.")
      .def_readonly("helicity_moffatt_ricca", &R::helicity_moffatt_ricca, "gamma^2 (writhe + twist).")
      .def_readonly("kkt_residual", &R::kkt_residual, "As given.")
      .def_readonly("lia_kam_excluded", &R::lia_kam_excluded, "Whether the regime is Compact.")
      .def_readonly("message", &R::message, "The verdict in words.");

  using API = IdealKnotRegimeAPI;
  bound_class<API>(m, "IdealKnotRegimeAPI", "Compact or slender tubes of knots. Nothing here raises.")
      .def_static("epsilon_kappa", &API::epsilon_kappa,
                  "Of (a_core, kappa_max): their product; NaN unless a_core > 0 and kappa_max >= 0.")
      .def_static("epsilon_sep", &API::epsilon_sep, "Of (a_core, d_sep): a_core / d_sep; NaN unless both are positive.")
      .def_static("classify_regime", &API::classify_regime, py::arg("eps_kappa"), py::arg("eps_sep"),
                  py::arg("order_one") = 0.3,
                  "KnotRegime: Compact if either number is at least order_one, Slender if both are below,\n"
                  "Indeterminate if one of them is not finite.")
      .def_static("moffatt_ricca_helicity", &API::moffatt_ricca_helicity,
                  "Of (gamma, writhe, twist): gamma^2 (writhe + twist) (Moffatt & Ricca 1992);\n"
                  "NaN unless all are finite.")
      .def_static("evaluate", &API::evaluate, py::arg("a_core"), py::arg("kappa_max"), py::arg("d_sep"),
                  py::arg("gamma"), py::arg("writhe"), py::arg("twist"), py::arg("kkt_residual") = 0.0,
                  "IdealKnotRegimeResult of a core radius, the largest curvature, the least separation of strands,\n"
                  "the circulation, writhe and twist; classified with order_one = 0.3.")
      .def_static("regime_name", &API::regime_name,
                  "\"compact\" or \"slender\"; \"indeterminate\" for all other values.");
}

}  // namespace vkm
