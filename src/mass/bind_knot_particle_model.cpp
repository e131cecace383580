#include "mass/knot_metadata_arguments.hpp"
#include "mass/knot_particle_model.hpp"
#include "mass/mass_registrars.hpp"

namespace vkm {

namespace {

using M = KnotParticleModel;
using P = KnotParticleModelParams;

py::arg_v params() { return py::arg_v("params", P{}, "KnotParticleModelParams()"); }

}  // namespace

void register_particle_model(py::module_& m) {
  using R = KnotPrediction;
  bound_class<R>(m, "KnotPrediction", "The estimate of KnotParticleModel.")
      .def(py::init<>())
      .def_readwrite("gate", &R::gate, "Sector.")
      .def_readwrite("gate_factor", &R::gate_factor, "Factor of the sector.")
      .def_readwrite("xi", &R::xi, "Topological factor.")
      .def_readwrite("mass_ratio", &R::mass_ratio, "Mass over the electron's mass.")
      .def_readwrite("mass_kg", &R::mass_kg, "Mass, kg.")
      .def_readwrite("note", &R::note, "What the estimate rests on.");

  bound_class<P>(m, "KnotParticleModelParams", "Weights of KnotParticleModel, all 0 by default.")
      .def(py::init<>())
      .def_readwrite("a_k", &P::a_k, "Of the crossing number.")
      .def_readwrite("a_b", &P::a_b, "Of the braid index.")
      .def_readwrite("a_g", &P::a_g, "Of the genus.")
      .def_readwrite("a_vol", &P::a_vol, "Of hyperbolic_volume.")
      .def_readwrite("a_L", &P::a_L, "Of ropelength_like.")
      .def_readwrite("a_wr", &P::a_wr, "Of the writhe.")
      .def_readwrite("a_sep", &P::a_sep, "Of 1 / min_self_distance, a length.");

  bound_class<M>(m, "KnotParticleModel", "A mass estimate with constants of its own.")
      .def(py::init<const P&>(), params())
      .def("compute_xi", &M::compute_xi, py::arg("K"),
           "exp(a_L L + a_b b + a_k k + a_g g + a_vol V + a_wr writhe + a_sep / max(min_self_distance, 1e-9)), within\n"
           "1e-12 .. 1e12; L is ropelength_like and V is hyperbolic_volume.")
      .def("assign_gate", &M::assign_gate, py::arg("K"),
           "Unknown unless min_self_distance is positive; Exposed if it is below 0.2, the bending energy above 20 or\n"
           "the crossing number 8 or more; else Shielded.")
      .def("predict", &M::predict, py::arg("K"), "KnotPrediction: the electron's mass times gate factor and Xi.");
}

void register_particle_prediction(py::module_& m) {
  def_with_metadata<FourierBlock, P>(
      m, "predict_particle_from_fourier_block",
      [](const FourierBlock& block, const P& weights, const KnotMetadata& metadata) {
        return M(weights).predict(build_invariants_from_fourier_block(block, metadata, python_poll()));
      },
      R"(Predict particle quantities directly from a Fourier block and optional metadata.

KnotParticleModel(params).predict of build_invariants_from_fourier_block, whose arguments and errors hold.)",
      py::arg("block"), params());
  def_with_metadata<std::string, P>(
      m, "predict_particle_from_fseries",
      [](const std::string& path, const P& weights, const KnotMetadata& metadata) {
        return M(weights).predict(build_invariants_from_fseries(path, metadata, python_poll()));
      },
      R"(Predict particle quantities from a .fseries file using its largest Fourier block.

KnotParticleModel(params).predict of build_invariants_from_fseries, whose arguments and errors hold.)",
      py::arg("path"), params());
}

}  // namespace vkm
