#include "tube/resolved_tube.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "tube/corner.hpp"
#include "tube/edge_lengths.hpp"
#include "tube/polygon_index.hpp"
#include "tube/segment_distance.hpp"

namespace vkm {

std::vector<double> edge_lengths(std::span<const Vec3> points) {
  const std::size_t n = points.size();
  std::vector<double> lengths(n);
  for (std::size_t k = 0; k + 1 < n; ++k) lengths[k] = norm(points[k] - points[k + 1]);
  if (n > 0) lengths[n - 1] = norm(points[n - 1] - points[0]);
  return lengths;
}

EdgeStatistics edge_statistics(std::span<const double> lengths) {
  EdgeStatistics found;
  if (lengths.size() < 2) return found;
  const auto n = static_cast<double>(lengths.size());
  for (const double length : lengths) found.sum += length;
  found.mean = found.sum / n;
  if (!(found.mean > 0.0)) return found;
  double squares = 0.0;
  for (const double length : lengths) {
    const double deviation = length - found.mean;
    squares += deviation * deviation;
    found.max_relative_deviation = std::max(found.max_relative_deviation, std::fabs(length / found.mean - 1.0));
  }
  found.relative_std = std::sqrt(squares / n) / found.mean;
  return found;
}

double ResolvedTubeGeometry::length(Points points) { return edge_statistics(edge_lengths(points)).sum; }

double ResolvedTubeGeometry::edge_length_mean(Points points) { return edge_statistics(edge_lengths(points)).mean; }

double ResolvedTubeGeometry::edge_length_relative_std(Points points) {
  return edge_statistics(edge_lengths(points)).relative_std;
}

double ResolvedTubeGeometry::edge_length_max_relative_deviation(Points points) {
  return edge_statistics(edge_lengths(points)).max_relative_deviation;
}

double ResolvedTubeGeometry::turning_angle(const Vec3& a, const Vec3& b, const Vec3& c) {
  return corner_of(a, b, c).angle;
}

double ResolvedTubeGeometry::minrad_at_vertex(Points points, std::uint64_t i) {
  const std::uint64_t n = points.size();
  if (n < 3) return 0.0;
  return corner_minrad(corner_of(points[previous_vertex(i, n)], points[vertex_at(i, n)], points[next_vertex(i, n)]));
}

KinkRecord ResolvedTubeGeometry::kink_at_vertex(Points points, std::uint64_t i) {
  const std::uint64_t n = points.size();
  if (n < 3) throw std::invalid_argument("kink_at_vertex requires at least 3 points.");
  const Corner corner = corner_of(points[previous_vertex(i, n)], points[vertex_at(i, n)], points[next_vertex(i, n)]);
  return corner_kink(corner, vertex_at(i, n));
}

double ResolvedTubeGeometry::global_minrad(Points points) {
  if (points.size() < 3) return 0.0;
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t v = 0; v < points.size(); ++v) least = std::min(least, minrad_at_vertex(points, v));
  return least;
}

double ResolvedTubeGeometry::segment_segment_distance(const Vec3& p0, const Vec3& p1, const Vec3& q0, const Vec3& q1,
                                                      double* s, double* t) {
  const SegmentDistance found = segment_distance(p0, p1, q0, q1);
  if (s != nullptr) *s = found.s;
  if (t != nullptr) *t = found.t;
  return found.distance;
}

double ResolvedTubeGeometry::nontrivial_knot_lower_bound_rad() { return 21.452136490675905; }

double ResolvedTubeGeometry::radius_to_diameter_ropelength(double ropelength_rad) { return 0.5 * ropelength_rad; }

double ResolvedTubeGeometry::diameter_to_radius_ropelength(double ropelength_diam) { return 2.0 * ropelength_diam; }

}  // namespace vkm
