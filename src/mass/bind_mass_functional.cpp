#include "mass/mass_functional.hpp"
#include "mass/mass_registrars.hpp"
#include "mass/xi_model.hpp"

namespace vkm {

namespace {

void register_functional_records(py::module_& m) {
  using C = CanonicalConstants;
  bound_class<C>(m, "CanonicalConstants",
                 "Constants of the knot models, SI units. Independent numbers: a change of one changes no other.")
      .def(py::init<>())
      .def_readwrite("r_c", &C::r_c, "Core radius, m.")
      .def_readwrite("lambda_c", &C::lambda_c, "Compton wavelength, m.")
      .def_readwrite("m_e", &C::m_e, "Electron mass, kg.")
      .def_readwrite("rho_f", &C::rho_f, "Fluid density, kg/m^3.")
      .def_readwrite("v_swirl", &C::v_swirl, "Swirl speed, m/s.")
      .def_readwrite("c", &C::c, "Speed of light, m/s.")
      .def_readwrite("rho_m", &C::rho_m, "Mass-equivalent density, kg/m^3.")
      .def_readwrite("rho_horn", &C::rho_horn, "Horn envelope density, kg/m^3.");

  using D = KnotDerived;
  bound_class<D>(m, "KnotDerived", "The mass of a knot, and how it came about.")
      .def(py::init<>())
      .def_readwrite("gate", &D::gate, "Sector.")
      .def_readwrite("gate_factor", &D::gate_factor, "Factor of the sector.")
      .def_readwrite("xi", &D::xi, "Topological factor.")
      .def_readwrite("mass_ratio", &D::mass_ratio, "Mass over the electron's mass.")
      .def_readwrite("mass_kg", &D::mass_kg, "Mass, kg.")
      .def_readwrite("valid", &D::valid, "True once evaluated.")
      .def_readwrite("note", &D::note, "The formula used.");
}

template <class Model, class Params>
void register_model(py::module_& m, const char* name, const char* params_default, const char* doc, const char* xi_doc,
                    const char* gate_doc) {
  bound_class<Model>(m, name, doc)
      .def(py::init<const Params&>(), py::arg_v("params", Params{}, params_default))
      .def("compute_xi", &Model::compute_xi, py::arg("K"), xi_doc)
      .def("assign_gate", &Model::assign_gate, py::arg("K"), gate_doc);
}

void register_models(py::module_& m) {
  using S = SimpleInvariantXiModelParams;
  bound_class<S>(m, "SimpleInvariantXiModelParams", "Weights of SimpleInvariantXiModel, all 0 by default.")
      .def(py::init<>())
      .def_readwrite("a_k", &S::a_k, "Of the crossing number.")
      .def_readwrite("a_b", &S::a_b, "Of the braid index.")
      .def_readwrite("a_g", &S::a_g, "Of the genus.")
      .def_readwrite("a_vol", &S::a_vol, "Of the effective volume.")
      .def_readwrite("a_L", &S::a_L, "Of the effective ropelength.")
      .def_readwrite("a_chi", &S::a_chi, "Of the chirality.");
  register_model<SimpleInvariantXiModel, S>(
      m, "SimpleInvariantXiModel", "SimpleInvariantXiModelParams()", "Xi as the exponential of a weighted sum.",
      "exp(a_vol V + a_b b + a_k k + a_g g + a_L L + a_chi chi), V and L the effective volume and ropelength.",
      "Exposed above four crossings, else Shielded.");

  using V = VKMCanonicalXiModelParams;
  bound_class<V>(m, "VKMCanonicalXiModelParams", "Weights of VKMCanonicalXiModel, all 0 by default.")
      .def(py::init<>())
      .def_readwrite("alpha_C", &V::alpha_C, "Of C.")
      .def_readwrite("beta_L", &V::beta_L, "Of the effective ropelength.")
      .def_readwrite("gamma_H", &V::gamma_H, "Of H.")
      .def_readwrite("delta_V", &V::delta_V, "Of the effective volume.")
      .def_readwrite("golden_layer", &V::golden_layer, "Powers of phi^-2.")
      .def_readwrite("use_crossing_number_as_C", &V::use_crossing_number_as_C, "C is the crossing number, else 0.")
      .def_readwrite("use_writhe_as_H", &V::use_writhe_as_H, "H is the writhe, else 0.");
  register_model<VKMCanonicalXiModel, V>(
      m, "VKMCanonicalXiModel", "VKMCanonicalXiModelParams()", "Xi as a weighted sum on a golden layer.",
      "phi^(-2 golden_layer) (alpha_C C + beta_L L + gamma_H H + delta_V V), phi the golden ratio.",
      "Exposed for a hyperbolic knot above four crossings, else Shielded.");
}

/// One overload a model: the base of the models has no face in Python.
template <class Model>
void def_evaluations(py::class_<MassFunctional>& cls) {
  cls.def(
      "evaluate",
      [](const MassFunctional& self, const KnotInvariants& K, const Model& model) { return self.evaluate(K, model); },
      py::arg("K"), py::arg("model"), "KnotDerived by rho_m r_c^3 gate Xi / S^2, S = sqrt(1 - v_swirl^2 / c^2).");
  cls.def(
      "evaluate_electron_normalized",
      [](const MassFunctional& self, const KnotInvariants& K, const Model& model) {
        return self.evaluate_electron_normalized(K, model);
      },
      py::arg("K"), py::arg("model"), "KnotDerived by the older form m_e gate Xi.");
}

}  // namespace

void register_mass_functional(py::module_& m) {
  register_functional_records(m);
  register_models(m);
  using F = MassFunctional;
  auto functional =
      bound_class<F>(m, "MassFunctional",
                     "Masses from invariants. Raises ValueError unless r_c, lambda_c, m_e, rho_m and c are "
                     "positive.");
  functional
      .def(py::init<const CanonicalConstants&>(), py::arg_v("constants", CanonicalConstants{}, "CanonicalConstants()"))
      .def("baseline_mass_from_ropelength", &F::baseline_mass_from_ropelength, py::arg("L_tot"),
           "2 pi^3 rho_m r_c^5 L_tot / lambda_c^2, kg.")
      .def("baseline_mass_from_horn_ropelength", &F::baseline_mass_from_horn_ropelength, py::arg("L_tot"),
           "The same with rho_horn. Raises ValueError for a negative rho_horn.")
      .def("bare_master_mass_scale", &F::bare_master_mass_scale, "rho_m r_c^3, kg.")
      .def("gate_factor", &F::gate_factor, py::arg("G"), "lambda_c / (pi r_c) for an exposed sector, else 1.");
  def_evaluations<SimpleInvariantXiModel>(functional);
  def_evaluations<VKMCanonicalXiModel>(functional);
}

}  // namespace vkm
