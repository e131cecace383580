#include "module/c_symbol.hpp"
#include "tube/thickness_correction.hpp"
#include "tube/tightener.hpp"
#include "tube/tube_registrars.hpp"

namespace vkm {

namespace {

using Points = std::vector<Vec3>;

constexpr const char* tighten_doc = R"(Shorten a closed polygon at fixed tube thickness, towards least ropelength.

Args:
    initial_points: vertices, N lists of three floats or an (N, 3) array, any unit of length.
    options: TighteningOptions; its step sizes and contact_tol are in the unit of the points.

Returns: TighteningResult. Its `reason` is one of max_steps_zero, nonpositive_initial_thickness, target_kkt_residual
(the one with `converged` true), zero_projected_gradient, line_search_failed, max_steps.
Raises ValueError below three points and for negative contact_tol or equilateral_tol. Ctrl-C ends the run.
After Ashton, Cantarella, Piatek and Rawdon, Knot tightening by constrained gradient descent (2011).)";

constexpr const char* projected_gradient_doc =
    R"(The part of the negative length gradient that the contacts do not balance.

Args:
    points: vertices, N lists of three floats or an (N, 3) array.
    tube: the ResolvedTubeMetrics of these points.
    options: TighteningOptions, of which the nnls_... and use_... fields count.

Returns: flat direction of 3 N floats, A x - g with the rigidity matrix A, the non-negative multipliers x that fit
the length gradient g best.)";

void register_options(py::module_& m) {
  using Options = TighteningOptions;
  bound_class<Options>(m, "TighteningOptions", "How a polygon is tightened.")
      .def(py::init<>())
      .def_readwrite("max_steps", &Options::max_steps, "Outer step limit.")
      .def_readwrite("line_search_trials", &Options::line_search_trials, "Trials per step.")
      .def_readwrite("nnls_max_iterations", &Options::nnls_max_iterations, "Iteration limit of the contact fit.")
      .def_readwrite("skip_neighbors", &Options::skip_neighbors, "As in the analysis.")
      .def_readwrite("contact_tol", &Options::contact_tol, "As in the analysis.")
      .def_readwrite("equilateral_tol", &Options::equilateral_tol, "As in the analysis.")
      .def_readwrite("target_kkt_residual", &Options::target_kkt_residual, "Converged at or below this residual.")
      .def_readwrite("nnls_tolerance", &Options::nnls_tolerance, "Tolerance of the contact fit.")
      .def_readwrite("max_step_size", &Options::max_step_size, "First trial step.")
      .def_readwrite("min_step_size", &Options::min_step_size, "Smallest trial step.")
      .def_readwrite("line_search_shrink", &Options::line_search_shrink, "Step factor, used within 0.05..0.95.")
      .def_readwrite("thickness_floor_fraction", &Options::thickness_floor_fraction,
                     "Part of the thickness that a step must keep.")
      .def_readwrite("ropelength_increase_tolerance", &Options::ropelength_increase_tolerance,
                     "Allowed rise of the ropelength R, relative to max(R, 1).")
      .def_readwrite("newton_correction_damping", &Options::newton_correction_damping,
                     "Factor on each correction, used within 0..1.")
      .def_readwrite("newton_ridge", &Options::newton_ridge, "Ridge of the correction's equations.")
      .def_readwrite("use_sparse_solver", &Options::use_sparse_solver, "Sparse rigidity matrix.")
      .def_readwrite("use_active_set_solver", &Options::use_active_set_solver,
                     "Active set rather than coordinate descent.")
      .def_readwrite("use_analytic_kink_gradient", &Options::use_analytic_kink_gradient, "Analytic kink columns.")
      .def_readwrite("normalize_direction", &Options::normalize_direction,
                     "Scale the direction to a largest vertex move of 1.")
      .def_readwrite("preserve_initial_thickness", &Options::preserve_initial_thickness,
                     "Hold the first thickness, not the current one.")
      .def_readwrite("correction_strategy", &Options::correction_strategy,
                     "'newton', 'scale' or 'none': how lost thickness is restored.");
}

