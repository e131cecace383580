// Thickness, ropelength and contacts of a polygon. Edge pairs come from the box tree: its results are those of the loop
// over all pairs, bit by bit and in the same order.

#include "tube/tube_analysis.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>

#include "tube/edge_lengths.hpp"
#include "tube/edge_pair_search.hpp"
#include "tube/vertex_radius.hpp"

namespace vkm {

namespace {

/// Largest distance that stays beside the least one, m. The tolerance is relative and additive at once.
double admitted_distance(double m, double distance_tol) {
  const double tol = std::max(distance_tol, 0.0);
  return tol == 0.0 ? m + 1e-12 : (tol + 1.0) * m + tol;
}

}  // namespace

std::vector<SegmentPair> dcsd_candidates(std::span<const Vec3> points, std::int32_t skip_neighbors, double distance_tol,
                                         const Poll& poll) {
  if (points.size() <= 3) return {};
  const auto keep = [&](double least) { return admitted_distance(least, distance_tol); };
  return EdgePairSearch(points, skip_neighbors).near_pairs(keep, poll).pairs;
}

ResolvedTubeMetrics analyze_tube(std::span<const Vec3> points, const TubeAnalysis& options, const Poll& poll,
                                 int threads) {
  const double contact_tol = options.contact_tol;
  const std::size_t n = points.size();
  if (n < 3) throw std::invalid_argument("analyze requires at least 3 points.");
  if (contact_tol < 0.0) throw std::invalid_argument("contact_tol must be non-negative.");
  if (options.equilateral_tol < 0.0) throw std::invalid_argument("equilateral_tol must be non-negative.");

  ResolvedTubeMetrics tube;
  const std::vector<double> lengths = edge_lengths(points);
  const EdgeStatistics edges = edge_statistics(lengths);
  tube.length = edges.sum;
  tube.edge_length_mean = edges.mean;
  tube.edge_length_rel_std = edges.relative_std;
  tube.edge_length_max_rel_dev = edges.max_relative_deviation;
  tube.equilateral_ok = tube.edge_length_max_rel_dev <= options.equilateral_tol;

  const std::vector<double> radii = estimated_radii(points, lengths);
  tube.minrad = least_radius(points, radii);

  // Contacts are collected only at a thickness that is positive and finite; nothing is kept at any other.
  const auto thickness_of = [&](double dcsd) { return 0.5 * dcsd < tube.minrad ? 0.5 * dcsd : tube.minrad; };
  const auto usable = [](double thickness) { return thickness > 0.0 && std::isfinite(thickness); };
  const auto contact_of = [&](double thickness) { return (contact_tol + 1.0) * thickness + contact_tol; };
  const auto keep = [&](double least) {
    const double thickness = thickness_of(least);
    if (!usable(thickness)) return -1.0;
    // The contact test is on half the distance; the added number keeps subnormal distances for it.
    return std::min(admitted_distance(least, contact_tol), 2.0 * contact_of(thickness) + 1e-300);
  };
  EdgePairSearch::Found found =
      EdgePairSearch(n > 3 ? points : std::span<const Vec3>(), options.skip_neighbors).near_pairs(keep, poll, threads);

  tube.min_dcsd = found.least;
  tube.half_min_dcsd = 0.5 * tube.min_dcsd;
  tube.thickness_rad = thickness_of(tube.min_dcsd);
  tube.reach_rad = tube.thickness_rad;
  if (usable(tube.thickness_rad)) {
    tube.ropelength_rad = tube.length / tube.thickness_rad;
    tube.ropelength_diam = 0.5 * tube.ropelength_rad;
  }
  // A degenerate polygon passes.
  tube.lower_bound_ok = tube.ropelength_rad <= 0.0 || tube.ropelength_rad + 1e-9 >= nontrivial_knot_lower_bound_rad;
  if (!usable(tube.thickness_rad)) return tube;

  const double contact = contact_of(tube.thickness_rad);
  tube.struts = std::move(found.pairs);
  std::erase_if(tube.struts, [&](const SegmentPair& pair) { return !(0.5 * pair.distance <= contact); });
  tube.kinks = kinks_within(points, radii, contact);
  return tube;
}

}  // namespace vkm
