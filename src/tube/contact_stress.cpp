#include "tube/contact_stress.hpp"

#include <algorithm>
#include <cmath>

#include "core/elementary.hpp"

namespace vkm {

namespace {

/// Takes over the fit and distributes its multipliers over the kinds of contacts.
template <class Column>
void record_fit(const NNLSResult& fit, const std::vector<Column>& columns, ContactStressDiagnostics& found) {
  found.solved_nnls = true;
  found.nnls_converged = fit.converged;
  found.nnls_iterations = fit.iterations;
  found.nnls_active_set_size = fit.active_set_size;
  found.nnls_algorithm = fit.algorithm;
  found.nnls_objective = fit.objective;
  found.residual_norm = fit.residual_norm;
  found.multipliers = fit.multipliers;
  found.contact_residual = fit.relative_residual;

  double total = 0.0;
  for (std::size_t k = 0; k < std::min(columns.size(), fit.multipliers.size()); ++k) {
    const double weight = std::max(fit.multipliers[k], 0.0);
    total += weight;
    if (columns[k].kind == "strut") found.strut_weight_sum += weight;
    if (columns[k].kind == "kink") found.kink_weight_sum += weight;
  }
  if (!(total > 0.0)) return;
  for (const double multiplier : fit.multipliers) {
    if (!(multiplier > 0.0)) continue;
    const double share = multiplier / total;
    found.contact_entropy -= share * vkm::log(share);
  }
}

}  // namespace

ContactStressDiagnostics ContactStressMap::diagnose_length_criticality(Points points, const ResolvedTubeMetrics& tube,
                                                                       bool solve_nnls, std::uint64_t max_iterations,
                                                                       double tolerance, bool use_sparse_solver,
                                                                       bool use_analytic_kink_gradient,
                                                                       bool use_active_set_solver, const Poll& poll) {
  constexpr double ridge = 1e-12;
  constexpr double step = 1e-6;
  ContactStressDiagnostics found;
  found.strut_count = tube.struts.size();
  found.kink_count = tube.kinks.size();
  found.rigidity_rows = 3 * points.size();
  const Vector gradient = ResolvedTubeGeometry::length_gradient_flat(points);
  double sum = 0.0;
  for (const double value : gradient) sum += value * value;
  found.gradient_norm = std::sqrt(sum);
  if (found.gradient_norm <= 1e-14) {
    found.nnls_converged = true;
    return found;
  }

  const auto fit_with = [&](const auto& matrix, const auto& active_set, const auto& coordinate_descent) {
    found.rigidity_columns = matrix.column_count;
    if (!solve_nnls || matrix.columns.empty()) {
      found.residual_norm = found.gradient_norm;
      found.contact_residual = 1.0;
      return;
    }
    const NNLSResult fit = use_active_set_solver
                               ? active_set(matrix, gradient, max_iterations, tolerance, ridge, poll)
                               : coordinate_descent(matrix, gradient, max_iterations, tolerance, poll);
    record_fit(fit, matrix.columns, found);
  };
  if (use_sparse_solver) {
    fit_with(build_sparse_rigidity_matrix(points, tube, true, true, step, use_analytic_kink_gradient, poll),
             solve_nonnegative_least_squares_sparse_active_set, solve_nonnegative_least_squares_sparse);
  } else {
    fit_with(build_rigidity_matrix(points, tube, true, true, step, use_analytic_kink_gradient, poll),
             solve_nonnegative_least_squares_active_set, solve_nonnegative_least_squares);
  }
  return found;
}

}  // namespace vkm