void register_results(py::module_& m) {
  using Step = TighteningStepRecord;
  bound_class<Step>(m, "TighteningStepRecord", "One attempted step of a tightening.")
      .def(py::init<>())
      .def_readwrite("step", &Step::step, "Zero-based number.")
      .def_readwrite("ropelength_before", &Step::ropelength_before, "ropelength_rad before the step.")
      .def_readwrite("ropelength_after", &Step::ropelength_after, "The same after it; unchanged if rejected.")
      .def_readwrite("thickness_before", &Step::thickness_before, "thickness_rad before the step.")
      .def_readwrite("thickness_after", &Step::thickness_after, "The same after it.")
      .def_readwrite("length_before", &Step::length_before, "Length before the step.")
      .def_readwrite("length_after", &Step::length_after, "The same after it.")
      .def_readwrite("kkt_residual_before", &Step::kkt_residual_before, "KKT residual that started the step.")
      .def_readwrite("projected_gradient_norm", &Step::projected_gradient_norm,
                     "Norm of the direction before normalisation.")
      .def_readwrite("alpha", &Step::alpha, "Step size accepted, or at which the search gave up.")
      .def_readwrite("strut_count", &Step::strut_count, "Struts before the step.")
      .def_readwrite("kink_count", &Step::kink_count, "Kinks before the step.")
      .def_readwrite("rigidity_columns", &Step::rigidity_columns, "Columns of the rigidity matrix.")
      .def_readwrite("accepted", &Step::accepted, "A trial was accepted.")
      .def_readwrite("thickness_corrected", &Step::thickness_corrected, "The accepted trial was corrected.")
      .def_readwrite("correction_strategy", &Step::correction_strategy, "Copy of the option.")
      .def_readwrite("solver_algorithm", &Step::solver_algorithm, "Method of the contact fit; empty if none ran.");

  auto result = bound_class<TighteningResult>(m, "TighteningResult", "A tightened polygon and its history.");
  result.def(py::init<>());
  def_list(result, "points", &TighteningResult::points, "The last accepted polygon.");
  result.def_readwrite("metrics", &TighteningResult::metrics, "Its ResolvedTubeMetrics.");
  def_list(result, "steps", &TighteningResult::steps, "List of TighteningStepRecord.");
  result.def_readwrite("converged", &TighteningResult::converged, "The target KKT residual was reached.")
      .def_readwrite("reason", &TighteningResult::reason, "Why the run ended.");
}

constexpr auto plain = [](const Points& initial_points, TighteningOptions options) {
  return tighten(initial_points, options, python_poll());
};
constexpr auto watched = [](const Points& initial_points, TighteningOptions options, const py::function& watch) {
  return tighten(initial_points, options, python_poll(),
                 [&](const TighteningStepRecord& step, const Points& points) { watch(step, points); });
};
constexpr auto unbalanced = [](const Points& points, ResolvedTubeMetrics tube, TighteningOptions options) {
  return projected_gradient(points, tube, options, nullptr, python_poll());
};

py::arg_v options_argument() { return py::arg_v("options", TighteningOptions(), "TighteningOptions()"); }

}  // namespace

void register_tightening_records(py::module_& m) {
  register_options(m);
  register_results(m);
}

void register_tightener(py::module_& m) {
  const py::arg_v options = options_argument();
  bound_class<ResolvedTubeTightener>(m, "ResolvedTubeTightener", "Shortens closed polygons at fixed tube thickness.")
      .def_static(
          "rescale_to_thickness",
          [](const Points& points, double target_thickness, std::int32_t skip_neighbors, double contact_tol,
             double equilateral_tol) {
            return rescale_to_thickness(points, target_thickness, {skip_neighbors, contact_tol, equilateral_tol},
                                        python_poll());
          },
          py::arg("points"), py::arg("target_thickness"), py::arg("skip_neighbors") = 2, py::arg("contact_tol") = 0.001,
          py::arg("equilateral_tol") = 0.001,
          "The polygon scaled up about its centroid to just past the target thickness; a copy where it has that\n"
          "already, where it has none, or where the target is not positive and finite.")
      .def_static(
          "correct_thickness",
          [](const Points& points, double target_thickness, TighteningOptions given) {
            return correct_thickness(points, target_thickness, given, python_poll());
          },
          py::arg("points"), py::arg("target_thickness"), options,
          "The polygon moved up to the target thickness: by up to three Newton steps on its contacts and a scaling\n"
          "for the rest ('newton'), by the scaling alone ('scale'), or not at all ('none').")
      .def_static("projected_gradient_flat", unbalanced, py::arg("points"), py::arg("tube"), options,
                  projected_gradient_doc)
      .def_static("tighten", plain, py::arg("initial_points"), options, tighten_doc);
}

void register_tightening_functions(py::module_& m) {
  const py::arg_v options = options_argument();
  m.def("resolved_tube_tighten", plain, py::arg("initial_points"), options, tighten_doc);
  m.def("resolved_tube_projected_gradient", unbalanced, py::arg("points"), py::arg("tube"), options,
        projected_gradient_doc);
}

}  // namespace vkm

/// A new function (initial_points, options, watch): tighten, calling watch(step record, points) after each step. What
/// it raises ends the run. The caller holds the interpreter lock.
VKM_C_SYMBOL PyObject* vkm_watched_tighten() { return py::cpp_function(vkm::watched).release().ptr(); }
