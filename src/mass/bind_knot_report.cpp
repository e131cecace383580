#include "mass/knot_report.hpp"
#include "mass/mass_registrars.hpp"

namespace vkm {

namespace {

void register_report_records(py::module_& m) {
  using S = KnotState;
  bound_class<S>(m, "KnotState", "An entry of a data set. Only `inv` enters an evaluation.")
      .def(py::init<>())
      .def_readwrite("inv", &S::inv, "KnotInvariants.")
      .def_readwrite("contact_score", &S::contact_score, "The caller's, or None.")
      .def_readwrite("hopf_like_score", &S::hopf_like_score, "The caller's, or None.")
      .def_readwrite("energy_score", &S::energy_score, "The caller's, or None.")
      .def_readwrite("derived", &S::derived, "The caller's KnotDerived; the evaluators do not write it.");

  using R = KnotReportRow;
  bound_class<R>(m, "KnotReportRow", "A knot and its mass in a row.")
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

py::arg_v constants() { return py::arg_v("constants", CanonicalConstants{}, "CanonicalConstants()"); }

template <class Model, class Params>
void def_evaluator(py::module_& m, const char* name, const char* params_default, const char* doc) {
  m.def(
      name,
      [](const KnotInvariants& K, const Params& params, const CanonicalConstants& values) {
        return MassFunctional(values).evaluate(K, Model(params));
      },
      py::arg("K"), py::arg_v("params", Params{}, params_default), constants(), doc);
}

template <class Model, class Params>
void def_dataset_evaluator(py::module_& m, const char* name, const char* params_default, const char* doc) {
  m.def(
      name,
      [](const std::vector<KnotState>& states, Params params, CanonicalConstants values) {
        return evaluate_knot_dataset(states, Model(params), values, python_poll());
      },
      py::arg("dataset"), py::arg_v("params", Params{}, params_default), constants(), doc);
}

}  // namespace

void register_knot_report_records(py::module_& m) { register_report_records(m); }

void register_knot_report(py::module_& m) {
  constexpr const char* simple_default = "SimpleInvariantXiModelParams()";
  constexpr const char* canonical_default = "VKMCanonicalXiModelParams()";
  m.def("make_knot_report_row", &make_knot_report_row, py::arg("K"), py::arg("D"),
        "Create a compact report row from invariants and derived quantities.");
  def_evaluator<SimpleInvariantXiModel, SimpleInvariantXiModelParams>(
      m, "evaluate_single_knot", simple_default,
      R"(Evaluate one knot using SimpleInvariantXiModel and canonical constants.

Returns the KnotDerived of MassFunctional.evaluate. Raises ValueError for constants that are not positive.)");
  def_evaluator<VKMCanonicalXiModel, VKMCanonicalXiModelParams>(
      m, "evaluate_single_knot_vkm_canonical", canonical_default,
      R"(Evaluate one knot using VKMCanonicalXiModel and canonical constants.

Returns the KnotDerived of MassFunctional.evaluate. Raises ValueError for constants that are not positive.)");
  def_dataset_evaluator<SimpleInvariantXiModel, SimpleInvariantXiModelParams>(
      m, "evaluate_knot_dataset", simple_default,
      R"(Evaluate a dataset of KnotState entries into report rows.

One KnotReportRow an entry, in order, by MassFunctional.evaluate and SimpleInvariantXiModel. Raises ValueError for
constants that are not positive, even without entries.)");
  def_dataset_evaluator<VKMCanonicalXiModel, VKMCanonicalXiModelParams>(
      m, "evaluate_knot_dataset_vkm_canonical", canonical_default,
      R"(Evaluate a dataset of KnotState entries using VKMCanonicalXiModel.

One KnotReportRow an entry, in order. Raises ValueError for constants that are not positive, even without entries.)");
}

}  // namespace vkm
