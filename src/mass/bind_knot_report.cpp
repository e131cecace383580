#include "mass/knot_report.hpp"
#include "mass/mass_registrars.hpp"

namespace vkm {

void register_knot_report(py::module_& m) {
  using S = KnotState;
  py::class_<S>(m, "KnotState", "An entry of a data set. Only `inv` enters an evaluation.")
      .def(py::init<>())
      .def_readwrite("inv", &S::inv, "KnotInvariants.")
      .def_readwrite("contact_score", &S::contact_score, "The caller's, or None.")
      .def_readwrite("hopf_like_score", &S::hopf_like_score, "The caller's, or None.")
      .def_readwrite("energy_score", &S::energy_score, "The caller's, or None.")
      .def_readwrite("derived", &S::derived, "The caller's KnotDerived; the evaluators do not write it.");

  using R = KnotReportRow;
  py::class_<R>(m, "KnotReportRow", "A knot and its mass in a row.")
      .def(py::init<>())
      .def_readwrite("name", &R::name, "Knot name.")
      .def_readwrite("k", &R::k, "Crossing number.")
      .def_readwrite("b", &R::b, "Braid index.")
      .def_readwrite("g", &R::g, "Seifert genus.")
      .def_readwrite("vol_h", &R::vol_h, "Effective volume.")
      .def_readwrite("L_tot", &R::L_tot, "Effective ropelength.")
      .def_readwrite("gate", &R::gate, "Sector.")
      .def_readwrite("xi", &R::xi, "Topological factor.")
      .def_readwrite("mass_ratio", &R::mass_ratio, "Mass over the electron's mass.")
      .def_readwrite("mass_kg", &R::mass_kg, "Mass, kg.");
}

namespace {

const char* const simple_params = "SimpleInvariantXiModelParams()";
const char* const canonical_params = "VKMCanonicalXiModelParams()";

py::arg_v constants_argument() { return py::arg_v("constants", CanonicalConstants{}, "CanonicalConstants()"); }

template <class Model, class Params>
void def_single(py::module_& m, const char* name, const char* params_default, const char* doc) {
  m.def(
      name,
      [](const KnotInvariants& K, const Params& params, const CanonicalConstants& constants) {
        return MassFunctional(constants).evaluate(K, Model(params));
      },
      py::arg("K"), py::arg_v("params", Params{}, params_default), constants_argument(), doc);
}

template <class Model, class Params>
void def_dataset(py::module_& m, const char* name, const char* params_default, const char* doc) {
  m.def(
      name,
      [](const std::vector<KnotState>& dataset, const Params& params, const CanonicalConstants& constants) {
        return evaluate_knot_dataset(dataset, Model(params), constants, python_poll());
      },
      py::arg("dataset"), py::arg_v("params", Params{}, params_default), constants_argument(), doc);
}

}  // namespace

void register_knot_evaluations(py::module_& m) {
  using Simple = SimpleInvariantXiModel;
  using Canonical = VKMCanonicalXiModel;
  m.def("make_knot_report_row", &make_knot_report_row, py::arg("K"), py::arg("D"),
        "Create a compact report row from invariants and derived quantities.");
  def_single<Simple, SimpleInvariantXiModelParams>(
      m, "evaluate_single_knot", simple_params,
      R"(Evaluate one knot using SimpleInvariantXiModel and canonical constants.

Returns the KnotDerived of MassFunctional.evaluate. Raises ValueError for constants that are not positive.)");
  def_single<Canonical, VKMCanonicalXiModelParams>(
      m, "evaluate_single_knot_vkm_canonical", canonical_params,
      R"(Evaluate one knot using VKMCanonicalXiModel and canonical constants.

Returns the KnotDerived of MassFunctional.evaluate. Raises ValueError for constants that are not positive.)");
  def_dataset<Simple, SimpleInvariantXiModelParams>(
      m, "evaluate_knot_dataset", simple_params,
      R"(Evaluate a dataset of KnotState entries into report rows.

One KnotReportRow an entry, in order, by MassFunctional.evaluate and SimpleInvariantXiModel. Raises ValueError for
constants that are not positive, even without entries.)");
  def_dataset<Canonical, VKMCanonicalXiModelParams>(
      m, "evaluate_knot_dataset_vkm_canonical", canonical_params,
      R"(Evaluate a dataset of KnotState entries using VKMCanonicalXiModel.

One KnotReportRow an entry, in order. Raises ValueError for constants that are not positive, even without entries.)");
}

}  // namespace vkm
