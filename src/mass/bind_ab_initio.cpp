#include "mass/particle_evaluator.hpp"
#include "mass/zoo_evaluator.hpp"
#include "module/binders.hpp"

namespace vkm {

namespace {

void bind_zoo(py::module_& m) {
  using R = ZooResult;
  bound_class<R>(m, "ZooResult", "The golden mass of an entry of the Master Dictionary.")
      .def(py::init<>())
      .def_readwrite("identifier", &R::identifier, "The entry's name.")
      .def_readwrite("mass_mev", &R::mass_mev, "Mass, MeV.")
      .def_readwrite("bridge_b", &R::bridge_b, "Bridge number.")
      .def_readwrite("genus_g", &R::genus_g, "Genus.");

  using Z = ZooEvaluator;
  bound_class<Z>(m, "ZooEvaluator",
                 "Masses of the Master Dictionary of knots and links: bridge_b m_0 phi^(-2 genus_g) with m_0 = "
                 "1.0290437436843307e-54 kg and the golden ratio phi.\n\nStatic functions.")
      .def_static("evaluate_all_golden_nls", &Z::evaluate_all_golden_nls,
                  "Run ab initio Golden NLS mass evaluation for the entire VKM Master Dictionary.\n\n"
                  "A list of ZooResult, in the order of the identifiers' bytes.")
      .def_static("get_entry_mass", &Z::get_entry_mass, py::arg("identifier"),
                  "Get the mass of a specific knot by its dictionary ID.\n\n"
                  "In MeV; -1.0 for an identifier that the dictionary does not hold.");
}

void bind_records(py::module_& m) {
  using T = TailApproxConfig;
  bound_class<T>(m, "TailApproxConfig", "How the energy of the flow outside the core is estimated.")
      .def(py::init<>())
      .def_readwrite("enabled", &T::enabled, "Unless true the tail is 0.")
      .def_readwrite("radial_samples", &T::radial_samples, "Shells around a vertex; at least 1 is taken.")
      .def_readwrite("azimuth_samples", &T::azimuth_samples, "Samples on a shell; at least 1 is taken.")
      .def_readwrite("r_min_factor", &T::r_min_factor, "Inner radius in core radii; at least 1.01 is taken.")
      .def_readwrite("r_max_factor", &T::r_max_factor,
                     "Outer radius in core radii; at least 1.1 inner radii are taken.")
      .def_readwrite("exclusion_ds_factor", &T::exclusion_ds_factor,
                     "Length left out on either side of a vertex, in mean segment lengths.")
      .def_readwrite("use_log_shell_weight", &T::use_log_shell_weight,
                     "Carried along without effect: shells are always weighted by their area.");

  using R = RelativisticMetrics;
  auto metrics = bound_class<R>(m, "RelativisticMetrics", "Helicity and clock rates of a filament in its own flow.");
  metrics.def(py::init<>()).def_readwrite("helicity", &R::helicity, "Mean of velocity . vorticity, m/s^2.");
  def_list(metrics, "time_dilation_map", &R::time_dilation_map, "Clock rate at each point.");
  metrics.def_readwrite("core_time_dilation", &R::core_time_dilation, "Mean of the clock rates.");
}

}  // namespace

void bind_ab_initio(py::module_& m) {
  using E = ParticleEvaluator;
  bind_records(m);
  bound_class<E>(m, "ParticleEvaluator",
                 "From a catalogue knot to a mass in MeV without a fitted parameter.\n\n"
                 "Holds closed filaments. relax() gives them the size of the electron; lengths are in metres from "
                 "then on.")
      .def(py::init([](const std::string& knot_ab_id, std::int32_t resolution, bool allow) {
             return E(knot_ab_id, resolution, allow, python_poll());
           }),
           py::arg("knot_ab_id"), py::arg("resolution") = 4000,
           py::arg("allow_non_canonical_geometry_for_research_only") = false,
           "The filaments of an ideal block 'n:m:k' of the catalogue, one a component, each of `resolution` points.\n\n"
           "RuntimeError if the id has another form (unless allowed for research) or is not found; MemoryError for an "
           "absurd resolution.")
      .def(py::init<std::vector<std::vector<Vec3>>>(), py::arg("input_filaments"),
           "A copy of closed filaments, each a list of points of three floats. Any geometry is accepted.")
      .def(
          "relax",
          [](E& self, std::int32_t iterations, double timestep) {
            const Changing changing(&self, "relax");
            self.relax(iterations, timestep, python_poll());
          },
          py::arg("iterations") = 1000, py::arg("timestep") = 0.01,
          "Relax the filaments by damped dynamics and scale them about their mean to the electron radius, "
          "2.81794034e-15 m.\n\nWith P the points, C their mean and d = P[i] - P[j], each sweep sums\n"
          "    F = ((P[next] - P) + (P[prev] - P)) 25 + (C - P) 15 + sum of (d / |d|) min(200, 0.5 / |d|^4)\n"
          "over the partners with 1e-8 < |d|^2 < 0.04, and steps V = (timestep F + V) 0.7, P = timestep V + P. The "
          "same input gives the same bits on every machine. Ctrl-C leaves the filaments as they were. RuntimeError "
          "from "
          "within another relax of the same evaluator (in a signal's handler, or another thread).")
      .def("get_dimless_ropelength", &E::get_dimless_ropelength, py::arg("stretch_lambda") = 1.0,
           "Length of all filaments, closing segments included, in electron radii, over stretch_lambda squared.")
      .def("get_physical_length_m", &E::get_physical_length_m, "Length of all filaments, m.")
      .def("compute_core_energy_J", &E::compute_core_energy_J,
           "Core energy, J: length times the line tension 14.5267535 J/m.")
      .def(
          "compute_tail_energy_J",
          [](E self, bool include_tail) { return self.compute_tail_energy_J(include_tail, python_poll()); },
          py::arg("include_tail") = false,
          "Energy of the flow outside the core, J: the surrogate if include_tail, else 0.")
      .def(
          "get_mass_mev_ab_initio",
          [](E self, bool include_tail) { return self.get_mass_mev_ab_initio(include_tail, python_poll()); },
          py::arg("include_tail") = false, "Mass, MeV: core energy, and the tail's if include_tail and it is enabled.")
      .def("get_core_mass_mev_only", &E::get_core_mass_mev_only, "Mass of the core energy alone, MeV.")
      .def("set_tail_approx_config", &E::set_tail_approx_config, py::arg("config"),
           "Copy in a TailApproxConfig for the tail surrogate.")
      .def(
          "get_tail_approx_config", [](const E& self) { return TailApproxConfig(self.get_tail_approx_config()); },
          "A copy of the tail's configuration.")
      .def(
          "compute_tail_energy_surrogate_J", [](E self) { return self.compute_tail_energy_surrogate_J(python_poll()); },
          "Energy of the flow in shells around the filaments, J: the Biot-Savart field of all filaments sampled at "
          "equal angles on shells around every vertex, squared, times half the density 7e-7 kg/m^3 and the volume of "
          "the shell along the vertex's segment. 0 unless enabled in the configuration.")
      .def(
          "compute_relativistic_metrics",
          [](E self, double circulation) { return self.compute_relativistic_metrics(circulation, python_poll()); },
          py::arg("circulation") = default_circulation,
          "RelativisticMetrics of the first filament for a circulation in m^2/s.\n\nSources within 1e-6 of a point are "
          "left out, in the unit of the points: in a relaxed body all are, and the velocities vanish.")
      .def_static("print_canonical_derivation", &E::print_canonical_derivation,
                  "Prints the dynamic fluid derivation of the core density.")
      .def("get_filaments", &E::get_filaments, "Export the 3D coordinates of all present vortex rings.");
  bind_zoo(m);
}

}  // namespace vkm
