#include "tube/contact_stress.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/elementary.hpp"

namespace vkm {

namespace {

/// Distributes the multipliers over the kinds of contacts.
template <class Column>
void weigh_contacts(const std::vector<Column>& columns, ContactStressDiagnostics& found) {
  const std::vector<double>& multipliers = found.multipliers;

  double total = 0.0;
  for (std::size_t k = 0; k < std::min(columns.size(), multipliers.size()); ++k) {
    const double weight = std::max(multipliers[k], 0.0);
    total += weight;
    if (columns[k].kind == "strut") found.strut_weight_sum += weight;
    if (columns[k].kind == "kink") found.kink_weight_sum += weight;
  }
  if (!(total > 0.0)) return;
  for (const double multiplier : multipliers) {
    if (!(multiplier > 0.0)) continue;
    const double share = multiplier / total;
    found.contact_entropy -= share * vkm::log(share);
  }
}

}  // namespace

void take_solution(NNLSResult solution, ContactStressDiagnostics& found) {
  found.solved_nnls = true;
  found.nnls_converged = solution.converged;
  found.nnls_iterations = solution.iterations;
  found.nnls_active_set_size = solution.active_set_size;
  found.nnls_algorithm = std::move(solution.algorithm);
  found.nnls_objective = solution.objective;
  found.multipliers = std::move(solution.multipliers);
}

ContactStressDiagnostics diagnose_length_criticality(std::span<const Vec3> points, const ResolvedTubeMetrics& tube,
                                                     bool solve, const ContactFit& fit, const Poll& poll) {
  ContactStressDiagnostics found;
  found.strut_count = tube.struts.size();
  found.kink_count = tube.kinks.size();
  found.rigidity_rows = 3 * points.size();
  const std::vector<double> gradient = length_gradient(points);
  double sum = 0.0;
  for (const double value : gradient) sum += value * value;
  found.gradient_norm = std::sqrt(sum);
  if (found.gradient_norm <= 1e-14) {
    found.nnls_converged = true;
    return found;
  }
  with_contacts(points, tube, fit, poll, [&](const auto& matrix, const auto& fitted) {
    found.rigidity_columns = matrix.column_count;
    if (!solve || matrix.columns.empty()) {
      found.residual_norm = found.gradient_norm;
      found.contact_residual = 1.0;
      return;
    }
    NNLSResult solution = fitted(gradient);
    found.residual_norm = solution.residual_norm;
    found.contact_residual = solution.relative_residual;
    take_solution(std::move(solution), found);
    weigh_contacts(matrix.columns, found);
  });
  return found;
}

}  // namespace vkm
