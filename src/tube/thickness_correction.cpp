#include "tube/thickness_correction.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include "tube/block_solve.hpp"
#include "tube/normal_equations.hpp"

namespace vkm {

namespace {

bool usable_target(double target) { return target > 0.0 && std::isfinite(target); }

/// Scales about the centroid from thickness t past the target; leaves the points alone where that cannot be done.
/// Returns whether they moved.
bool rescale(std::vector<Vec3>& points, double t, double target) {
  constexpr double overshoot = 1.000000000001;  // so that rounding does not leave the thickness below the target
  if (!(t > 0.0) || !std::isfinite(t) || t >= target) return false;
  const double factor = target / t * overshoot;
  Vec3 sum = {0.0, 0.0, 0.0};
  for (const Vec3& p : points) sum += p;
  const Vec3 centroid = sum * (1.0 / static_cast<double>(points.size()));
  for (Vec3& p : points) p = centroid + factor * (p - centroid);
  return true;
}

/// Radius of the contact that a column stands for; +infinity where the tube has no such contact.
double contact_radius(const SparseRigidityColumn& column, const ResolvedTubeMetrics& tube) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  if (column.kind == "strut") {
    return column.strut_index < tube.struts.size() ? 0.5 * tube.struts[column.strut_index].distance : infinity;
  }
  return column.kink_index < tube.kinks.size() ? tube.kinks[column.kink_index].minrad : infinity;
}

/// One Newton step: the least move that lifts every deficient contact to the target in the linearisation. Returns
/// whether the points moved.
bool newton_step(std::vector<Vec3>& points, const ResolvedTubeMetrics& tube, double target,
                 const TighteningOptions& options, const Poll& poll) {
  RigidityChoice choice;
  choice.kink_gradient.analytic = options.use_analytic_kink_gradient;
  const SparseRigidityMatrix matrix = build_sparse_rigidity_matrix(points, tube, choice, poll);
  const std::size_t k = matrix.columns.size();
  if (k == 0) return false;

  std::vector<double> deficit(k, 0.0);
  bool any = false;
  for (std::size_t c = 0; c < k; ++c) {
    const double radius = contact_radius(matrix.columns[c], tube);
    if (!std::isfinite(radius) || !(radius < target)) continue;
    deficit[c] = target - radius;
    any = true;
  }
  if (!any) return false;

  Heartbeat heartbeat(poll);
  const NormalEquations equations(matrix, {}, heartbeat);
  std::vector<std::size_t> all(k);
  std::iota(all.begin(), all.end(), std::size_t{0});
  std::vector<double> y(k, 0.0);
  if (!BlockSolver(equations, heartbeat).solve(all, deficit, options.newton_ridge, y)) return false;

  std::vector<double> delta;
  equations.columns().times(y, delta);
  const double largest = largest_displacement(delta);
  if (!(largest > 0.0) || !std::isfinite(largest)) return false;
  const double damping = std::clamp(options.newton_correction_damping, 0.0, 1.0);
  for (std::size_t v = 0; v < points.size(); ++v) {
    points[v] += damping * Vec3{delta[3 * v], delta[3 * v + 1], delta[3 * v + 2]};
  }
  return true;
}

}  // namespace

double largest_displacement(std::span<const double> flat) {
  double largest = 0.0;
  for (std::size_t k = 0; k + 2 < flat.size(); k += 3) {
    const double displacement = norm({flat[k], flat[k + 1], flat[k + 2]});
    if (!(displacement <= largest)) largest = displacement;
    if (std::isnan(displacement)) break;
  }
  return largest;
}

AnalyzedPolygon analyzed(std::vector<Vec3> points, const TighteningOptions& options, const Poll& poll) {
  AnalyzedPolygon polygon{std::move(points), {}};
  polygon.metrics = analyze_tube(polygon.points, analysis_of(options), poll);
  return polygon;
}

AnalyzedPolygon corrected(AnalyzedPolygon polygon, double target_thickness, const TighteningOptions& options,
                          const Poll& poll) {
  if (!usable_target(target_thickness) || options.correction_strategy == "none") return polygon;
  constexpr int newton_rounds = 3;
  const int rounds = options.correction_strategy == "scale" ? 0 : newton_rounds;
  for (int round = 0; round < rounds; ++round) {
    if (target_thickness <= polygon.metrics.thickness_rad) return polygon;
    if (!newton_step(polygon.points, polygon.metrics, target_thickness, options, poll)) break;
    polygon = analyzed(std::move(polygon.points), options, poll);
  }
  if (rescale(polygon.points, polygon.metrics.thickness_rad, target_thickness)) {
    polygon = analyzed(std::move(polygon.points), options, poll);
  }
  return polygon;
}

std::vector<Vec3> rescale_to_thickness(std::span<const Vec3> points, double target_thickness,
                                       const TubeAnalysis& analysis, const Poll& poll) {
  std::vector<Vec3> scaled(points.begin(), points.end());
  if (scaled.empty() || !usable_target(target_thickness)) return scaled;
  rescale(scaled, analyze_tube(points, analysis, poll).thickness_rad, target_thickness);
  return scaled;
}

std::vector<Vec3> correct_thickness(std::span<const Vec3> points, double target_thickness,
                                    const TighteningOptions& options, const Poll& poll) {
  std::vector<Vec3> copy(points.begin(), points.end());
  if (copy.empty() || !usable_target(target_thickness) || options.correction_strategy == "none") return copy;
  return corrected(analyzed(std::move(copy), options, poll), target_thickness, options, poll).points;
}

}  // namespace vkm
