#include "knot/polygon_measures.hpp"
#include "knot/workbench.hpp"
#include "module/binders.hpp"
#include "tube/edge_lengths.hpp"

namespace vkm {

/// A ResolvedTubeMetrics object. Its class is registered by a later binder; until then signatures know it by name.
class TubeMetricsObject : public py::object {
 public:
  explicit TubeMetricsObject(const ResolvedTubeMetrics& tube) : py::object(py::cast(tube)) {}
};

}  // namespace vkm

namespace pybind11::detail {

template <>
struct handle_type_name<vkm::TubeMetricsObject> {
  static constexpr auto name = const_name("_native.ResolvedTubeMetrics");
};

}  // namespace pybind11::detail

namespace vkm {

namespace {

using namespace workbench;

void register_workbench_records(py::module_& m) {
  using C = CanonicalizeResult;
  bound_class<C>(m, "CanonicalizeResult", "What canonicalize_fseries_file_inplace found and did.")
      .def(py::init<>())
      .def_readwrite("path", &C::path, "The file.")
      .def_readwrite("found_numeric_rows", &C::found_numeric_rows, "Rows of three or six numbers.")
      .def_readwrite("changed", &C::changed, "Whether the file was written.")
      .def_readwrite("reason", &C::reason, "Why, or why not.");

  using H = HelicityResult;
  bound_class<H>(m, "HelicityResult", "Helicity and discrete measures of a file's curve.")
      .def(py::init<>())
      .def_readwrite("path", &H::path, "The file.")
      .def_readwrite("a_mu", &H::a_mu, "Ratio of the invariants.")
      .def_readwrite("Hc", &H::Hc, "H_charge.")
      .def_readwrite("Hm", &H::Hm, "H_mass.")
      .def_readwrite("L", &H::L, "Polygon length.")
      .def_readwrite("kappa_max", &H::kappa_max, "Greatest discrete curvature, 1 / length.")
      .def_readwrite("kappa_mean", &H::kappa_mean, "Mean discrete curvature, 1 / length.")
      .def_readwrite("bend_energy", &H::bend_energy, "Sum of curvature squared, 1 / length.")
      .def_readwrite("min_non_neighbor_dist", &H::min_non_neighbor_dist, "Least distance of samples more than 3 apart.")
      .def_readwrite("reach_proxy", &H::reach_proxy, "Tube radius of the polygon.")
      .def_readwrite("nsamples", &H::nsamples, "Samples.");

  using P = FilamentEnergyParams;
  bound_class<P>(m, "FilamentEnergyParams", "Parameters of compute_filament_energy_from_fseries.")
      .def(py::init<>())
      .def_readwrite("rho_outer", &P::rho_outer, "Density of the nonlocal term.")
      .def_readwrite("rho_local", &P::rho_local, "Density of the local terms.")
      .def_readwrite("Gamma", &P::Gamma, "Circulation.")
      .def_readwrite("a_core", &P::a_core, "Core radius.")
      .def_readwrite("delta", &P::delta, "If positive, pairs within this distance do not count.")
      .def_readwrite("s_cut_local", &P::s_cut_local, "Arc length of the local region.")
      .def_readwrite("include_nonlocal", &P::include_nonlocal, "Whether the nonlocal term is taken.")
      .def_readwrite("include_local_match", &P::include_local_match, "Whether the local match is taken.")
      .def_readwrite("include_core_int", &P::include_core_int, "Whether the core's term is taken.")
      .def_readwrite("c_rankine_outer", &P::c_rankine_outer, "Constant of the local match.")
      .def_readwrite("nsamples", &P::nsamples, "Samples.")
      .def_readwrite("skip_neighbors_base", &P::skip_neighbors_base, "Least neighbour skip.");

  using E = FilamentEnergyResult;
  bound_class<E>(m, "FilamentEnergyResult", "Discrete measures and energies of a file's curve.")
      .def(py::init<>())
      .def_readwrite("path", &E::path, "The file.")
      .def_readwrite("L", &E::L, "Polygon length.")
      .def_readwrite("ds_avg", &E::ds_avg, "Mean edge length.")
      .def_readwrite("m_loc", &E::m_loc, "Neighbours that the nonlocal term leaves out.")
      .def_readwrite("E_nonlocal", &E::E_nonlocal, "Nonlocal energy.")
      .def_readwrite("E_local_match", &E::E_local_match, "Energy of the local match.")
      .def_readwrite("E_core_int", &E::E_core_int, "Energy of the core.")
      .def_readwrite("E_total", &E::E_total, "Sum of the three.")
      .def_readwrite("kappa_max", &E::kappa_max, "Greatest discrete curvature, 1 / length.")
      .def_readwrite("kappa_mean", &E::kappa_mean, "Mean discrete curvature, 1 / length.")
      .def_readwrite("bend_energy", &E::bend_energy, "Sum of curvature squared, 1 / length.")
      .def_readwrite("min_non_neighbor_dist", &E::min_non_neighbor_dist, "Least distance of samples beyond the skip.")
      .def_readwrite("reach_proxy", &E::reach_proxy, "Tube radius of the polygon.")
      .def_readwrite("rho_outer", &E::rho_outer, "As used.")
      .def_readwrite("rho_local", &E::rho_local, "As used.")
      .def_readwrite("Gamma", &E::Gamma, "As used.")
      .def_readwrite("a_core", &E::a_core, "As used.")
      .def_readwrite("delta", &E::delta, "As used.")
      .def_readwrite("s_cut_local", &E::s_cut_local, "As used.")
      .def_readwrite("c_rankine_outer", &E::c_rankine_outer, "As used.")
      .def_readwrite("nsamples", &E::nsamples, "Samples.");
}

void register_measures(py::module_& m) {
  m.def(
      "sample_curve_centered",
      [](const std::string& path, int nsamples) { return sample_curve_centered(path, nsamples, python_poll()); },
      py::arg("path"), py::arg("nsamples") = 1024,
      "Samples of a file's largest block at s = 2 pi k / nsamples, less their mean; a list of points, empty for\n"
      "nsamples below 1. Raises RuntimeError for a missing file or one without blocks, as do all tools over files "
      "here.");
  m.def(
      "compute_curve_metrics_from_fseries",
      [](const std::string& path, int nsamples, std::int32_t skip) {
        return compute_curve_metrics_from_fseries(path, nsamples, skip, python_poll());
      },
      py::arg("path"), py::arg("nsamples") = 2048, py::arg("skip") = 3,
      "FilamentEnergyResult with the measures of the samples; its energies and parameters are 0.");
  m.def(
      "resolved_tube_metrics_from_fseries",
      [](const std::string& path, int nsamples, std::int32_t skip) {
        return TubeMetricsObject(resolved_tube_metrics_from_fseries(path, nsamples, skip, python_poll()));
      },
      py::arg("path"), py::arg("nsamples") = 2048, py::arg("skip") = 3,
      "ResolvedTubeMetrics of the samples, with at least one neighbour skipped. Raises ValueError for fewer than "
      "three\n"
      "samples.");
  m.def(
      "curve_length_from_fseries",
      [](const std::string& path, int nsamples) {
        return polygon_length(sample_curve_centered(path, nsamples, python_poll()));
      },
      py::arg("path"), py::arg("nsamples") = 2048, "Length of the closed polygon of the samples.");
  m.def(
      "min_non_neighbor_distance_from_fseries",
      [](const std::string& path, int nsamples, std::int32_t skip) {
        const Poll poll = python_poll();
        return min_non_neighbor_distance(sample_curve_centered(path, nsamples, poll), skip, poll);
      },
      py::arg("path"), py::arg("nsamples") = 2048, py::arg("skip") = 3,
      "Least distance of samples more than `skip` apart along the curve: 0 for fewer than four samples, 1e300 when no\n"
      "pair counts.");
  m.def(
      "reach_proxy_from_fseries",
      [](const std::string& path, int nsamples, std::int32_t skip) {
        const Poll poll = python_poll();
        return reach_proxy(sample_curve_centered(path, nsamples, poll), skip, poll);
      },
      py::arg("path"), py::arg("nsamples") = 2048, py::arg("skip") = 3,
      "Tube radius of the polygon of the samples; 0 for fewer than four.");
}

}  // namespace

void bind_workbench(py::module_& m) {
  register_workbench_records(m);
  m.def(
      "canonicalize_fseries_file_inplace",
      [](const std::string& path) { return canonicalize_fseries_file_inplace(path, python_poll()); }, py::arg("path"),
      "Replace the leading three-column row of a legacy file by a six-column row of zeros, whatever stood in it.\n\n"
      "The file is written in that one case only, with line feeds for line ends, and replaced as a whole: a failure\n"
      "leaves the old one. Returns a CanonicalizeResult; raises RuntimeError when the file cannot be read or written.");
  m.def(
      "compute_helicity_from_fseries",
      [](const std::string& path, int grid_size, double spacing, int interior_margin, int nsamples) {
        return compute_helicity_from_fseries(path, {grid_size, spacing, interior_margin, nsamples}, python_poll());
      },
      py::arg("path"), py::arg("grid_size") = 32, py::arg("spacing") = 0.1, py::arg("interior_margin") = 8,
      py::arg("nsamples") = 1000,
      "HelicityResult: compute_helicity_from_fourier_block of the largest block, and the measures of its centred "
      "samples.");
  register_measures(m);
  m.def(
      "compute_filament_energy_from_fseries",
      [](const std::string& path, FilamentEnergyParams params) {
        return compute_filament_energy_from_fseries(path, params, python_poll());
      },
      py::arg("path"), py::arg("params"),
      "FilamentEnergyResult: rho_outer Gamma^2 ds^2 / (8 pi) times the sum of t_i . t_j / |p_j - p_i| over ordered "
      "pairs\n"
      "more than m_loc apart, (ln(s_cut_local / a_core) + c_rankine_outer) rho_local Gamma^2 L / (4 pi), and\n"
      "rho_local Gamma^2 L / (16 pi).");
  m.def(
      "batch_helicity_from_dir",
      [](const std::string& root_dir, int grid_size, double spacing, int interior_margin, int nsamples, bool recurse) {
        return batch_helicity_from_dir(root_dir, {grid_size, spacing, interior_margin, nsamples}, recurse,
                                       python_poll());
      },
      py::arg("root_dir"), py::arg("grid_size") = 32, py::arg("spacing") = 0.1, py::arg("interior_margin") = 8,
      py::arg("nsamples") = 1000, py::arg("recurse") = false,
      "compute_helicity_from_fseries of every *.fseries file of a directory, a list sorted by path. Links to "
      "directories\n"
      "are not followed. Raises RuntimeError for a missing directory; the first error ends the batch.");
  m.def(
      "compare_fseries_files",
      [](const std::string& path_a, const std::string& path_b, int nsamples, std::int32_t skip) {
        py::typing::Dict<py::str, py::float_> found;
        for (const auto& [name, value] : compare_fseries_files(path_a, path_b, nsamples, skip, python_poll())) {
          found[name.c_str()] = value;
        }
        return found;
      },
      py::arg("path_a"), py::arg("path_b"), py::arg("nsamples") = 2048, py::arg("skip") = 3,
      "Measures of two files, their differences b - a, and the root mean square distance of samples with the same "
      "index:\n"
      "no alignment of phase or direction.");
}

}  // namespace vkm
