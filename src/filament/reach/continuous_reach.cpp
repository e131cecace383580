#include "filament/reach/continuous_reach.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace vkm {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The largest curvature over all spans, each from the best of seven samples on.
double largest_curvature(const PeriodicCubicSpline3D& spline, Heartbeat& heartbeat) {
  constexpr int last_sample = 6;
  constexpr int iterations = 42;
  double largest = 0.0;
  SplineSample sample;
  for (std::size_t i = 0; i < spline.n(); ++i) {
    if (i % 8 == 0) heartbeat.tick();
    const double a = spline.s()[i];
    const double b = i + 1 < spline.n() ? spline.s()[i + 1] : spline.L();
    const auto x = [&](int k) { return a + k * (b - a) / last_sample; };
    int best = 0;
    double best_value = -infinity;
    for (int k = 0; k <= last_sample; ++k) {
      spline.evaluate(x(k), sample);
      const double value = curvature(sample);
      if (value > best_value) {
        best = k;
        best_value = value;
      }
    }
    const double from = std::max(x(best - 1), a), to = std::min(x(best + 1), b);
    const double value = maximize_curvature(spline, from, to, iterations).second;
    if (value > largest) largest = value;
  }
  return largest;
}

/// Adds a run of the search to the counters; its contact, if it found one, to `contacts`.
void add_run(const CriticalPairSearch& run, ContinuousReach& result, std::vector<Contact>& contacts) {
  result.dcsd_seed_count += run.seeds;
  result.dcsd_refined_count += run.refined;
  result.dcsd_rejected_count += run.rejected;
  result.search_resolution = std::max(result.search_resolution, run.resolution);
  if (run.contact) contacts.push_back(*run.contact);
}

double least_distance(const std::vector<Contact>& contacts) {
  double least = infinity;
  for (const Contact& contact : contacts) least = std::min(least, contact.distance);
  return least;
}

ReachLimiter choose_limiter(ContinuousReach& result) {
  using Candidate = std::pair<double, ReachLimiter>;
  std::array<Candidate, 3> candidates = {{{result.curvature_radius, ReachLimiter::curvature},
                                          {result.self_radius, ReachLimiter::self_dcsd},
                                          {result.inter_component_radius, ReachLimiter::inter_component}}};
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const Candidate& a, const Candidate& b) { return a.first < b.first; });
  result.reach = candidates[0].first;
  int at_reach = 0;
  for (const auto& [radius, code] : candidates) {
    if (std::isfinite(radius) && std::abs(radius - result.reach) <= std::max(std::abs(result.reach), 1.0) * 1e-5) {
      ++at_reach;
    }
  }
  return at_reach < 2 ? candidates[0].second : ReachLimiter::tie;
}

}  // namespace

const char* limiter_name(ReachLimiter limiter) {
  switch (limiter) {
    case ReachLimiter::curvature:
      return "CURVATURE";
    case ReachLimiter::self_dcsd:
      return "SELF_DCSD";
    case ReachLimiter::inter_component:
      return "INTER_COMPONENT";
    case ReachLimiter::tie:
      return "TIE";
    case ReachLimiter::error:
      break;
  }
  return "ERROR";
}

std::vector<PeriodicCubicSpline3D> splines_through(std::span<const std::vector<Vec3>> curves) {
  return {curves.begin(), curves.end()};
}

ContinuousReach continuous_reach(std::span<const PeriodicCubicSpline3D> splines, const Poll& poll) {
  ContinuousReach result;
  if (splines.empty()) return result;
  Heartbeat heartbeat(poll);
  result.component_count = splines.size();

  result.curvature_radius = infinity;
  for (const PeriodicCubicSpline3D& spline : splines) {
    const double kappa = largest_curvature(spline, heartbeat);
    const double radius = kappa > 1e-20 ? 1.0 / kappa : infinity;
    if (radius < result.curvature_radius) result.curvature_radius = radius;
    result.curvature_intervals_examined += spline.n();
  }
  for (const PeriodicCubicSpline3D& spline : splines) {
    add_run(search_critical_pairs(spline, spline, true, heartbeat), result, result.self_contacts);
  }
  for (std::size_t i = 0; i < splines.size(); ++i) {
    for (std::size_t j = i + 1; j < splines.size(); ++j) {
      add_run(search_critical_pairs(splines[i], splines[j], false, heartbeat), result, result.inter_component_contacts);
    }
  }
  result.self_dcsd = least_distance(result.self_contacts);
  result.self_radius = 0.5 * result.self_dcsd;
  result.inter_component_distance = least_distance(result.inter_component_contacts);
  result.inter_component_radius = 0.5 * result.inter_component_distance;
  result.limiter = choose_limiter(result);
  for (const auto* contacts : {&result.self_contacts, &result.inter_component_contacts}) {
    for (const Contact& contact : *contacts) {
      result.orth_residual = std::max(result.orth_residual, contact.orthogonality_residual);
    }
  }
  const bool pair_found =
      !result.self_contacts.empty() || (splines.size() >= 2 && !result.inter_component_contacts.empty());
  result.search_converged = result.curvature_intervals_examined > 0 && std::isfinite(result.reach) &&
                            result.reach > 0.0 && pair_found && result.orth_residual < orthogonality_bound;
  return result;
}

SmoothTube analyze_smooth_tube(std::span<const PeriodicCubicSpline3D> splines, double length_abs_tol,
                               double length_rel_tol, const Poll& poll) {
  SmoothTube tube;
  if (splines.empty()) return tube;
  tube.reach = continuous_reach(splines, poll);
  tube.length.converged = true;
  for (const PeriodicCubicSpline3D& spline : splines) {
    const SplineLength part = adaptive_length(spline, length_abs_tol, length_rel_tol, poll);
    tube.length.length += part.length;
    tube.length.error_estimate += part.error_estimate;
    tube.length.interval_count += part.interval_count;
    tube.length.converged = tube.length.converged && part.converged;
  }
  const double reach = tube.reach.reach, length = tube.length.length;
  const bool measurable = std::isfinite(reach) && reach > 0.0 && std::isfinite(length);
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  tube.ropelength_rad = measurable ? length / reach : nan;
  tube.ropelength_diam = measurable ? 0.5 * tube.ropelength_rad : nan;
  tube.converged = tube.length.converged && tube.reach.search_converged && measurable;
  return tube;
}

}  // namespace vkm
