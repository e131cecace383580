#include "tube/tightener.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "tube/compressed_columns.hpp"
#include "tube/thickness_correction.hpp"

namespace vkm {

namespace {

constexpr double least_norm = 1e-14;

/// What a trial of the line search must keep.
struct Bounds {
  double floor;  ///< thickness, from the current polygon
  double hold;   ///< thickness that corrections restore
  double ropelength;
  double length;
};

Bounds bounds_of(const ResolvedTubeMetrics& metrics, double initial_thickness, const TighteningOptions& options) {
  Bounds bounds;
  bounds.floor = std::max(options.thickness_floor_fraction, 0.0) * metrics.thickness_rad;
  bounds.hold = options.preserve_initial_thickness ? initial_thickness : bounds.floor;
  bounds.ropelength = metrics.ropelength_rad +
                      std::max(metrics.ropelength_rad, 1.0) * std::max(options.ropelength_increase_tolerance, 0.0);
  bounds.length = metrics.length;
  return bounds;
}

/// The fraction under the hold is taken as it stands, the one in the floor never below 0.
bool acceptable(const ResolvedTubeMetrics& trial, const Bounds& bounds, const TighteningOptions& options) {
  const double thickness = trial.thickness_rad + 1e-12;
  if (thickness < bounds.floor) return false;
  if (options.preserve_initial_thickness && thickness < bounds.hold * options.thickness_floor_fraction) return false;
  // A shorter polygon passes whatever becomes of its ropelength.
  const bool shorter = trial.ropelength_rad <= bounds.ropelength || trial.length < bounds.length;
  return shorter && trial.thickness_rad > 0.0;
}

std::vector<Vec3> moved(const std::vector<Vec3>& points, const std::vector<double>& direction, double alpha) {
  std::vector<Vec3> candidate(points.size());
  for (std::size_t v = 0; v < points.size(); ++v) {
    candidate[v] = points[v] + alpha * Vec3{direction[3 * v], direction[3 * v + 1], direction[3 * v + 2]};
  }
  return candidate;
}

/// Backtracks from the largest step; takes the first acceptable trial for `current` and completes the record.
void line_search(AnalyzedPolygon& current, const std::vector<double>& direction, double initial_thickness,
                 const TighteningOptions& options, const Poll& poll, Heartbeat& heartbeat,
                 TighteningStepRecord& record) {
  const Bounds bounds = bounds_of(current.metrics, initial_thickness, options);
  const double shrink = std::clamp(options.line_search_shrink, 0.05, 0.95);
  record.alpha = std::max(options.max_step_size, options.min_step_size);
  for (std::uint64_t trial = 0; trial < options.line_search_trials && record.alpha >= options.min_step_size; ++trial) {
    heartbeat.tick();
    AnalyzedPolygon candidate = analyzed(moved(current.points, direction, record.alpha), options, poll);
    const double thickness = candidate.metrics.thickness_rad;
    const bool thin = thickness < bounds.floor || (options.preserve_initial_thickness && thickness < bounds.hold);
    if (thin) candidate = corrected(std::move(candidate), bounds.hold, options, poll);
    if (acceptable(candidate.metrics, bounds, options)) {
      current = std::move(candidate);
      record.accepted = true;
      record.thickness_corrected = thin;
      break;
    }
    record.alpha *= shrink;
  }
  record.ropelength_after = current.metrics.ropelength_rad;
  record.thickness_after = current.metrics.thickness_rad;
  record.length_after = current.metrics.length;
}

}  // namespace

std::vector<double> projected_gradient(std::span<const Vec3> points, const ResolvedTubeMetrics& tube,
                                       const TighteningOptions& options, ContactStressDiagnostics* diagnostics,
                                       const Poll& poll) {
  const std::vector<double> gradient = length_gradient(points);
  if (gradient.empty()) return gradient;

  ContactStressDiagnostics found;
  std::vector<double> direction(gradient.size(), 0.0);  // A x
  with_contacts(points, tube, fit_of(options), poll, [&](const auto& matrix, const auto& fitted) {
    found.rigidity_rows = matrix.row_count;
    found.rigidity_columns = matrix.column_count;
    if (matrix.column_count == 0) return;
    NNLSResult solution = fitted(gradient);
    CompressedColumns(matrix).times(solution.multipliers, direction);
    take_solution(std::move(solution), found);
  });
  for (std::size_t k = 0; k < direction.size(); ++k) direction[k] -= gradient[k];

  if (diagnostics != nullptr) {
    found.gradient_norm = euclidean_norm(gradient);
    found.residual_norm = euclidean_norm(direction);
    found.contact_residual = found.residual_norm / std::max(found.gradient_norm, least_norm);
    found.strut_count = tube.struts.size();
    found.kink_count = tube.kinks.size();
    *diagnostics = std::move(found);
  }
  return direction;
}

TighteningResult tighten(std::span<const Vec3> initial_points, const TighteningOptions& options, const Poll& poll,
                         const TighteningWatch& watch) {
  if (initial_points.size() < 3) throw std::invalid_argument("tighten requires at least 3 points.");
  Heartbeat heartbeat(poll);
  AnalyzedPolygon current = analyzed({initial_points.begin(), initial_points.end()}, options, poll);
  TighteningResult result;
  const auto stopped = [&](const char* reason) {
    result.points = std::move(current.points);
    result.metrics = std::move(current.metrics);
    result.reason = reason;
    return std::move(result);
  };
  if (options.max_steps == 0) return stopped("max_steps_zero");
  const double initial_thickness = current.metrics.thickness_rad;
  if (!(initial_thickness > 0.0) || !std::isfinite(initial_thickness)) return stopped("nonpositive_initial_thickness");

  for (std::uint64_t step = 0; step < options.max_steps; ++step) {
    heartbeat.tick();
    ContactStressDiagnostics balance;
    std::vector<double> direction = projected_gradient(current.points, current.metrics, options, &balance, poll);
    const double direction_norm = euclidean_norm(direction);
    const double kkt_residual = direction_norm / std::max(balance.gradient_norm, least_norm);
    if (kkt_residual <= options.target_kkt_residual) {
      result.converged = true;
      return stopped("target_kkt_residual");
    }
    if (direction_norm <= least_norm || !std::isfinite(direction_norm)) return stopped("zero_projected_gradient");
    if (options.normalize_direction) {
      const double largest = largest_displacement(direction);
      if (largest > least_norm) {
        for (double& value : direction) value /= largest;
      }
    }

    TighteningStepRecord record;
    record.step = step;
    record.ropelength_before = current.metrics.ropelength_rad;
    record.thickness_before = current.metrics.thickness_rad;
    record.length_before = current.metrics.length;
    record.kkt_residual_before = kkt_residual;
    record.projected_gradient_norm = direction_norm;
    record.strut_count = balance.strut_count;
    record.kink_count = balance.kink_count;
    record.rigidity_columns = balance.rigidity_columns;
    record.correction_strategy = options.correction_strategy;
    record.solver_algorithm = balance.nnls_algorithm;
    line_search(current, direction, initial_thickness, options, poll, heartbeat, record);
    result.steps.push_back(std::move(record));
    if (watch) watch(result.steps.back(), current.points);
    if (!result.steps.back().accepted) return stopped("line_search_failed");
  }
  return stopped("max_steps");
}

}  // namespace vkm
