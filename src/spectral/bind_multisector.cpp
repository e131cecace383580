#include <algorithm>
#include <limits>

#include "core/elementary.hpp"
#include "module/binders.hpp"
#include "spectral/cycle_product.hpp"
#include "spectral/multisector.hpp"
#include "spectral/node_analysis.hpp"
#include "spectral/trace_formula.hpp"

namespace vkm {

namespace {

// These hold static methods and have no instances.
struct MultisectorFitter {};
struct MultisectorFitterV2 {};
struct NodeAnalyzer {};
struct TraceFormula {};

using Complex = std::complex<double>;
template <class T>
using Array = py::array_t<T, py::array::forcecast>;
using OptionalArray = std::optional<DoubleArray>;

/// The entries of a 1-D array, else std::runtime_error "name(argument): expected a 1D array".
template <class T>
std::vector<T> vector_from(const Array<T>& array, const std::string& name, const char* argument) {
  if (array.ndim() != 1) throw std::runtime_error(name + "(" + argument + "): expected a 1D array");
  std::vector<T> values;
  append_rows(values, py::reinterpret_borrow<py::array_t<T, 0>>(array));
  return values;
}

py::array_t<Complex> complex_array(const std::vector<Complex>& values) {
  require_memory(values.size(), sizeof(Complex));
  return py::array_t<Complex>(static_cast<py::ssize_t>(values.size()), values.data());
}

py::array_t<std::int64_t> index_array(const std::vector<std::int64_t>& values) {
  require_memory(values.size(), sizeof(std::int64_t));
  return py::array_t<std::int64_t>(static_cast<py::ssize_t>(values.size()), values.data());
}

/// The texts of a length mismatch, in which the two fitters differ.
struct Texts {
  const char* thetas;
  const char* sector_weights;
  const char* node_weights;
};

constexpr Texts first_texts = {": thetas must have same length as sectors",
                               ": sector_weights must have same length as sectors",
                               ": node_weights must have same length as target_nodes"};
constexpr Texts second_texts = {": thetas must match sectors", ": sector_weights must match sectors",
                                ": node_weights must match target_nodes"};

/// Array arguments of one call, converted in the order of the arguments; their lengths are checked after all of them.
struct Arguments {
  std::vector<double> t;
  Sectors sectors;
  TargetNodes targets;

  Arguments(const std::string& name, const Texts& texts, const DoubleArray& t_values, const Array<std::int32_t>& nu,
            const DoubleArray& thetas, const OptionalArray& sector_weights, const DoubleArray* target_nodes = nullptr,
            const OptionalArray& node_weights = std::nullopt) {
    t = vector_from(t_values, name, "t_values");
    sectors.nu = vector_from(nu, name, "sectors");
    sectors.theta = vector_from(thetas, name, "thetas");
    if (sector_weights) sectors.weights = vector_from(*sector_weights, name, "sector_weights");
    if (target_nodes != nullptr) targets.t = vector_from(*target_nodes, name, "target_nodes");
    if (node_weights) targets.weights = vector_from(*node_weights, name, "node_weights");
    if (sectors.theta.size() != sectors.nu.size()) throw std::runtime_error(name + texts.thetas);
    if (sector_weights && sectors.weights.size() != sectors.nu.size()) {
      throw std::runtime_error(name + texts.sector_weights);
    }
    if (node_weights && targets.weights.size() != targets.t.size()) {
      throw std::runtime_error(name + texts.node_weights);
    }
  }
};

std::vector<Complex> evaluate_sector(const DoubleArray& t_values, std::int32_t nu, double theta_nu, double ell,
                                     std::uint64_t truncation_M, const char* name) {
  return evaluate_multisector(vector_from(t_values, name, "t_values"), {{nu}, {theta_nu}, {}},
                              {ell, truncation_M, 0, 0.0, 0.0}, python_poll());
}

const char* const sectors_doc =
    "\nt_values (n,), sectors and thetas / rad (k,), sector_weights (k,) or None for 1. Each sector nu contributes\n"
    "prod over m <= truncation_M of (1 - 2 cos(m theta) z + z^2)^-w, z = exp(-s nu m ell_trefoil), s = 1/2 + i t; the\n"
    "completion factor is 1 (mode 0) or exp(alpha s + beta) (mode 1). RuntimeError for arrays that are not 1-D,\n"
    "lengths that differ and other modes.";

/// evaluate_multisector and evaluate_multisector_abs, which both fitters have.
template <class Class>
void bind_products(Class& cls, const Texts& texts) {
  cls.def_static(
      "evaluate_multisector",
      [texts](const DoubleArray& t_values, const Array<std::int32_t>& sectors, const DoubleArray& thetas,
              const OptionalArray& sector_weights, double ell_trefoil, std::uint64_t truncation_M,
              std::int32_t completion_mode, double alpha, double beta) {
        const Arguments args("evaluate_multisector", texts, t_values, sectors, thetas, sector_weights);
        return complex_array(evaluate_multisector(
            args.t, args.sectors, {ell_trefoil, truncation_M, completion_mode, alpha, beta}, python_poll()));
      },
      py::arg("t_values"), py::arg("sectors"), py::arg("thetas"), py::arg("sector_weights") = py::none(),
      py::arg("ell_trefoil"), py::arg("truncation_M"), py::arg("completion_mode") = 0, py::arg("alpha") = 0.0,
      py::arg("beta") = 0.0,
      (std::string("Evaluate the full multisector primitive-cycle product Phi_pc(t).") + sectors_doc).c_str());
  cls.def_static(
      "evaluate_multisector_abs",
      [texts](const DoubleArray& t_values, const Array<std::int32_t>& sectors, const DoubleArray& thetas,
              const OptionalArray& sector_weights, double ell_trefoil, std::uint64_t truncation_M,
              std::int32_t completion_mode, double alpha, double beta) {
        const Arguments args("evaluate_multisector_abs", texts, t_values, sectors, thetas, sector_weights);
        return array_from(evaluate_multisector_abs(args.t, args.sectors, {&truncation_M, 1},
                                                   {ell_trefoil, truncation_M, completion_mode, alpha, beta},
                                                   python_poll()));
      },
      py::arg("t_values"), py::arg("sectors"), py::arg("thetas"), py::arg("sector_weights") = py::none(),
      py::arg("ell_trefoil"), py::arg("truncation_M"), py::arg("completion_mode") = 0, py::arg("alpha") = 0.0,
      py::arg("beta") = 0.0,
      (std::string("Evaluate |Phi_pc(t)| for the full multisector primitive-cycle product.") + sectors_doc).c_str());
}

template <class Class>
void bind_objective_near_nodes(Class& cls, const Texts& texts) {
  cls.def_static(
      "objective_near_nodes",
      [texts](const DoubleArray& t_values, const Array<std::int32_t>& sectors, const DoubleArray& thetas,
              const OptionalArray& sector_weights, double ell_trefoil, std::uint64_t truncation_M,
              std::int32_t completion_mode, double alpha, double beta, const DoubleArray& target_nodes,
              const OptionalArray& node_weights) {
        const Arguments args("objective_near_nodes", texts, t_values, sectors, thetas, sector_weights, &target_nodes,
                             node_weights);
        return objective_near_nodes(args.t, args.sectors, {ell_trefoil, truncation_M, completion_mode, alpha, beta},
                                    args.targets, python_poll());
      },
      py::arg("t_values"), py::arg("sectors"), py::arg("thetas"), py::arg("sector_weights") = py::none(),
      py::arg("ell_trefoil"), py::arg("truncation_M"), py::arg("completion_mode") = 0, py::arg("alpha") = 0.0,
      py::arg("beta") = 0.0, py::arg("target_nodes"), py::arg("node_weights") = py::none(),
      "Objective function for fitting multisector phases against near-node targets.\n"
      "The weighted sum of squared distances between the deepest minima of |Phi_pc|, in ascending t, and\n"
      "target_nodes, which are paired by position; 1e300 for fewer minima than targets. RuntimeError as in\n"
      "evaluate_multisector.");
}

/// objective_suppressed or its breakdown: the same arguments, `face` makes the result.
template <class Face>
void bind_suppressed(py::class_<MultisectorFitterV2>& cls, const char* name, const char* doc, Face face) {
  cls.def_static(
      name,
      [name, face](const DoubleArray& t_values, const Array<std::int32_t>& sectors, const DoubleArray& thetas,
                   const OptionalArray& sector_weights, double ell_trefoil, std::uint64_t truncation_M,
                   std::int32_t completion_mode, double alpha, double beta, const DoubleArray& target_nodes,
                   const OptionalArray& node_weights, double lambda_extra, double sigma_extra, double lambda_reg,
                   double target_halfwidth, bool penalize_all_extra_minima) {
        const Arguments args(name, second_texts, t_values, sectors, thetas, sector_weights, &target_nodes,
                             node_weights);
        return face(objective_suppressed(
            args.t, args.sectors, {ell_trefoil, truncation_M, completion_mode, alpha, beta}, args.targets,
            {lambda_extra, sigma_extra, lambda_reg, target_halfwidth, penalize_all_extra_minima}, python_poll()));
      },
      py::arg("t_values"), py::arg("sectors"), py::arg("thetas"), py::arg("sector_weights") = py::none(),
      py::arg("ell_trefoil"), py::arg("truncation_M"), py::arg("completion_mode") = 0, py::arg("alpha") = 0.0,
      py::arg("beta") = 0.0, py::arg("target_nodes"), py::arg("node_weights") = py::none(),
      py::arg("lambda_extra") = 0.5, py::arg("sigma_extra") = 0.05, py::arg("lambda_reg") = 0.01,
      py::arg("target_halfwidth") = 0.35, py::arg("penalize_all_extra_minima") = true, doc);
}

void bind_fitter(py::module_& m) {
  auto cls = bound_class<MultisectorFitter>(m, "MultisectorFitter",
                                            "Multisector primitive-cycle products and an objective for fitting them.");
  cls.def_static(
      "evaluate_sector",
      [](const DoubleArray& t_values, std::int32_t nu, double theta_nu, double ell_trefoil,
         std::uint64_t truncation_M) {
        return complex_array(evaluate_sector(t_values, nu, theta_nu, ell_trefoil, truncation_M, "evaluate_sector"));
      },
      py::arg("t_values"), py::arg("nu"), py::arg("theta_nu"), py::arg("ell_trefoil"), py::arg("truncation_M"),
      "Evaluate one sector zeta Z_nu(1/2 + i t).\n"
      "The product over m <= truncation_M of 1 / (1 - 2 cos(m theta) z + z^2), z = exp(-s nu m ell_trefoil),\n"
      "s = 1/2 + i t, at each of t_values (n,). RuntimeError for t_values that are not 1-D.");
  bind_products(cls, first_texts);
  bind_objective_near_nodes(cls, first_texts);
}

void bind_node_analyzer(py::module_& m) {
  auto cls = bound_class<NodeAnalyzer>(m, "NodeAnalyzer", "Local minima of a sampled curve, ranked by depth.");
  cls.def_static(
      "local_minima_indices",
      [](const DoubleArray& y) {
        return index_array(local_minima_indices(vector_from(y, "local_minima_indices", "y"), python_poll()));
      },
      py::arg("y"),
      "Indices 1 .. n - 2 with both neighbours at least y(i). Inclusive: every inner point of a flat stretch counts.");
  cls.def_static(
      "local_maxima_indices",
      [](const DoubleArray& y) {
        return index_array(local_maxima_indices(vector_from(y, "local_maxima_indices", "y"), python_poll()));
      },
      py::arg("y"), "Indices 1 .. n - 2 with y(i) at least both neighbours. Inclusive.");
  cls.def_static(
      "strongest_minima_t",
      [](const DoubleArray& t, const DoubleArray& y, std::uint64_t keep_count) {
        const auto points = vector_from(t, "strongest_minima_t", "t");
        const auto values = vector_from(y, "strongest_minima_t", "y");
        if (points.size() != values.size()) {
          throw std::runtime_error("strongest_minima_t: t and y must have same length");
        }
        return array_from(strongest_minima_t(points, values, keep_count, python_poll()));
      },
      py::arg("t"), py::arg("y"), py::arg("keep_count"),
      "The t of the keep_count deepest local minima of y, ascending. t and y have the same shape (n,).");
  cls.def_static(
      "strongest_minima_values",
      [](const DoubleArray& y, std::uint64_t keep_count) {
        return array_from(
            strongest_minima_values(vector_from(y, "strongest_minima_values", "y"), keep_count, python_poll()));
      },
      py::arg("y"), py::arg("keep_count"), "The keep_count least values at local minima of y, ascending.");
  cls.def_static(
      "strongest_minima_t_with_neighborhood_exclusion",
      [](const DoubleArray& t, const DoubleArray& y, const DoubleArray& target_nodes, double target_halfwidth,
         bool keep_only_outside, std::uint64_t keep_count) {
        const std::string name = "strongest_minima_t_with_neighborhood_exclusion";
        const auto points = vector_from(t, name, "t");
        const auto values = vector_from(y, name, "y");
        const auto targets = vector_from(target_nodes, name, "target_nodes");
        if (points.size() != values.size()) throw std::runtime_error(name + ": t and y must have same length");
        return array_from(strongest_minima_t_by_windows(points, values, {targets, target_halfwidth}, keep_only_outside,
                                                        keep_count, python_poll()));
      },
      py::arg("t"), py::arg("y"), py::arg("target_nodes"), py::arg("target_halfwidth"), py::arg("keep_only_outside"),
      py::arg("keep_count"),
      "strongest_minima_t of the minima outside all windows [target - target_halfwidth, target + target_halfwidth],\n"
      "bounds included, or inside any of them unless keep_only_outside.");
  cls.def_static(
      "extra_minima_penalty",
      [](const DoubleArray& t, const DoubleArray& y, const DoubleArray& target_nodes, double target_halfwidth,
         double sigma_extra, bool penalize_all_extra_minima) {
        const std::string name = "extra_minima_penalty";
        const auto points = vector_from(t, name, "t");
        const auto values = vector_from(y, name, "y");
        const auto targets = vector_from(target_nodes, name, "target_nodes");
        if (points.size() != values.size()) throw std::runtime_error(name + ": t and y must have same length");
        return extra_minima_penalty(points, values, {targets, target_halfwidth}, sigma_extra, penalize_all_extra_minima,
                                    python_poll());
      },
      py::arg("t"), py::arg("y"), py::arg("target_nodes"), py::arg("target_halfwidth"), py::arg("sigma_extra"),
      py::arg("penalize_all_extra_minima") = true,
      "The sum of exp(-y / sigma_extra) over the local minima outside all target windows, or its first term alone\n"
      "unless penalize_all_extra_minima.");
}

void bind_trace_formula(py::module_& m) {
  auto cls = bound_class<TraceFormula>(m, "TraceFormula",
                                       "Logarithm of the multisector product, its derivative, and phase densities.");
  cls.def_static(
      "evaluate_multisector_logz",
      [](const DoubleArray& t_values, const Array<std::int32_t>& sectors, const DoubleArray& thetas,
         const OptionalArray& sector_weights, double ell_trefoil, std::uint64_t truncation_M) {
        const Arguments args("evaluate_multisector_logz", second_texts, t_values, sectors, thetas, sector_weights);
        require_memory(args.t.size(), sizeof(Complex));
        py::array_t<Complex> result(static_cast<py::ssize_t>(args.t.size()));
        Complex* out = result.mutable_data();
        log_cycle_products(
            args.sectors, ell_trefoil, {&truncation_M, 1}, args.t, nullptr,
            [out](std::size_t, std::size_t first, std::span<const double> real, std::span<const double> imaginary) {
              for (std::size_t i = 0; i < real.size(); ++i) out[first + i] = {real[i], imaginary[i]};
            },
            python_poll());
        return result;
      },
      py::arg("t_values"), py::arg("sectors"), py::arg("thetas"), py::arg("sector_weights") = py::none(),
      py::arg("ell_trefoil"), py::arg("truncation_M"),
      "ln Phi_pc without the completion factor at each of t_values (n,): -sum of w (ln|D| + i arg D) over sectors and\n"
      "m <= truncation_M, D = 1 - 2 cos(m theta) z + z^2. The imaginary part is a sum of principal values, not "
      "reduced.");
  cls.def_static(
      "evaluate_multisector_dlogz_ds",
      [](const DoubleArray& t_values, const Array<std::int32_t>& sectors, const DoubleArray& thetas,
         const OptionalArray& sector_weights, double ell_trefoil, std::uint64_t truncation_M) {
        const Arguments args("evaluate_multisector_dlogz_ds", second_texts, t_values, sectors, thetas, sector_weights);
        return complex_array(
            cycle_product_log_derivative(args.sectors, ell_trefoil, truncation_M, args.t, python_poll()));
      },
      py::arg("t_values"), py::arg("sectors"), py::arg("thetas"), py::arg("sector_weights") = py::none(),
      py::arg("ell_trefoil"), py::arg("truncation_M"),
      "d ln Phi_pc / ds at s = 1/2 + i t for each of t_values (n,), without the completion factor. NaN where a factor\n"
      "is not finite; not finite where a factor vanishes.");
  cls.def_static(
      "phase_derivative_from_xi",
      [](const DoubleArray& t_values, const Array<Complex>& xi_values) {
        const auto t = vector_from(t_values, "phase_derivative_from_xi", "t_values");
        const auto xi = vector_from(xi_values, "phase_derivative_from_xi", "xi_values");
        if (xi.size() != t.size()) {
          throw std::runtime_error("phase_derivative_from_xi: xi_values must match t_values");
        }
        return array_from(phase_derivative(t, xi, python_poll()));
      },
      py::arg("t_values"), py::arg("xi_values"),
      "-d arg(xi) / dt by central differences of the unwrapped phase, shape (n,); the ends copy their neighbours.\n"
      "Zero where both neighbours have the same t, and all zeros for n < 3.");
}

void bind_fitter_v2(py::module_& m) {
  auto cls = bound_class<MultisectorFitterV2>(
      m, "MultisectorFitterV2",
      "Multisector primitive-cycle products, truncation scans, and objectives that suppress extra minima.");
  cls.def_static("completion_factor", &completion_factor, py::arg("s"), py::arg("completion_mode") = 0,
                 py::arg("alpha") = 0.0, py::arg("beta") = 0.0,
                 "1 (mode 0) or exp(alpha s + beta) (mode 1); RuntimeError for another mode.");
  cls.def_static(
      "evaluate_sector",
      [](const DoubleArray& t_values, std::int32_t nu, double theta_nu, double ell_trefoil, std::uint64_t truncation_M,
         std::int32_t, double, double) {
        return complex_array(evaluate_sector(t_values, nu, theta_nu, ell_trefoil, truncation_M, "evaluate_sector"));
      },
      py::arg("t_values"), py::arg("nu"), py::arg("theta_nu"), py::arg("ell_trefoil"), py::arg("truncation_M"),
      py::arg("completion_mode") = 0, py::arg("alpha") = 0.0, py::arg("beta") = 0.0,
      "One sector zeta at each of t_values (n,). The completion arguments are accepted and have no effect: a single\n"
      "sector is never multiplied by the completion factor.");
  cls.def_static(
      "evaluate_sector_abs",
      [](const DoubleArray& t_values, std::int32_t nu, double theta_nu, double ell_trefoil, std::uint64_t truncation_M,
         std::int32_t, double, double) {
        const auto values = evaluate_sector(t_values, nu, theta_nu, ell_trefoil, truncation_M, "evaluate_sector_abs");
        std::vector<double> result(values.size());
        std::transform(values.begin(), values.end(), result.begin(),
                       [](Complex z) { return vkm::hypot(z.real(), z.imag()); });
        return array_from(result);
      },
      py::arg("t_values"), py::arg("nu"), py::arg("theta_nu"), py::arg("ell_trefoil"), py::arg("truncation_M"),
      py::arg("completion_mode") = 0, py::arg("alpha") = 0.0, py::arg("beta") = 0.0,
      "Magnitude of evaluate_sector. The completion arguments are accepted and have no effect.");
  bind_products(cls, second_texts);
  cls.def_static(
      "evaluate_multisector_abs_batch_M",
      [](const DoubleArray& t_values, const Array<std::int32_t>& sectors, const DoubleArray& thetas,
         const OptionalArray& sector_weights, double ell_trefoil, const Array<std::int64_t>& truncation_values,
         std::int32_t completion_mode, double alpha, double beta) {
        const std::string name = "evaluate_multisector_abs_batch_M";
        const Arguments args(name, second_texts, t_values, sectors, thetas, sector_weights);
        std::vector<std::uint64_t> truncations;
        for (const std::int64_t value : vector_from(truncation_values, name, "truncation_values")) {
          if (value < 0) throw std::invalid_argument(name + ": truncation_values must not be negative");
          truncations.push_back(static_cast<std::uint64_t>(value));
        }
        const std::vector<py::ssize_t> shape = {static_cast<py::ssize_t>(truncations.size()),
                                                static_cast<py::ssize_t>(args.t.size())};
        return array_from(evaluate_multisector_abs(args.t, args.sectors, truncations,
                                                   {ell_trefoil, 0, completion_mode, alpha, beta}, python_poll()),
                          shape);
      },
      py::arg("t_values"), py::arg("sectors"), py::arg("thetas"), py::arg("sector_weights") = py::none(),
      py::arg("ell_trefoil"), py::arg("truncation_values"), py::arg("completion_mode") = 0, py::arg("alpha") = 0.0,
      py::arg("beta") = 0.0,
      "evaluate_multisector_abs for each of truncation_values (r,), shape (r, n). Each row has the bits of an\n"
      "evaluation of its own, but each term is computed once for all rows. ValueError for a negative truncation.");
  bind_objective_near_nodes(cls, second_texts);
  bind_suppressed(cls, "objective_suppressed",
                  "objective_near_nodes + lambda_extra times a penalty for minima outside the target windows\n"
                  "+ lambda_reg times the sum of (w - 1)^2; the \"total\" of objective_suppressed_breakdown.",
                  [](const SuppressedObjective& objective) { return objective.total; });
  bind_suppressed(
      cls, "objective_suppressed_breakdown",
      "Dict with \"total\", \"mismatch\" (objective_near_nodes), \"extra_penalty\" (the sum of\n"
      "exp(-|Phi_pc| / sigma_extra) over the minima outside the windows target_nodes +- target_halfwidth,\n"
      "or its first term alone unless penalize_all_extra_minima) and \"reg_penalty\" (the sum of (w - 1)^2).\n"
      "For fewer minima than targets total is 1e300 and the others are 0.",
      [](const SuppressedObjective& objective) {
        py::dict dict;
        dict["total"] = objective.total;
        dict["mismatch"] = objective.mismatch;
        dict["extra_penalty"] = objective.extra_penalty;
        dict["reg_penalty"] = objective.reg_penalty;
        return dict;
      });
  cls.def_static(
      "phase_invariants",
      [](const DoubleArray& thetas) {
        const PhaseInvariants invariants = phase_invariants(vector_from(thetas, "phase_invariants", "thetas"));
        py::dict dict;
        dict["delta23"] = invariants.delta23;
        dict["delta35"] = invariants.delta35;
        dict["theta_sum_mod"] = invariants.theta_sum_mod;
        return dict;
      },
      py::arg("thetas"),
      "Dict with \"delta23\" = theta(0) - theta(1), \"delta35\" = theta(1) - theta(2) and \"theta_sum_mod\", their "
      "sum\n"
      "modulo 2 pi, from the first three phases / rad; all NaN for fewer.");
}

}  // namespace

void bind_multisector(py::module_& m) {
  bind_fitter(m);
  bind_node_analyzer(m);
  bind_trace_formula(m);
  bind_fitter_v2(m);
}

}  // namespace vkm
